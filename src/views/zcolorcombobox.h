#ifndef ZCOLORCOMBOBOX_H
#define ZCOLORCOMBOBOX_H

#include "zcomboboxwidget.h"
#include "zlistitem.h"

class ZColorComboBoxPrivate;

/*! \brief A drop list row of ZColorComboBox: a swatch of the row's colour. */
class ZKIT_EXPORT ZColorComboBoxItem : public ZListItem
{
    Q_OBJECT

public:
    explicit ZColorComboBoxItem(ZListWidget *view);
    void itemReset() override;
    QObject *swatch() const;
};

/*!
 * \brief A combo box of colours: Qt's global colours from color0 to
 * darkYellow, each name (#rrggbb) once, so 17 rows.
 */
class ZKIT_EXPORT ZColorComboBox : public ZComboBoxWidget
{
    Q_OBJECT
    Q_PROPERTY(bool hasBorder READ hasBorder WRITE setHasBorder)
    Q_PROPERTY(QColor color READ currentColor)

public:
    Q_INVOKABLE explicit ZColorComboBox(QGraphicsItem *parent = nullptr);
    ~ZColorComboBox() override;

    bool hasBorder() const;
    /*! Draws a dark one-pixel border around the face's swatch. */
    void setHasBorder(bool on);
    /*! Selects the row of \a color's name; nothing when there is none. */
    void setIndexByColor(const QColor &color);
    /*! The colour of row \a index; invalid outside the rows. */
    QColor itemColor(int index) const;
    QColor currentColor() const;

protected:
    ZColorComboBox(ZColorComboBoxPrivate &dd, QGraphicsItem *parent);

    void createContent(ZWidget *content) override;
    void updateContent(ZWidget *content, int index) override;
    void clearContent(ZWidget *content) override;
    void deleteContent(ZWidget *content) override;

private:
    Z_DECLARE_PRIVATE(ZColorComboBox)
    Q_DISABLE_COPY(ZColorComboBox)
};

#endif // ZCOLORCOMBOBOX_H

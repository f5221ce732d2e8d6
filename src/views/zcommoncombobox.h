#ifndef ZCOMMONCOMBOBOX_H
#define ZCOMMONCOMBOBOX_H

#include "zcomboboxwidget.h"
#include "zlistitem.h"

class ZCommonComboBoxPrivate;

/*! \brief A drop list row of ZCommonComboBox: its text, vertically centred. */
class ZKIT_EXPORT ZCommonComboBoxItem : public ZListItem
{
    Q_OBJECT

public:
    explicit ZCommonComboBoxItem(ZListWidget *view);
    void itemReset() override;
};

/*! \brief A combo box of text rows; the face shows the selected row's text. */
class ZKIT_EXPORT ZCommonComboBox : public ZComboBoxWidget
{
    Q_OBJECT
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment WRITE setTextAlignment)
    Q_PROPERTY(QObject *faceText READ faceText)

public:
    Q_INVOKABLE explicit ZCommonComboBox(QGraphicsItem *parent = nullptr);
    ~ZCommonComboBox() override;

    Qt::Alignment textAlignment() const;
    void setTextAlignment(Qt::Alignment alignment);
    /*! The face's label. */
    QObject *faceText() const;

protected:
    ZCommonComboBox(ZCommonComboBoxPrivate &dd, QGraphicsItem *parent);

    void createContent(ZWidget *content) override;
    void updateContent(ZWidget *content, int index) override;
    void clearContent(ZWidget *content) override;
    void deleteContent(ZWidget *content) override;

private:
    Z_DECLARE_PRIVATE(ZCommonComboBox)
    Q_DISABLE_COPY(ZCommonComboBox)
};

#endif // ZCOMMONCOMBOBOX_H

#ifndef ZFONTCOMBOBOX_H
#define ZFONTCOMBOBOX_H

#include "zcomboboxwidget.h"
#include "zlistitem.h"

class ZFontComboBoxPrivate;

/*! \brief A drop list row of ZFontComboBox: the family's name written in the family. */
class ZKIT_EXPORT ZFontComboBoxItem : public ZListItem
{
    Q_OBJECT

public:
    explicit ZFontComboBoxItem(ZListWidget *view);
    void itemReset() override;
};

/*!
 * \brief A combo box of the installed font families. The drop list is at
 * least as wide as the widest family's sample text.
 */
class ZKIT_EXPORT ZFontComboBox : public ZComboBoxWidget
{
    Q_OBJECT
    Q_PROPERTY(QString currentFamily READ currentFamily)

public:
    Q_INVOKABLE explicit ZFontComboBox(QGraphicsItem *parent = nullptr);
    ~ZFontComboBox() override;

    QString currentFamily() const;
    /*! The text each family is measured and shown with: the name, two spaces and a sample. */
    static QString sampleText(const QString &family);

protected:
    ZFontComboBox(ZFontComboBoxPrivate &dd, QGraphicsItem *parent);

    void createContent(ZWidget *content) override;
    void updateContent(ZWidget *content, int index) override;
    void clearContent(ZWidget *content) override;
    void deleteContent(ZWidget *content) override;

private:
    Z_DECLARE_PRIVATE(ZFontComboBox)
    Q_DISABLE_COPY(ZFontComboBox)
};

#endif // ZFONTCOMBOBOX_H

#ifndef ZCOMMONLISTWIDGET_H
#define ZCOMMONLISTWIDGET_H

#include "zlistwidget.h"

class ZCommonListModel;
class ZCommonListWidgetPrivate;

/*!
 * \brief A ZListWidget over a ZCommonListModel of its own.
 *
 * The row operations forward to that model, with its meaning (the icon rule
 * included).
 */
class ZKIT_EXPORT ZCommonListWidget : public ZListWidget
{
    Q_OBJECT
    Q_PROPERTY(QString itemsText READ itemsText WRITE setItemsText)

public:
    Q_INVOKABLE explicit ZCommonListWidget(QGraphicsItem *parent = nullptr);
    ~ZCommonListWidget() override;

    ZCommonListModel *commonModel() const;

    void addItem(const QString &text);
    void addItem(const QString &text, const QVariant &data);
    void addItem(const QString &text, const QString &icon, const QVariant &data);
    void insertItem(int index, const QString &text, const QString &icon, const QVariant &data);
    void removeItem(int index);
    void removeItem(const QString &text);
    void removeAll();
    void setItemsText(const QString &text);
    QString itemsText() const;

    // The widget-placing forms of the base stay reachable.
    using ZWidget::addItem;
    using ZWidget::insertItem;
    using ZWidget::removeItem;

protected:
    ZCommonListWidget(ZCommonListWidgetPrivate &dd, QGraphicsItem *parent);

private:
    Z_DECLARE_PRIVATE(ZCommonListWidget)
    Q_DISABLE_COPY(ZCommonListWidget)
};

#endif // ZCOMMONLISTWIDGET_H

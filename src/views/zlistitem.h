#ifndef ZLISTITEM_H
#define ZLISTITEM_H

#include "zwidget.h"

#include <QtCore/qmap.h>
#include <QtCore/qvariant.h>

class ZImageItem;
class ZLabel;
class ZListItemPrivate;
class ZListWidget;

/*!
 * \brief One visible row of a ZListWidget.
 *
 * Items are recycled: the view binds an item to a row with resetIndex(),
 * which copies the row's data into the item and calls itemReset(). The
 * default look is an optional icon followed by a text label in a horizontal
 * box; subclasses override itemReset() and the three state hooks for looks
 * of their own.
 */
class ZKIT_EXPORT ZListItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(int index READ index)
    Q_PROPERTY(QString itemText READ itemText)
    Q_PROPERTY(QString itemIcon READ itemIcon)
    Q_PROPERTY(bool itemSelected READ itemSelected)
    Q_PROPERTY(QObject *textLabel READ textLabel)
    Q_PROPERTY(QObject *iconItem READ iconItem)

public:
    explicit ZListItem(ZListWidget *view);
    ~ZListItem() override;

    /*! Makes the item look like its bound row. */
    virtual void itemReset();
    /*! The selected look; the default takes \a background when it is a QColor. */
    virtual void setSelected(const QVariant &background);
    virtual void setUnselected(const QVariant &background);
    virtual void setHovered(const QVariant &background);
    /*! An action asked for through ZListWidget::tryToSetAction(); false here. */
    virtual bool setAction(int action, const QVariant &param, QVariant &result);

    /*! Binds the item to \a row: copies the row's data and calls itemReset(). */
    void resetIndex(int row);
    int index() const;
    ZListWidget *listView() const;
    QString itemText() const;
    QString itemIcon() const;
    QVariant itemData(Qt::ItemDataRole role) const;
    QMap<Qt::ItemDataRole, QVariant> itemDataMap() const;
    /*! The view's shared custom value. */
    QVariant customVariant() const;
    bool itemSelected() const;
    /*! Whether the pointer is over the item, as the scene's hover events tell. */
    bool itemHovered() const;

    /*! The default look's children; null until first needed. */
    QObject *textLabel() const;
    QObject *iconItem() const;

protected:
    ZListItem(ZListItemPrivate &dd, ZListWidget *view);

    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    Z_DECLARE_PRIVATE(ZListItem)
    Q_DISABLE_COPY(ZListItem)
};

#endif // ZLISTITEM_H

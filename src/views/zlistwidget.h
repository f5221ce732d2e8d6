#ifndef ZLISTWIDGET_H
#define ZLISTWIDGET_H

#include "zwidget.h"

#include <QtCore/qmap.h>
#include <QtCore/qvariant.h>

class ZAbstractListModel;
class ZListItem;
class ZListItemCreator;
class ZListWidgetPrivate;

/*!
 * \brief A virtualised vertical list over a ZAbstractListModel.
 *
 * Only the rows that meet the visible area have an item widget; items are
 * pooled by the item creator and rebound as the view scrolls. Every row is
 * itemHeight() high except the selected one, which is selectedItemHeight()
 * high. All layout is deferred to zero-interval timers, so any burst of
 * changes in one turn of the event loop costs one pass.
 *
 * An item keeps its bound data for as long as its row number stays visible,
 * across insertions, removals and resets of the model: only rows that get a
 * new item are rebound.
 *
 * Heights are kept within 1 .. 65536. The background properties turn a
 * colour name (as documents give it) into a QColor; the setter taking all
 * three stores the values as they are.
 */
class ZKIT_EXPORT ZListWidget : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QMargins itemMargins READ itemMargins WRITE setItemMargins)
    Q_PROPERTY(int index READ selectIndex WRITE setSelectIndex)
    Q_PROPERTY(int itemHeight READ itemHeight WRITE setItemHeight)
    Q_PROPERTY(int selectedItemHeight READ selectedItemHeight WRITE setSelectedItemHeight)
    Q_PROPERTY(QVariant itemUnselectBackground READ itemUnselectBackgroundVariant WRITE setItemUnselectBackgroundVariant)
    Q_PROPERTY(QVariant itemSelectedBackground READ itemSelectedBackgroundVariant WRITE setItemSelectedBackgroundVariant)
    Q_PROPERTY(QVariant itemHoveredBackground READ itemHoveredBackgroundVariant WRITE setItemHoveredBackgroundVariant)
    Q_PROPERTY(QObject *vscroll READ verticalScrollBar)

public:
    Q_INVOKABLE explicit ZListWidget(QGraphicsItem *parent = nullptr);
    ~ZListWidget() override;

    /*! Installs \a model (not owned) and returns the previous one; schedules nothing. */
    ZAbstractListModel *setModel(ZAbstractListModel *model);
    ZAbstractListModel *model() const;
    /*! Takes ownership of \a creator, deleting the previous one; null is ignored. */
    void setItemCreator(ZListItemCreator *creator);
    ZListItemCreator *itemCreator() const;

    void setItemHeight(int height, int selectedHeight);
    void setItemHeight(int height);
    int itemHeight() const;
    void setSelectedItemHeight(int height);
    int selectedItemHeight() const;

    void setItemMargins(const QMargins &margins);
    QMargins itemMargins() const;

    /*! The backgrounds given to items, in the order unselected, selected, hovered. */
    void setItemBackgroundVariant(const QVariant &unselected, const QVariant &selected, const QVariant &hovered);
    QVariant itemUnselectBackgroundVariant() const;
    QVariant itemSelectedBackgroundVariant() const;
    QVariant itemHoveredBackgroundVariant() const;
    void setItemUnselectBackgroundVariant(const QVariant &background);
    void setItemSelectedBackgroundVariant(const QVariant &background);
    void setItemHoveredBackgroundVariant(const QVariant &background);

    void setItemCustomVariant(const QVariant &value);
    QVariant itemCustomVariant() const;

    /*! Stores both values, negative ones as 0; the bottom one extends the scroll range. */
    void setContentHiddenArea(int top, int bottom);
    int contentHiddenTop() const;
    int contentHiddenBottom() const;

    /*! Selects row \a index when it is a row and not the selection already, and emits indexChanged(). */
    void setSelectIndex(int index);
    int selectIndex() const;
    /*! Clears the selection without a signal. */
    void clearSelected();

    int count() const;
    /*! The height of all rows, the selected one counted at its own height. */
    int itemsHeight() const;
    QMap<Qt::ItemDataRole, QVariant> itemData(int index) const;
    int indexOfText(const QString &text) const;
    int findOneIndexByText(const QString &text) const;
    QList<int> findAllIndexByText(const QString &text) const;
    /*! Asks the visible item of row \a index to act; false when the row has no item. */
    bool tryToSetAction(int index, int action, const QVariant &param, QVariant &result);

    /*! The scroll bar; null until the content first overflows. */
    QObject *verticalScrollBar() const;
    /*! The item bound to row \a index, null when the row is not visible. */
    ZListItem *visibleItem(int index) const;
    /*! The number of item widgets bound to rows. */
    int visibleItemCount() const;
    /*! The first row laid out by the last pass. */
    int firstVisibleIndex() const;
    /*! Where rows are laid out: the widget less the scroll bar's reserve. */
    QRectF visibleRect() const;
    int scrollValue() const;

Q_SIGNALS:
    void indexChanged(int index);
    void itemClicked(int index, Qt::MouseButton button);
    void clicked(Qt::MouseButton button);
    void itemDbClicked(int index, Qt::MouseButton button);

protected:
    ZListWidget(ZListWidgetPrivate &dd, QGraphicsItem *parent);

    bool event(QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

private Q_SLOTS:
    void on_model_itemsInserted(int index, int n);
    void on_model_itemsRemoved(int index, int n);
    void on_model_itemsMoved(int from, int to, int n);
    void on_model_itemsChanged(int index, int n, QList<Qt::ItemDataRole> roles);
    void on_model_modelReset();
    void on_scroll_valueChanged(qreal value);

private:
    Z_DECLARE_PRIVATE(ZListWidget)
    Q_DISABLE_COPY(ZListWidget)
};

#endif // ZLISTWIDGET_H

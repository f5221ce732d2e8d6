#ifndef ZLISTWIDGET_P_H
#define ZLISTWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zlistwidget.h"
#include "zwidget_p.h"

#include <QtCore/qbasictimer.h>
#include <QtCore/qhash.h>
#include <QtCore/qpointer.h>
#include <QtGui/qcolor.h>

#include <memory>

class ZAbstractListModel;
class ZListItem;
class ZListItemCreator;
class ZScrollBar;

class ZKIT_EXPORT ZListWidgetPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZListWidget)
public:
    ZListWidgetPrivate();
    ~ZListWidgetPrivate() override;

    void init();
    void scheduleLayout();
    void scheduleAreas();
    void resetAreas();
    void doLayout();
    // Finds the first row whose bottom lies below the visible top, searching
    // [from, to); \a y gets its top. -1 when no row qualifies.
    int calcLayoutFirstItem(qint64 &y, int from, int to) const;
    void placeItem(ZListItem *item, int row, qint64 &y);
    // Gives the first three back to the creator (hidden), deletes the rest.
    void releaseItems(QHash<int, QPointer<ZListItem>> &items);
    qint64 contentHeight() const;
    int rowHeight(int row) const { return row == selected ? selectedItemHeight : itemHeight; }
    bool selectionInRange() const;
    ZListItem *itemAt(const QPointF &pos) const;

    QBasicTimer layoutTimer;
    QBasicTimer areaTimer;
    int selected = -1;
    int itemHeight = 20;
    int selectedItemHeight = 20;
    QVariant unselectedBackground = QColor(255, 255, 255, 255);
    QVariant selectedBackground = QColor(250, 250, 176, 255);
    QVariant hoveredBackground = QColor(250, 250, 206, 255);
    QMargins itemMargins;
    std::unique_ptr<ZListItemCreator> creator;
    int firstVisible = 0;
    QHash<int, QPointer<ZListItem>> visibleItems;
    QRectF visibleRect;
    QRectF scrollBarRect;
    int scrollValue = 0;
    int hiddenTop = 0;
    int hiddenBottom = 10;
    int scrollBarReserve = 18;
    QPointer<ZScrollBar> scrollBar;
    QPointer<ZAbstractListModel> model;
    QVariant customVariant;
    // Set by views whose rows change meaning without the row numbers
    // changing (a tree after expanding): the next pass rebinds kept items too.
    bool rebindVisible = false;
};

#endif // ZLISTWIDGET_P_H

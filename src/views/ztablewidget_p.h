#ifndef ZTABLEWIDGET_P_H
#define ZTABLEWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztablewidget.h"
#include "zcommontablemodel.h"
#include "zwidget_p.h"

#include <QtCore/qbasictimer.h>
#include <QtCore/qpointer.h>
#include <QtGui/qcursor.h>

#include <optional>
#include <vector>

class ZScrollBar;

class ZKIT_EXPORT ZTableWidgetPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZTableWidget)
public:
    void init();
    void connectModel(ZAbstractTableModel *m, bool on);
    void scheduleAreas();
    // Places the scroll bars and the body; runs at most once per event-loop turn.
    void resetAreas();
    // The number of columns the view lays out (the model's, bounded).
    int columns() const;
    int rows() const;
    void computeOffsets();
    int width(int column) const;
    // The column at \a x in content coordinates, -1 outside.
    int columnAtContent(qint64 x) const;
    void setCurrent(int row, int column, bool scroll);
    ZScrollBar *makeBar(Qt::Orientation orientation);

    ZCommonTableModel ownModel;
    QPointer<ZAbstractTableModel> model;
    int rowHeight = 20;
    int headerHeight = 24;
    int defaultColumnWidth = 100;
    int minimumColumnWidth = 16;
    // Widths given to columns; -1 (or no entry) takes the default.
    std::vector<int> widths;
    // Left edge of every laid-out column in content coordinates, plus the total.
    std::vector<qint64> offsets{0};
    bool resizable = true;
    ZTableWidget::SelectionBehavior behavior = ZTableWidget::SelectCells;
    bool showGrid = true;
    QColor gridColor = QColor(216, 216, 216);
    QColor textColor = QColor(0, 0, 0);
    QColor selectedColor = QColor(250, 250, 176);
    // Empty: a flat header in the grid colour.
    QString headerImage;
    int currentRow = -1;
    int currentColumn = -1;
    QPointer<ZScrollBar> vbar;
    QPointer<ZScrollBar> hbar;
    qint64 vvalue = 0;
    qint64 hvalue = 0;
    QRectF body;
    QBasicTimer areaTimer;
    // The column being resized by a drag, -1 for none.
    int resizing = -1;
    qreal resizeStartX = 0;
    int resizeStartWidth = 0;
    // Over a resize handle the table shows the split cursor; the cursor it
    // had before (an application's, or none) comes back when it leaves.
    bool cursorOnHandle = false;
    std::optional<QCursor> cursorBeforeHandle;
};

#endif // ZTABLEWIDGET_P_H

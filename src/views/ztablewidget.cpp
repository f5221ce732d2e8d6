#include "ztablewidget.h"
#include "ztablewidget_p.h"

#include "xmlnode.h"
#include "zcreator.h"
#include "zscrollbar.h"
#include "ztheme.h"
#include "zutility.h"

#include <QtCore/qcoreevent.h>
#include <QtGui/qevent.h>
#include <QtGui/qpainter.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

Z_REGISTER_WIDGET(ZTableWidget);

namespace {

constexpr int MaxExtent = 65536;
// A model may claim any number of columns; the view lays out this many.
constexpr int MaxViewColumns = 65536;
// How near a header edge a press grabs it.
constexpr qreal HandleReach = 4;
constexpr qreal CellPadding = 4;

} // namespace

void ZTableWidgetPrivate::init()
{
    Z_Q(ZTableWidget);
    q->setFlag(QGraphicsItem::ItemClipsChildrenToShape, true);
    q->setFlag(QGraphicsItem::ItemIsFocusable, true);
    q->setFocusPolicy(Qt::StrongFocus);
    q->setAcceptHoverEvents(true);
    q->setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    q->setBackgroundColor(QColor(255, 255, 255));
    model = &ownModel;
    connectModel(model, true);
}

void ZTableWidgetPrivate::connectModel(ZAbstractTableModel *m, bool on)
{
    Z_Q(ZTableWidget);
    if (!m)
        return;
    const char *pairs[][2] = {
        {SIGNAL(rowsInserted(int,int)), SLOT(on_model_rowsInserted(int,int))},
        {SIGNAL(rowsRemoved(int,int)), SLOT(on_model_rowsRemoved(int,int))},
        {SIGNAL(columnsInserted(int,int)), SLOT(on_model_columnsInserted(int,int))},
        {SIGNAL(columnsRemoved(int,int)), SLOT(on_model_columnsRemoved(int,int))},
        {SIGNAL(cellsChanged(int,int,int,int)), SLOT(on_model_cellsChanged(int,int,int,int))},
        {SIGNAL(headerChanged()), SLOT(on_model_headerChanged())},
        {SIGNAL(modelReset()), SLOT(on_model_modelReset())},
        {SIGNAL(destroyed()), SLOT(on_model_modelReset())},
    };
    for (const auto &pair : pairs) {
        if (on)
            QObject::connect(m, pair[0], q, pair[1]);
        else
            QObject::disconnect(m, pair[0], q, pair[1]);
    }
}

void ZTableWidgetPrivate::scheduleAreas()
{
    areaTimer.start(0, q_func());
    q_func()->update();
}

int ZTableWidgetPrivate::rows() const
{
    return model ? qMax(0, model->rowCount()) : 0;
}

int ZTableWidgetPrivate::columns() const
{
    return model ? qBound(0, model->columnCount(), MaxViewColumns) : 0;
}

int ZTableWidgetPrivate::width(int column) const
{
    const int w = column >= 0 && size_t(column) < widths.size() ? widths[size_t(column)] : -1;
    return qMax(minimumColumnWidth, w > 0 ? w : defaultColumnWidth);
}

void ZTableWidgetPrivate::computeOffsets()
{
    const int n = columns();
    offsets.resize(size_t(n) + 1);
    offsets[0] = 0;
    for (int c = 0; c < n; ++c)
        offsets[size_t(c) + 1] = offsets[size_t(c)] + width(c);
}

int ZTableWidgetPrivate::columnAtContent(qint64 x) const
{
    if (x < 0 || offsets.size() < 2 || x >= offsets.back())
        return -1;
    // The last edge at or left of x.
    const auto it = std::upper_bound(offsets.begin(), offsets.end(), x);
    const int column = int(it - offsets.begin()) - 1;
    return column < columns() ? column : -1;
}

ZScrollBar *ZTableWidgetPrivate::makeBar(Qt::Orientation orientation)
{
    Z_Q(ZTableWidget);
    auto *bar = new ZScrollBar(orientation, q);
    bar->setZValue(1);
    if (orientation == Qt::Vertical)
        QObject::connect(bar, SIGNAL(valueChanged(qreal)), q, SLOT(on_vscroll_valueChanged(qreal)));
    else
        QObject::connect(bar, SIGNAL(valueChanged(qreal)), q, SLOT(on_hscroll_valueChanged(qreal)));
    return bar;
}

void ZTableWidgetPrivate::resetAreas()
{
    Z_Q(ZTableWidget);
    areaTimer.stop();
    computeOffsets();
    const QSizeF size = q->size();
    const qint64 contentH = qint64(rows()) * rowHeight;
    const qint64 contentW = offsets.back();
    // Made hidden up front: their thickness decides whether they are needed.
    if (!vbar) {
        vbar = makeBar(Qt::Vertical);
        vbar->hide();
    }
    if (!hbar) {
        hbar = makeBar(Qt::Horizontal);
        hbar->hide();
    }
    const qreal vt = vbar->frameThickness();
    const qreal ht = hbar->frameThickness();
    const qreal header = qMin<qreal>(headerHeight, size.height());
    // Each bar takes room from the other's direction, so decide twice.
    bool needV = false, needH = false;
    for (int pass = 0; pass < 2; ++pass) {
        needV = contentH > size.height() - header - (needH ? ht : 0);
        needH = contentW > size.width() - (needV ? vt : 0);
    }
    body = QRectF(0, header, qMax<qreal>(0, size.width() - (needV ? vt : 0)),
                  qMax<qreal>(0, size.height() - header - (needH ? ht : 0)));

    auto place = [](ZScrollBar *bar, const QRectF &rect, qint64 maximum, qreal single, qreal page, qint64 &value) {
        maximum = qBound(qint64(0), maximum, qint64(INT_MAX));
        value = qBound(qint64(0), value, maximum);
        bar->setFixSize(rect.size());
        bar->setGeometry(rect);
        bar->setRange(0, qreal(maximum));
        bar->setSingleStep(single);
        bar->setPageStep(qMax<qreal>(0, page));
        bar->setDeltaFactor(3 * single);
        bar->setValue(qreal(value));
        bar->show();
    };
    if (needV) {
        place(vbar, QRectF(size.width() - vt, header, vt, body.height()), contentH - qint64(body.height()),
              rowHeight, body.height() - rowHeight, vvalue);
    } else {
        vvalue = 0;
        vbar->setRange(0, 0);
        vbar->hide();
    }
    if (needH) {
        place(hbar, QRectF(0, size.height() - ht, body.width(), ht), contentW - qint64(body.width()), 20,
              body.width() - 20, hvalue);
    } else {
        hvalue = 0;
        hbar->setRange(0, 0);
        hbar->hide();
    }
    q->update();
}

void ZTableWidgetPrivate::setCurrent(int row, int column, bool scroll)
{
    Z_Q(ZTableWidget);
    if (row == currentRow && column == currentColumn) {
        if (scroll)
            q->scrollTo(row, column);
        return;
    }
    currentRow = row;
    currentColumn = column;
    if (scroll)
        q->scrollTo(row, column);
    q->update();
    Q_EMIT q->currentCellChanged(row, column);
}

ZTableWidget::ZTableWidget(QGraphicsItem *parent)
    : ZTableWidget(*new ZTableWidgetPrivate, parent)
{
}

ZTableWidget::ZTableWidget(ZTableWidgetPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    dd.init();
}

ZTableWidget::~ZTableWidget()
{
    Z_D(ZTableWidget);
    d->areaTimer.stop();
    d->connectModel(d->model, false);
}

ZAbstractTableModel *ZTableWidget::setModel(ZAbstractTableModel *model)
{
    Z_D(ZTableWidget);
    if (!model)
        model = &d->ownModel;
    ZAbstractTableModel *old = d->model;
    if (old == model)
        return old;
    d->connectModel(old, false);
    d->model = model;
    d->connectModel(model, true);
    on_model_modelReset();
    return old;
}

ZAbstractTableModel *ZTableWidget::model() const
{
    return d_func()->model;
}

ZCommonTableModel *ZTableWidget::commonModel() const
{
    return const_cast<ZCommonTableModel *>(&d_func()->ownModel);
}

int ZTableWidget::rowCount() const
{
    return d_func()->rows();
}

int ZTableWidget::columnCount() const
{
    return d_func()->columns();
}

int ZTableWidget::rowHeight() const
{
    return d_func()->rowHeight;
}

void ZTableWidget::setRowHeight(int height)
{
    Z_D(ZTableWidget);
    height = qBound(1, height, MaxExtent);
    if (d->rowHeight == height)
        return;
    d->rowHeight = height;
    d->scheduleAreas();
}

int ZTableWidget::headerHeight() const
{
    return d_func()->headerHeight;
}

void ZTableWidget::setHeaderHeight(int height)
{
    Z_D(ZTableWidget);
    height = qBound(0, height, MaxExtent);
    if (d->headerHeight == height)
        return;
    d->headerHeight = height;
    d->scheduleAreas();
}

int ZTableWidget::defaultColumnWidth() const
{
    return d_func()->defaultColumnWidth;
}

void ZTableWidget::setDefaultColumnWidth(int width)
{
    Z_D(ZTableWidget);
    width = qBound(d->minimumColumnWidth, width, MaxExtent);
    if (d->defaultColumnWidth == width)
        return;
    d->defaultColumnWidth = width;
    d->scheduleAreas();
}

int ZTableWidget::minimumColumnWidth() const
{
    return d_func()->minimumColumnWidth;
}

void ZTableWidget::setMinimumColumnWidth(int width)
{
    Z_D(ZTableWidget);
    width = qBound(1, width, MaxExtent);
    if (d->minimumColumnWidth == width)
        return;
    d->minimumColumnWidth = width;
    d->defaultColumnWidth = qMax(d->defaultColumnWidth, width);
    d->scheduleAreas();
}

int ZTableWidget::columnWidth(int column) const
{
    Z_D(const ZTableWidget);
    return column >= 0 && column < d->columns() ? d->width(column) : 0;
}

bool ZTableWidget::setColumnWidth(int column, int width)
{
    Z_D(ZTableWidget);
    if (column < 0 || column >= d->columns())
        return false;
    width = qBound(d->minimumColumnWidth, width, MaxExtent);
    if (d->width(column) == width)
        return true;
    if (d->widths.size() <= size_t(column))
        d->widths.resize(size_t(column) + 1, -1);
    d->widths[size_t(column)] = width;
    // Edges move at once, so that a drag and the hit tests agree before the next pass.
    d->computeOffsets();
    d->scheduleAreas();
    Q_EMIT columnResized(column, width);
    return true;
}

QString ZTableWidget::columnWidths() const
{
    Z_D(const ZTableWidget);
    QStringList parts;
    const int n = d->columns();
    for (int c = 0; c < n; ++c)
        parts << QString::number(d->width(c));
    return parts.join(QLatin1Char('|'));
}

void ZTableWidget::setColumnWidths(const QString &widths)
{
    Z_D(ZTableWidget);
    const QStringList parts = widths.split(QLatin1Char('|'));
    std::vector<int> values;
    for (const QString &part : parts) {
        if (values.size() >= size_t(MaxViewColumns))
            break;
        bool ok = false;
        const int w = part.trimmed().toInt(&ok);
        values.push_back(ok && w > 0 ? qMin(w, MaxExtent) : -1);
    }
    if (values == d->widths)
        return;
    d->widths = values;
    d->computeOffsets();
    d->scheduleAreas();
}

bool ZTableWidget::resizableColumns() const
{
    return d_func()->resizable;
}

void ZTableWidget::setResizableColumns(bool on)
{
    d_func()->resizable = on;
}

ZTableWidget::SelectionBehavior ZTableWidget::selectionBehavior() const
{
    return d_func()->behavior;
}

void ZTableWidget::setSelectionBehavior(SelectionBehavior behavior)
{
    Z_D(ZTableWidget);
    // Numbers beyond the keys select cells.
    behavior = behavior == SelectRows ? SelectRows : SelectCells;
    if (d->behavior == behavior)
        return;
    d->behavior = behavior;
    update();
}

bool ZTableWidget::showGrid() const
{
    return d_func()->showGrid;
}

void ZTableWidget::setShowGrid(bool on)
{
    Z_D(ZTableWidget);
    if (d->showGrid == on)
        return;
    d->showGrid = on;
    update();
}

QColor ZTableWidget::gridColor() const
{
    return d_func()->gridColor;
}

void ZTableWidget::setGridColor(const QColor &color)
{
    Z_D(ZTableWidget);
    if (d->gridColor == color)
        return;
    d->gridColor = color;
    update();
}

QColor ZTableWidget::textColor() const
{
    return d_func()->textColor;
}

void ZTableWidget::setTextColor(const QColor &color)
{
    Z_D(ZTableWidget);
    if (d->textColor == color)
        return;
    d->textColor = color;
    update();
}

QColor ZTableWidget::selectedColor() const
{
    return d_func()->selectedColor;
}

void ZTableWidget::setSelectedColor(const QColor &color)
{
    Z_D(ZTableWidget);
    if (d->selectedColor == color)
        return;
    d->selectedColor = color;
    update();
}

QString ZTableWidget::headerImage() const
{
    return d_func()->headerImage;
}

void ZTableWidget::setHeaderImage(const QString &path)
{
    Z_D(ZTableWidget);
    if (d->headerImage == path)
        return;
    d->headerImage = path;
    update();
}

QString ZTableWidget::headerText() const
{
    return d_func()->ownModel.headerText();
}

void ZTableWidget::setHeaderText(const QString &text)
{
    d_func()->ownModel.setHeaderText(text);
}

int ZTableWidget::currentRow() const
{
    return d_func()->currentRow;
}

int ZTableWidget::currentColumn() const
{
    return d_func()->currentColumn;
}

bool ZTableWidget::setCurrentCell(int row, int column)
{
    Z_D(ZTableWidget);
    if (row < 0 || row >= d->rows() || column < 0 || column >= d->columns())
        return false;
    d->setCurrent(row, column, true);
    return true;
}

void ZTableWidget::clearSelection()
{
    d_func()->setCurrent(-1, -1, false);
}

bool ZTableWidget::isSelected(int row, int column) const
{
    Z_D(const ZTableWidget);
    if (row < 0 || row != d->currentRow)
        return false;
    return d->behavior == SelectRows ? column >= 0 && column < d->columns() : column == d->currentColumn;
}

int ZTableWidget::rowAt(qreal y) const
{
    Z_D(const ZTableWidget);
    if (!std::isfinite(y) || y < d->body.top() || y >= d->body.bottom())
        return -1;
    const qint64 row = (qint64(std::floor(y - d->body.top())) + d->vvalue) / d->rowHeight;
    return row < d->rows() ? int(row) : -1;
}

int ZTableWidget::columnAt(qreal x) const
{
    Z_D(const ZTableWidget);
    if (!std::isfinite(x) || x < d->body.left() || x >= d->body.right())
        return -1;
    return d->columnAtContent(qint64(std::floor(x - d->body.left())) + d->hvalue);
}

QPoint ZTableWidget::cellAt(const QPointF &pos) const
{
    const int row = rowAt(pos.y());
    const int column = columnAt(pos.x());
    return row >= 0 && column >= 0 ? QPoint(column, row) : QPoint(-1, -1);
}

int ZTableWidget::resizeHandleAt(const QPointF &pos) const
{
    Z_D(const ZTableWidget);
    if (!d->resizable || d->headerHeight <= 0 || !std::isfinite(pos.x()) || !std::isfinite(pos.y()))
        return -1;
    if (pos.y() < 0 || pos.y() >= d->body.top() || pos.x() < 0 || pos.x() >= d->body.right() + HandleReach)
        return -1;
    const qreal x = pos.x() - d->body.left() + qreal(d->hvalue);
    // The nearest right edge within reach; the leftmost edge (0) moves nothing.
    const auto it = std::lower_bound(d->offsets.begin() + 1, d->offsets.end(), qint64(std::floor(x - HandleReach)));
    if (it == d->offsets.end() || qreal(*it) > x + HandleReach)
        return -1;
    // Of two edges in reach (very narrow columns) take the nearer.
    auto best = it;
    if (it + 1 != d->offsets.end() && std::abs(qreal(*(it + 1)) - x) < std::abs(qreal(*it) - x))
        best = it + 1;
    return int(best - d->offsets.begin()) - 1;
}

QRectF ZTableWidget::cellRect(int row, int column) const
{
    Z_D(const ZTableWidget);
    if (row < 0 || row >= d->rows() || column < 0 || column >= d->columns() || size_t(column) + 1 >= d->offsets.size())
        return QRectF();
    return QRectF(d->body.left() + qreal(d->offsets[size_t(column)] - d->hvalue),
                  d->body.top() + qreal(qint64(row) * d->rowHeight - d->vvalue), d->width(column), d->rowHeight);
}

QRectF ZTableWidget::bodyRect() const
{
    return d_func()->body;
}

void ZTableWidget::scrollTo(int row, int column)
{
    Z_D(ZTableWidget);
    if (d->areaTimer.isActive())
        d->resetAreas();
    if (row >= 0 && row < d->rows() && d->vbar && d->vbar->isVisible()) {
        const qint64 top = qint64(row) * d->rowHeight;
        qint64 value = d->vvalue;
        if (top < value)
            value = top;
        else if (top + d->rowHeight > value + qint64(d->body.height()))
            value = top + d->rowHeight - qint64(d->body.height());
        d->vbar->setValue(qreal(value));
    }
    if (column >= 0 && column < d->columns() && d->hbar && d->hbar->isVisible()) {
        const qint64 left = d->offsets[size_t(column)];
        const qint64 right = d->offsets[size_t(column) + 1];
        qint64 value = d->hvalue;
        if (left < value || right - left > qint64(d->body.width()))
            value = left;
        else if (right > value + qint64(d->body.width()))
            value = right - qint64(d->body.width());
        d->hbar->setValue(qreal(value));
    }
}

QObject *ZTableWidget::verticalScrollBar() const
{
    return d_func()->vbar.data();
}

QObject *ZTableWidget::horizontalScrollBar() const
{
    return d_func()->hbar.data();
}

void ZTableWidget::setData(const XMLNode *node)
{
    if (!node)
        return;
    Z_D(ZTableWidget);
    d->ownModel.batchInsert();
    const int n = node->nChildNode();
    for (int i = 0; i < n; ++i) {
        const XMLNode child = node->getChildNode(i);
        const char *name = child.getName();
        if (!name || std::strcmp(name, "row") != 0)
            continue;
        const char *cells = child.getAttribute("cells");
        d->ownModel.addRow(QString::fromLocal8Bit(cells ? cells : "").split(QLatin1Char('|')));
    }
    d->ownModel.batchCommit();
}

void ZTableWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    Q_UNUSED(option);
    Q_UNUSED(widget);
    Z_D(ZTableWidget);
    if (!d->model)
        return;
    const int rows = d->rows();
    const int columns = d->columns();
    if (d->offsets.size() != size_t(columns) + 1)
        d->computeOffsets();
    const QRectF body = d->body;
    const qint64 left = d->hvalue;
    const qint64 right = left + qint64(body.width());
    const int firstColumn = qMax(0, d->columnAtContent(left));
    int lastColumn = d->columnAtContent(right);
    if (lastColumn < 0)
        lastColumn = columns - 1;
    const int firstRow = int(qMin(qint64(rows), d->vvalue / d->rowHeight));
    const int lastRow = int(qMin(qint64(rows) - 1, (d->vvalue + qint64(body.height())) / d->rowHeight));
    const QFontMetricsF metrics(painter->font());

    painter->save();
    painter->setClipRect(body, Qt::IntersectClip);
    for (int r = firstRow; r <= lastRow; ++r) {
        for (int c = firstColumn; c <= lastColumn && columns > 0; ++c) {
            const QRectF rect = cellRect(r, c);
            if (isSelected(r, c))
                painter->fillRect(rect, d->selectedColor);
            const ZAbstractTableModel::CellData cell = d->model->data(r, c);
            QRectF textRect = rect.adjusted(CellPadding, 0, -CellPadding, 0);
            const QString icon = cell.value(Qt::DecorationRole).toString();
            if (!icon.isEmpty()) {
                const QPixmap pixmap = ZTheme::getPixmap(icon, false, true);
                if (!pixmap.isNull()) {
                    const qreal side = qMin<qreal>(16, rect.height());
                    painter->drawPixmap(QRectF(textRect.left(), rect.center().y() - side / 2, side, side), pixmap,
                                        QRectF(pixmap.rect()));
                    textRect.setLeft(textRect.left() + side + CellPadding);
                }
            }
            const QString text = cell.value(Qt::DisplayRole).toString();
            if (!text.isEmpty() && textRect.width() > 0) {
                painter->setPen(d->textColor);
                painter->drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                                  metrics.elidedText(text, Qt::ElideRight, textRect.width()));
            }
        }
    }
    if (d->showGrid && rows > 0 && columns > 0) {
        painter->setPen(QPen(d->gridColor, 0));
        const qreal bottom = qMin(body.bottom(), cellRect(lastRow, 0).bottom());
        const qreal rightEdge = qMin<qreal>(body.right(), body.left() + qreal(d->offsets.back() - left));
        for (int r = firstRow; r <= lastRow; ++r) {
            const qreal y = cellRect(r, 0).bottom() - 0.5;
            painter->drawLine(QPointF(body.left(), y), QPointF(rightEdge, y));
        }
        for (int c = firstColumn; c <= lastColumn; ++c) {
            const qreal x = cellRect(firstRow, c).right() - 0.5;
            painter->drawLine(QPointF(x, body.top()), QPointF(x, bottom));
        }
    }
    painter->restore();

    if (d->headerHeight > 0 && columns > 0) {
        painter->save();
        const QRectF header(0, 0, body.width(), body.top());
        painter->setClipRect(header, Qt::IntersectClip);
        painter->fillRect(header, QColor(240, 240, 240));
        const QPixmap frame = d->headerImage.isEmpty() ? QPixmap() : ZTheme::getPixmap(d->headerImage, false, true);
        for (int c = firstColumn; c <= lastColumn; ++c) {
            const QRectF rect(body.left() + qreal(d->offsets[size_t(c)] - left), 0, d->width(c), header.height());
            if (!frame.isNull()) {
                ZUtility::drawGridNine(painter, rect, frame);
            } else {
                painter->setPen(QPen(d->gridColor, 0));
                painter->drawLine(QPointF(rect.right() - 0.5, rect.top() + 3), QPointF(rect.right() - 0.5, rect.bottom() - 3));
                painter->drawLine(QPointF(rect.left(), rect.bottom() - 0.5), QPointF(rect.right(), rect.bottom() - 0.5));
            }
            const QString text = d->model->headerData(c).value(Qt::DisplayRole).toString();
            const QRectF textRect = rect.adjusted(CellPadding, 0, -CellPadding, 0);
            if (!text.isEmpty() && textRect.width() > 0) {
                painter->setPen(d->textColor);
                painter->drawText(textRect, Qt::AlignCenter, metrics.elidedText(text, Qt::ElideRight, textRect.width()));
            }
        }
        painter->restore();
    }
}

bool ZTableWidget::event(QEvent *event)
{
    Z_D(ZTableWidget);
    switch (event->type()) {
    case QEvent::Timer:
        if (static_cast<QTimerEvent *>(event)->timerId() == d->areaTimer.timerId()) {
            d->resetAreas();
            return true;
        }
        break;
    case QEvent::GraphicsSceneResize:
        d->scheduleAreas();
        break;
    case QEvent::GraphicsSceneWheel: {
        auto *e = static_cast<QGraphicsSceneWheelEvent *>(event);
        ZScrollBar *bar = e->orientation() == Qt::Horizontal ? d->hbar.data() : d->vbar.data();
        if (bar && bar->isVisible()) {
            bar->handleMouseWheelEvent(e);
            return true;
        }
        break;
    }
    default:
        break;
    }
    return ZWidget::event(event);
}

void ZTableWidget::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZTableWidget);
    // Taken, so that the moves of a drag come here and the window does not move.
    event->accept();
    setFocus(Qt::MouseFocusReason);
    const QPointF pos = event->pos();
    if (event->button() == Qt::LeftButton) {
        const int handle = resizeHandleAt(pos);
        if (handle >= 0) {
            d->resizing = handle;
            d->resizeStartX = pos.x();
            d->resizeStartWidth = d->width(handle);
            return;
        }
    }
    if (pos.y() >= 0 && pos.y() < d->body.top()) {
        const int column = columnAt(pos.x());
        if (column >= 0)
            Q_EMIT headerClicked(column);
        return;
    }
    const QPoint cell = cellAt(pos);
    if (cell.x() < 0)
        return;
    d->setCurrent(cell.y(), cell.x(), false);
    Q_EMIT cellClicked(cell.y(), cell.x(), event->button());
}

void ZTableWidget::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZTableWidget);
    if (d->resizing < 0)
        return;
    const qreal dx = event->pos().x() - d->resizeStartX;
    if (!std::isfinite(dx))
        return;
    setColumnWidth(d->resizing, int(qBound<qreal>(INT_MIN / 2, d->resizeStartWidth + dx, INT_MAX / 2)));
}

void ZTableWidget::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    Q_UNUSED(event);
    d_func()->resizing = -1;
}

void ZTableWidget::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
    const QPoint cell = cellAt(event->pos());
    if (cell.x() >= 0)
        Q_EMIT cellDbClicked(cell.y(), cell.x(), event->button());
}

void ZTableWidget::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZTableWidget);
    const bool onHandle = d->resizing >= 0 || resizeHandleAt(event->pos()) >= 0;
    if (onHandle != d->cursorOnHandle) {
        d->cursorOnHandle = onHandle;
        if (onHandle) {
            d->cursorBeforeHandle = hasCursor() ? std::optional<QCursor>(cursor()) : std::nullopt;
            setCursor(Qt::SplitHCursor);
        } else if (d->cursorBeforeHandle) {
            setCursor(*d->cursorBeforeHandle);
        } else {
            unsetCursor();
        }
    }
    ZWidget::hoverMoveEvent(event);
}

void ZTableWidget::keyPressEvent(QKeyEvent *event)
{
    Z_D(ZTableWidget);
    const int rows = d->rows();
    const int columns = d->columns();
    if (rows == 0 || columns == 0) {
        ZWidget::keyPressEvent(event);
        return;
    }
    int row = d->currentRow;
    int column = d->currentColumn;
    const bool none = row < 0 || column < 0;
    const int page = qMax(1, int(d->body.height() / d->rowHeight));
    switch (event->key()) {
    case Qt::Key_Down:
        row = none ? 0 : row + 1;
        break;
    case Qt::Key_Up:
        row = none ? 0 : row - 1;
        break;
    case Qt::Key_Right:
        column = none ? 0 : column + 1;
        break;
    case Qt::Key_Left:
        column = none ? 0 : column - 1;
        break;
    case Qt::Key_PageDown:
        row = none ? 0 : row + page;
        break;
    case Qt::Key_PageUp:
        row = none ? 0 : row - page;
        break;
    case Qt::Key_Home:
        row = 0;
        break;
    case Qt::Key_End:
        row = rows - 1;
        break;
    default:
        ZWidget::keyPressEvent(event);
        return;
    }
    d->setCurrent(qBound(0, row, rows - 1), qBound(0, column < 0 ? 0 : column, columns - 1), true);
    event->accept();
}

void ZTableWidget::on_model_rowsInserted(int row, int n)
{
    Z_D(ZTableWidget);
    // The current cell stays on its row.
    if (d->currentRow >= 0 && row <= d->currentRow && n > 0)
        d->currentRow = int(qMin(qint64(d->currentRow) + n, qint64(d->rows()) - 1));
    d->scheduleAreas();
}

void ZTableWidget::on_model_rowsRemoved(int row, int n)
{
    Z_D(ZTableWidget);
    if (d->currentRow >= row && n > 0) {
        if (qint64(d->currentRow) < qint64(row) + n)
            d->setCurrent(-1, -1, false);
        else
            d->currentRow -= n;
    }
    if (d->currentRow >= d->rows())
        d->setCurrent(-1, -1, false);
    d->scheduleAreas();
}

void ZTableWidget::on_model_columnsInserted(int column, int n)
{
    Z_D(ZTableWidget);
    if (n > 0 && column >= 0 && size_t(column) < d->widths.size())
        d->widths.insert(d->widths.begin() + column, size_t(qMin(n, MaxViewColumns)), -1);
    if (d->currentColumn >= 0 && column <= d->currentColumn && n > 0)
        d->currentColumn = qMin(d->currentColumn + n, d->columns() - 1);
    // Hit tests must agree with the model before the next pass.
    d->computeOffsets();
    d->scheduleAreas();
}

void ZTableWidget::on_model_columnsRemoved(int column, int n)
{
    Z_D(ZTableWidget);
    if (n > 0 && column >= 0 && size_t(column) < d->widths.size()) {
        const size_t end = qMin(d->widths.size(), size_t(column) + size_t(n));
        d->widths.erase(d->widths.begin() + column, d->widths.begin() + qint64(end));
    }
    if (d->currentColumn >= column && n > 0) {
        if (qint64(d->currentColumn) < qint64(column) + n)
            d->setCurrent(-1, -1, false);
        else
            d->currentColumn -= n;
    }
    d->computeOffsets();
    d->scheduleAreas();
}

void ZTableWidget::on_model_cellsChanged(int row, int column, int rows, int columns)
{
    Q_UNUSED(row);
    Q_UNUSED(column);
    Q_UNUSED(rows);
    Q_UNUSED(columns);
    update();
}

void ZTableWidget::on_model_headerChanged()
{
    update();
}

void ZTableWidget::on_model_modelReset()
{
    Z_D(ZTableWidget);
    // A deleted model leaves the table to its own.
    if (!d->model) {
        d->model = &d->ownModel;
        d->connectModel(d->model, true);
    }
    d->setCurrent(-1, -1, false);
    d->vvalue = 0;
    d->hvalue = 0;
    d->computeOffsets();
    d->scheduleAreas();
}

void ZTableWidget::on_vscroll_valueChanged(qreal value)
{
    Z_D(ZTableWidget);
    d->vvalue = std::isfinite(value) ? qint64(qBound<qreal>(0, value, INT_MAX)) : 0;
    update();
}

void ZTableWidget::on_hscroll_valueChanged(qreal value)
{
    Z_D(ZTableWidget);
    d->hvalue = std::isfinite(value) ? qint64(qBound<qreal>(0, value, INT_MAX)) : 0;
    update();
}

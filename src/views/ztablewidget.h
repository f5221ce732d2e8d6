#ifndef ZTABLEWIDGET_H
#define ZTABLEWIDGET_H

#include "zwidget.h"

#include <QtGui/qcolor.h>

class ZAbstractTableModel;
class ZCommonTableModel;
class ZTableWidgetPrivate;

/*!
 * \brief A virtualised grid of rows and columns under a header row.
 *
 * The table draws the cells of a ZAbstractTableModel itself, and only those
 * in view, so its cost per frame does not grow with the model. Every row is
 * rowHeight() high; every column has its own width, which the user changes
 * by dragging the right edge of its header cell (when columns are
 * resizable). Scroll bars appear when the content overflows.
 *
 * A press on a cell makes it current; with SelectRows the whole row shows
 * selected. The arrow keys, Home, End, Page Up and Page Down move the
 * current cell and scroll it into view.
 *
 * The table comes with a ZCommonTableModel of its own, which documents fill
 * through headerText and a data element of "row" children whose "cells"
 * attribute holds the texts joined by "|"; setModel() shows another model
 * instead.
 */
class ZKIT_EXPORT ZTableWidget : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(int rowHeight READ rowHeight WRITE setRowHeight)
    Q_PROPERTY(int headerHeight READ headerHeight WRITE setHeaderHeight)
    Q_PROPERTY(int defaultColumnWidth READ defaultColumnWidth WRITE setDefaultColumnWidth)
    Q_PROPERTY(int minimumColumnWidth READ minimumColumnWidth WRITE setMinimumColumnWidth)
    Q_PROPERTY(QString columnWidths READ columnWidths WRITE setColumnWidths)
    Q_PROPERTY(bool resizableColumns READ resizableColumns WRITE setResizableColumns)
    Q_PROPERTY(SelectionBehavior selectionBehavior READ selectionBehavior WRITE setSelectionBehavior)
    Q_PROPERTY(bool showGrid READ showGrid WRITE setShowGrid)
    Q_PROPERTY(QColor gridColor READ gridColor WRITE setGridColor)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QColor selectedColor READ selectedColor WRITE setSelectedColor)
    Q_PROPERTY(QString headerImage READ headerImage WRITE setHeaderImage)
    Q_PROPERTY(QString headerText READ headerText WRITE setHeaderText)
    Q_PROPERTY(int currentRow READ currentRow)
    Q_PROPERTY(int currentColumn READ currentColumn)
    Q_PROPERTY(QObject *vscroll READ verticalScrollBar)
    Q_PROPERTY(QObject *hscroll READ horizontalScrollBar)

public:
    /*! What a press selects. */
    enum SelectionBehavior : int { SelectCells = 0, SelectRows = 1 };
    Q_ENUM(SelectionBehavior)

    Q_INVOKABLE explicit ZTableWidget(QGraphicsItem *parent = nullptr);
    ~ZTableWidget() override;

    /*! Shows \a model (not owned; null returns to the table's own); returns the previous one. */
    ZAbstractTableModel *setModel(ZAbstractTableModel *model);
    ZAbstractTableModel *model() const;
    /*! The table's own model, shown until another is set. */
    ZCommonTableModel *commonModel() const;

    int rowCount() const;
    int columnCount() const;

    /*! Kept within 1 .. 65536. */
    int rowHeight() const;
    void setRowHeight(int height);
    /*! 0 hides the header; kept within 0 .. 65536. */
    int headerHeight() const;
    void setHeaderHeight(int height);
    /*! The width of columns not given one (kept within the minimum .. 65536). */
    int defaultColumnWidth() const;
    void setDefaultColumnWidth(int width);
    /*! Kept within 1 .. 65536; no column gets narrower. */
    int minimumColumnWidth() const;
    void setMinimumColumnWidth(int width);
    int columnWidth(int column) const;
    /*! Sets one column's width, bounded by the minimum; false for columns out of range. */
    bool setColumnWidth(int column, int width);
    /*! The widths of all columns joined by "|". */
    QString columnWidths() const;
    /*! Widths for the first columns, joined by "|"; parts that are no number keep the default. */
    void setColumnWidths(const QString &widths);
    bool resizableColumns() const;
    void setResizableColumns(bool on);
    SelectionBehavior selectionBehavior() const;
    void setSelectionBehavior(SelectionBehavior behavior);
    bool showGrid() const;
    void setShowGrid(bool on);
    QColor gridColor() const;
    void setGridColor(const QColor &color);
    QColor textColor() const;
    void setTextColor(const QColor &color);
    QColor selectedColor() const;
    void setSelectedColor(const QColor &color);
    /*! The skin image of a header cell, drawn as a nine-part grid; empty (the default) draws a flat header. */
    QString headerImage() const;
    void setHeaderImage(const QString &path);
    /*! The own model's header labels joined by "|". */
    QString headerText() const;
    void setHeaderText(const QString &text);

    int currentRow() const;
    int currentColumn() const;
    /*! Makes a cell current and scrolls it into view; out-of-range cells are refused (false). */
    bool setCurrentCell(int row, int column);
    void clearSelection();
    /*! Whether the cell shows selected: the current cell, or any cell of the current row with SelectRows. */
    bool isSelected(int row, int column) const;

    // Hit tests, in widget coordinates.

    /*! The row under \a y in the body, -1 above, in the header or below the last row. */
    int rowAt(qreal y) const;
    /*! The column under \a x, -1 left of the first and right of the last. */
    int columnAt(qreal x) const;
    /*! The cell at \a pos as (column, row); (-1, -1) when no cell is there. */
    QPoint cellAt(const QPointF &pos) const;
    /*! The column whose header edge at \a pos can be dragged, -1 for none. */
    int resizeHandleAt(const QPointF &pos) const;
    /*! A cell's rectangle at the current scroll position (it may lie outside the view). */
    QRectF cellRect(int row, int column) const;
    /*! The area in which the rows are drawn: below the header, less the scroll bars. */
    QRectF bodyRect() const;
    void scrollTo(int row, int column);

    QObject *verticalScrollBar() const;
    QObject *horizontalScrollBar() const;

    /*! Appends the rows of \a node's "row" children to the own model. */
    void setData(const XMLNode *node) override;
    using ZWidget::setData;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

Q_SIGNALS:
    void currentCellChanged(int row, int column);
    void cellClicked(int row, int column, Qt::MouseButton button);
    void cellDbClicked(int row, int column, Qt::MouseButton button);
    void headerClicked(int column);
    void columnResized(int column, int width);

protected:
    ZTableWidget(ZTableWidgetPrivate &dd, QGraphicsItem *parent);

    bool event(QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private Q_SLOTS:
    void on_model_rowsInserted(int row, int n);
    void on_model_rowsRemoved(int row, int n);
    void on_model_columnsInserted(int column, int n);
    void on_model_columnsRemoved(int column, int n);
    void on_model_cellsChanged(int row, int column, int rows, int columns);
    void on_model_headerChanged();
    void on_model_modelReset();
    void on_vscroll_valueChanged(qreal value);
    void on_hscroll_valueChanged(qreal value);

private:
    Z_DECLARE_PRIVATE(ZTableWidget)
    Q_DISABLE_COPY(ZTableWidget)
};

#endif // ZTABLEWIDGET_H

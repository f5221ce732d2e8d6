#ifndef ZSCROLLAREA_H
#define ZSCROLLAREA_H

#include "zscrollbar.h"
#include "zwidget.h"

class ZScrollAreaPrivate;

/*!
 * \brief Shows one content widget through a clipping viewport, with two scroll bars.
 *
 * The bars' values are the content's offset. A bar whose policy is
 * Qt::ScrollBarAsNeeded is shown exactly when the content is larger than the
 * viewport along its axis; a shown bar takes barThickness from the viewport
 * at the right or bottom edge, or lies over the content with contentUnderBar.
 * The area follows the content's geometry changes, can stretch the content to
 * the viewport along an axis that does not scroll (widgetResizable), scrolls
 * on the wheel (vertical bar first) and, with dragContent, by dragging.
 *
 * The first ZWidget a document (or addItem()) puts into the area becomes its
 * content; further children go to the area itself.
 */
class ZKIT_EXPORT ZScrollArea : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QPoint scrollPos READ scrollPos)
    Q_PROPERTY(bool widgetResizable READ widgetResizable WRITE setWidgetResizable)
    Q_PROPERTY(bool contentUnderBar READ contentUnderBar WRITE setContentUnderBar)
    Q_PROPERTY(qreal barOpacity READ barOpacity WRITE setBarOpacity)
    Q_PROPERTY(Qt::ScrollBarPolicy hbarPolicy READ hbarPolicy WRITE setHScrollBarPolicy)
    Q_PROPERTY(Qt::ScrollBarPolicy vbarPolicy READ vbarPolicy WRITE setVScrollBarPolicy)
    Q_PROPERTY(int barThickness READ barThickness WRITE setBarThickness)
    Q_PROPERTY(bool dragContent READ dragContent WRITE setDragContent)
    Q_PROPERTY(QObject *vscroll READ vScrollBar)
    Q_PROPERTY(QObject *hscroll READ hScrollBar)

public:
    /*! Bars of this thickness show the embedded skin's images at their own size. */
    static constexpr int DefaultBarThickness = 14;
    /*! The value one wheel notch scrolls. */
    static constexpr qreal DefaultWheelStep = 40;

    Q_INVOKABLE explicit ZScrollArea(QGraphicsItem *parent = nullptr);
    ~ZScrollArea() override;

    /*!
     * Makes \a widget the content and answers the previous one, which keeps
     * its parents (the caller deletes or moves it). Anything but a ZWidget
     * changes nothing and answers the current content. Setting the current
     * content again only stops following its geometry, and answers it.
     */
    Q_INVOKABLE QObject *setContentWidget(QObject *widget);
    Q_INVOKABLE QObject *contentWidget() const;

    ZScrollBar *vScrollBar() const;
    ZScrollBar *hScrollBar() const;
    /*! The clipping widget that holds the content. Hides ZWidget::viewport(), the view's. */
    ZWidget *viewport() const;

    /*! The bars' values: the content's offset. */
    QPoint scrollPos() const;
    qreal hscrollPos() const;
    qreal vscrollPos() const;
    Q_INVOKABLE void scrollTo(qreal x, qreal y);
    void scrollTo(const QPointF &pos);
    /*! Sets the bars of \a orientations to their minimum. */
    Q_INVOKABLE void scrollToStart(Qt::Orientations orientations = Qt::Horizontal | Qt::Vertical);
    /*! Sets the bars of \a orientations to their maximum. */
    Q_INVOKABLE void scrollToEnd(Qt::Orientations orientations = Qt::Vertical);

    bool widgetResizable() const;
    /*!
     * Stretches the content to the viewport along each axis whose bar is
     * off (never needed, or set always off).
     */
    void setWidgetResizable(bool on);
    bool contentUnderBar() const;
    /*! The viewport keeps the whole area and shown bars lie over the content. */
    void setContentUnderBar(bool on);
    qreal barOpacity() const;
    /*! Opacity of both bars, bounded to 0..1; values that are not finite are ignored. */
    void setBarOpacity(qreal opacity);
    Qt::ScrollBarPolicy hbarPolicy() const;
    Qt::ScrollBarPolicy vbarPolicy() const;
    /*! Unknown values count as Qt::ScrollBarAsNeeded. */
    void setHScrollBarPolicy(Qt::ScrollBarPolicy policy);
    void setVScrollBarPolicy(Qt::ScrollBarPolicy policy);
    void setScrollBarPolicy(Qt::ScrollBarPolicy policy);
    int barThickness() const;
    /*! Negative values are ignored. */
    void setBarThickness(int thickness);
    bool dragContent() const;
    /*! Presses on the area are taken and drags move the content; otherwise presses go to the items below. */
    void setDragContent(bool on);

    /*! The policies in force: as-needed resolved to on or off for the present content. */
    Qt::ScrollBarPolicy effectiveHPolicy() const;
    Qt::ScrollBarPolicy effectiveVPolicy() const;

    /*! Takes the first ZWidget as content; the rest go to the area as usual. */
    void addItem(ZWidget *item) override;
    void insertItem(ZWidget *item, int index) override;
    void removeItem(ZWidget *item) override;

    /*! Nothing while dragContent is on, so that dragging scrolls instead of moving the window. */
    DragPolicy hitTest(const QPointF &pos) const override;

public Q_SLOTS:
    /*!
     * Lays the area out again. Called by the content's geometry change, it
     * does so only when the content's size changed. Then stretches the
     * content as widgetResizable asks.
     */
    void updateScroll();
    void on_vscroll_value_changed(qreal value);
    void on_hscroll_value_changed(qreal value);

protected:
    ZScrollArea(ZScrollAreaPrivate &dd, QGraphicsItem *parent);

    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;

    /*! Places viewport and bars and sets the bars' ranges. */
    void updateScrollArea();
    /*! Stretches the content as widgetResizable asks. */
    void resizeContent();

private:
    Z_DECLARE_PRIVATE(ZScrollArea)
    Q_DISABLE_COPY(ZScrollArea)
};

#endif // ZSCROLLAREA_H

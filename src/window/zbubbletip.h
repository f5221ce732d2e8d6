#ifndef ZBUBBLETIP_H
#define ZBUBBLETIP_H

#include "zfollowwindow.h"

#include <QColor>
#include <QPainterPath>

class ZBubbleTipPrivate;

/*!
 * \brief A follow window drawn as a rounded bubble whose arrow points at the
 * target.
 *
 * The arrow sits on the edge that faces the target after placement: a tip
 * placed above the target (Top...) has it on its bottom edge, one below on
 * its top edge, one to the left on its right edge, one to the right on its
 * left edge; Custom placement has none. Along that edge the arrow points at
 * the target's centre, kept clear of the rounded corners.
 *
 * With shadow on, a blurred copy of the bubble (shadowBlur, moved by
 * shadowOffset) is drawn below it; the band it needs is left transparent
 * around the bubble and not counted when placing, so the arrow touches the
 * target. The scene margins keep the content inside the bubble; padding
 * around the content is the root widget's margins.
 *
 * Bubble tips are translucent, show without taking the focus, and hide on
 * any click, on target-window changes and with the target (hideFlags 127).
 */
class ZKIT_EXPORT ZBubbleTip : public ZFollowWindow
{
    Q_OBJECT
    Q_PROPERTY(bool shadow READ shadow WRITE setShadow)
    Q_PROPERTY(qreal shadowBlur READ shadowBlur WRITE setShadowBlur)
    Q_PROPERTY(QPointF shadowOffset READ shadowOffset WRITE setShadowOffset)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(QColor brushColor READ brushColor WRITE setBrushColor)
    Q_PROPERTY(QColor penColor READ penColor WRITE setPenColor)

public:
    Q_INVOKABLE explicit ZBubbleTip(QWidget *parent = nullptr);
    ~ZBubbleTip() override;

    bool shadow() const;
    void setShadow(bool on);
    qreal shadowBlur() const;
    /*! Blur radius of the shadow in pixels; negative or non-finite values count as 0, at most 64. */
    void setShadowBlur(qreal radius);
    QPointF shadowOffset() const;
    /*! Each part limited to +-64 pixels. */
    void setShadowOffset(const QPointF &offset);
    QColor backgroundColor() const;
    /*! Fills the whole window below the bubble; transparent by default. */
    void setBackgroundColor(const QColor &color);
    QColor brushColor() const;
    /*! The bubble's fill. */
    void setBrushColor(const QColor &color);
    QColor penColor() const;
    /*! The bubble's one-pixel outline; an invalid colour draws none. */
    void setPenColor(const QColor &color);

    /*! The edge the arrow is on, from placedDirection(); none for Custom. */
    Qt::Edges arrowEdge() const;
    /*! The arrow edge for a placement on \a placed. */
    static Qt::Edges arrowEdgeFor(Direction placed);
    /*! The bubble's outline, arrow included, in window coordinates. */
    QPainterPath bubblePath() const;

    void resetGeometry() override;

protected:
    ZBubbleTip(ZBubbleTipPrivate &dd, QWidget *parent);

    QMargins placementMargins() const override;
    void directionChanged(Direction direction) override;
    void resizeEvent(QResizeEvent *event) override;
    void drawBackground(QPainter *painter, const QRectF &rect) override;

private:
    Z_DECLARE_PRIVATE(ZBubbleTip)
    void init();
};

#endif // ZBUBBLETIP_H

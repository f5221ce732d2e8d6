#ifndef ZFLIPWIDGET_H
#define ZFLIPWIDGET_H

#include "zlayerwidget.h"

#include <QtCore/qeasingcurve.h>

class ZFlipWidgetPrivate;

/*!
 * \brief Two faces, turned over about the vertical axis.
 *
 * The first child is the front face, the second the back; both fill the
 * widget (see ZLayerWidget), further children are kept hidden. setFlipped()
 * turns the widget over: angle runs from 0 (front) to 180 (back), or back,
 * over duration milliseconds with the easing curve easing. The front face
 * is turned by angle about its vertical centre line, the back face by
 * angle - 180, so each is seen the right way round; the front shows below
 * 90 degrees, the back from 90 on.
 *
 * There is no animation when animated is off, the duration is not positive
 * or the widget is disabled or hidden (or in no scene); hiding the widget
 * ends a running turn at once.
 */
class ZKIT_EXPORT ZFlipWidget : public ZLayerWidget
{
    Q_OBJECT
    Q_PROPERTY(bool flipped READ isFlipped WRITE setFlipped NOTIFY flippedChanged)
    Q_PROPERTY(qreal angle READ angle WRITE setAngle)
    Q_PROPERTY(bool animated READ animated WRITE setAnimated)
    Q_PROPERTY(int duration READ duration WRITE setDuration)
    Q_PROPERTY(QEasingCurve::Type easing READ easing WRITE setEasing)
    Q_PROPERTY(bool turning READ isTurning)

public:
    static constexpr int DefaultDuration = 400;

    Q_INVOKABLE explicit ZFlipWidget(QGraphicsItem *parent = nullptr);
    ~ZFlipWidget() override;

    ZWidget *front() const;
    ZWidget *back() const;

    bool isFlipped() const;
    /*! Turns to the back (\a on) or the front; see the class description. */
    void setFlipped(bool on);
    qreal angle() const;
    /*! Shows the faces turned by \a degrees, clamped to 0..180; NaN is ignored. */
    void setAngle(qreal degrees);
    bool animated() const;
    void setAnimated(bool on);
    int duration() const;
    /*! Negative values count as 0. */
    void setDuration(int ms);
    QEasingCurve::Type easing() const;
    /*! Values beyond QEasingCurve's own curves are ignored. */
    void setEasing(QEasingCurve::Type type);
    bool isTurning() const;

public Q_SLOTS:
    /*! Turns to the other face. */
    void flip();
    /*! Ends a running turn at its target. */
    void finishTurn();

Q_SIGNALS:
    void flippedChanged(bool flipped);
    /*! A turn reached its target (or was ended early). */
    void turnFinished();

protected:
    void layerInserted(int index) override;
    void layerRemoved(int index) override;
    void layoutLayers() override;
    void visibleEvent(bool visible) override;

private:
    Z_DECLARE_PRIVATE(ZFlipWidget)
    Q_DISABLE_COPY(ZFlipWidget)
};

#endif // ZFLIPWIDGET_H

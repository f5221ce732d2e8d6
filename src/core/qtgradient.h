#ifndef QTGRADIENT_H
#define QTGRADIENT_H

#include "zglobal.h"

#include <QtCore/qmetatype.h>
#include <QtCore/qrect.h>
#include <QtGui/qbrush.h>

class QString;

/*!
 * \brief A gradient as a property value (for instance ZWidget::backgroundGradient).
 *
 * A thin value wrapper around QGradient, so that a gradient can travel through
 * QVariant and the meta-object property system, be compared and be told apart
 * from "no gradient". A default-constructed QtGradient is invalid (type
 * QGradient::NoGradient, no stops).
 *
 * \section Text form
 *
 * fromString() reads items separated by "|", each a key and its values
 * separated by ":":
 *
 *   Start:0,0|Final:0,1|Color:0:#ffffff|Color:1:0,0,0,128|Spread:Reflect
 *
 * The kind comes from the whole text: "Radius" makes a radial gradient (it
 * also needs "Center"), otherwise "Angle" a conical one, otherwise "Final" a
 * linear one (it also needs "Start"). Anything else is no gradient.
 *
 * \section Coordinates
 *
 * The points and the radius are read in one of two ways, decided by the
 * values alone:
 *
 * - every coordinate (the x and y of each point, and the radius) lies within
 *   0..1: they are fractions of the painted rectangle, so "Start:0,0|Final:0,1"
 *   runs from the top edge to the bottom edge whatever the size, and a radial
 *   gradient becomes an ellipse in a non-square rectangle;
 * - otherwise they are logical units (pixels at scale 1) from the rectangle's
 *   top-left corner, so "Start:0,0|Final:0,20" spans the top 20 units.
 *
 * The angle of a conical gradient is in degrees in either case. brush() turns
 * the gradient into a brush for a rectangle by these rules; ZWidget paints its
 * background gradient with brush(rect()), so the gradient follows the widget's
 * size.
 */
class ZKIT_EXPORT QtGradient
{
public:
    /*! Constructs an invalid gradient. */
    QtGradient() = default;
    /*! Wraps \a gradient; linear, radial and conical gradients are valid. */
    explicit QtGradient(const QGradient &gradient);

    /*!
     * Reads the text form described above. Malformed text gives an invalid
     * gradient; a colour stop whose position is outside 0..1 or whose colour
     * does not read is left out.
     */
    static QtGradient fromString(const QString &text);

    /*! The wrapped gradient (type QGradient::NoGradient when invalid). */
    QGradient gradient() const { return m_gradient; }
    /*! The gradient's type; QGradient::NoGradient when invalid. */
    QGradient::Type type() const { return m_gradient.type(); }
    /*! True for a linear, radial or conical gradient. */
    bool isValid() const;
    /*! True when every coordinate lies within 0..1, i.e. they are fractions of the painted rectangle. */
    bool isRelative() const;

    /*!
     * The brush that paints this gradient over \a rect (see Coordinates). An
     * invalid gradient gives Qt::NoBrush.
     */
    QBrush brush(const QRectF &rect) const;

    friend bool operator==(const QtGradient &a, const QtGradient &b) { return a.m_gradient == b.m_gradient; }
    friend bool operator!=(const QtGradient &a, const QtGradient &b) { return !(a == b); }

private:
    QGradient m_gradient;
};

Q_DECLARE_METATYPE(QtGradient)

#endif // QTGRADIENT_H

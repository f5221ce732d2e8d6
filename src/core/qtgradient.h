#ifndef QTGRADIENT_H
#define QTGRADIENT_H

#include "zglobal.h"

#include <QtCore/qmetatype.h>
#include <QtGui/qbrush.h>

/*!
 * \brief A gradient as a property value (for instance ZWidget::backgroundGradient).
 *
 * A thin value wrapper around QGradient, so that a gradient can travel through
 * QVariant and the meta-object property system, be compared and be told apart
 * from "no gradient". A default-constructed QtGradient is invalid (type
 * QGradient::NoGradient, no stops).
 */
class ZKIT_EXPORT QtGradient
{
public:
    /*! Constructs an invalid gradient. */
    QtGradient() = default;
    /*! Wraps \a gradient; linear, radial and conical gradients are valid. */
    explicit QtGradient(const QGradient &gradient);

    /*! The wrapped gradient (type QGradient::NoGradient when invalid). */
    QGradient gradient() const { return m_gradient; }
    /*! The gradient's type; QGradient::NoGradient when invalid. */
    QGradient::Type type() const { return m_gradient.type(); }
    /*! True for a linear, radial or conical gradient. */
    bool isValid() const;

    friend bool operator==(const QtGradient &a, const QtGradient &b) { return a.m_gradient == b.m_gradient; }
    friend bool operator!=(const QtGradient &a, const QtGradient &b) { return !(a == b); }

private:
    QGradient m_gradient;
};

Q_DECLARE_METATYPE(QtGradient)

#endif // QTGRADIENT_H

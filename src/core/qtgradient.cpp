#include "qtgradient.h"

QtGradient::QtGradient(const QGradient &gradient)
    : m_gradient(gradient)
{
}

bool QtGradient::isValid() const
{
    switch (m_gradient.type()) {
    case QGradient::LinearGradient:
    case QGradient::RadialGradient:
    case QGradient::ConicalGradient:
        return true;
    case QGradient::NoGradient:
        break;
    }
    return false;
}

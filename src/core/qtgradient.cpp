#include "qtgradient.h"

#include "zpropertyconverter.h"

#include <QStringList>
#include <QTransform>

#include <algorithm>
#include <cmath>

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

QtGradient QtGradient::fromString(const QString &text)
{
    const auto has = [&text](const char *word) { return text.contains(QLatin1String(word)); };

    // The kind is chosen from the whole text, before any item is read.
    QGradient::Type type = QGradient::NoGradient;
    if (has("Radius")) {
        if (has("Center"))
            type = QGradient::RadialGradient;
    } else if (has("Angle")) {
        type = QGradient::ConicalGradient;
    } else if (has("Final")) {
        if (has("Start"))
            type = QGradient::LinearGradient;
    }
    if (type == QGradient::NoGradient)
        return QtGradient();

    QPointF start, final, center;
    qreal radius = 0;
    qreal angle = 0;
    QGradient::Spread spread = QGradient::PadSpread;
    QGradientStops stops;

    const auto readNumber = [](const QString &s) {
        bool ok = false;
        const float v = s.toFloat(&ok);
        return ok && std::isfinite(v) ? qreal(v) : qreal(0);
    };

    const QStringList items = text.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    for (const QString &item : items) {
        const QStringList p = item.split(QLatin1Char(':'), Qt::SkipEmptyParts);
        if (p.size() < 2)
            continue;
        const QString &key = p.at(0);
        if (key == QLatin1String("Start")) {
            start = ZPropertyConverter::toPointF(p.at(1));
        } else if (key == QLatin1String("Final")) {
            final = ZPropertyConverter::toPointF(p.at(1));
        } else if (key == QLatin1String("Center")) {
            center = ZPropertyConverter::toPointF(p.at(1));
        } else if (key == QLatin1String("Radius")) {
            radius = qMax(qreal(0), readNumber(p.at(1)));
        } else if (key == QLatin1String("Angle")) {
            angle = readNumber(p.at(1));
        } else if (key == QLatin1String("Spread")) {
            // Qt's values, not the order of ZWidget::SpreadKey.
            if (p.at(1) == QLatin1String("Repeat"))
                spread = QGradient::RepeatSpread;
            else if (p.at(1) == QLatin1String("Reflect"))
                spread = QGradient::ReflectSpread;
            else
                spread = QGradient::PadSpread;
        } else if (key == QLatin1String("Color") && p.size() >= 3) {
            bool posOk = false;
            const float pos = p.at(1).toFloat(&posOk);
            bool colorOk = false;
            const QColor color = ZPropertyConverter::toColor(p.at(2), &colorOk);
            // QGradient refuses (noisily) positions outside 0..1.
            if (posOk && pos >= 0 && pos <= 1 && colorOk) {
                // A later stop at the same position replaces the earlier.
                auto it = std::find_if(stops.begin(), stops.end(),
                                       [pos](const QGradientStop &s) { return s.first == qreal(pos); });
                if (it != stops.end())
                    it->second = color;
                else
                    stops.append({qreal(pos), color});
            }
        }
    }
    std::stable_sort(stops.begin(), stops.end(),
                     [](const QGradientStop &a, const QGradientStop &b) { return a.first < b.first; });

    QGradient g;
    switch (type) {
    case QGradient::RadialGradient:
        g = QRadialGradient(center, radius);
        break;
    case QGradient::ConicalGradient:
        g = QConicalGradient(center, angle);
        break;
    default:
        g = QLinearGradient(start, final);
        break;
    }
    g.setSpread(spread);
    g.setStops(stops);
    return QtGradient(g);
}

bool QtGradient::isRelative() const
{
    const auto unit = [](qreal v) { return v >= 0 && v <= 1; };
    const auto unitPoint = [&unit](const QPointF &p) { return unit(p.x()) && unit(p.y()); };
    switch (m_gradient.type()) {
    case QGradient::LinearGradient: {
        const auto &g = static_cast<const QLinearGradient &>(m_gradient);
        return unitPoint(g.start()) && unitPoint(g.finalStop());
    }
    case QGradient::RadialGradient: {
        const auto &g = static_cast<const QRadialGradient &>(m_gradient);
        return unitPoint(g.center()) && unitPoint(g.focalPoint()) && unit(g.radius()) && unit(g.focalRadius());
    }
    case QGradient::ConicalGradient:
        return unitPoint(static_cast<const QConicalGradient &>(m_gradient).center());
    case QGradient::NoGradient:
        break;
    }
    return false;
}

QBrush QtGradient::brush(const QRectF &rect) const
{
    if (!isValid())
        return QBrush();
    QGradient g = m_gradient;
    // The coordinates are ours to interpret; a mode set on the wrapped
    // gradient would let the painter rescale them a second time.
    g.setCoordinateMode(QGradient::LogicalMode);
    QBrush b(g);
    if (isRelative() && !rect.isEmpty())
        b.setTransform(QTransform(rect.width(), 0, 0, rect.height(), rect.x(), rect.y()));
    else
        b.setTransform(QTransform::fromTranslate(rect.x(), rect.y()));
    return b;
}

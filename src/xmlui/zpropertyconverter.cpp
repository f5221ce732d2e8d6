#include "zpropertyconverter.h"

#include "qtgradient.h"

#include <QHash>
#include <QStringList>

#include <cmath>

namespace {

using Registry = QHash<int, ZPropertyConverter::Converter>;

void setOk(bool *ok, bool value)
{
    if (ok)
        *ok = value;
}

QStringList pieces(const QString &text)
{
    return text.split(QLatin1Char(','), Qt::SkipEmptyParts);
}

// A number of a comma list; what does not read, or is not finite, is 0.
qreal number(const QString &piece, bool *allOk)
{
    bool ok = false;
    const float v = piece.toFloat(&ok);
    if (!ok || !std::isfinite(v)) {
        *allOk = false;
        return 0;
    }
    return v;
}

// Integer forms are rounded from these; the bound keeps x + w of a
// rectangle inside int.
qreal integral(qreal v)
{
    constexpr qreal bound = 1 << 29;
    return qBound(-bound, v, bound);
}

QVariant sizeFConverter(const QString &t, bool *ok) { return ZPropertyConverter::toSizeF(t, ok); }
QVariant sizeConverter(const QString &t, bool *ok) { return ZPropertyConverter::toSize(t, ok); }
QVariant pointFConverter(const QString &t, bool *ok) { return ZPropertyConverter::toPointF(t, ok); }
QVariant pointConverter(const QString &t, bool *ok) { return ZPropertyConverter::toPoint(t, ok); }
QVariant rectFConverter(const QString &t, bool *ok) { return ZPropertyConverter::toRectF(t, ok); }
QVariant rectConverter(const QString &t, bool *ok) { return ZPropertyConverter::toRect(t, ok); }
QVariant marginsConverter(const QString &t, bool *ok) { return QVariant::fromValue(ZPropertyConverter::toMargins(t, ok)); }
QVariant fontConverter(const QString &t, bool *ok) { return ZPropertyConverter::toFont(t, ok); }
QVariant colorConverter(const QString &t, bool *ok) { return ZPropertyConverter::toColor(t, ok); }
QVariant gradientConverter(const QString &t, bool *ok)
{
    const QtGradient g = QtGradient::fromString(t);
    setOk(ok, g.isValid());
    return QVariant::fromValue(g);
}

// Created on first use and filled with the built-in converters then, so
// that converters registered from static initialisers of any order find it.
Registry &registry()
{
    static Registry r = [] {
        Registry b;
        b.insert(QMetaType::QSizeF, sizeFConverter);
        b.insert(QMetaType::QSize, sizeConverter);
        b.insert(QMetaType::QPointF, pointFConverter);
        b.insert(QMetaType::QPoint, pointConverter);
        b.insert(QMetaType::QRectF, rectFConverter);
        b.insert(QMetaType::QRect, rectConverter);
        b.insert(QMetaType::fromType<QMargins>().id(), marginsConverter);
        b.insert(QMetaType::QFont, fontConverter);
        b.insert(QMetaType::QColor, colorConverter);
        b.insert(QMetaType::fromType<QtGradient>().id(), gradientConverter);
        return b;
    }();
    return r;
}

} // namespace

bool ZPropertyConverter::registerConverter(const char *typeName, Converter converter)
{
    return registerConverter(QMetaType::fromName(typeName), converter);
}

bool ZPropertyConverter::registerConverter(QMetaType type, Converter converter)
{
    if (!type.isValid() || !converter)
        return false;
    registry().insert(type.id(), converter);
    return true;
}

void ZPropertyConverter::unregisterConverter(QMetaType type)
{
    if (type.isValid())
        registry().remove(type.id());
}

ZPropertyConverter::Converter ZPropertyConverter::converter(QMetaType type)
{
    return type.isValid() ? registry().value(type.id(), nullptr) : nullptr;
}

QVariant ZPropertyConverter::convert(QMetaType type, const QString &text, bool *ok)
{
    setOk(ok, true);
    if (Converter c = converter(type))
        return c(text, ok);
    return QVariant(text);
}

QVariant ZPropertyConverter::convert(const char *typeName, const QString &text, bool *ok)
{
    return convert(QMetaType::fromName(typeName), text, ok);
}

QColor ZPropertyConverter::toColor(const QString &input, bool *ok)
{
    const QString text = input.trimmed();
    QColor color;
    if (text.startsWith(QLatin1Char('#'))) {
        if (text.size() >= 8) {
            // #RRGGBBAA: the alpha comes last, unlike Qt's #AARRGGBB.
            color = QColor::fromString(QStringView(text).left(7));
            bool alphaOk = false;
            const int alpha = QStringView(text).mid(7, 2).toInt(&alphaOk, 16);
            if (color.isValid() && alphaOk && alpha >= 0 && alpha <= 255)
                color.setAlpha(alpha);
            else
                color = QColor();
        } else {
            color = QColor::fromString(text);
        }
    } else {
        const QStringList p = pieces(text);
        if (p.size() >= 3) {
            int v[4] = {0, 0, 0, 255};
            bool all = true;
            for (int i = 0; i < 4 && i < p.size(); ++i) {
                bool pieceOk = false;
                v[i] = p.at(i).toInt(&pieceOk);
                all = all && pieceOk && v[i] >= 0 && v[i] <= 255;
            }
            if (all)
                color = QColor(v[0], v[1], v[2], v[3]);
        } else if (p.size() < 2) {
            color = QColor::fromString(text);
        }
        // Exactly two pieces: no colour.
    }
    setOk(ok, color.isValid());
    return color;
}

QSizeF ZPropertyConverter::toSizeF(const QString &text, bool *ok)
{
    const QStringList p = pieces(text);
    if (p.size() < 2) {
        setOk(ok, false);
        return QSizeF();
    }
    bool all = true;
    const QSizeF size(number(p.at(0), &all), number(p.at(1), &all));
    setOk(ok, all);
    return size;
}

QSize ZPropertyConverter::toSize(const QString &text, bool *ok)
{
    // Negative parts stay (a line edit's integer range is a QSize); fewer
    // than two pieces give QSizeF's (-1, -1), which is QSize()'s.
    const QSizeF s = toSizeF(text, ok);
    return QSizeF(integral(s.width()), integral(s.height())).toSize();
}

QPointF ZPropertyConverter::toPointF(const QString &text, bool *ok)
{
    const QStringList p = pieces(text);
    if (p.size() < 2) {
        setOk(ok, false);
        return QPointF();
    }
    bool all = true;
    const QPointF point(number(p.at(0), &all), number(p.at(1), &all));
    setOk(ok, all);
    return point;
}

QPoint ZPropertyConverter::toPoint(const QString &text, bool *ok)
{
    const QPointF p = toPointF(text, ok);
    return QPointF(integral(p.x()), integral(p.y())).toPoint();
}

QRectF ZPropertyConverter::toRectF(const QString &text, bool *ok)
{
    const QStringList p = pieces(text);
    if (p.size() != 4) {
        setOk(ok, false);
        return QRectF();
    }
    bool all = true;
    const QRectF rect(number(p.at(0), &all), number(p.at(1), &all), number(p.at(2), &all), number(p.at(3), &all));
    setOk(ok, all);
    return rect;
}

QRect ZPropertyConverter::toRect(const QString &text, bool *ok)
{
    const QRectF r = toRectF(text, ok);
    return QRectF(integral(r.x()), integral(r.y()), integral(r.width()), integral(r.height())).toRect();
}

QMargins ZPropertyConverter::toMargins(const QString &text, bool *ok)
{
    const QStringList p = pieces(text);
    if (p.size() < 4) {
        setOk(ok, false);
        return QMargins();
    }
    bool all = true;
    int m[4];
    for (int i = 0; i < 4; ++i)
        m[i] = int(integral(number(p.at(i), &all))); // truncates: 1.9 is 1
    setOk(ok, all);
    return QMargins(m[0], m[1], m[2], m[3]);
}

QFont ZPropertyConverter::toFont(const QString &text, bool *ok)
{
    QFont font;
    // An empty text is the default font; fromString() would complain.
    const bool read = text.trimmed().isEmpty() || font.fromString(text);
    setOk(ok, read);
    return read ? font : QFont();
}

#ifndef ZPROPERTYCONVERTER_H
#define ZPROPERTYCONVERTER_H

#include "zglobal.h"

#include <QtCore/qmargins.h>
#include <QtCore/qmetatype.h>
#include <QtCore/qpoint.h>
#include <QtCore/qrect.h>
#include <QtCore/qsize.h>
#include <QtCore/qvariant.h>
#include <QtGui/qcolor.h>
#include <QtGui/qfont.h>

/*!
 * \brief The registry of text-to-value converters used for attributes.
 *
 * Every XML attribute, skin assignment and invocation argument arrives as
 * text. The converter registered for the target's type turns it into a
 * QVariant of that type; a type without a converter gets the text as a
 * QString, which the property system converts by itself where it can
 * (numbers, booleans, enumeration and flag keys).
 *
 * The built-in converters (QSize, QSizeF, QPoint, QPointF, QRect, QRectF,
 * QMargins, QFont, QColor, QtGradient) are registered on first use of the
 * registry. Comma lists are split at "," with empty pieces dropped; numbers
 * are read as floats, and a number that does not read, or is not finite,
 * counts as 0. Malformed text never fails: it gives the type's fallback
 * (invalid size, (0, 0) point, null rectangle, zero margins, invalid colour,
 * no gradient), and \c ok reports that it happened.
 *
 * GUI thread only: the registry is not locked.
 */
class ZKIT_EXPORT ZPropertyConverter
{
public:
    /*!
     * A converter: text in, value out. When \a ok is not null it is set to
     * false if the text was malformed and the value is a fallback.
     */
    using Converter = QVariant (*)(const QString &text, bool *ok);

    /*!
     * Registers \a converter for the type named \a typeName, replacing an
     * earlier one. Returns false (and registers nothing) when the name is not
     * a known meta-type; use the template form to register a new type.
     */
    static bool registerConverter(const char *typeName, Converter converter);
    /*! Registers \a converter for \a type; false for an invalid type. */
    static bool registerConverter(QMetaType type, Converter converter);
    /*!
     * Registers \a converter for T under \a typeName, making the name known
     * to the meta-type system first (as T, or as a typedef of T) if it is not.
     */
    template<typename T>
    static bool registerConverter(const char *typeName, Converter converter)
    {
        if (!QMetaType::fromName(typeName).isValid())
            qRegisterMetaType<T>(typeName);
        return registerConverter(typeName, converter);
    }
    /*! Removes the converter of \a type; its values go through the default converter again. */
    static void unregisterConverter(QMetaType type);
    /*! The converter of \a type, or null when the default converter applies. */
    static Converter converter(QMetaType type);

    /*!
     * Converts \a text for \a type with its converter, or makes a QString of
     * it when there is none. \a ok as for Converter; the default converter
     * always succeeds.
     */
    static QVariant convert(QMetaType type, const QString &text, bool *ok = nullptr);
    /*! As convert(), the type given by name (as QMetaType::fromName reads it). */
    static QVariant convert(const char *typeName, const QString &text, bool *ok = nullptr);

    // The built-in conversions, also usable on their own.

    /*!
     * "#RRGGBBAA" (alpha last; only the first nine characters count),
     * "#RGB", "#RRGGBB", a colour name such as "white", or decimal
     * "r,g,b" / "r,g,b,a" with each part in 0..255. Two comma pieces, or
     * anything else that does not read, give an invalid colour.
     */
    static QColor toColor(const QString &text, bool *ok = nullptr);
    /*! "w,h"; fewer than two pieces give an invalid size. */
    static QSizeF toSizeF(const QString &text, bool *ok = nullptr);
    /*! toSizeF() rounded. */
    static QSize toSize(const QString &text, bool *ok = nullptr);
    /*! "x,y"; fewer than two pieces give (0, 0). */
    static QPointF toPointF(const QString &text, bool *ok = nullptr);
    /*! toPointF() rounded. */
    static QPoint toPoint(const QString &text, bool *ok = nullptr);
    /*! "x,y,w,h", exactly four pieces; otherwise a null rectangle. */
    static QRectF toRectF(const QString &text, bool *ok = nullptr);
    /*! toRectF() converted to integers. */
    static QRect toRect(const QString &text, bool *ok = nullptr);
    /*! "left,top,right,bottom", each truncated to an integer; fewer than four pieces give zero margins. */
    static QMargins toMargins(const QString &text, bool *ok = nullptr);
    /*! The form of QFont::toString(); text that does not read gives the default font. */
    static QFont toFont(const QString &text, bool *ok = nullptr);

private:
    ZPropertyConverter() = delete;
};

#endif // ZPROPERTYCONVERTER_H

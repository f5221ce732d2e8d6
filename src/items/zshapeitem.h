#ifndef ZSHAPEITEM_H
#define ZSHAPEITEM_H

#include "zwidget.h"

#include <QtGui/qpen.h>

class ZShapeItemPrivate;

/*!
 * \brief One plain shape filling the item inside margins.
 *
 * A rectangle, rounded rectangle, ellipse, pie or chord, outlined with a
 * configurable pen and filled with a colour, a pattern, a gradient or a
 * texture image. The outline stays inside the item: the shape's rectangle is
 * the item's, less shapeMargins, less the pen width on every side.
 *
 * A new item draws a rectangle with a black one-pixel pen and a transparent
 * solid brush, so setting brushColor alone fills it; pies and chords span
 * the full circle until fan says otherwise.
 */
class ZKIT_EXPORT ZShapeItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(Qt::PenStyle penStyle READ penStyle WRITE setPenStyle)
    Q_PROPERTY(Qt::PenCapStyle capStyle READ penCapStyle WRITE setPenCapStyle)
    Q_PROPERTY(Qt::PenJoinStyle joinStyle READ penJoinStyle WRITE setPenJoinStyle)
    Q_PROPERTY(Qt::BrushStyle brushStyle READ brushStyle WRITE setBrushStyle)
    Q_PROPERTY(QColor penColor READ penColor WRITE setPenColor)
    Q_PROPERTY(QColor brushColor READ brushColor WRITE setBrushColor)
    Q_PROPERTY(QMargins shapeMargins READ shapeMargins WRITE setShapeMargins)
    Q_PROPERTY(bool smooth READ smooth WRITE setSmooth)
    Q_PROPERTY(int roundPixel READ roundPixel WRITE setRoundPixel)
    Q_PROPERTY(int penWidth READ penWidth WRITE setPenWidth)
    Q_PROPERTY(Shape shape READ drawShape WRITE setDrawShape)
    Q_PROPERTY(QSize fan READ fanAngle WRITE setFanAngle)
    Q_PROPERTY(QString texture READ textureBrush WRITE setTextureBrush)
    Q_PROPERTY(QtGradient gradient READ gradientBrush WRITE setGradientBrush)

public:
    enum Shape : int { Rect = 0, RoundRect = 1, Ellipse = 2, Pie = 3, Chord = 4 };
    Q_ENUM(Shape)

    Q_INVOKABLE explicit ZShapeItem(QGraphicsItem *parent = nullptr);
    ~ZShapeItem() override;

    QPen pen() const;
    /*! The brush as painted, except that a gradient is fitted to the item when drawn. */
    QBrush brush() const;

    Qt::PenStyle penStyle() const;
    void setPenStyle(Qt::PenStyle style);
    Qt::PenCapStyle penCapStyle() const;
    void setPenCapStyle(Qt::PenCapStyle style);
    Qt::PenJoinStyle penJoinStyle() const;
    void setPenJoinStyle(Qt::PenJoinStyle style);
    QColor penColor() const;
    void setPenColor(const QColor &color);
    int penWidth() const;
    /*! Negative widths are ignored; 0 is a cosmetic one-pixel pen. */
    void setPenWidth(int width);

    QColor brushColor() const;
    void setBrushColor(const QColor &color);
    Qt::BrushStyle brushStyle() const;
    /*!
     * Replaces the brush with one of the current brush colour and \a style.
     * Gradient and texture styles are ignored: those brushes come from
     * setGradientBrush() and setTextureBrush().
     */
    void setBrushStyle(Qt::BrushStyle style);
    /*! The path of the last texture that loaded. */
    QString textureBrush() const;
    /*! Fills with the image \a path, tiled; a path that loads nothing keeps the brush. */
    void setTextureBrush(const QString &path);
    QtGradient gradientBrush() const;
    /*!
     * Fills with \a gradient, fitted to the item (coordinates within 0..1 are
     * fractions of the item's rectangle). An invalid gradient changes nothing.
     */
    void setGradientBrush(const QtGradient &gradient);

    QMargins shapeMargins() const;
    void setShapeMargins(const QMargins &margins);
    bool smooth() const;
    /*! Antialiasing. */
    void setSmooth(bool on);
    int roundPixel() const;
    /*! Corner radius of RoundRect, in pixels. */
    void setRoundPixel(int pixels);
    Shape drawShape() const;
    void setDrawShape(Shape shape);
    /*! Start angle (width) and span (height) of Pie and Chord, in sixteenths of a degree. */
    QSize fanAngle() const;
    void setFanAngle(const QSize &fan);

protected:
    ZShapeItem(ZShapeItemPrivate &dd, QGraphicsItem *parent);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    Z_DECLARE_PRIVATE(ZShapeItem)
    Q_DISABLE_COPY(ZShapeItem)
};

#endif // ZSHAPEITEM_H

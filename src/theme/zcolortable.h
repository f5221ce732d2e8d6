#ifndef ZCOLORTABLE_H
#define ZCOLORTABLE_H

#include "zwidget.h"

class ZColorTablePrivate;

/*!
 * A colour field for picking the theme colour: a hue-lightness area (hue
 * across, lightness from light at the top to dark at the bottom, at the
 * current saturation) and a saturation strip on the right (at the current
 * hue and lightness). Pressing or dragging picks a colour and emits
 * colorChanged().
 *
 * The area is recomputed only when the saturation changes, the strip only
 * when hue or lightness change.
 */
class ZKIT_EXPORT ZColorTable : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    Q_INVOKABLE explicit ZColorTable(QGraphicsItem *parent = nullptr);
    ~ZColorTable() override;

    QColor color() const;
    void setColor(const QColor &color);

    /// Makes every pick set the theme colour.
    Q_INVOKABLE void connectToTheme();

    /// The rendered hue-lightness area and saturation strip.
    QImage fieldImage() const;
    QImage stripImage() const;

    /// Where the area and the strip lie in the widget.
    QRectF fieldRect() const;
    QRectF stripRect() const;

public Q_SLOTS:
    void on_colorChanged(const QColor &color);

Q_SIGNALS:
    void colorChanged(const QColor &color);

protected:
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZColorTable)
};

#endif // ZCOLORTABLE_H

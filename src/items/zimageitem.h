#ifndef ZIMAGEITEM_H
#define ZIMAGEITEM_H

#include "zwidget.h"

#include <QtGui/qpixmap.h>

class ZImageItemPrivate;

/*!
 * \brief Shows one picture inside margins.
 *
 * The image is placed by imageAlignment inside the margin rectangle (the
 * item's rectangle less imageMargins), drawn at its size times scale, or,
 * with autoAdjust, enlarged or reduced to fit while keeping its aspect
 * ratio. It can be rotated about the item's centre, framed by a one-pixel
 * border borderPixel inside the margins, glow on hover and report clicks.
 *
 * Sizes are logical pixels: a skin image of device pixel ratio 2 is drawn at
 * the size of its plain form, only sharper.
 */
class ZKIT_EXPORT ZImageItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(qreal scale READ scale WRITE setScale)
    Q_PROPERTY(bool autoAdjust READ autoAdjust WRITE setAutoAdjust)
    Q_PROPERTY(bool handHover READ handHover WRITE setHandHover)
    Q_PROPERTY(bool acceptClick READ acceptClick WRITE setAcceptClick)
    Q_PROPERTY(QMargins imageMargins READ imageMargins WRITE setImageMargins)
    Q_PROPERTY(Qt::Alignment imageAlignment READ imageAlignment WRITE setImageAlignment)
    Q_PROPERTY(QColor effectColor READ effectColor WRITE setEffectColor)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor)
    Q_PROPERTY(int borderPixel READ borderPixel WRITE setBorderPixel)
    Q_PROPERTY(qreal rotation READ rotation WRITE setRotation)
    Q_PROPERTY(QSize pixmapSize READ pixmapSize)

public:
    Q_INVOKABLE explicit ZImageItem(QGraphicsItem *parent = nullptr);
    ~ZImageItem() override;

    QString imagePath() const;
    /*!
     * Loads the image from \a path (tinted when the item has a theme). A path
     * that loads nothing leaves no image.
     */
    void setImagePath(const QString &path);

    QPixmap pixmap() const;
    /*! Shows \a pixmap and forgets the image path. */
    void setPixmap(const QPixmap &pixmap);
    /*! The image's size in logical pixels. */
    QSize pixmapSize() const;

    // Hide QGraphicsItem's transform scale and rotation: these apply to the image.
    qreal scale() const;
    /*! Size factor of the image when autoAdjust is off; values that are not finite are ignored. */
    void setScale(qreal scale);
    qreal rotation() const;
    /*! Turns the image (and border) by \a degrees about the item's centre. */
    void setRotation(qreal degrees);

    bool autoAdjust() const;
    /*! Fits the image into the margin rectangle (inside the border), keeping its aspect ratio. */
    void setAutoAdjust(bool on);

    QMargins imageMargins() const;
    void setImageMargins(const QMargins &margins);
    Qt::Alignment imageAlignment() const;
    void setImageAlignment(Qt::Alignment alignment);

    QColor borderColor() const;
    /*! An invalid colour draws no border. */
    void setBorderColor(const QColor &color);
    int borderPixel() const;
    /*! Distance of the border from the margin rectangle, kept free by edge placements; < 1 draws no border. */
    void setBorderPixel(int pixel);

    bool handHover() const;
    /*! Glow in effectColor and a pointing-hand cursor while the mouse is over the item. */
    void setHandHover(bool on);
    QColor effectColor() const;
    /*! Colour of the hover glow; takes effect on the next hover. */
    void setEffectColor(const QColor &color);

    bool acceptClick() const;
    /*! Accepts left-button presses and reports them with pressed() and clicked(). */
    void setAcceptClick(bool on);

    void doThemeChange() override;

Q_SIGNALS:
    void clicked();
    /*! Emitted on press and again on release, before clicked(). */
    void pressed(const QPointF &point);
    /*! Declared for compatibility; the item reports a release as pressed(). */
    void released(const QPointF &point);
    void enter();
    void leave();

protected:
    ZImageItem(ZImageItemPrivate &dd, QGraphicsItem *parent);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZImageItem)
    Q_DISABLE_COPY(ZImageItem)
};

#endif // ZIMAGEITEM_H

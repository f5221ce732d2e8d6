#ifndef ZMASKIMAGEITEM_H
#define ZMASKIMAGEITEM_H

#include "zwidget.h"

#include <QtCore/qlist.h>
#include <QtCore/qpoint.h>
#include <QtGui/qpixmap.h>

class ZMaskImageItemPrivate;

/*!
 * \brief Shows a picture cut to the shape of a mask image.
 *
 * The picture takes the alpha of the mask image and is stretched over the
 * item. Mouse and hover events count only inside the mask region (the mask
 * image's opaque pixels, or a rectangle or ellipse), and only with maskMouse
 * on; those inside are accepted and reported by mouseEvent().
 *
 * The mask region is in the item's coordinates at the mask image's size in
 * logical pixels, so the item is meant to have the mask's size.
 */
class ZKIT_EXPORT ZMaskImageItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString maskImage READ maskImage WRITE setMaskImage)
    Q_PROPERTY(QRect maskRect READ maskRect WRITE setMaskRect)
    Q_PROPERTY(QRect maskEllipse READ maskEllipse WRITE setMaskEllipse)
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(bool maskMouse READ maskMouse WRITE setMaskMouse)

public:
    Q_INVOKABLE explicit ZMaskImageItem(QGraphicsItem *parent = nullptr);
    ~ZMaskImageItem() override;

    QString imagePath() const;
    /*! Loads the picture from \a path, never tinted. */
    void setImagePath(const QString &path);
    QPixmap pixmap() const;
    void setPixmap(const QPixmap &pixmap);

    /*! The last mask image path set. */
    QString maskImage() const;
    /*! Loads the mask image; the mask region becomes its opaque pixels. */
    void setMaskImage(const QString &path);
    /*! The last rectangle set with setMaskRect(). */
    QRect maskRect() const;
    /*! The mask region becomes \a rect (the picture stays as the mask image shapes it). */
    void setMaskRect(const QRect &rect);
    /*! The last rectangle set with setMaskEllipse(). */
    QRect maskEllipse() const;
    /*! The mask region becomes the ellipse inscribed in \a rect. */
    void setMaskEllipse(const QRect &rect);
    QRegion maskRegion() const;

    bool maskMouse() const;
    /*! Takes hover events and left and right button presses, inside the mask region only. */
    void setMaskMouse(bool on);

    /*!
     * Fills \a points with \a count random points: inside the mask region,
     * sampled over (0..w-1, 0..h-1) of the region's bounding size, or, without
     * a region, anywhere in the item. With \a mapTo the points are mapped into
     * that item's coordinates. False when there is nowhere to put a point
     * (an empty rectangle, or a region none of whose points lies in the
     * sample space).
     */
    bool getBatchRandomPoint(QList<QPoint> &points, int count, QGraphicsItem *mapTo = nullptr);

Q_SIGNALS:
    /*! A mouse or hover event inside the mask region; \a event is the event itself. */
    void mouseEvent(QEvent *event);

protected:
    ZMaskImageItem(ZMaskImageItemPrivate &dd, QGraphicsItem *parent);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

private:
    // Whether \a pos counts for the mouse.
    bool filterMessage(const QPointF &pos) const;
    void dispatch(QEvent *event, const QPointF &pos);

    Z_DECLARE_PRIVATE(ZMaskImageItem)
    Q_DISABLE_COPY(ZMaskImageItem)
};

#endif // ZMASKIMAGEITEM_H

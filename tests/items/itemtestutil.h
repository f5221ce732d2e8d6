#ifndef ITEMTESTUTIL_H
#define ITEMTESTUTIL_H

// Small helpers shared by the item tests: rendering a scene into an image,
// finding what was drawn, and sending mouse and hover events through a scene.

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QGraphicsItem>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneHoverEvent>
#include <QtWidgets/QGraphicsSceneMouseEvent>

#include <functional>

namespace itemtest {

inline QImage render(QGraphicsScene &scene, const QSize &size, const QColor &background = Qt::white)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(background);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(), size), QRectF(QPointF(), size));
    painter.end();
    return image;
}

// Bounding box of the pixels for which \a match holds; null when none does.
inline QRect boundingBox(const QImage &image, const std::function<bool(QColor)> &match)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (match(image.pixelColor(x, y)))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

inline QRect boxOf(const QImage &image, const QColor &color)
{
    return boundingBox(image, [color](QColor c) { return c == color; });
}

inline int countOf(const QImage &image, const std::function<bool(QColor)> &match)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            n += match(image.pixelColor(x, y)) ? 1 : 0;
    }
    return n;
}

inline QPixmap solidPixmap(const QSize &size, const QColor &color, qreal ratio = 1)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

// Sends a mouse event to the scene as a view would; answers whether it was accepted.
inline bool sendMouse(QGraphicsScene &scene, QEvent::Type type, const QPointF &scenePos,
                      Qt::MouseButton button = Qt::LeftButton)
{
    QGraphicsSceneMouseEvent event(type);
    event.setScenePos(scenePos);
    event.setScreenPos(scenePos.toPoint());
    event.setButton(button);
    event.setButtons(type == QEvent::GraphicsSceneMouseRelease ? Qt::NoButton : Qt::MouseButtons(button));
    event.setButtonDownScenePos(button, scenePos);
    event.setButtonDownScreenPos(button, scenePos.toPoint());
    event.setAccepted(false);
    QCoreApplication::sendEvent(&scene, &event);
    return event.isAccepted();
}

// Sends a hover event straight to \a item; answers whether it was accepted.
inline bool sendHover(QGraphicsScene &scene, QGraphicsItem *item, QEvent::Type type, const QPointF &pos)
{
    QGraphicsSceneHoverEvent event(type);
    event.setPos(pos);
    event.setScenePos(item->mapToScene(pos));
    event.setAccepted(false);
    scene.sendEvent(item, &event);
    return event.isAccepted();
}

// Sends a mouse event straight to \a item; answers whether it was accepted.
inline bool sendMouseTo(QGraphicsScene &scene, QGraphicsItem *item, QEvent::Type type, const QPointF &pos,
                        Qt::MouseButton button = Qt::LeftButton)
{
    QGraphicsSceneMouseEvent event(type);
    event.setPos(pos);
    event.setScenePos(item->mapToScene(pos));
    event.setButton(button);
    event.setButtons(type == QEvent::GraphicsSceneMouseRelease ? Qt::NoButton : Qt::MouseButtons(button));
    event.setAccepted(true);
    scene.sendEvent(item, &event);
    return event.isAccepted();
}

} // namespace itemtest

#endif // ITEMTESTUTIL_H

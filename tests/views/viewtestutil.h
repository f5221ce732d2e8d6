#ifndef VIEWTESTUTIL_H
#define VIEWTESTUTIL_H

// Helpers for the view tests: running the views' deferred passes, and
// sending pointer events to a scene as a view would.

#include <QtCore/QCoreApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneMouseEvent>
#include <QtWidgets/QGraphicsSceneWheelEvent>

namespace viewtest {

// Zero-interval timers fire on the next turns of the event loop.
inline void settle()
{
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

inline bool mouse(QGraphicsScene &scene, QEvent::Type type, const QPointF &pos, Qt::MouseButton button = Qt::LeftButton)
{
    QGraphicsSceneMouseEvent event(type);
    event.setScenePos(pos);
    event.setScreenPos(pos.toPoint());
    event.setLastScenePos(pos);
    event.setButton(button);
    event.setButtons(type == QEvent::GraphicsSceneMouseRelease || type == QEvent::GraphicsSceneMouseMove
                         ? Qt::NoButton : Qt::MouseButtons(button));
    if (button != Qt::NoButton) {
        event.setButtonDownScenePos(button, pos);
        event.setButtonDownScreenPos(button, pos.toPoint());
    }
    event.setAccepted(false);
    QCoreApplication::sendEvent(&scene, &event);
    return event.isAccepted();
}

inline void click(QGraphicsScene &scene, const QPointF &pos, Qt::MouseButton button = Qt::LeftButton)
{
    mouse(scene, QEvent::GraphicsSceneMousePress, pos, button);
    mouse(scene, QEvent::GraphicsSceneMouseRelease, pos, button);
}

inline void moveTo(QGraphicsScene &scene, const QPointF &pos)
{
    mouse(scene, QEvent::GraphicsSceneMouseMove, pos, Qt::NoButton);
}

inline void wheel(QGraphicsScene &scene, const QPointF &pos, int delta)
{
    QGraphicsSceneWheelEvent event(QEvent::GraphicsSceneWheel);
    event.setScenePos(pos);
    event.setScreenPos(pos.toPoint());
    event.setDelta(delta);
    event.setPixelDelta(QPoint());
    event.setOrientation(Qt::Vertical);
    event.setAccepted(false);
    QCoreApplication::sendEvent(&scene, &event);
}

inline QImage render(QGraphicsScene &scene, const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(), size), QRectF(QPointF(), size));
    return image;
}

} // namespace viewtest

#endif // VIEWTESTUTIL_H

#ifndef SCROLLTESTUTIL_H
#define SCROLLTESTUTIL_H

// Mouse and wheel events sent to a scene as a view sends them, with the
// press position and held buttons that moves and releases carry.

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneHoverEvent>
#include <QtWidgets/QGraphicsSceneMouseEvent>
#include <QtWidgets/QGraphicsSceneWheelEvent>

namespace scrolltest {

class Mouse
{
public:
    explicit Mouse(QGraphicsScene &scene) : m_scene(scene) {}

    bool press(const QPointF &scenePos, Qt::MouseButton button = Qt::LeftButton)
    {
        m_down = scenePos;
        m_button = button;
        return send(QEvent::GraphicsSceneMousePress, scenePos, button, button);
    }
    bool move(const QPointF &scenePos)
    {
        const bool accepted = send(QEvent::GraphicsSceneMouseMove, scenePos, Qt::NoButton, m_button);
        m_last = scenePos;
        return accepted;
    }
    bool release(const QPointF &scenePos)
    {
        const Qt::MouseButton button = m_button;
        m_button = Qt::NoButton;
        return send(QEvent::GraphicsSceneMouseRelease, scenePos, button, Qt::NoButton);
    }

private:
    bool send(QEvent::Type type, const QPointF &scenePos, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QGraphicsSceneMouseEvent event(type);
        event.setScenePos(scenePos);
        event.setScreenPos(scenePos.toPoint());
        event.setLastScenePos(type == QEvent::GraphicsSceneMouseMove ? m_last : scenePos);
        event.setButton(button);
        event.setButtons(buttons);
        if (m_button != Qt::NoButton) {
            event.setButtonDownScenePos(m_button, m_down);
            event.setButtonDownScreenPos(m_button, m_down.toPoint());
        }
        event.setAccepted(false);
        if (type != QEvent::GraphicsSceneMouseMove)
            m_last = scenePos;
        QCoreApplication::sendEvent(&m_scene, &event);
        return event.isAccepted();
    }

    QGraphicsScene &m_scene;
    QPointF m_down;
    QPointF m_last;
    Qt::MouseButton m_button = Qt::NoButton;
};

// A hover move through the scene: the scene sends enter, move and leave.
inline void hover(QGraphicsScene &scene, const QPointF &scenePos)
{
    QGraphicsSceneMouseEvent event(QEvent::GraphicsSceneMouseMove);
    event.setScenePos(scenePos);
    event.setScreenPos(scenePos.toPoint());
    event.setLastScenePos(scenePos);
    event.setButtons(Qt::NoButton);
    QCoreApplication::sendEvent(&scene, &event);
}

// One wheel turn through the scene; answers whether an item took it.
inline bool wheel(QGraphicsScene &scene, const QPointF &scenePos, int delta,
                  Qt::Orientation orientation = Qt::Vertical)
{
    QGraphicsSceneWheelEvent event(QEvent::GraphicsSceneWheel);
    event.setScenePos(scenePos);
    event.setScreenPos(scenePos.toPoint());
    event.setDelta(delta);
    event.setOrientation(orientation);
    event.setAccepted(false);
    QCoreApplication::sendEvent(&scene, &event);
    return event.isAccepted();
}

inline QImage render(QGraphicsScene &scene, const QRectF &area, qreal ratio = 1, const QColor &fill = Qt::white)
{
    QImage image((area.size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(fill);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(), area.size()), area);
    painter.end();
    return image;
}

} // namespace scrolltest

#endif // SCROLLTESTUTIL_H

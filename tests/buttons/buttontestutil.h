#ifndef BUTTONTESTUTIL_H
#define BUTTONTESTUTIL_H

// A pointer for the button tests: moves, presses and releases go to the
// scene as a view would send them, so the scene itself picks the receiver,
// grabs the mouse and turns plain moves into hover events.

#include <QtCore/QCoreApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QGraphicsItem>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneMouseEvent>

namespace buttontest {

class Pointer
{
public:
    explicit Pointer(QGraphicsScene &scene) : m_scene(scene) {}

    bool move(const QPointF &to) { m_pos = to; return send(QEvent::GraphicsSceneMouseMove, Qt::NoButton); }
    bool press(const QPointF &at, Qt::MouseButton button = Qt::LeftButton)
    {
        m_pos = at;
        m_pressPos = at;
        m_down = button;
        return send(QEvent::GraphicsSceneMousePress, button);
    }
    bool release(const QPointF &at)
    {
        m_pos = at;
        const Qt::MouseButton button = m_down;
        m_down = Qt::NoButton;
        return send(QEvent::GraphicsSceneMouseRelease, button);
    }
    bool click(const QPointF &at) { move(at); press(at); return release(at); }
    QPointF pos() const { return m_pos; }

private:
    bool send(QEvent::Type type, Qt::MouseButton button)
    {
        QGraphicsSceneMouseEvent event(type);
        event.setScenePos(m_pos);
        event.setScreenPos(m_pos.toPoint());
        event.setLastScenePos(m_last);
        event.setLastScreenPos(m_last.toPoint());
        event.setButton(button);
        event.setButtons(m_down);
        if (button != Qt::NoButton) {
            event.setButtonDownScenePos(button, m_pressPos);
            event.setButtonDownScreenPos(button, m_pressPos.toPoint());
        }
        event.setAccepted(false);
        QCoreApplication::sendEvent(&m_scene, &event);
        m_last = m_pos;
        return event.isAccepted();
    }

    QGraphicsScene &m_scene;
    QPointF m_pos;
    QPointF m_last;
    QPointF m_pressPos;
    Qt::MouseButton m_down = Qt::NoButton;
};

inline QImage render(QGraphicsScene &scene, const QRectF &area, const QColor &background = Qt::white)
{
    QImage image(area.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(background);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(), area.size()), area);
    painter.end();
    return image;
}

// The colours of a skin image, for finding where it was drawn.
inline QImage skinImage(const QString &path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace buttontest

#endif // BUTTONTESTUTIL_H

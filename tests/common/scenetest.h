#ifndef SCENETEST_H
#define SCENETEST_H

// What the suites share for driving a QGraphicsScene as a user would
// (mouse, hover and wheel events sent through the scene) and for looking
// at what it painted.

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QGraphicsItem>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneHoverEvent>
#include <QtWidgets/QGraphicsSceneMouseEvent>
#include <QtWidgets/QGraphicsSceneWheelEvent>

#include <functional>

namespace scenetest {

// Delivers what is posted (layout requests, deferred deletes, queued calls).
inline void settle()
{
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

// Renders \a area of the scene at \a ratio device pixels per unit.
inline QImage render(QGraphicsScene &scene, const QRectF &area, const QColor &background = Qt::white,
                     qreal ratio = 1)
{
    QImage image((area.size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(background);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(), area.size()), area);
    painter.end();
    return image;
}

inline QImage render(QGraphicsScene &scene, const QSize &size, const QColor &background = Qt::white)
{
    return render(scene, QRectF(QPointF(), size), background);
}

inline QImage skinImage(const QString &path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

inline QPixmap solidPixmap(const QSize &size, const QColor &color, qreal ratio = 1)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

// The smallest rectangle holding every pixel that matches.
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

// A mouse over a scene: remembers where it is, which button is down and
// where it went down, so moves while pressed are drags.
class Mouse
{
public:
    explicit Mouse(QGraphicsScene &scene) : m_scene(scene) {}

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
    bool doubleClick(const QPointF &at, Qt::MouseButton button = Qt::LeftButton)
    {
        m_pos = at;
        m_pressPos = at;
        m_down = button;
        const bool accepted = send(QEvent::GraphicsSceneMouseDoubleClick, button);
        release(at);
        return accepted;
    }
    bool click(const QPointF &at, Qt::MouseButton button = Qt::LeftButton)
    {
        move(at);
        press(at, button);
        return release(at);
    }
    bool drag(const QPointF &from, const QPointF &to, int steps = 4)
    {
        press(from);
        for (int i = 1; i <= steps; ++i)
            move(from + (to - from) * i / steps);
        return release(to);
    }
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
        if (m_down != Qt::NoButton || button != Qt::NoButton) {
            const Qt::MouseButton held = button != Qt::NoButton ? button : m_down;
            event.setButtonDownScenePos(held, m_pressPos);
            event.setButtonDownScreenPos(held, m_pressPos.toPoint());
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

// One click at \a pos, for suites that need no pointer state.
inline bool click(QGraphicsScene &scene, const QPointF &pos, Qt::MouseButton button = Qt::LeftButton)
{
    return Mouse(scene).click(pos, button);
}

inline bool wheel(QGraphicsScene &scene, const QPointF &pos, int delta, Qt::Orientation orientation = Qt::Vertical)
{
    QGraphicsSceneWheelEvent event(QEvent::GraphicsSceneWheel);
    event.setScenePos(pos);
    event.setScreenPos(pos.toPoint());
    event.setDelta(delta);
    event.setOrientation(orientation);
    event.setAccepted(false);
    QCoreApplication::sendEvent(&scene, &event);
    return event.isAccepted();
}

// A key pressed and released, delivered through the scene to its focus item.
inline bool key(QGraphicsScene &scene, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(&scene, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(&scene, &release);
    return press.isAccepted();
}

// Events straight to one item, bypassing the scene's hit test: for items
// tested on their own.
inline bool sendMouseTo(QGraphicsItem *item, QEvent::Type type, const QPointF &pos,
                        Qt::MouseButton button = Qt::LeftButton)
{
    QGraphicsSceneMouseEvent event(type);
    event.setPos(pos);
    event.setScenePos(item->mapToScene(pos));
    event.setButton(button);
    event.setButtons(type == QEvent::GraphicsSceneMouseRelease ? Qt::NoButton : Qt::MouseButtons(button));
    event.setAccepted(true);
    item->scene()->sendEvent(item, &event);
    return event.isAccepted();
}

inline bool sendHoverTo(QGraphicsItem *item, QEvent::Type type, const QPointF &pos)
{
    QGraphicsSceneHoverEvent event(type);
    event.setPos(pos);
    event.setScenePos(item->mapToScene(pos));
    event.setAccepted(false);
    item->scene()->sendEvent(item, &event);
    return event.isAccepted();
}

} // namespace scenetest

#endif // SCENETEST_H

#ifndef DIALOGTESTUTIL_H
#define DIALOGTESTUTIL_H

// Helpers for the dialog, title bar and message box tests: clicks sent
// through a scene as a view sends them, modal message boxes observed from a
// timer, and pictures of windows.

#include "common/scenetest.h"
#include "zmessagebox.h"
#include "zwidget.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGraphicsScene>

#include <functional>

namespace dialogtest {

inline QPointF centreOf(const QGraphicsItem *item)
{
    return item->mapToScene(item->boundingRect().center());
}

// A left click in the middle of \a item, through its scene.
inline void click(QGraphicsItem *item)
{
    scenetest::click(*item->scene(), centreOf(item));
}

// Press, release, double click, release at \a scenePos, as a view sends a double click.
inline void doubleClick(QGraphicsScene *scene, const QPointF &scenePos)
{
    scenetest::Mouse mouse(*scene);
    mouse.click(scenePos);
    mouse.doubleClick(scenePos);
}

// The message box now in its modal run, or null.
inline ZMessageBox *openMessageBox()
{
    const QList<QWidget *> windows = QApplication::topLevelWidgets();
    for (QWidget *w : windows) {
        auto *box = qobject_cast<ZMessageBox *>(w);
        if (box && box->isVisible() && box->isModalRunning())
            return box;
    }
    return nullptr;
}

/*
 * Acts on every message box that opens while it lives, once each, from a
 * timer, so that a test can call the blocking statics:
 *
 *   MessageBoxWatcher watcher([](ZMessageBox *box) { box->done(2); });
 *   QCOMPARE(ZMessageBox::information(nullptr, "t", "x"), 2);
 *   QCOMPARE(watcher.texts, QStringList{"x"});
 */
class MessageBoxWatcher : public QObject
{
public:
    explicit MessageBoxWatcher(std::function<void(ZMessageBox *)> action, int intervalMs = 5)
        : m_action(std::move(action))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            ZMessageBox *box = openMessageBox();
            if (!box || m_seen.contains(box))
                return;
            m_seen.append(box);
            texts.append(box->text());
            if (m_action)
                m_action(box);
        });
        m_timer.start(intervalMs);
    }

    QStringList texts; // of every box seen, in order

private:
    std::function<void(ZMessageBox *)> m_action;
    QList<QPointer<ZMessageBox>> m_seen;
    QTimer m_timer;
};

// The window as it shows, shadow band included.
inline QImage picture(QWidget *window)
{
    QImage img(window->size(), QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    window->render(&img, QPoint(), QRegion(), QWidget::DrawChildren);
    return img;
}

} // namespace dialogtest

#endif // DIALOGTESTUTIL_H

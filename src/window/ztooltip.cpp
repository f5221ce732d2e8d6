#include "ztooltip_p.h"
#include "zcreator.h"
#include "zlabel.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

#include <cmath>

namespace {

// Forwards the application's events to the tip that installed it.
class ZToolTipWatcher : public QObject
{
public:
    explicit ZToolTipWatcher(ZToolTipPrivate *d)
        : m_d(d)
    {
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        m_d->watch(watched, event);
        return false;
    }

private:
    ZToolTipPrivate *m_d;
};

QPointer<ZToolTip> g_textTip;

void deleteTextTip()
{
    delete g_textTip.data();
}

} // namespace

ZToolTipPrivate::ZToolTipPrivate(ZToolTip *q)
    : ZFollowWindowPrivate(q)
{
}

ZToolTipPrivate::~ZToolTipPrivate() = default;

bool ZToolTipPrivate::isTargetViewport(QObject *object) const
{
    for (const QPointer<ZWidget> &t : targets) {
        if (t && t->viewport() == object)
            return true;
    }
    return false;
}

ZWidget *ZToolTipPrivate::targetAt(QWidget *viewport, const QPoint &pos) const
{
    auto *view = qobject_cast<QGraphicsView *>(viewport ? viewport->parentWidget() : nullptr);
    if (!view)
        return nullptr;
    // Items come topmost first; a child of a target counts as the target.
    const QList<QGraphicsItem *> items = view->items(pos);
    for (QGraphicsItem *item : items) {
        for (QGraphicsItem *p = item; p; p = p->parentItem()) {
            for (const QPointer<ZWidget> &t : targets) {
                if (t && t->isVisible() && static_cast<QGraphicsItem *>(t.data()) == p)
                    return t;
            }
        }
    }
    return nullptr;
}

void ZToolTipPrivate::hovered(ZWidget *target)
{
    Z_Q(ZToolTip);
    if (target == pending)
        return;
    pending = target;
    if (!target) {
        q->hideTip();
        return;
    }
    if (q->isVisible()) {
        q->showTip(target); // moving between targets switches at once
        return;
    }
    phase = Waiting;
    timer->start(delay);
}

bool ZToolTipPrivate::watch(QObject *watched, QEvent *event)
{
    Z_Q(ZToolTip);
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseMove && type != QEvent::Leave && type != QEvent::MouseButtonPress
        && type != QEvent::MouseButtonDblClick && type != QEvent::Wheel)
        return false;
    if (!isTargetViewport(watched))
        return false;
    auto *viewport = static_cast<QWidget *>(watched);

    switch (type) {
    case QEvent::MouseMove:
        if (trigger == ZToolTip::HoverTrigger)
            hovered(targetAt(viewport, static_cast<QMouseEvent *>(event)->position().toPoint()));
        break;
    case QEvent::Leave:
        if (trigger == ZToolTip::HoverTrigger)
            hovered(nullptr);
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (trigger == ZToolTip::ClickTrigger) {
            ZWidget *t = targetAt(viewport, static_cast<QMouseEvent *>(event)->position().toPoint());
            if (t && !(q->isVisible() && q->target() == t))
                q->showTip(t);
            else
                q->hideTip();
        } else if (trigger == ZToolTip::HoverTrigger) {
            q->hideTip();
        }
        break;
    default: // wheel
        if (trigger == ZToolTip::HoverTrigger)
            q->hideTip();
        break;
    }
    return false;
}

void ZToolTipPrivate::pruneTargets()
{
    targets.removeIf([](const QPointer<ZWidget> &t) { return t.isNull(); });
}

void ZToolTipPrivate::updateWatcher()
{
    pruneTargets();
    if (!targets.isEmpty() && !watcher && qApp) {
        watcher = new ZToolTipWatcher(this);
        qApp->installEventFilter(watcher);
    } else if (targets.isEmpty() && watcher) {
        delete watcher; // uninstalls itself
        watcher = nullptr;
    }
}

void ZToolTipPrivate::sizeToLabel()
{
    Z_Q(ZToolTip);
    if (!label)
        return;
    const QFontMetricsF fm(label->font());
    const QSizeF content(std::ceil(fm.horizontalAdvance(label->text())) + 1, std::ceil(fm.height()));
    label->setFixSize(content);
    const QMargins rm = q->rootWidget()->margins();
    const QMargins sm = q->sceneMargins();
    q->resize(int(content.width()) + rm.left() + rm.right() + sm.left() + sm.right(),
              int(content.height()) + rm.top() + rm.bottom() + sm.top() + sm.bottom());
}

// --- ZToolTip ----------------------------------------------------------------

ZToolTip::ZToolTip(QWidget *parent)
    : ZFollowWindow(*new ZToolTipPrivate(this), parent)
{
    init(TextTip);
}

ZToolTip::ZToolTip(TipStyle style, QWidget *parent)
    : ZFollowWindow(*new ZToolTipPrivate(this), parent)
{
    init(style);
}

ZToolTip::~ZToolTip()
{
    // Stop watching before the rest of the tip goes.
    Z_D(ZToolTip);
    delete d->watcher;
    d->watcher = nullptr;
}

void ZToolTip::init(TipStyle style)
{
    Z_D(ZToolTip);
    d->style = style == CustomTip ? CustomTip : TextTip;
    setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setTranslucent(true);
    setDirection(UnderCursor);
    setPosOffset(QPointF(12, 20));
    setHideFlags(HideAsTargetHidden);
    setSceneMargins(QMargins(1, 1, 1, 1));

    d->timer = new QTimer(this);
    d->timer->setSingleShot(true);
    connect(d->timer, &QTimer::timeout, this, &ZToolTip::on_tipTimeout);

    if (d->style == TextTip) {
        rootWidget()->setMargins(QMargins(8, 4, 8, 4));
        d->label = new ZLabel;
        d->label->setObjectName(QStringLiteral("label"));
        d->label->setTextColor(QColor(51, 51, 51));
        rootWidget()->addItem(d->label);
    }
}

ZToolTip::TipStyle ZToolTip::tipStyle() const
{
    return d_func()->style;
}

void ZToolTip::addTarget(ZWidget *target)
{
    Z_D(ZToolTip);
    if (!target || d->targets.contains(target))
        return;
    d->targets.append(target);
    // A hover-accepting item makes its views track the mouse, so that the
    // viewports report moves without a button held.
    target->setAcceptHoverEvents(true);
    d->updateWatcher();
}

void ZToolTip::removeTarget(ZWidget *target)
{
    Z_D(ZToolTip);
    if (!target)
        return;
    d->targets.removeAll(target);
    if (d->pending == target)
        d->pending = nullptr;
    if (this->target() == target)
        hideTip();
    d->updateWatcher();
}

void ZToolTip::removeAllTarget()
{
    Z_D(ZToolTip);
    d->targets.clear();
    d->pending = nullptr;
    hideTip();
    d->updateWatcher();
}

QList<ZWidget *> ZToolTip::targets() const
{
    QList<ZWidget *> list;
    for (const QPointer<ZWidget> &t : d_func()->targets) {
        if (t)
            list.append(t);
    }
    return list;
}

ZToolTip::TipTrigger ZToolTip::trigger() const
{
    return d_func()->trigger;
}

void ZToolTip::setTrigger(TipTrigger trigger)
{
    Z_D(ZToolTip);
    if (trigger < HoverTrigger || trigger > ManualTrigger || d->trigger == trigger)
        return;
    d->trigger = trigger;
    d->pending = nullptr;
    if (d->phase == ZToolTipPrivate::Waiting) {
        d->timer->stop();
        d->phase = ZToolTipPrivate::Idle;
    }
}

int ZToolTip::delay() const
{
    return d_func()->delay;
}

void ZToolTip::setDelay(int msec)
{
    d_func()->delay = std::max(0, msec);
}

int ZToolTip::timeout() const
{
    return d_func()->timeout;
}

void ZToolTip::setTimeout(int msec)
{
    d_func()->timeout = std::max(0, msec);
}

void ZToolTip::showTip(ZWidget *target)
{
    Z_D(ZToolTip);
    if (!target)
        return;
    if (d->style == TextTip) {
        const QString text = target->toolTip();
        if (text.isEmpty()) {
            hideTip();
            return;
        }
        d->label->setText(text);
        d->sizeToLabel();
    }
    setTarget(target);
    if (isVisible())
        resetGeometry();
    else
        show();
    d->phase = ZToolTipPrivate::Showing;
    if (d->timeout > 0)
        d->timer->start(d->timeout);
    else
        d->timer->stop();
}

void ZToolTip::hideTip()
{
    Z_D(ZToolTip);
    d->timer->stop();
    d->phase = ZToolTipPrivate::Idle;
    hide();
}

ZLabel *ZToolTip::label() const
{
    return d_func()->label;
}

ZToolTip *ZToolTip::textTipInstance()
{
    if (!g_textTip && qobject_cast<QApplication *>(QCoreApplication::instance())) {
        static bool routineAdded = false;
        g_textTip = new ZToolTip(TextTip);
        if (!routineAdded) {
            qAddPostRoutine(deleteTextTip);
            routineAdded = true;
        }
    }
    return g_textTip;
}

void ZToolTip::on_tipTimeout()
{
    Z_D(ZToolTip);
    if (d->phase == ZToolTipPrivate::Waiting) {
        d->phase = ZToolTipPrivate::Idle;
        if (d->pending)
            showTip(d->pending);
    } else if (d->phase == ZToolTipPrivate::Showing) {
        hideTip();
    }
}

void ZToolTip::drawBackground(QPainter *painter, const QRectF &rect)
{
    ZFollowWindow::drawBackground(painter, rect);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QColor(168, 168, 168), 1));
    painter->setBrush(QColor(255, 255, 255));
    painter->drawRoundedRect(QRectF(QPointF(0, 0), QSizeF(size())).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter->restore();
}

Z_REGISTER_WINDOW(ZToolTip);

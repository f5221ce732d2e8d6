#include "ztoolbar.h"
#include "ztoolbar_p.h"

#include "zcreator.h"
#include "zframeitem.h"
#include "zimageitem.h"
#include "zmenu.h"
#include "ztoolbarseparator.h"

#include <QtWidgets/qgraphicssceneevent.h>
#include <QtWidgets/qgraphicsview.h>

namespace {

// Room for rounding in the sums of lengths.
constexpr qreal Slack = 0.5;

QString entryText(const QObject *item)
{
    const QString text = item->property("text").toString();
    if (!text.isEmpty())
        return text;
    const QString tip = item->property("toolTip").toString();
    return tip.isEmpty() ? item->objectName() : tip;
}

} // namespace

int ZToolBarPrivate::fitting() const
{
    const ZToolBar *q = q_func();
    const int n = int(entries.size());
    const qreal length = along(q->size());
    if (!overflow || !isBox() || n == 0 || !(length > 0))
        return n;
    const QMargins m = q->margins();
    const qreal room = length - (layoutType == ZWidget::VBox ? m.top() + m.bottom() : m.left() + m.right());
    const qreal gap = q->spacing();
    // A child its owner hid takes no room (the layout skips it too).
    auto takesRoom = [q](const Entry &e) { return e.hidden || e.widget->isVisibleTo(q); };
    qreal total = 0;
    int counted = 0;
    for (const Entry &e : entries) {
        if (takesRoom(e)) {
            total += along(e.widget->effectiveSizeHint(Qt::PreferredSize));
            ++counted;
        }
    }
    total += gap * qMax(0, counted - 1);
    if (total <= room + Slack)
        return n;
    qreal used = along(drop->effectiveSizeHint(Qt::PreferredSize));
    int k = 0;
    for (const Entry &e : entries) {
        if (takesRoom(e)) {
            const qreal next = along(e.widget->effectiveSizeHint(Qt::PreferredSize)) + gap;
            if (used + next > room + Slack)
                break;
            used += next;
        }
        ++k;
    }
    return k;
}

void ZToolBarPrivate::apply(int count)
{
    Z_Q(ZToolBar);
    shown = count;
    for (const Entry &e : std::as_const(entries))
        q->removeLayoutItem(e.widget);
    q->removeLayoutItem(drop);
    for (int i = 0; i < entries.size(); ++i) {
        Entry &e = entries[i];
        if (i < count) {
            // Only what the bar hid comes back: a child hidden by its owner stays hidden.
            if (e.hidden)
                e.widget->setVisible(true);
            e.hidden = false;
            q->addLayoutItem(e.widget);
        } else if (e.widget->isVisibleTo(q)) {
            e.hidden = true;
            e.widget->setVisible(false);
        }
    }
    const bool overflowing = count < entries.size();
    drop->setVisible(overflowing);
    if (overflowing)
        q->addLayoutItem(drop);
}

void ZToolBarPrivate::update()
{
    const int k = fitting();
    if (k != shown)
        apply(k);
}

void ZToolBarPrivate::trigger(QObject *item)
{
    Z_Q(ZToolBar);
    if (item->metaObject()->indexOfSignal("clicked()") >= 0)
        QMetaObject::invokeMethod(item, "clicked");
    Q_EMIT q->itemTriggered(item);
}

ZToolBar::ZToolBar(QGraphicsItem *parent)
    : ZWidget(*new ZToolBarPrivate, parent)
{
    Z_D(ZToolBar);
    d->drop = new ZFrameItem(this);
    d->drop->setObjectName(QStringLiteral("dropButton"));
    d->drop->setImagePath(QStringLiteral(":/image/theme/comboboxbutton_normal.png|"
                                         ":/image/theme/comboboxbutton_hover.png|"
                                         ":/image/theme/comboboxbutton_down.png"));
    d->drop->setFrameType(ZFrameItem::StretchHV);
    d->drop->setFrameSwitch(true);
    d->drop->setAcceptHover(true);
    d->drop->setAcceptClick(true);
    d->drop->setFixSize(QSizeF(18, 20));
    d->drop->setAlignment(Qt::AlignCenter);
    d->drop->setVisible(false);
    auto *arrow = new ZImageItem(d->drop);
    arrow->setImagePath(QStringLiteral(":/image/theme/comboboxbutton_icon.png"));
    arrow->setGeometry(QRectF(0, 0, 18, 20));
    connect(d->drop, &ZFrameItem::clicked, this, &ZToolBar::showOverflowMenu);

    ZWidget::setLayoutType(HBox);
    setSpacing(4);
}

ZToolBar::~ZToolBar()
{
    delete d_func()->menu.data();
}

Qt::Orientation ZToolBar::orientation() const
{
    return layoutType() == VBox ? Qt::Vertical : Qt::Horizontal;
}

void ZToolBar::setOrientation(Qt::Orientation orientation)
{
    setLayoutType(orientation == Qt::Vertical ? VBox : HBox);
}

void ZToolBar::setLayoutType(LayoutType type)
{
    Z_D(ZToolBar);
    if (layoutType() == type)
        return;
    // A new layout starts empty: the children go back in, in their order.
    ZWidget::setLayoutType(type);
    d->apply(d->fitting());
    for (const auto &e : std::as_const(d->entries))
        e.widget->update(); // separators turn with the bar
}

bool ZToolBar::overflow() const
{
    return d_func()->overflow;
}

void ZToolBar::setOverflow(bool on)
{
    Z_D(ZToolBar);
    if (d->overflow == on)
        return;
    d->overflow = on;
    updateGeometry();
    d->update();
}

int ZToolBar::overflowCount() const
{
    Z_D(const ZToolBar);
    return d->shown < 0 ? 0 : int(d->entries.size()) - d->shown;
}

bool ZToolBar::isOverflowed(const ZWidget *item) const
{
    Z_D(const ZToolBar);
    for (int i = 0; i < d->entries.size(); ++i) {
        if (d->entries.at(i).widget == item)
            return d->shown >= 0 && i >= d->shown;
    }
    return false;
}

ZFrameItem *ZToolBar::dropButton() const
{
    return d_func()->drop;
}

ZMenu *ZToolBar::overflowMenu() const
{
    return d_func()->menu;
}

void ZToolBar::showOverflowMenu()
{
    Z_D(ZToolBar);
    delete d->menu.data();
    if (overflowCount() <= 0)
        return;
    d->menu = new ZMenu;
    for (int i = d->shown; i < d->entries.size(); ++i) {
        if (!d->entries.at(i).hidden)
            continue;
        ZWidget *w = d->entries.at(i).widget;
        if (qobject_cast<ZToolBarSeparator *>(w)) {
            d->menu->addSeparator();
            continue;
        }
        QAction *action = d->menu->addAction(entryText(w));
        action->setEnabled(w->isEnabled());
        QPointer<ZWidget> target(w);
        connect(action, &QAction::triggered, this, [d, target] {
            if (target)
                d->trigger(target);
        });
    }
    QPoint at;
    if (QGraphicsView *v = view())
        at = v->viewport()->mapToGlobal(v->mapFromScene(d->drop->mapToScene(d->drop->rect().bottomLeft())));
    d->menu->popup(at);
}

ZToolBarSeparator *ZToolBar::addSeparator()
{
    auto *separator = new ZToolBarSeparator;
    addItem(separator);
    return separator;
}

QList<ZWidget *> ZToolBar::items() const
{
    QList<ZWidget *> list;
    for (const auto &e : d_func()->entries)
        list.append(e.widget);
    return list;
}

void ZToolBar::addItem(ZWidget *item)
{
    insertItem(item, -1);
}

void ZToolBar::insertItem(ZWidget *item, int index)
{
    Z_D(ZToolBar);
    if (!item || item == d->drop)
        return;
    for (const auto &e : std::as_const(d->entries)) {
        if (e.widget == item)
            return;
    }
    addChild(item);
    if (item->parentItem() != this)
        return;
    if (index < 0 || index > d->entries.size())
        index = int(d->entries.size());
    d->entries.insert(index, {item, item, false});
    if (!item->alignment())
        item->setAlignment(Qt::AlignCenter);
    d->apply(d->fitting());
}

void ZToolBar::removeItem(ZWidget *item)
{
    Z_D(ZToolBar);
    for (const auto &e : std::as_const(d->entries)) {
        if (e.widget == item) {
            // Whatever the bar hid is given back visible.
            if (e.hidden)
                item->setVisible(true);
            ZWidget::removeItem(item); // itemChange() forgets the entry
            return;
        }
    }
}

void ZToolBar::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->update();
}

QVariant ZToolBar::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemChildRemovedChange) {
        Z_D(ZToolBar);
        const auto *item = value.value<QGraphicsItem *>();
        for (int i = 0; i < d->entries.size(); ++i) {
            if (d->entries.at(i).item == item) {
                d->entries.removeAt(i);
                d->apply(d->fitting());
                break;
            }
        }
    }
    return ZWidget::itemChange(change, value);
}

QSizeF ZToolBar::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZToolBar);
    QSizeF hint = ZWidget::sizeHint(which, constraint);
    if (!d->overflow || !d->isBox() || d->followsWidth() || d->followsHeight() || d->entries.isEmpty()
        || which > Qt::MaximumSize) {
        return hint;
    }
    // Hidden children still count for the length the bar wants (and may
    // grow to); the least it can do with is the drop button alone.
    const bool vertical = d->layoutType == VBox;
    const QMargins m = margins();
    qreal length = vertical ? m.top() + m.bottom() : m.left() + m.right();
    if (which == Qt::MinimumSize) {
        length += d->along(d->drop->effectiveSizeHint(Qt::PreferredSize));
    } else {
        int counted = 0;
        for (const auto &e : d->entries) {
            if (e.hidden || e.widget->isVisibleTo(this)) {
                length += d->along(e.widget->effectiveSizeHint(Qt::PreferredSize));
                ++counted;
            }
        }
        length += qreal(spacing()) * qMax(0, counted - 1);
        // The layout's maximum shrinks with what it holds: the bar must still grow back.
        if (which == Qt::MaximumSize)
            length = qMax(length, d->along(hint));
    }
    if (vertical)
        hint.setHeight(length);
    else
        hint.setWidth(length);
    return hint;
}

Z_REGISTER_WIDGET(ZToolBar);

#include "zbuttongroup.h"
#include "zbuttongroup_p.h"

#include "zcreator.h"

#include <QtCore/qcoreevent.h>

#include <vector>

namespace {

ZWidget *asZWidget(QGraphicsItem *item)
{
    return item ? qobject_cast<ZWidget *>(item->toGraphicsObject()) : nullptr;
}

} // namespace

// ---------------------------------------------------------------------------
// ZButtonGroupPrivate

void ZButtonGroupPrivate::addRadioButton(ZWidget *item)
{
    Z_Q(ZButtonGroup);
    std::vector<ZWidget *> pending{item};
    while (!pending.empty()) {
        ZWidget *w = pending.back();
        pending.pop_back();
        if (!w)
            continue;
        if (auto *radio = qobject_cast<ZRadioButton *>(w)) {
            if (!contains(radio)) {
                QObject::connect(radio, &ZAbstractButton::clicked, q, &ZButtonGroup::on_button_state_changed,
                                 Qt::UniqueConnection);
                buttons.append(radio);
            }
            continue;
        }
        // Reversed onto the stack, so that members join in tree order.
        const QList<QGraphicsItem *> children = w->childItems();
        for (auto it = children.crbegin(); it != children.crend(); ++it) {
            if (ZWidget *child = asZWidget(*it))
                pending.push_back(child);
        }
    }
}

bool ZButtonGroupPrivate::contains(const QObject *button) const
{
    for (const QPointer<ZRadioButton> &member : buttons) {
        if (member == button)
            return true;
    }
    return false;
}

// ---------------------------------------------------------------------------
// ZButtonGroup

ZButtonGroup::ZButtonGroup(QGraphicsItem *parent)
    : ZWidget(*new ZButtonGroupPrivate, parent)
{
}

ZButtonGroup::~ZButtonGroup() = default;

QList<ZRadioButton *> ZButtonGroup::buttons() const
{
    QList<ZRadioButton *> result;
    for (const QPointer<ZRadioButton> &member : d_func()->buttons) {
        if (member)
            result.append(member);
    }
    return result;
}

ZRadioButton *ZButtonGroup::checkedButton() const
{
    for (const QPointer<ZRadioButton> &member : d_func()->buttons) {
        if (member && member->checked())
            return member;
    }
    return nullptr;
}

void ZButtonGroup::construct()
{
    ZWidget::construct();
    Z_D(ZButtonGroup);
    const QList<QGraphicsItem *> children = childItems();
    for (QGraphicsItem *child : children) {
        if (ZWidget *w = asZWidget(child))
            d->addRadioButton(w);
    }
}

void ZButtonGroup::addItem(ZWidget *item)
{
    ZWidget::addItem(item);
    d_func()->addRadioButton(item);
}

void ZButtonGroup::childEvent(QChildEvent *event)
{
    ZWidget::childEvent(event);
    if (event->removed()) {
        // The child may be half destroyed: compare addresses only.
        d_func()->buttons.removeIf([child = event->child()](const QPointer<ZRadioButton> &member) {
            return !member || member == child;
        });
    }
}

void ZButtonGroup::on_button_state_changed()
{
    auto *selected = qobject_cast<ZRadioButton *>(sender());
    Z_D(ZButtonGroup);
    if (!selected || !d->contains(selected))
        return;
    selected->setChecked(true);
    // A copy: a receiver of the state changes may change the membership.
    const QList<QPointer<ZRadioButton>> members = d->buttons;
    for (const QPointer<ZRadioButton> &member : members) {
        if (member && member != selected)
            member->setChecked(false);
    }
    Q_EMIT radioSelected(selected);
}

Z_REGISTER_WIDGET(ZButtonGroup);

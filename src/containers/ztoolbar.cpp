#include "ztoolbar.h"
#include "zcreator.h"

#include <QGraphicsLinearLayout>

ZToolBar::ZToolBar(QGraphicsItem *parent)
    : ZWidget(parent)
{
    setLayoutType(HBox);
    setSpacing(4);
}

ZToolBar::~ZToolBar() = default;

Qt::Orientation ZToolBar::orientation() const
{
    return layoutType() == VBox ? Qt::Vertical : Qt::Horizontal;
}

void ZToolBar::setOrientation(Qt::Orientation orientation)
{
    const LayoutType type = orientation == Qt::Vertical ? VBox : HBox;
    if (layoutType() == type)
        return;
    // A new layout starts empty: carry the members over in their order.
    QList<ZWidget *> members;
    if (auto *linear = dynamic_cast<QGraphicsLinearLayout *>(layout())) {
        for (int i = 0; i < linear->count(); ++i) {
            if (auto *w = dynamic_cast<ZWidget *>(linear->itemAt(i)))
                members.append(w);
        }
    }
    setLayoutType(type);
    for (ZWidget *w : std::as_const(members))
        addLayoutItem(w);
}

void ZToolBar::addItem(ZWidget *item)
{
    ZWidget::addItem(item);
    if (item && !item->alignment())
        item->setAlignment(Qt::AlignCenter);
}

void ZToolBar::insertItem(ZWidget *item, int index)
{
    ZWidget::insertItem(item, index);
    if (item && !item->alignment())
        item->setAlignment(Qt::AlignCenter);
}

Z_REGISTER_WIDGET(ZToolBar);

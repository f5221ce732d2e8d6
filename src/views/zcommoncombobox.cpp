#include "zcommoncombobox.h"
#include "zcommoncombobox_p.h"

#include "zcommonlistwidget.h"
#include "zcreator.h"
#include "zlabel.h"
#include "zlistitemcreator.h"

Z_REGISTER_WIDGET(ZCommonComboBox);

ZCommonComboBoxItem::ZCommonComboBoxItem(ZListWidget *view)
    : ZListItem(view)
{
}

void ZCommonComboBoxItem::itemReset()
{
    ZListItem::itemReset();
    if (auto *label = qobject_cast<ZLabel *>(textLabel()))
        label->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

ZCommonComboBox::ZCommonComboBox(QGraphicsItem *parent)
    : ZCommonComboBox(*new ZCommonComboBoxPrivate, parent)
{
}

ZCommonComboBox::ZCommonComboBox(ZCommonComboBoxPrivate &dd, QGraphicsItem *parent)
    : ZComboBoxWidget(dd, parent)
{
    if (ZCommonListWidget *list = listWidget())
        list->setItemCreator(new ZListItemCreatorT<ZCommonComboBoxItem>);
    setContentMargins(QMargins(4, 0, 2, 0));
    setupContent();
}

ZCommonComboBox::~ZCommonComboBox() = default;

Qt::Alignment ZCommonComboBox::textAlignment() const
{
    return d_func()->alignment;
}

void ZCommonComboBox::setTextAlignment(Qt::Alignment alignment)
{
    if (d_func()->alignment == alignment)
        return;
    d_func()->alignment = alignment;
    if (d_func()->label)
        d_func()->label->setTextAlignment(alignment);
}

QObject *ZCommonComboBox::faceText() const
{
    return d_func()->label.data();
}

void ZCommonComboBox::createContent(ZWidget *content)
{
    if (d_func()->label)
        return;
    d_func()->label = new ZLabel;
    d_func()->label->setObjectName(QStringLiteral("faceText"));
    d_func()->label->setTextAlignment(d_func()->alignment);
    content->addItem(d_func()->label);
}

void ZCommonComboBox::updateContent(ZWidget *content, int index)
{
    Q_UNUSED(content);
    if (d_func()->label)
        d_func()->label->setText(itemText(index));
}

void ZCommonComboBox::clearContent(ZWidget *content)
{
    Q_UNUSED(content);
    if (d_func()->label)
        d_func()->label->setText(QString());
}

void ZCommonComboBox::deleteContent(ZWidget *content)
{
    Q_UNUSED(content);
    delete d_func()->label.data();
}

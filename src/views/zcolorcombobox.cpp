#include "zcolorcombobox.h"
#include "zcolorcombobox_p.h"

#include "zcommonlistmodel.h"
#include "zcommonlistwidget.h"
#include "zcreator.h"
#include "zlistitemcreator.h"
#include "zspacer.h"

Z_REGISTER_WIDGET(ZColorComboBox);

ZColorComboBoxItem::ZColorComboBoxItem(ZListWidget *view)
    : ZListItem(view)
{
    setLayoutType(HBox);
    setMargins(QMargins(3, 3, 3, 3));
    auto *swatch = new ZSpacer;
    swatch->setObjectName(QStringLiteral("swatch"));
    addItem(swatch);
}

void ZColorComboBoxItem::itemReset()
{
    if (auto *swatch = qobject_cast<ZWidget *>(this->swatch()))
        swatch->setBackgroundColor(QColor(itemText()));
}

QObject *ZColorComboBoxItem::swatch() const
{
    return findChild<ZWidget *>(QStringLiteral("swatch"), Qt::FindDirectChildrenOnly);
}

ZColorComboBox::ZColorComboBox(QGraphicsItem *parent)
    : ZColorComboBox(*new ZColorComboBoxPrivate, parent)
{
}

ZColorComboBox::ZColorComboBox(ZColorComboBoxPrivate &dd, QGraphicsItem *parent)
    : ZComboBoxWidget(dd, parent)
{
    if (ZCommonListWidget *list = listWidget())
        list->setItemCreator(new ZListItemCreatorT<ZColorComboBoxItem>);
    setContentMargins(QMargins(3, 3, 3, 3));
    setupContent();
    QStringList names;
    for (int c = Qt::color0; c <= Qt::darkYellow; ++c) {
        const QString name = QColor(Qt::GlobalColor(c)).name();
        if (!names.contains(name))
            names.append(name);
    }
    if (ZCommonListWidget *list = listWidget()) {
        list->commonModel()->batchInsert();
        for (const QString &name : names)
            list->addItem(name);
        list->commonModel()->batchCommit();
    }
}

ZColorComboBox::~ZColorComboBox() = default;

bool ZColorComboBox::hasBorder() const
{
    return d_func()->hasBorder;
}

void ZColorComboBox::setHasBorder(bool on)
{
    if (d_func()->hasBorder == on)
        return;
    d_func()->hasBorder = on;
    d_func()->applyBorder();
}

void ZColorComboBoxPrivate::applyBorder()
{
    if (!border)
        return;
    border->setMargins(hasBorder ? QMargins(1, 1, 1, 1) : QMargins());
    if (hasBorder)
        border->setBackgroundColor(QColor(64, 64, 64));
    else
        border->unsetBackgroundBrush();
}

void ZColorComboBox::setIndexByColor(const QColor &color)
{
    if (!color.isValid())
        return;
    const int index = indexOfText(color.name());
    if (index >= 0)
        setSelectIndex(index);
}

QColor ZColorComboBox::itemColor(int index) const
{
    if (index < 0 || index >= listCount())
        return QColor();
    return QColor(itemText(index));
}

QColor ZColorComboBox::currentColor() const
{
    return itemColor(selectIndex());
}

void ZColorComboBox::createContent(ZWidget *content)
{
    if (d_func()->border)
        return;
    d_func()->border = new ZSpacer;
    d_func()->border->setObjectName(QStringLiteral("swatchBorder"));
    d_func()->border->setLayoutType(HBox);
    content->addItem(d_func()->border);
    d_func()->swatch = new ZSpacer;
    d_func()->swatch->setObjectName(QStringLiteral("swatch"));
    d_func()->border->addItem(d_func()->swatch);
    d_func()->applyBorder();
}

void ZColorComboBox::updateContent(ZWidget *content, int index)
{
    Q_UNUSED(content);
    if (d_func()->swatch)
        d_func()->swatch->setBackgroundColor(itemColor(index));
}

void ZColorComboBox::clearContent(ZWidget *content)
{
    Q_UNUSED(content);
    if (d_func()->swatch)
        d_func()->swatch->unsetBackgroundBrush();
}

void ZColorComboBox::deleteContent(ZWidget *content)
{
    Q_UNUSED(content);
    delete d_func()->border.data();
}

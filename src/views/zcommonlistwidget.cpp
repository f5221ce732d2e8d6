#include "zcommonlistwidget.h"
#include "zcommonlistwidget_p.h"

#include "zcreator.h"

Z_REGISTER_WIDGET(ZCommonListWidget);

ZCommonListWidget::ZCommonListWidget(QGraphicsItem *parent)
    : ZCommonListWidget(*new ZCommonListWidgetPrivate, parent)
{
}

ZCommonListWidget::ZCommonListWidget(ZCommonListWidgetPrivate &dd, QGraphicsItem *parent)
    : ZListWidget(dd, parent)
{
    setModel(&dd.commonModel);
}

ZCommonListWidget::~ZCommonListWidget()
{
    // The model dies with the private record, after the view's guard is gone.
    setModel(nullptr);
}

ZCommonListModel *ZCommonListWidget::commonModel() const
{
    return const_cast<ZCommonListModel *>(&d_func()->commonModel);
}

void ZCommonListWidget::addItem(const QString &text)
{
    d_func()->commonModel.addItem(text);
}

void ZCommonListWidget::addItem(const QString &text, const QVariant &data)
{
    d_func()->commonModel.addItem(text, data);
}

void ZCommonListWidget::addItem(const QString &text, const QString &icon, const QVariant &data)
{
    d_func()->commonModel.addItem(text, icon, data);
}

void ZCommonListWidget::insertItem(int index, const QString &text, const QString &icon, const QVariant &data)
{
    d_func()->commonModel.insertItem(index, text, icon, data);
}

void ZCommonListWidget::removeItem(int index)
{
    d_func()->commonModel.removeItem(index);
}

void ZCommonListWidget::removeItem(const QString &text)
{
    d_func()->commonModel.removeItem(text);
}

void ZCommonListWidget::removeAll()
{
    d_func()->commonModel.removeAll();
}

void ZCommonListWidget::setItemsText(const QString &text)
{
    d_func()->commonModel.setItemsText(text);
}

QString ZCommonListWidget::itemsText() const
{
    return d_func()->commonModel.itemsText();
}

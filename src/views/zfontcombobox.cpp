#include "zfontcombobox.h"
#include "zfontcombobox_p.h"

#include "zcommonlistmodel.h"
#include "zcommonlistwidget.h"
#include "zcreator.h"
#include "zlabel.h"
#include "zlistitemcreator.h"

#include <QtGui/qfontdatabase.h>
#include <QtGui/qfontmetrics.h>

#include <cmath>

Z_REGISTER_WIDGET(ZFontComboBox);

ZFontComboBoxItem::ZFontComboBoxItem(ZListWidget *view)
    : ZListItem(view)
{
}

void ZFontComboBoxItem::itemReset()
{
    ZListItem::itemReset();
    if (auto *label = qobject_cast<ZLabel *>(textLabel())) {
        label->setFontName(itemText());
        label->setText(ZFontComboBox::sampleText(itemText()));
    }
}

ZFontComboBox::ZFontComboBox(QGraphicsItem *parent)
    : ZFontComboBox(*new ZFontComboBoxPrivate, parent)
{
}

ZFontComboBox::ZFontComboBox(ZFontComboBoxPrivate &dd, QGraphicsItem *parent)
    : ZComboBoxWidget(dd, parent)
{
    if (ZCommonListWidget *list = listWidget())
        list->setItemCreator(new ZListItemCreatorT<ZFontComboBoxItem>);
    setContentMargins(QMargins(4, 0, 2, 0));
    setupContent();

    ZCommonListWidget *list = listWidget();
    if (!list)
        return;
    int widest = 0;
    list->commonModel()->batchInsert();
    const QStringList families = QFontDatabase::families();
    for (const QString &family : families) {
        if (family.isEmpty())
            continue;
        list->addItem(family);
        const QFontMetricsF metrics(QFont(family, 12));
        widest = qMax(widest, int(std::ceil(metrics.horizontalAdvance(sampleText(family)))));
    }
    list->commonModel()->batchCommit();
    setDropListMinWidth(widest);
}

ZFontComboBox::~ZFontComboBox() = default;

QString ZFontComboBox::currentFamily() const
{
    return itemText(selectIndex());
}

QString ZFontComboBox::sampleText(const QString &family)
{
    return family + QString::fromUtf8("  ABC-范例");
}

void ZFontComboBox::createContent(ZWidget *content)
{
    if (d_func()->label)
        return;
    d_func()->label = new ZLabel;
    d_func()->label->setObjectName(QStringLiteral("faceText"));
    d_func()->label->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    content->addItem(d_func()->label);
}

void ZFontComboBox::updateContent(ZWidget *content, int index)
{
    Q_UNUSED(content);
    if (!d_func()->label)
        return;
    const QString family = itemText(index);
    d_func()->label->setFontName(family);
    d_func()->label->setText(family);
}

void ZFontComboBox::clearContent(ZWidget *content)
{
    Q_UNUSED(content);
    if (d_func()->label)
        d_func()->label->setText(QString());
}

void ZFontComboBox::deleteContent(ZWidget *content)
{
    Q_UNUSED(content);
    delete d_func()->label.data();
}

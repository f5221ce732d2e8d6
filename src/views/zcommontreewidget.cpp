#include "zcommontreewidget.h"
#include "zcommontreewidget_p.h"

#include "zcreator.h"
#include "xmlnode.h"

#include <cstring>
#include <vector>

Z_REGISTER_WIDGET(ZCommonTreeWidget);

namespace {

QString attribute(const XMLNode &node, const char *name)
{
    const char *value = node.getAttribute(name);
    return QString::fromLocal8Bit(value ? value : "");
}

bool isTrue(const QString &text)
{
    return text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || text == QLatin1String("1");
}

} // namespace

ZCommonTreeWidget::ZCommonTreeWidget(QGraphicsItem *parent)
    : ZCommonTreeWidget(*new ZCommonTreeWidgetPrivate, parent)
{
}

ZCommonTreeWidget::ZCommonTreeWidget(ZCommonTreeWidgetPrivate &dd, QGraphicsItem *parent)
    : ZTreeWidget(dd, parent)
{
    setModel(&dd.commonModel);
}

ZCommonTreeWidget::~ZCommonTreeWidget()
{
    // The model dies with the private record, after the view is gone.
    setModel(nullptr);
}

ZCommonTreeModel *ZCommonTreeWidget::commonModel() const
{
    return const_cast<ZCommonTreeModel *>(&d_func()->commonModel);
}

qint64 ZCommonTreeWidget::addChild(qint64 parent, const RowData &data)
{
    return d_func()->commonModel.addChild(parent, data);
}

qint64 ZCommonTreeWidget::addChild(qint64 parent, const QString &text)
{
    return d_func()->commonModel.addChild(parent, text);
}

qint64 ZCommonTreeWidget::addChild(qint64 parent, const QString &text, const QVariant &data)
{
    return d_func()->commonModel.addChild(parent, text, data);
}

qint64 ZCommonTreeWidget::addChild(qint64 parent, const QString &text, const QString &icon, const QVariant &data)
{
    return d_func()->commonModel.addChild(parent, text, icon, data);
}

qint64 ZCommonTreeWidget::insertBefore(qint64 sibling, const QString &text)
{
    return d_func()->commonModel.insertBefore(sibling, text);
}

qint64 ZCommonTreeWidget::insertAfter(qint64 sibling, const QString &text)
{
    return d_func()->commonModel.insertAfter(sibling, text);
}

bool ZCommonTreeWidget::removeNode(qint64 id)
{
    return d_func()->commonModel.removeNode(id);
}

bool ZCommonTreeWidget::removeChilds(qint64 id)
{
    return d_func()->commonModel.removeChilds(id);
}

void ZCommonTreeWidget::removeAll()
{
    d_func()->commonModel.removeAll();
}

void ZCommonTreeWidget::batchInsert()
{
    d_func()->commonModel.batchInsert();
}

QList<qint64> ZCommonTreeWidget::batchCommit()
{
    return d_func()->commonModel.batchCommit();
}

void ZCommonTreeWidget::setData(const XMLNode *node)
{
    if (!node)
        return;
    Z_D(ZCommonTreeWidget);
    struct Frame
    {
        XMLNode element;
        qint64 parent;
        int next;
    };
    // Iterative, so a document nested without end cannot exhaust the stack.
    std::vector<Frame> stack{{*node, 0, 0}};
    QList<qint64> toExpand;
    d->commonModel.batchInsert();
    while (!stack.empty()) {
        Frame &frame = stack.back();
        if (frame.next >= frame.element.nChildNode()) {
            stack.pop_back();
            continue;
        }
        const XMLNode child = frame.element.getChildNode(frame.next++);
        if (std::strcmp(child.getName() ? child.getName() : "", "node") != 0)
            continue;
        RowData row;
        row.insert(Qt::DisplayRole, attribute(child, "text"));
        const QString icon = attribute(child, "icon");
        if (!icon.isEmpty())
            row.insert(Qt::DecorationRole, icon);
        if (child.isAttributeSet("value"))
            row.insert(Qt::ItemDataRole(33), attribute(child, "value"));
        const qint64 id = d->commonModel.addChild(frame.parent, row);
        if (isTrue(attribute(child, "expanded")))
            toExpand.append(id);
        stack.push_back({child, id, 0});
    }
    d->commonModel.batchCommit();
    for (qint64 id : std::as_const(toExpand))
        expand(id);
}

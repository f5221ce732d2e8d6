#ifndef ZCOMMONTREEWIDGET_H
#define ZCOMMONTREEWIDGET_H

#include "ztreewidget.h"

#include <QtCore/qmap.h>

class ZCommonTreeModel;
class ZCommonTreeWidgetPrivate;

/*!
 * \brief A ZTreeWidget over a ZCommonTreeModel of its own.
 *
 * The node operations forward to that model, with its meaning. Documents
 * fill the tree with a data element whose children are nested "node"
 * elements with the attributes text, icon, value and expanded:
 *
 * \code
 * <ZCommonTreeWidget>
 *   <tree:data>
 *     <node text="Fruit" expanded="true"><node text="Apple"/></node>
 *   </tree:data>
 * </ZCommonTreeWidget>
 * \endcode
 */
class ZKIT_EXPORT ZCommonTreeWidget : public ZTreeWidget
{
    Q_OBJECT

public:
    using RowData = QMap<Qt::ItemDataRole, QVariant>;

    Q_INVOKABLE explicit ZCommonTreeWidget(QGraphicsItem *parent = nullptr);
    ~ZCommonTreeWidget() override;

    ZCommonTreeModel *commonModel() const;

    qint64 addChild(qint64 parent, const RowData &data);
    qint64 addChild(qint64 parent, const QString &text);
    qint64 addChild(qint64 parent, const QString &text, const QVariant &data);
    qint64 addChild(qint64 parent, const QString &text, const QString &icon, const QVariant &data);
    qint64 insertBefore(qint64 sibling, const QString &text);
    qint64 insertAfter(qint64 sibling, const QString &text);
    bool removeNode(qint64 id);
    bool removeChilds(qint64 id);
    void removeAll();
    void batchInsert();
    QList<qint64> batchCommit();

    /*! Appends the nodes described by \a node's "node" children to the tree. */
    void setData(const XMLNode *node) override;
    using ZTreeWidget::setData;

protected:
    ZCommonTreeWidget(ZCommonTreeWidgetPrivate &dd, QGraphicsItem *parent);

private:
    Z_DECLARE_PRIVATE(ZCommonTreeWidget)
    Q_DISABLE_COPY(ZCommonTreeWidget)
};

#endif // ZCOMMONTREEWIDGET_H

// List scrolling: a ZCommonListWidget of 300 x 200 against a QListView of the
// same size (uniform item sizes over a QStringListModel), in the same run,
// over 1,000, 100,000 and 1,000,000 rows. Each step sets the scroll value,
// lets the pending layout run and renders the widget into an image.
//
// Tree scrolling, measured the same way: a ZCommonTreeWidget against a
// QTreeView (uniform row heights) over a light item model of the same shape,
// groups of one node with 99 children, 1,000 to 1,000,000 nodes, all expanded.

#include "benchutil.h"
#include "zcommonlistmodel.h"
#include "zcommonlistwidget.h"
#include "zlistitem.h"
#include "zcommontreemodel.h"
#include "zcommontreewidget.h"
#include "zscrollbar.h"
#include "ztreeitem.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QImage>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QStringListModel>
#include <QTreeView>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

constexpr int Steps = 200;
constexpr int Width = 300;
constexpr int Height = 200;

double medianOf(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double nowSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Scroll values spread over the whole range, visited in a shuffled but fixed order
// so that consecutive steps rarely share rows.
std::vector<int> stepValues(int maximum)
{
    std::vector<int> values;
    for (int i = 0; i < Steps; ++i)
        values.push_back(int(qint64(maximum) * ((i * 37) % Steps) / (Steps - 1)));
    return values;
}

int liveItems(ZListWidget *list)
{
    int n = 0;
    for (QGraphicsItem *child : list->childItems())
        n += dynamic_cast<ZListItem *>(child) ? 1 : 0;
    return n;
}

// One scroll pass: 200 steps over the whole range, each setting the value,
// letting the pending layout run and rendering; a tree is a list widget too.
void scrollPass(QGraphicsScene &scene, ZListWidget *list, double *stepMicros, int *mostItems)
{
    auto *bar = qobject_cast<ZScrollBar *>(list->verticalScrollBar());
    QImage image(Width, Height, QImage::Format_ARGB32_Premultiplied);
    std::vector<double> times;
    int most = 0;
    for (int value : stepValues(bar ? int(bar->maximum()) : 0)) {
        const double start = nowSeconds();
        if (bar)
            bar->setValue(value);
        QCoreApplication::processEvents();
        image.fill(Qt::white);
        QPainter painter(&image);
        scene.render(&painter, QRectF(0, 0, Width, Height), QRectF(0, 0, Width, Height));
        painter.end();
        times.push_back(nowSeconds() - start);
        most = std::max(most, liveItems(list));
    }
    *stepMicros = medianOf(times) * 1e6;
    *mostItems = most;
}

void runZkit(int rows, double *stepMicros, int *mostItems, double *fillMillis)
{
    QGraphicsScene scene(0, 0, Width, Height);
    auto *list = new ZCommonListWidget;
    scene.addItem(list);
    list->resize(Width, Height);

    QStringList texts;
    texts.reserve(rows);
    for (int i = 0; i < rows; ++i)
        texts << QStringLiteral("Row %1").arg(i);
    const double fillStart = nowSeconds();
    ZCommonListModel *model = list->commonModel();
    model->batchInsert();
    for (const QString &text : std::as_const(texts))
        model->addItem(text);
    model->batchCommit();
    *fillMillis = (nowSeconds() - fillStart) * 1000;
    QCoreApplication::processEvents();

    scrollPass(scene, list, stepMicros, mostItems);
}

// The peer's step: the scroll bar moved, the events delivered, the view
// rendered; the median in microseconds.
double peerScrollPass(QAbstractItemView &view)
{
    QScrollBar *bar = view.verticalScrollBar();
    QImage image(Width, Height, QImage::Format_ARGB32_Premultiplied);
    std::vector<double> times;
    for (int value : stepValues(bar->maximum())) {
        const double start = nowSeconds();
        bar->setValue(value);
        QCoreApplication::processEvents();
        image.fill(Qt::white);
        view.render(&image);
        times.push_back(nowSeconds() - start);
    }
    return medianOf(times) * 1e6;
}

double runListView(int rows)
{
    QStringList texts;
    texts.reserve(rows);
    for (int i = 0; i < rows; ++i)
        texts << QStringLiteral("Row %1").arg(i);
    QStringListModel model(texts);
    QListView view;
    view.setUniformItemSizes(true);
    view.setModel(&model);
    view.resize(Width, Height);
    view.show();
    QCoreApplication::processEvents();

    return peerScrollPass(view);
}

// The tree's shape: every group is one node with this many children.
constexpr int GroupChildren = 99;

void runZkitTree(int nodes, double *stepMicros, int *mostItems, double *fillMillis)
{
    QGraphicsScene scene(0, 0, Width, Height);
    auto *tree = new ZCommonTreeWidget;
    scene.addItem(tree);
    tree->resize(Width, Height);

    const double fillStart = nowSeconds();
    ZCommonTreeModel *model = tree->commonModel();
    model->batchInsert();
    const int groups = nodes / (GroupChildren + 1);
    for (int g = 0; g < groups; ++g) {
        const qint64 group = model->addChild(0, QStringLiteral("Group %1").arg(g));
        for (int c = 0; c < GroupChildren; ++c)
            model->addChild(group, QStringLiteral("Node %1.%2").arg(g).arg(c));
    }
    model->batchCommit();
    tree->expandAll();
    QCoreApplication::processEvents();
    *fillMillis = (nowSeconds() - fillStart) * 1000;
    scrollPass(scene, tree, stepMicros, mostItems);
}

// Groups at the top level, GroupChildren leaves in each; a group's internal
// id is 0, a leaf's its group + 1 shifted left by 12 bits. Qt hashes an index
// as (row << 4) + column + internal id: without the shift the leaves of
// neighbouring groups collide and the peer's expandAll turns quadratic.
class ShapeItemModel : public QAbstractItemModel
{
public:
    explicit ShapeItemModel(int groups) : m_groups(groups) {}
    QModelIndex index(int row, int column, const QModelIndex &parent) const override
    {
        if (column != 0 || row < 0)
            return QModelIndex();
        if (!parent.isValid())
            return row < m_groups ? createIndex(row, 0, quintptr(0)) : QModelIndex();
        if (parent.internalId() != 0 || row >= GroupChildren)
            return QModelIndex();
        return createIndex(row, 0, quintptr(parent.row() + 1) << 12);
    }
    QModelIndex parent(const QModelIndex &child) const override
    {
        if (!child.isValid() || child.internalId() == 0)
            return QModelIndex();
        return createIndex(int((child.internalId() >> 12) - 1), 0, quintptr(0));
    }
    int rowCount(const QModelIndex &parent) const override
    {
        if (!parent.isValid())
            return m_groups;
        return parent.internalId() == 0 ? GroupChildren : 0;
    }
    int columnCount(const QModelIndex &) const override { return 1; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole || !index.isValid())
            return QVariant();
        if (index.internalId() == 0)
            return QStringLiteral("Group %1").arg(index.row());
        return QStringLiteral("Node %1.%2").arg((index.internalId() >> 12) - 1).arg(index.row());
    }

private:
    int m_groups;
};

double runTreeView(int nodes)
{
    ShapeItemModel model(nodes / (GroupChildren + 1));
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setHeaderHidden(true);
    view.setModel(&model);
    view.resize(Width, Height);
    view.expandAll();
    view.show();
    QCoreApplication::processEvents();

    return peerScrollPass(view);
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // "list" or "tree" as argument runs that half alone.
    const QStringList only = QCoreApplication::arguments().mid(1);
    const bool lists = only.isEmpty() || only.contains(QLatin1String("list"));
    const bool trees = only.isEmpty() || only.contains(QLatin1String("tree"));

    for (int rows : {1000, 100000, 1000000}) {
        if (!lists)
            break;
        double zkit = 0, fill = 0;
        int items = 0;
        runZkit(rows, &zkit, &items, &fill);
        const double peer = runListView(rows);
        std::printf("list step zkit %d: %.1f us\n", rows, zkit);
        std::printf("list step qlistview %d: %.1f us\n", rows, peer);
        std::printf("list step ratio zkit/qlistview %d: %.3f\n", rows, zkit / peer);
        std::printf("list items zkit %d: %d\n", rows, items);
        std::printf("list fill zkit %d: %.1f ms\n", rows, fill);
        std::fflush(stdout);
    }

    for (int nodes : {1000, 100000, 1000000}) {
        if (!trees)
            break;
        double zkit = 0, fill = 0;
        int items = 0;
        runZkitTree(nodes, &zkit, &items, &fill);
        const double peer = runTreeView(nodes);
        std::printf("tree step zkit %d: %.1f us\n", nodes, zkit);
        std::printf("tree step qtreeview %d: %.1f us\n", nodes, peer);
        std::printf("tree step ratio zkit/qtreeview %d: %.3f\n", nodes, zkit / peer);
        std::printf("tree items zkit %d: %d\n", nodes, items);
        std::printf("tree fill zkit %d: %.1f ms\n", nodes, fill);
        std::fflush(stdout);
    }
    return 0;
}

// List scrolling: a ZCommonListWidget of 300 x 200 against a QListView of the
// same size (uniform item sizes over a QStringListModel), in the same run,
// over 1,000, 100,000 and 1,000,000 rows. Each step sets the scroll value,
// lets the pending layout run and renders the widget into an image.

#include "benchutil.h"
#include "zcommonlistmodel.h"
#include "zcommonlistwidget.h"
#include "zlistitem.h"
#include "zscrollbar.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QImage>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QStringListModel>

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

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    for (int rows : {1000, 100000, 1000000}) {
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
    return 0;
}

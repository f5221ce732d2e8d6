// zkit demonstration: nested, coloured ZWidgets in every layout type.
//
// With a display it opens a window; without one (or with --screenshot FILE)
// it renders the window into a PNG and prints the file's path.

#include <zkit.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>
#include <QTimer>

namespace {

const QColor kPanel(0xf4, 0xf6, 0xf9);
const QColor kAccent(0x2f, 0x7f, 0xea);

ZWidget *box(const QColor &color, const QSizeF &size)
{
    auto *w = new ZWidget;
    w->setBackgroundColor(color);
    w->setFixSize(size);
    return w;
}

QColor shade(int i, int n)
{
    QColor c = kAccent;
    return QColor::fromHsv(c.hsvHue(), 60 + 150 * i / qMax(1, n - 1), 235 - 60 * i / qMax(1, n - 1));
}

// A captioned panel whose body uses the given layout.
ZWidget *panel(const QString &title, ZWidget::LayoutType type, ZWidget **bodyOut)
{
    auto *outer = new ZWidget;
    outer->setLayoutType(ZWidget::VBox);
    outer->setMargins(QMargins(8, 24, 8, 8));
    outer->setBackgroundColor(kPanel);
    auto *caption = new QGraphicsSimpleTextItem(title, outer);
    caption->setPos(8, 5);
    caption->setBrush(QColor(0x33, 0x3a, 0x45));

    auto *body = new ZWidget;
    body->setLayoutType(type);
    body->setMargins(QMargins(6, 6, 6, 6));
    body->setSpacing(6);
    body->setItemSpacing(6);
    body->setBackgroundColor(Qt::white);
    body->setMinimumSize(QSizeF(180, 150));
    outer->addItem(body);
    *bodyOut = body;
    return outer;
}

ZWidget *buildDemo()
{
    auto *root = new ZWidget;
    root->setLayoutType(ZWidget::VBox);
    root->setMargins(QMargins(12, 12, 12, 12));
    root->setSpacing(12);
    root->setBackgroundColor(QColor(0xe3, 0xe7, 0xee));

    auto *row1 = new ZWidget;
    row1->setLayoutType(ZWidget::HBox);
    row1->setSpacing(12);
    auto *row2 = new ZWidget;
    row2->setLayoutType(ZWidget::HBox);
    row2->setSpacing(12);
    root->addItem(row1);
    root->addItem(row2);

    ZWidget *body = nullptr;
    row1->addItem(panel(QStringLiteral("VBox"), ZWidget::VBox, &body));
    for (int i = 0; i < 4; ++i)
        body->addItem(box(shade(i, 4), QSizeF(60 + 25 * i, 24)));

    row1->addItem(panel(QStringLiteral("HBox"), ZWidget::HBox, &body));
    for (int i = 0; i < 4; ++i) {
        ZWidget *b = box(shade(i, 4), QSizeF(30, 40 + 20 * i));
        body->addItem(b);
    }

    row1->addItem(panel(QStringLiteral("Flow"), ZWidget::Flow, &body));
    for (int i = 0; i < 11; ++i) {
        ZWidget *b = box(shade(i % 6, 6), QSizeF(22 + 9 * (i % 4), 26));
        b->resize(b->preferredSize());
        body->addItem(b);
    }

    row2->addItem(panel(QStringLiteral("Anchor"), ZWidget::Anchor, &body));
    // Edges in the order left, top, right, bottom; each names the parent's
    // edge it keeps its distance to.
    const char *anchors[] = {
        "Left:10|Top:10|HCenter:0|VCenter:0",      // top-left quarter
        "HCenter:10|Top:10|Right:10|VCenter:0",    // top-right quarter
        "Left:10|VCenter:10|HCenter:0|Bottom:10",  // bottom-left quarter
        "HCenter:30|VCenter:30|Right:30|Bottom:30", // inset in the last one
    };
    for (int i = 0; i < 4; ++i) {
        auto *b = new ZWidget;
        b->setBackgroundColor(shade(i, 4));
        body->addItem(b);
        b->setAnchor(QString::fromLatin1(anchors[i]));
    }

    row2->addItem(panel(QStringLiteral("None (free positions)"), ZWidget::None, &body));
    for (int i = 0; i < 4; ++i) {
        ZWidget *b = box(shade(i, 4), QSizeF(50, 36));
        body->addItem(b);
        b->setPos(12 + 30 * i, 12 + 22 * i);
    }

    // Nesting: a VBox of HBoxes.
    row2->addItem(panel(QStringLiteral("Nested"), ZWidget::VBox, &body));
    for (int r = 0; r < 3; ++r) {
        auto *line = new ZWidget;
        line->setLayoutType(ZWidget::HBox);
        line->setSpacing(4);
        line->setBackgroundColor(kPanel);
        line->setMargins(QMargins(3, 3, 3, 3));
        for (int c = 0; c <= r; ++c)
            line->addItem(box(shade(r + c, 5), QSizeF(28, 28)));
        body->addItem(line);
    }
    return root;
}

bool headless()
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        return qgetenv("QT_QPA_PLATFORM") == "offscreen" || qgetenv("QT_QPA_PLATFORM") == "minimal";
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

} // namespace

int main(int argc, char **argv)
{
    const bool noDisplay = headless();
    if (noDisplay)
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("zkit layout demonstration"));
    parser.addHelpOption();
    QCommandLineOption shotOption(QStringLiteral("screenshot"),
                                  QStringLiteral("Render the window into <file> and exit."),
                                  QStringLiteral("file"));
    parser.addOption(shotOption);
    parser.process(app);

    QGraphicsScene scene;
    ZWidget *root = buildDemo();
    scene.addItem(root);
    QGraphicsView view(&scene);
    view.setWindowTitle(QStringLiteral("zkit demo"));
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(760, 470);
    root->setGeometry(QRectF(QPointF(0, 0), view.size()));
    scene.setSceneRect(root->geometry());
    view.show();

    QString shot = parser.value(shotOption);
    if (shot.isEmpty() && noDisplay)
        shot = QDir::temp().filePath(QStringLiteral("zkit-demo.png"));
    if (shot.isEmpty())
        return app.exec();

    // Let the layouts settle before rendering.
    QTimer::singleShot(0, &app, [&] {
        root->activateLayout();
        QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        view.render(&painter);
        painter.end();
        if (!image.save(shot)) {
            fprintf(stderr, "zkit-demo: cannot write %s\n", qPrintable(shot));
            app.exit(1);
            return;
        }
        printf("%s\n", qPrintable(QDir(shot).absolutePath()));
        app.quit();
    });
    return app.exec();
}

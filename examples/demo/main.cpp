// zkit demonstration: nested, coloured ZWidgets in every layout type, in a
// themed window with the default skin and a colour table that re-colours it.
//
// With a display it opens the window and switches the theme index every two
// seconds; without one (or with --screenshot FILE) it renders the window
// once per theme index of two into PNGs and prints their paths.

#include <zkit.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGraphicsSimpleTextItem>
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

// A row of default skin images, drawn through the theme's tinted cache.
class SkinStrip : public ZWidget
{
public:
    SkinStrip()
    {
        setFixHeight(48);
        setThemePolicy(HasTheme);
    }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override
    {
        ZWidget::paint(painter, option, widget);
        static const char *names[] = {
            "checkbox_default_normal", "checkbox_selected_normal", "checkbox_selected_hover",
            "radiobox_default_normal", "radiobox_selected_normal", "hsliderthumb_normal",
            "vscrollbar_thumb_down", "comboboxbutton_normal", "frameclose_hover",
            "messagebox_infomation", "messagebox_question", "messagebox_warning", "messagbox_error",
            "anijuhua",
        };
        qreal x = 8;
        for (const char *name : names) {
            const QString path = QStringLiteral(":/image/theme/%1.png").arg(QLatin1String(name));
            const QPixmap pixmap = ZTheme::getPixmap(path, hasTheme(), true);
            const QSizeF size = pixmap.deviceIndependentSize();
            painter->drawPixmap(QPointF(x, (rect().height() - size.height()) / 2), pixmap);
            x += size.width() + 10;
        }
    }

    void doThemeChange() override
    {
        ZWidget::doThemeChange();
        update();
    }
};

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

void buildDemo(ZWidget *root)
{
    root->setThemePolicy(ZWidget::HasTheme);
    root->setMargins(QMargins(12, 12, 12, 12));
    root->setSpacing(12);
    root->setBackgroundColor(QColor(0xe3, 0xe7, 0xee));

    auto *top = new ZWidget;
    top->setLayoutType(ZWidget::HBox);
    top->setSpacing(12);
    top->setFixHeight(64);
    root->addItem(top);
    auto *strip = new SkinStrip;
    strip->setBackgroundColor(Qt::white);
    top->addItem(strip);
    auto *picker = new ZColorTable;
    picker->setFixSize(QSizeF(180, 64));
    picker->setThemePolicy(ZWidget::NoTheme);
    picker->setColor(ZTheme::themeColor());
    picker->connectToTheme();
    top->addItem(picker);

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

    ZWindow window;
    window.setWindowTitle(QStringLiteral("zkit demo"));
    buildDemo(window.rootWidget());
    window.resize(760, 540);
    window.construct();
    window.show();

    QString shot = parser.value(shotOption);
    if (shot.isEmpty() && noDisplay)
        shot = QDir::temp().filePath(QStringLiteral("zkit-demo.png"));
    if (shot.isEmpty()) {
        // Walk through the theme rows while the window is open.
        QTimer cycle;
        QObject::connect(&cycle, &QTimer::timeout, [] { ZTheme::setThemeIndex((ZTheme::themeIndex() + 1) % 9); });
        cycle.start(2000);
        return app.exec();
    }

    // One picture per theme index, each once the theme change has arrived.
    const int indices[] = {0, 8};
    int status = 0;
    for (int index : indices) {
        ZTheme::setThemeIndex(index);
        QCoreApplication::processEvents();
        window.rootWidget()->activateLayout();
        QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        window.render(&painter);
        painter.end();
        QFileInfo info(shot);
        const QString file = info.dir().filePath(
            QStringLiteral("%1-theme%2.%3").arg(info.completeBaseName()).arg(index).arg(info.suffix()));
        if (!image.save(file)) {
            fprintf(stderr, "zkit-demo: cannot write %s\n", qPrintable(file));
            status = 1;
            continue;
        }
        printf("%s\n", qPrintable(QFileInfo(file).absoluteFilePath()));
    }
    return status;
}

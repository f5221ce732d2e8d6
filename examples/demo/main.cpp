// zkit demonstration: a window described in XML (demo.xml) with every layout
// type, the graphic items and the default skin, re-coloured by the theme.
//
// With a display it opens the window and switches the theme index every two
// seconds (or follows the colour table); without one (or with --screenshot
// FILE) it renders the window once per theme index of two into PNGs and
// prints their paths.

#include <zkit.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QTimer>

#include <cstdio>

// A row of default skin images drawn through the theme's tinted cache. An
// application's own class, registered for XML like the toolkit's.
class SkinStrip : public ZWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit SkinStrip(QGraphicsItem *parent = nullptr)
        : ZWidget(parent)
    {
        setThemePolicy(HasTheme);
    }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override
    {
        ZWidget::paint(painter, option, widget);
        static const char *const names[] = {
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

Z_REGISTER_WIDGET(SkinStrip);

namespace {

bool headless()
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        return qgetenv("QT_QPA_PLATFORM") == "offscreen" || qgetenv("QT_QPA_PLATFORM") == "minimal";
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool renderTo(ZWindow *window, const QString &file)
{
    window->rootWidget()->activateLayout();
    QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    window->render(&painter);
    painter.end();
    return image.save(file);
}

} // namespace

int main(int argc, char **argv)
{
    const bool noDisplay = headless();
    if (noDisplay)
        qputenv("QT_QPA_PLATFORM", "offscreen");

    ZApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("zkit demonstration"));
    parser.addHelpOption();
    const QCommandLineOption shotOption(QStringLiteral("screenshot"),
                                        QStringLiteral("Render the window into <file> (one per theme) and exit."),
                                        QStringLiteral("file"));
    parser.addOption(shotOption);
    parser.process(app);

    ZWindow *window = ZXmlUI::windowFromFile(QStringLiteral(":/demo/demo.xml"));
    if (!window) {
        std::fprintf(stderr, "zkit-demo: cannot load the demo document\n");
        return 1;
    }
    window->setWindowTitle(QStringLiteral("zkit demo"));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->resize(1000, 560);
    window->show();

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
    int status = 0;
    const QFileInfo info(shot);
    for (int index : {0, 8}) {
        ZTheme::setThemeIndex(index);
        QCoreApplication::processEvents();
        const QString file = info.dir().filePath(
            QStringLiteral("%1-theme%2.%3").arg(info.completeBaseName()).arg(index).arg(info.suffix()));
        if (!renderTo(window, file)) {
            std::fprintf(stderr, "zkit-demo: cannot write %s\n", qPrintable(file));
            status = 1;
            continue;
        }
        std::printf("%s\n", qPrintable(QFileInfo(file).absoluteFilePath()));
    }
    delete window;
    return status;
}

#include "main.moc"

// The zkit gallery. The window is described in gallery.xml; this file shows
// what an application adds: it finds controls by objectName and connects to
// their signals. Without a display it renders the window into gallery.png.
#include <zkit.h>

#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QPainter>

#include <cstdio>

namespace {

template<typename T>
T *find(ZWindow *window, const char *name)
{
    return qobject_cast<T *>(window->rootWidget()->findObject(QString::fromLatin1(name)));
}

void connectControls(ZWindow *window)
{
    auto *ok = find<ZPushButton>(window, "okButton");
    auto *count = find<ZLabel>(window, "clickCount");
    QObject::connect(ok, &ZAbstractButton::clicked, count, [count, clicks = 0]() mutable {
        count->setText(QStringLiteral("Clicked %1 times").arg(++clicks));
    });

    auto *message = find<ZPushButton>(window, "messageButton");
    QObject::connect(message, &ZAbstractButton::clicked, message, [message, count] {
        const int answer = ZMessageBox::question(message, QStringLiteral("zkit"),
                                                 QStringLiteral("Do you like the gallery?"),
                                                 QStringLiteral("Yes"), QStringLiteral("No"));
        count->setText(answer == 1 ? QStringLiteral("Glad to hear it") : QStringLiteral("Tell us why"));
    });

    auto *tipButton = find<ZPushButton>(window, "tipButton");
    auto *tip = new ZTextBubbleTip(window);
    tip->setText(QStringLiteral("Tips follow their control and hide by themselves."));
    tip->setElapseTime(4000);
    tip->setTarget(tipButton);
    QObject::connect(tipButton, &ZAbstractButton::clicked, tip, [tip] { tip->show(); });

    auto *pages = find<ZStackedWidget>(window, "pages");
    QObject::connect(find<ZPushButton>(window, "nextPage"), &ZAbstractButton::clicked, pages, [pages] {
        pages->setCurrentIndex((pages->currentIndex() + 1) % pages->count());
    });
    QObject::connect(find<ZPushButton>(window, "previousPage"), &ZAbstractButton::clicked, pages, [pages] {
        pages->setCurrentIndex((pages->currentIndex() + pages->count() - 1) % pages->count());
    });
    auto *card = find<ZFlipWidget>(window, "card");
    QObject::connect(find<ZPushButton>(window, "flipCard"), &ZAbstractButton::clicked, card, &ZFlipWidget::flip);

    auto *dateLabel = find<ZLabel>(window, "dateLabel");
    QObject::connect(find<ZCalendar>(window, "calendar"), &ZCalendar::selectedDateChanged, dateLabel,
                     [dateLabel](const QDate &date) { dateLabel->setText(date.toString(Qt::TextDate)); });

    auto *volume = find<ZSlider>(window, "volume");
    auto *progress = find<ZProgressBar>(window, "progress");
    QObject::connect(volume, &ZSlider::valueChanged, progress, [progress](qreal value) {
        progress->setValue(qRound(value));
    });
}

bool headless()
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        return qgetenv("QT_QPA_PLATFORM") == "offscreen" || qgetenv("QT_QPA_PLATFORM") == "minimal";
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// The window with the tip windows that stand over it, as the screen shows them.
QImage snapshot(ZWindow *window)
{
    QElapsedTimer settle;
    settle.start();
    while (settle.elapsed() < 150)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    window->render(&painter);
    for (ZTextBubbleTip *tip : window->findChildren<ZTextBubbleTip *>()) {
        if (tip->isVisible())
            tip->QWidget::render(&painter, tip->mapToGlobal(QPoint()) - window->mapToGlobal(QPoint()));
    }
    return image;
}

} // namespace

int main(int argc, char **argv)
{
    const bool noDisplay = headless();
    if (noDisplay)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ZApplication app(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("zkit gallery"));
    parser.addHelpOption();
    const QCommandLineOption shot(QStringLiteral("screenshot"), QStringLiteral("Render into <file> and exit."),
                                  QStringLiteral("file"));
    const QCommandLineOption page(QStringLiteral("page"), QStringLiteral("Open on tab <n>."), QStringLiteral("n"));
    parser.addOptions({shot, page});
    parser.process(app);

    ZWindow *window = ZXmlUI::windowFromFile(QStringLiteral(":/gallery/gallery.xml"));
    if (!window) {
        std::fprintf(stderr, "zkit-gallery: cannot load the gallery document\n");
        return 1;
    }
    connectControls(window);
    window->setWindowTitle(QStringLiteral("zkit gallery"));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->resize(1120, 760);
    if (parser.isSet(page))
        find<ZTabWidget>(window, "galleryTabs")->setCurrentIndex(parser.value(page).toInt());
    window->show();

    QString file = parser.value(shot);
    if (file.isEmpty() && noDisplay)
        file = QDir::current().filePath(QStringLiteral("gallery.png"));
    if (file.isEmpty())
        return app.exec();

    // The first page's picture shows a bubble tip as well.
    if (find<ZTabWidget>(window, "galleryTabs")->currentIndex() == 0)
        window->findChild<ZTextBubbleTip *>()->show();
    const bool saved = snapshot(window).save(file);
    delete window;
    if (!saved) {
        std::fprintf(stderr, "zkit-gallery: cannot write %s\n", qPrintable(file));
        return 1;
    }
    std::printf("%s\n", qPrintable(QFileInfo(file).absoluteFilePath()));
    return 0;
}

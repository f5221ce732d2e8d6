// A small application on an installed zkit: it builds its window from the
// uitree document beside the executable, finds a control by objectName,
// connects to it and renders the window once. Exit status 0 means all of
// that worked.
#include <zkit.h>

#include <QImage>
#include <QPainter>

#include <cstdio>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ZApplication app(argc, argv);

    ZWindow *window = ZXmlUI::windowFromFile("consumer.xml");
    if (!window) {
        std::fprintf(stderr, "consumer: consumer.xml did not load\n");
        return 1;
    }
    auto *quit = qobject_cast<ZPushButton *>(window->rootWidget()->findObject(QStringLiteral("quitButton")));
    auto *greeting = qobject_cast<ZLabel *>(window->rootWidget()->findObject(QStringLiteral("greeting")));
    if (!quit || !greeting) {
        std::fprintf(stderr, "consumer: the controls are missing\n");
        return 1;
    }
    bool clicked = false;
    QObject::connect(quit, &ZAbstractButton::clicked, [&clicked] { clicked = true; });
    Q_EMIT quit->clicked();

    window->resize(240, 90);
    window->show();
    QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        window->render(&painter);
    }
    // The white panel fills the window right of the button.
    const bool painted = image.pixelColor(200, 50) == QColor(Qt::white);
    const bool texted = greeting->text() == QLatin1String("Hello from an installed zkit");
    delete window;
    if (!clicked || !painted || !texted) {
        std::fprintf(stderr, "consumer: unexpected state\n");
        return 1;
    }
    std::printf("consumer: window built from consumer.xml\n");
    return 0;
}

// zkit-preview: shows a uitree document as the application would, reloads it
// on every save, renders it headless, lints it and prints the vocabulary.
#include "previewer.h"
#include "vocabulary.h"

#include "zapplication.h"
#include "zwindow.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>

#include <cstdio>
#include <cstring>

namespace {

enum ExitCode { Ok = 0, LintFindings = 1, Failure = 2 };

void print(FILE *stream, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fflush(stream);
}

// Everything but an interactive preview runs without a display; so does the
// preview itself where there is none.
bool runsHeadless(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        for (const char *option : {"--screenshot", "--lint", "--list-classes", "--describe", "--help", "-h"}) {
            const size_t length = std::strlen(option);
            if (std::strncmp(argv[i], option, length) == 0 && (argv[i][length] == 0 || argv[i][length] == '='))
                return true;
        }
    }
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool parseSize(const QString &text, QSize *size)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return false;
    *size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    return !size->isEmpty();
}

void printDiagnostics(const Previewer &previewer)
{
    for (const ZXmlUI::Diagnostic &d : previewer.diagnostics())
        print(stderr, Previewer::format(d) + QLatin1Char('\n'));
}

} // namespace

int main(int argc, char **argv)
{
    if (runsHeadless(argc, argv) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    ZApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zkit-preview"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Opens a uitree document as a zkit window."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("FILE.xml"), QStringLiteral("The uitree document."));
    const QCommandLineOption skin(QStringLiteral("skin"), QStringLiteral("Read the skins of <SKIN.xml> first."),
                                  QStringLiteral("SKIN.xml"));
    const QCommandLineOption themeIndex(QStringLiteral("theme-index"), QStringLiteral("Theme row 0-16."),
                                        QStringLiteral("N"));
    const QCommandLineOption themeColor(QStringLiteral("theme-color"), QStringLiteral("Theme colour."),
                                        QStringLiteral("#rrggbb"));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Window size."), QStringLiteral("WxH"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Render the window into <OUT.png> and exit."),
                                        QStringLiteral("OUT.png"));
    const QCommandLineOption watch(QStringLiteral("watch"),
                                   QStringLiteral("Reload whenever the document, the skin or an image is saved."));
    const QCommandLineOption lint(QStringLiteral("lint"),
                                  QStringLiteral("Print everything the loader skipped; exit 1 when there is any."));
    const QCommandLineOption listClasses(QStringLiteral("list-classes"),
                                         QStringLiteral("Print every element name the loader knows."));
    const QCommandLineOption describe(QStringLiteral("describe"),
                                      QStringLiteral("Print the attributes of <CLASS>."), QStringLiteral("CLASS"));
    parser.addOptions({skin, themeIndex, themeColor, size, screenshot, watch, lint, listClasses, describe});
    parser.process(app);

    if (parser.isSet(listClasses)) {
        print(stdout, Vocabulary::listClasses());
        return Ok;
    }
    if (parser.isSet(describe)) {
        const QString text = Vocabulary::describe(parser.value(describe).toLatin1());
        if (text.isEmpty()) {
            print(stderr, QStringLiteral("zkit-preview: no class named \"%1\"\n").arg(parser.value(describe)));
            return Failure;
        }
        print(stdout, text);
        return Ok;
    }

    const QStringList files = parser.positionalArguments();
    if (files.size() != 1) {
        print(stderr, QStringLiteral("zkit-preview: give one document (see --help)\n"));
        return Failure;
    }

    Previewer::Options options;
    options.document = files.first();
    options.skin = parser.value(skin);
    if (parser.isSet(themeIndex)) {
        bool ok = false;
        options.themeIndex = parser.value(themeIndex).toInt(&ok);
        if (!ok || options.themeIndex < 0) {
            print(stderr, QStringLiteral("zkit-preview: --theme-index wants a number from 0\n"));
            return Failure;
        }
    } else if (parser.isSet(themeColor)) {
        options.themeColor = QColor::fromString(parser.value(themeColor));
        if (!options.themeColor.isValid()) {
            print(stderr, QStringLiteral("zkit-preview: --theme-color wants #rrggbb\n"));
            return Failure;
        }
    }
    if (parser.isSet(size) && !parseSize(parser.value(size), &options.size)) {
        print(stderr, QStringLiteral("zkit-preview: --size wants WxH, for instance 640x480\n"));
        return Failure;
    }

    Previewer previewer(options);
    const bool loaded = previewer.load();
    if (parser.isSet(lint)) {
        printDiagnostics(previewer);
        return previewer.diagnostics().isEmpty() && loaded ? Ok : LintFindings;
    }
    if (!loaded) {
        printDiagnostics(previewer);
        return Failure;
    }

    if (parser.isSet(screenshot)) {
        const QString out = parser.value(screenshot);
        if (!previewer.render().save(out)) {
            print(stderr, QStringLiteral("zkit-preview: cannot write %1\n").arg(out));
            return Failure;
        }
        print(stdout, QFileInfo(out).absoluteFilePath() + QLatin1Char('\n'));
        return Ok;
    }

    if (parser.isSet(watch)) {
        previewer.setWatching(true);
        QObject::connect(&previewer, &Previewer::reloaded, [&previewer](bool ok) {
            if (ok)
                print(stdout, QStringLiteral("reloaded %1\n").arg(previewer.watchedFiles().value(0)));
            else
                printDiagnostics(previewer);
        });
    }
    // The window is the preview's own: closing it ends the program, also
    // after reloads replaced it.
    QGuiApplication::setQuitOnLastWindowClosed(true);
    previewer.window()->show();
    return app.exec();
}

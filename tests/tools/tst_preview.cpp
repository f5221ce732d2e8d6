// The preview tool as its users meet it: the command line (exit codes,
// output, screenshots) through the real executable, and the reload on save
// through the previewer it is built on.
#include "previewer.h"

#include "zwidget.h"
#include "zwindow.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

Run runPreview(const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ZKIT_PREVIEW_EXECUTABLE), arguments);
    Run run;
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit)
        return run;
    run.exitCode = process.exitCode();
    run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
    // Qt's own start-up notes (runtime folder and the like) are not ours.
    const QStringList lines = QString::fromLocal8Bit(process.readAllStandardError()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (!line.isEmpty() && !line.startsWith(QLatin1String("QStandardPaths")))
            run.err += line + QLatin1Char('\n');
    }
    return run;
}

bool writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size();
}

const QByteArray widgetDocument = R"(<uitree>
  <ZWidget objectName="panel" layout="VBox" margins="0,0,0,0" backgroundColor="#102030">
    <ZSpacer/>
  </ZWidget>
</uitree>
)";

} // namespace

class tst_Preview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void lint_data();
    void lint();
    void failures_data();
    void failures();
    void screenshotOfWidgetDocument();
    void screenshotOfWindowDocument();
    void vocabulary();
    void reloadsOnSave();
    void reloadFailureKeepsWindow();

private:
    QString write(const QString &name, const QByteArray &text)
    {
        const QString path = m_dir->filePath(name);
        return writeFile(path, text) ? path : QString();
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void tst_Preview::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void tst_Preview::lint_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QStringList>("expected"); // "line:column: start of message"

    QTest::newRow("clean") << widgetDocument << 0 << QStringList();
    QTest::newRow("unknown class and bad value")
        << QByteArray("<uitree>\n  <ZWidget layout=\"VBox\">\n    <ZNoSuchThing/>\n"
                      "    <ZPushButton fixWidth=\"wide\"/>\n  </ZWidget>\n</uitree>\n")
        << 1 << QStringList{QStringLiteral("3:5: <ZNoSuchThing>"), QStringLiteral("4:5: <ZPushButton> attribute \"fixWidth\"")};
    QTest::newRow("bad connection")
        << QByteArray("<uitree>\n<ZPushButton objectName=\"b\" objectArgument=\"1\"/>\n"
                      "<x:event object=\"b\" signal=\"nope()\" slot=\"deleteLater()\"/>\n</uitree>\n")
        << 1 << QStringList{QStringLiteral("3:1: ")};
    QTest::newRow("parse error") << QByteArray("<uitree>\n <ZWidget>\n  <ZLabel text=\"a>\n</uitree>") << 1
                                 << QStringList{QStringLiteral("4:10: ")};
}

void tst_Preview::lint()
{
    QFETCH(QByteArray, document);
    QFETCH(int, exitCode);
    QFETCH(QStringList, expected);
    const QString path = write(QStringLiteral("doc.xml"), document);
    const Run run = runPreview({QStringLiteral("--lint"), path});
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY(run.out.isEmpty());
    const QStringList lines = run.err.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), expected.size());
    for (int i = 0; i < lines.size(); ++i)
        QVERIFY2(lines.at(i).startsWith(path + QLatin1Char(':') + expected.at(i)), qPrintable(lines.at(i)));
}

void tst_Preview::failures_data()
{
    QTest::addColumn<QStringList>("arguments"); // "@" stands for a valid document
    QTest::addColumn<QString>("message");

    QTest::newRow("missing file") << QStringList{QStringLiteral("/nonexistent/doc.xml")}
                                  << QStringLiteral("/nonexistent/doc.xml: cannot read the file");
    QTest::newRow("missing skin") << QStringList{QStringLiteral("@"), QStringLiteral("--skin"),
                                                 QStringLiteral("/nonexistent/skin.xml")}
                                  << QStringLiteral("/nonexistent/skin.xml: cannot read the file");
    QTest::newRow("no document") << QStringList{} << QStringLiteral("give one document");
    QTest::newRow("two documents") << QStringList{QStringLiteral("@"), QStringLiteral("@")}
                                   << QStringLiteral("give one document");
    QTest::newRow("bad size") << QStringList{QStringLiteral("@"), QStringLiteral("--size"), QStringLiteral("0x10")}
                              << QStringLiteral("--size wants WxH");
    QTest::newRow("bad colour") << QStringList{QStringLiteral("@"), QStringLiteral("--theme-color"),
                                               QStringLiteral("#12")}
                                << QStringLiteral("--theme-color wants");
    QTest::newRow("bad index") << QStringList{QStringLiteral("@"), QStringLiteral("--theme-index"),
                                              QStringLiteral("-3")}
                               << QStringLiteral("--theme-index wants");
}

void tst_Preview::failures()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const QString document = write(QStringLiteral("doc.xml"), widgetDocument);
    arguments.replaceInStrings(QRegularExpression(QStringLiteral("^@$")), document);
    arguments << QStringLiteral("--screenshot") << m_dir->filePath(QStringLiteral("shot.png"));
    const Run run = runPreview(arguments);
    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.err.contains(message), qPrintable(run.err));
    QVERIFY(!QFile::exists(m_dir->filePath(QStringLiteral("shot.png"))));
}

void tst_Preview::screenshotOfWidgetDocument()
{
    const QString document = write(QStringLiteral("doc.xml"), widgetDocument);
    const QString shot = m_dir->filePath(QStringLiteral("shot.png"));
    const Run run = runPreview({document, QStringLiteral("--size"), QStringLiteral("120x70"),
                                QStringLiteral("--screenshot"), shot});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.out.trimmed(), shot);
    const QImage image(shot);
    QCOMPARE(image.size(), QSize(120, 70));
    // The panel fills the plain window it was created into.
    QCOMPARE(image.pixelColor(60, 35), QColor(0x10, 0x20, 0x30));
    QCOMPARE(image.pixelColor(118, 68), QColor(0x10, 0x20, 0x30));
}

void tst_Preview::screenshotOfWindowDocument()
{
    // A window document keeps its own class and properties: the scene
    // margins leave a band of the window's background around the panel.
    const QString document = write(QStringLiteral("win.xml"), R"(<uitree>
  <ZWindow sceneMargins="10,10,10,10">
    <ZWidget layout="VBox" backgroundColor="#c00000"><ZSpacer/></ZWidget>
  </ZWindow>
</uitree>)");
    const QString shot = m_dir->filePath(QStringLiteral("win.png"));
    const Run run = runPreview({document, QStringLiteral("--size"), QStringLiteral("100x60"),
                                QStringLiteral("--screenshot"), shot});
    QCOMPARE(run.exitCode, 0);
    const QImage image(shot);
    QCOMPARE(image.size(), QSize(100, 60));
    QCOMPARE(image.pixelColor(50, 30), QColor(0xc0, 0, 0));
    QVERIFY(image.pixelColor(4, 4) != QColor(0xc0, 0, 0));
}

void tst_Preview::vocabulary()
{
    const Run classes = runPreview({QStringLiteral("--list-classes")});
    QCOMPARE(classes.exitCode, 0);
    const QStringList lines = classes.out.split(QLatin1Char('\n'));
    const int widgets = lines.indexOf(QStringLiteral("widgets:"));
    const int windows = lines.indexOf(QStringLiteral("windows:"));
    const int helpers = lines.indexOf(QStringLiteral("helpers:"));
    QVERIFY(widgets == 0 && widgets < windows && windows < helpers);
    const int button = lines.indexOf(QStringLiteral("  ZPushButton"));
    QVERIFY(button > widgets && button < windows);
    const int dialog = lines.indexOf(QStringLiteral("  ZMessageBox"));
    QVERIFY(dialog > windows && dialog < helpers);
    QVERIFY(lines.indexOf(QStringLiteral("  ZSignalConnector")) > helpers);

    const Run described = runPreview({QStringLiteral("--describe"), QStringLiteral("ZPushButton")});
    QCOMPARE(described.exitCode, 0);
    QVERIFY(described.out.startsWith(QStringLiteral("ZPushButton: ZPushButton < ZAbstractButton < ZWidget")));
    QVERIFY(described.out.contains(QStringLiteral("\n  text: QString\n")));
    // Inherited attributes appear under the class that declares them,
    // enumerations with their keys and values.
    const int ownBlock = described.out.indexOf(QStringLiteral("\nZPushButton:\n"));
    const int baseBlock = described.out.indexOf(QStringLiteral("\nZWidget:\n"));
    QVERIFY(ownBlock > 0 && baseBlock > ownBlock);
    QVERIFY(described.out.indexOf(QStringLiteral("  fixWidth: double")) > baseBlock);
    QVERIFY(described.out.contains(QStringLiteral("orientation: Qt::Orientation enum Horizontal=1 Vertical=2")));

    const Run unknown = runPreview({QStringLiteral("--describe"), QStringLiteral("QPushButton")});
    QCOMPARE(unknown.exitCode, 2);
    QVERIFY(unknown.out.isEmpty());
}

void tst_Preview::reloadsOnSave()
{
    QImage red(4, 4, QImage::Format_ARGB32);
    red.fill(Qt::red);
    QVERIFY(red.save(m_dir->filePath(QStringLiteral("pic.png"))));
    const QByteArray document = R"(<uitree>
  <ZWidget objectName="panel" layout="VBox"><ZImageItem imagePath="appdir:pic.png"/></ZWidget>
</uitree>
)";
    Previewer::Options options;
    options.document = write(QStringLiteral("doc.xml"), document);
    options.size = QSize(200, 100);
    Previewer previewer(options);
    QVERIFY(previewer.load());
    previewer.setWatching(true);
    QVERIFY(previewer.watchedFiles().contains(QFileInfo(options.document).canonicalFilePath()));
    QVERIFY(previewer.watchedFiles().contains(QFileInfo(m_dir->filePath(QStringLiteral("pic.png"))).canonicalFilePath()));

    ZWindow *first = previewer.window();
    first->show();
    first->move(40, 30);
    first->resize(260, 140);
    QSignalSpy reloaded(&previewer, &Previewer::reloaded);

    QByteArray changed = document;
    changed.replace("objectName=\"panel\"", "objectName=\"renamed\"");
    QVERIFY(writeFile(options.document, changed));
    QVERIFY(reloaded.wait(5000));
    QCOMPARE(reloaded.last().at(0).toBool(), true);
    ZWindow *second = previewer.window();
    QVERIFY(second != first);
    QVERIFY(second->rootWidget()->findChild<ZWidget *>(QStringLiteral("renamed")));
    QCOMPARE(second->pos(), QPoint(40, 30));
    QCOMPARE(second->size(), QSize(260, 140));
    QVERIFY(second->isVisible());

    // Saving a skin image the document uses reloads too.
    red.fill(Qt::blue);
    QVERIFY(red.save(m_dir->filePath(QStringLiteral("pic.png"))));
    QVERIFY(reloaded.wait(5000));
    QVERIFY(previewer.window() != second);
}

void tst_Preview::reloadFailureKeepsWindow()
{
    Previewer::Options options;
    options.document = write(QStringLiteral("doc.xml"), widgetDocument);
    Previewer previewer(options);
    QVERIFY(previewer.load());
    previewer.setWatching(true);
    ZWindow *window = previewer.window();
    QSignalSpy reloaded(&previewer, &Previewer::reloaded);

    QVERIFY(writeFile(options.document, "<uitree>\n<ZWidget text=\"oops>\n</uitree>\n"));
    QVERIFY(reloaded.wait(5000));
    QCOMPARE(reloaded.last().at(0).toBool(), false);
    QCOMPARE(previewer.window(), window);
    QVERIFY(!previewer.diagnostics().isEmpty());
    QCOMPARE(previewer.diagnostics().first().kind, ZXmlUI::Diagnostic::ParseError);
    QVERIFY(previewer.diagnostics().first().line > 0);

    // Fixed again: the watch went on after the failure.
    QVERIFY(writeFile(options.document, widgetDocument));
    QVERIFY(reloaded.wait(5000));
    QCOMPARE(reloaded.last().at(0).toBool(), true);
    QVERIFY(previewer.window() != window);
}

QTEST_MAIN(tst_Preview)
#include "tst_preview.moc"

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

const QByteArray widgetDocument = "<uitree>\n"
                                  "  <ZWidget objectName='panel' layout='VBox' backgroundColor='#102030'><ZSpacer/>"
                                  "</ZWidget>\n"
                                  "</uitree>\n";

} // namespace

class tst_Preview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }
    void lint_data();
    void lint();
    void failures_data();
    void failures();
    void screenshots_data();
    void screenshots();
    void reloadsOnSave();

private:
    QString write(const QString &name, const QByteArray &text)
    {
        const QString path = m_dir->filePath(name);
        return writeFile(path, text) ? path : QString();
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

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
    QTest::addColumn<QString>("arguments"); // "@" stands for a valid document
    QTest::addColumn<QString>("message");

    QTest::newRow("missing file") << "/nonexistent/doc.xml" << "/nonexistent/doc.xml: cannot read the file";
    QTest::newRow("missing skin") << "@ --skin /nonexistent/skin.xml" << "/nonexistent/skin.xml: cannot read the file";
    QTest::newRow("no document") << "" << "give one document";
    QTest::newRow("two documents") << "@ @" << "give one document";
    QTest::newRow("bad size") << "@ --size 0x10" << "--size wants WxH";
    QTest::newRow("bad colour") << "@ --theme-color #12" << "--theme-color wants";
    QTest::newRow("bad index") << "@ --theme-index -3" << "--theme-index wants";
    QTest::newRow("describe an unknown class") << "--describe QPushButton" << "no class named \"QPushButton\"";
}

void tst_Preview::failures()
{
    QFETCH(QString, arguments);
    QFETCH(QString, message);
    const QString document = write(QStringLiteral("doc.xml"), widgetDocument);
    QStringList list = arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    list.replaceInStrings(QRegularExpression(QStringLiteral("^@$")), document);
    list << QStringLiteral("--screenshot") << m_dir->filePath(QStringLiteral("shot.png"));
    const Run run = runPreview(list);
    QCOMPARE(run.exitCode, 2);
    QVERIFY(run.out.isEmpty());
    QVERIFY2(run.err.contains(message), qPrintable(run.err));
    QVERIFY(!QFile::exists(m_dir->filePath(QStringLiteral("shot.png"))));
}

void tst_Preview::screenshots_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QColor>("panel");
    QTest::addColumn<bool>("band"); // the window's own background around the panel
    // A widget document fills the plain window it is created into.
    QTest::newRow("widgets") << widgetDocument << QColor(0x10, 0x20, 0x30) << false;
    // A window document keeps its own class and properties (scene margins).
    QTest::newRow("window") << QByteArray("<uitree><ZWindow sceneMargins='10,10,10,10'>"
                                          "<ZWidget layout='VBox' backgroundColor='#c00000'><ZSpacer/></ZWidget>"
                                          "</ZWindow></uitree>")
                            << QColor(0xc0, 0, 0) << true;
}

void tst_Preview::screenshots()
{
    QFETCH(QByteArray, document);
    QFETCH(QColor, panel);
    QFETCH(bool, band);
    const QString shot = m_dir->filePath(QStringLiteral("shot.png"));
    const Run run = runPreview({write(QStringLiteral("doc.xml"), document), QStringLiteral("--size"),
                                QStringLiteral("120x70"), QStringLiteral("--screenshot"), shot});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.out.trimmed(), shot);
    const QImage image(shot);
    QCOMPARE(image.size(), QSize(120, 70));
    QCOMPARE(image.pixelColor(60, 35), panel);
    QCOMPARE(image.pixelColor(4, 4) != panel, band);
    QCOMPARE(image.pixelColor(118, 68) != panel, band);
}

void tst_Preview::reloadsOnSave()
{
    QImage red(4, 4, QImage::Format_ARGB32);
    red.fill(Qt::red);
    const QString image = m_dir->filePath(QStringLiteral("pic.png"));
    QVERIFY(red.save(image));
    const QByteArray document = "<uitree><ZWidget objectName='panel' layout='VBox'>"
                                "<ZImageItem imagePath='appdir:pic.png'/></ZWidget></uitree>";
    Previewer::Options options;
    options.document = write(QStringLiteral("doc.xml"), document);
    options.size = QSize(200, 100);
    Previewer previewer(options);
    QVERIFY(previewer.load());
    previewer.setWatching(true);
    QVERIFY(previewer.watchedFiles().contains(QFileInfo(options.document).canonicalFilePath()));
    QVERIFY(previewer.watchedFiles().contains(QFileInfo(image).canonicalFilePath()));

    ZWindow *first = previewer.window();
    first->show();
    first->move(40, 30);
    first->resize(260, 140);
    QSignalSpy reloaded(&previewer, &Previewer::reloaded);

    // A new window at the same place, with the saved content.
    QVERIFY(writeFile(options.document, QByteArray(document).replace("'panel'", "'renamed'")));
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
    QVERIFY(red.save(image));
    QVERIFY(reloaded.wait(5000));
    ZWindow *third = previewer.window();
    QVERIFY(third != second);

    // A save that does not load keeps the window and reports; the watch goes on.
    QVERIFY(writeFile(options.document, "<uitree>\n<ZWidget text=\"oops>\n</uitree>\n"));
    QVERIFY(reloaded.wait(5000));
    QCOMPARE(reloaded.last().at(0).toBool(), false);
    QCOMPARE(previewer.window(), third);
    QVERIFY(!previewer.diagnostics().isEmpty());
    QCOMPARE(previewer.diagnostics().first().kind, ZXmlUI::Diagnostic::ParseError);
    QVERIFY(previewer.diagnostics().first().line > 0);
    QVERIFY(writeFile(options.document, widgetDocument));
    QVERIFY(reloaded.wait(5000));
    QCOMPARE(reloaded.last().at(0).toBool(), true);
    QVERIFY(previewer.window() != third);
}

QTEST_MAIN(tst_Preview)
#include "tst_preview.moc"

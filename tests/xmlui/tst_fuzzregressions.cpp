// Inputs the fuzz targets (fuzz/) once broke the toolkit with, kept so that
// the faults stay fixed in the ordinary suite. The documents under
// fuzzdata/ are replayed the way the loader target runs an input: loaded as
// a window and into a widget, themed, resized, shown, painted, deleted.

#include "zicon.h"
#include "zresource.h"
#include "ztheme.h"
#include "zwidget.h"
#include "zwindow.h"
#include "zxmlui.h"

#include "common/scenetest.h"

#include <QDir>
#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

using Diagnostic = ZXmlUI::Diagnostic;

// Counts the loader's conversion failures for the life of the object.
struct ConversionFailures
{
    int count = 0;
    ConversionFailures()
    {
        ZXmlUI::setDiagnosticsSink([this](const Diagnostic &d) { count += d.kind == Diagnostic::ConversionFailed; });
    }
    ~ConversionFailures() { ZXmlUI::setDiagnosticsSink({}); }
};

// Also runs the deferred deletes, which need no event loop here.
void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace

class tst_FuzzRegressions : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        ZTheme::resetTheme();
        settle();
    }

    // A Qt enumeration property (no fixed underlying type) must never be
    // given a number that is none of its values: Qt cuts numbers to 32 bits
    // and ORs key lists, so the text alone does not tell.
    void qtEnumPropertyRefusesNonValues_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("expected"); // -1: refused, property unchanged

        QTest::newRow("number beyond int") << QByteArray("111111111111") << -1;
        QTest::newRow("beyond int, cut to a valid value") << QByteArray("4294967297") << -1;
        QTest::newRow("beyond int, negative") << QByteArray("-4294967295") << -1;
        QTest::newRow("int but no value") << QByteArray("1000") << -1;
        QTest::newRow("keys ORed to no value") << QByteArray("ConicalGradientPattern|Dense7Pattern") << -1;
        QTest::newRow("key") << QByteArray("Dense3Pattern") << int(Qt::Dense3Pattern);
        QTest::newRow("number of a value") << QByteArray("9") << int(Qt::HorPattern);
        QTest::newRow("number with spaces") << QByteArray(" 14 ") << int(Qt::DiagCrossPattern);
        QTest::newRow("keys ORed to a value") << QByteArray("SolidPattern|Dense7Pattern") << int(Qt::HorPattern);
    }
    void qtEnumPropertyRefusesNonValues()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, expected);

        ConversionFailures failures;
        ZWidget w;
        w.setBackgroundStyle(Qt::CrossPattern);
        ZXmlUI::setPropertyEx(&w, "backgroundStyle", text.constData());
        QCOMPARE(int(w.backgroundStyle()), expected < 0 ? int(Qt::CrossPattern) : expected);
        QCOMPARE(failures.count, expected < 0 ? 1 : 0);

        // The same through a document.
        ZWidget target;
        QVERIFY(ZXmlUI::widgetFromMemory("<uitree><ZWidget objectName='c' backgroundStyle='" + text
                                             + "'/></uitree>",
                                         &target));
        auto *child = target.findChild<ZWidget *>(QStringLiteral("c"));
        QVERIFY(child);
        QCOMPARE(int(child->backgroundStyle()), expected < 0 ? int(ZWidget().backgroundStyle()) : expected);
    }

    // Found by the soak: every icon item made its own QIcon, and QIcon keeps
    // its scaled pixmaps in QPixmapCache under the serial number of its own
    // pixmap, so the process grew with each scroll bar ever made. Items
    // showing the same file must share one icon; an edited file is new.
    void iconItemsShareTheIconOfAFile()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString file = dir.filePath(QStringLiteral("dot.png"));
        QImage image(8, 8, QImage::Format_ARGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(file));
        // Documents name skin files through a search-path prefix.
        ZResource::addSearchPath(QStringLiteral("regressions"), dir.path());
        const QString path = QStringLiteral("regressions:dot.png");

        QGraphicsScene scene;
        auto *a = new ZIcon;
        auto *b = new ZIcon;
        scene.addItem(a);
        scene.addItem(b);
        a->setIconPath(path);
        b->setIconPath(path);
        QVERIFY(!a->icon().isNull());
        QCOMPARE(a->icon().cacheKey(), b->icon().cacheKey());

        // Painting still draws the file.
        a->setVisible(false);
        b->setGeometry(QRectF(0, 0, 8, 8));
        QCOMPARE(scenetest::render(scene, QSize(8, 8), Qt::transparent).pixelColor(4, 4), QColor(Qt::red));

        // A file rewritten with another size is read afresh.
        QImage larger(16, 16, QImage::Format_ARGB32);
        larger.fill(Qt::blue);
        QVERIFY(larger.save(file));
        ZIcon c;
        c.setIconPath(path);
        QVERIFY(c.icon().cacheKey() != a->icon().cacheKey());
        QCOMPARE(c.actualSize(QSize(64, 64), ZIcon::Normal, ZIcon::On), QSize(16, 16));
    }

    // Every document under fuzzdata/ survives the loader target's round:
    // no crash, no sanitizer report, no leak, no hang (the suite's timeout).
    void replayDocuments_data()
    {
        QTest::addColumn<QString>("path");
        const QString dir = QFINDTESTDATA("fuzzdata");
        QVERIFY2(!dir.isEmpty(), "fuzzdata/ not found");
        const QFileInfoList files = QDir(dir).entryInfoList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
        QVERIFY(!files.isEmpty());
        for (const QFileInfo &f : files)
            QTest::newRow(qPrintable(f.fileName())) << f.absoluteFilePath();
    }
    void replayDocuments()
    {
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();

        {
            QPointer<ZWindow> window = ZXmlUI::windowFromMemory(text);
            if (window) {
                ZTheme::setThemeColor(QColor(200, 40, 90));
                window->resize(300, 200);
                if (window->minimumWidth() <= 2048 && window->minimumHeight() <= 2048) {
                    window->show();
                    settle();
                    (void)window->grab();
                }
                ZTheme::setThemeIndex(3);
                window->resize(120, 340);
                settle();
            }
            delete window.data();
        }
        {
            auto host = std::make_unique<ZWindow>();
            auto *target = new ZWidget;
            host->rootWidget()->addItem(target);
            ZXmlUI::widgetFromMemory(text, target);
            host->resize(260, 180);
            host->show();
            settle();
            (void)host->grab();
        }
        settle();
    }
};

QTEST_MAIN(tst_FuzzRegressions)
#include "tst_fuzzregressions.moc"

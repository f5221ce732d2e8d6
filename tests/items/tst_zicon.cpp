// The icon item: loading from a file, placement, mode and state, and the
// logical size on a dense device.

#include <QtTest/QtTest>

#include "common/scenetest.h"
#include "zicon.h"

class tst_ZIcon : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path; // a red 16 x 16 file with a blue @2x twin

    QImage shot(ZIcon *icon, const QSize &size, qreal ratio = 1)
    {
        QGraphicsScene scene;
        scene.addItem(icon);
        icon->resize(size);
        return scenetest::render(scene, QRectF(QPointF(), size), Qt::white, ratio);
    }

private slots:
    void initTestCase()
    {
        m_dir = std::make_unique<QTemporaryDir>(QCoreApplication::applicationDirPath() + "/icon-XXXXXX");
        QVERIFY(m_dir->isValid());
        QVERIFY(scenetest::solidPixmap(QSize(16, 16), Qt::red).save(m_dir->filePath("dot.png")));
        QVERIFY(scenetest::solidPixmap(QSize(32, 32), Qt::blue).save(m_dir->filePath("dot@2x.png")));
        m_path = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(m_dir->filePath("dot.png"));
    }

    void fromFile()
    {
        ZIcon icon;
        icon.setIconPath(m_path);
        QCOMPARE(icon.actualSize(QSize(64, 64)), QSize(16, 16));
        QCOMPARE(icon.actualSize(QSize(8, 8)), QSize(8, 8));
        icon.setIconPath(QStringLiteral("no/such/icon.png"));
        QVERIFY(icon.actualSize(QSize(16, 16)).isEmpty());
        icon.setIconPath(QString());
        QVERIFY(icon.icon().isNull());
    }

    void alignment_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<QPoint>("topLeft");
        QTest::newRow("centre") << int(Qt::AlignCenter) << QPoint(12, 7);
        QTest::newRow("top left") << int(Qt::AlignTop | Qt::AlignLeft) << QPoint(0, 0);
        QTest::newRow("bottom right") << int(Qt::AlignBottom | Qt::AlignRight) << QPoint(24, 14);
    }
    void alignment()
    {
        QFETCH(int, alignment);
        QFETCH(QPoint, topLeft);
        auto *icon = new ZIcon;
        icon->setIconPath(m_path);
        icon->setIconAlignment(Qt::Alignment::fromInt(alignment));
        QCOMPARE(scenetest::boxOf(shot(icon, QSize(40, 30)), Qt::red), QRect(topLeft, QSize(16, 16)));
    }

    // Unknown values fall back to the normal mode and the on state.
    void modesAndStates_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("state");
        QTest::addColumn<QColor>("shown");
        QTest::newRow("normal off") << int(ZIcon::Normal) << int(ZIcon::Off) << QColor(Qt::red);
        QTest::newRow("normal on") << int(ZIcon::Normal) << int(ZIcon::On) << QColor(Qt::green);
        QTest::newRow("active off") << int(ZIcon::Active) << int(ZIcon::Off) << QColor(Qt::yellow);
        QTest::newRow("selected on") << int(ZIcon::Selected) << int(ZIcon::On) << QColor(Qt::cyan);
        QTest::newRow("unknown state is on") << int(ZIcon::Normal) << 7 << QColor(Qt::green);
        QTest::newRow("unknown mode is normal") << 9 << int(ZIcon::Off) << QColor(Qt::red);
    }
    void modesAndStates()
    {
        QFETCH(int, mode);
        QFETCH(int, state);
        QFETCH(QColor, shown);
        QIcon qicon;
        qicon.addPixmap(scenetest::solidPixmap(QSize(10, 10), Qt::red), QIcon::Normal, QIcon::Off);
        qicon.addPixmap(scenetest::solidPixmap(QSize(10, 10), Qt::green), QIcon::Normal, QIcon::On);
        qicon.addPixmap(scenetest::solidPixmap(QSize(10, 10), Qt::yellow), QIcon::Active, QIcon::Off);
        qicon.addPixmap(scenetest::solidPixmap(QSize(10, 10), Qt::cyan), QIcon::Selected, QIcon::On);
        auto *icon = new ZIcon;
        icon->setIcon(qicon);
        icon->setMode(ZIcon::Mode(mode));
        icon->setState(ZIcon::State(state));
        QCOMPARE(shot(icon, QSize(10, 10)).pixelColor(5, 5), shown);
    }

    // On a dense paint device the icon keeps its logical size (the @2x file
    // joins only where the application itself runs at a ratio of 2).
    void densePaintDevice()
    {
        auto *icon = new ZIcon;
        icon->setIconPath(m_path);
        const QImage image = shot(icon, QSize(40, 40), 2);
        QCOMPARE(scenetest::boxOf(image, qApp->devicePixelRatio() >= 2 ? QColor(Qt::blue) : QColor(Qt::red)),
                 QRect(24, 24, 32, 32));
    }
};

QTEST_MAIN(tst_ZIcon)
#include "tst_zicon.moc"

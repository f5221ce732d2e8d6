#include <QtTest/QtTest>

#include "items/itemtestutil.h"
#include "zicon.h"

using namespace itemtest;

class tst_ZIcon : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void enums();
    void fromFile();
    void alignment_data();
    void alignment();
    void modesAndStates_data();
    void modesAndStates();
    void densePaintDevice();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
};

void tst_ZIcon::initTestCase()
{
    m_dir = std::make_unique<QTemporaryDir>(QCoreApplication::applicationDirPath() + "/icon-XXXXXX");
    QVERIFY(m_dir->isValid());
    QImage plain(16, 16, QImage::Format_ARGB32);
    plain.fill(Qt::red);
    QVERIFY(plain.save(m_dir->filePath("dot.png")));
    QImage dense(32, 32, QImage::Format_ARGB32);
    dense.fill(Qt::blue);
    QVERIFY(dense.save(m_dir->filePath("dot@2x.png")));
    m_path = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(m_dir->filePath("dot.png"));
}

void tst_ZIcon::enums()
{
    const QMetaEnum mode = QMetaEnum::fromType<ZIcon::Mode>();
    QCOMPARE(mode.keyToValue("Normal"), int(QIcon::Normal));
    QCOMPARE(mode.keyToValue("Disabled"), int(QIcon::Disabled));
    QCOMPARE(mode.keyToValue("Active"), int(QIcon::Active));
    QCOMPARE(mode.keyToValue("Selected"), int(QIcon::Selected));
    const QMetaEnum state = QMetaEnum::fromType<ZIcon::State>();
    QCOMPARE(state.keyToValue("On"), int(QIcon::On));
    QCOMPARE(state.keyToValue("Off"), int(QIcon::Off));
}

void tst_ZIcon::fromFile()
{
    ZIcon icon;
    icon.setIconPath(m_path);
    QVERIFY(!icon.icon().isNull());
    QCOMPARE(icon.actualSize(QSize(64, 64)), QSize(16, 16));
    QCOMPARE(icon.actualSize(QSize(8, 8)), QSize(8, 8));
    // The icon's own name, which a file icon does not have.
    QCOMPARE(icon.iconPath(), icon.icon().name());

    icon.setIconPath(QStringLiteral("no/such/icon.png"));
    QVERIFY(icon.actualSize(QSize(16, 16)).isEmpty());
    icon.setIconPath(QString());
    QVERIFY(icon.icon().isNull());
}

void tst_ZIcon::alignment_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QPoint>("topLeft");
    QTest::newRow("centre") << int(Qt::AlignCenter) << QPoint(12, 7);
    QTest::newRow("top left") << int(Qt::AlignTop | Qt::AlignLeft) << QPoint(0, 0);
    QTest::newRow("bottom right") << int(Qt::AlignBottom | Qt::AlignRight) << QPoint(24, 14);
}

void tst_ZIcon::alignment()
{
    QFETCH(int, alignment);
    QFETCH(QPoint, topLeft);
    QGraphicsScene scene;
    auto *icon = new ZIcon;
    scene.addItem(icon);
    icon->resize(40, 30);
    icon->setIconPath(m_path);
    icon->setIconAlignment(Qt::Alignment::fromInt(alignment));
    QCOMPARE(boxOf(render(scene, QSize(40, 30)), Qt::red), QRect(topLeft, QSize(16, 16)));
}

void tst_ZIcon::modesAndStates_data()
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

void tst_ZIcon::modesAndStates()
{
    QFETCH(int, mode);
    QFETCH(int, state);
    QFETCH(QColor, shown);

    QIcon qicon;
    qicon.addPixmap(solidPixmap(QSize(10, 10), Qt::red), QIcon::Normal, QIcon::Off);
    qicon.addPixmap(solidPixmap(QSize(10, 10), Qt::green), QIcon::Normal, QIcon::On);
    qicon.addPixmap(solidPixmap(QSize(10, 10), Qt::yellow), QIcon::Active, QIcon::Off);
    qicon.addPixmap(solidPixmap(QSize(10, 10), Qt::cyan), QIcon::Selected, QIcon::On);

    QGraphicsScene scene;
    auto *icon = new ZIcon;
    scene.addItem(icon);
    icon->resize(10, 10);
    icon->setIcon(qicon);
    icon->setMode(ZIcon::Mode(mode));
    icon->setState(ZIcon::State(state));
    QCOMPARE(render(scene, QSize(10, 10)).pixelColor(5, 5), shown);
}

// On a dense paint device the icon keeps its logical size. (The @2x file joins
// the icon where the application itself runs at a ratio of 2, as for skin images.)
void tst_ZIcon::densePaintDevice()
{
    QGraphicsScene scene;
    auto *icon = new ZIcon;
    scene.addItem(icon);
    icon->resize(40, 40);
    icon->setIconPath(m_path);

    QImage image(80, 80, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, QRectF(0, 0, 40, 40), QRectF(0, 0, 40, 40));
    painter.end();
    const QRect drawn = boxOf(image, qApp->devicePixelRatio() >= 2 ? QColor(Qt::blue) : QColor(Qt::red));
    QCOMPARE(drawn, QRect(24, 24, 32, 32));
}

QTEST_MAIN(tst_ZIcon)
#include "tst_zicon.moc"

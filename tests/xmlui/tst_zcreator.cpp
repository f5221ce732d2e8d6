// The creator registries: exact lookup, registration by static creators,
// removal with the creator, and the meta-object lookup for skins.

#include "zcreator.h"
#include "zspacer.h"
#include "zwindow.h"

#include <QGraphicsScene>
#include <QtTest>

#include <memory>

namespace {

// An application's own control, registered the way the library's are.
class AppGauge : public ZWidget
{
    Q_OBJECT
public:
    explicit AppGauge(QGraphicsItem *parent = nullptr) : ZWidget(parent) {}
};

Z_REGISTER_WIDGET(AppGauge);

} // namespace

class tst_ZCreator : public QObject
{
    Q_OBJECT

private slots:
    void builtInClassesAreRegistered_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("kind");
        QTest::newRow("ZWidget") << QByteArray("ZWidget") << int(ZCreatorBase::WidgetKind);
        QTest::newRow("ZSpacer") << QByteArray("ZSpacer") << int(ZCreatorBase::WidgetKind);
        QTest::newRow("ZColorTable") << QByteArray("ZColorTable") << int(ZCreatorBase::WidgetKind);
        QTest::newRow("ZWindow") << QByteArray("ZWindow") << int(ZCreatorBase::WindowKind);
    }
    void builtInClassesAreRegistered()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, kind);
        ZCreatorBase *creator = ZCreatorBase::find(ZCreatorBase::Kind(kind), name);
        QVERIFY(creator);
        QCOMPARE(QByteArray(creator->className()), name);
        QCOMPARE(QByteArray(creator->classMetaObject()->className()), name);
        QVERIFY(ZCreatorBase::classNames(ZCreatorBase::Kind(kind)).contains(name));
        // The other registries do not know it.
        for (int other = 0; other < 3; ++other)
            if (other != kind)
                QVERIFY(!ZCreatorBase::find(ZCreatorBase::Kind(other), name));
    }

    void lookupIsExact_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("lower case") << QByteArray("zspacer");
        QTest::newRow("trailing space") << QByteArray("ZSpacer ");
        QTest::newRow("prefix") << QByteArray("ZSpace");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("embedded nul") << QByteArray("ZSpacer\0x", 9);
    }
    void lookupIsExact()
    {
        QFETCH(QByteArray, name);
        QVERIFY(!ZWidgetCreatorBase::find(name));
    }

    void createsWithParent()
    {
        QGraphicsScene scene;
        auto *parent = new ZWidget;
        scene.addItem(parent);
        ZWidget *made = ZWidgetCreatorBase::find("ZSpacer")->create(parent);
        QVERIFY(qobject_cast<ZSpacer *>(made));
        QCOMPARE(made->parentItem(), parent);

        std::unique_ptr<ZWindow> window(ZWindowCreatorBase::find("ZWindow")->create(nullptr));
        QVERIFY(window);
        QVERIFY(window->rootWidget());
    }

    void applicationClasses()
    {
        ZWidgetCreatorBase *creator = ZWidgetCreatorBase::find("AppGauge");
        QVERIFY(creator);
        std::unique_ptr<ZWidget> w(creator->create(nullptr));
        QVERIFY(qobject_cast<AppGauge *>(w.get()));
    }

    // Destroying a creator removes its class; a copy that dies first does
    // not take the original's entry along.
    void removalWithTheCreator()
    {
        {
            ZCreator<ZSpacer, ZWidget, QGraphicsItem, ZWidgetCreatorBase> temporary("TemporarySpacer");
            QCOMPARE(ZWidgetCreatorBase::find("TemporarySpacer"), &temporary);
            {
                auto copy = temporary;
                QCOMPARE(QByteArray(copy.className()), QByteArray("TemporarySpacer"));
            }
            QCOMPARE(ZWidgetCreatorBase::find("TemporarySpacer"), &temporary);
        }
        QVERIFY(!ZWidgetCreatorBase::find("TemporarySpacer"));
    }

    // A later creator of the same name replaces the entry while it lives.
    void laterCreatorReplaces()
    {
        ZWidgetCreatorBase *original = ZWidgetCreatorBase::find("ZSpacer");
        {
            ZCreator<AppGauge, ZWidget, QGraphicsItem, ZWidgetCreatorBase> replacement("ZSpacer");
            QCOMPARE(ZWidgetCreatorBase::find("ZSpacer"), &replacement);
            std::unique_ptr<ZWidget> w(ZWidgetCreatorBase::find("ZSpacer")->create(nullptr));
            QVERIFY(qobject_cast<AppGauge *>(w.get()));
        }
        QVERIFY(original);
        QVERIFY(!ZWidgetCreatorBase::find("ZSpacer")); // the replaced entry is not restored
        // Put the library's entry back for the rest of the process.
        static ZCreator<ZSpacer, ZWidget, QGraphicsItem, ZWidgetCreatorBase> again("ZSpacer");
        QVERIFY(ZWidgetCreatorBase::find("ZSpacer"));
    }

    void metaObjectLookup()
    {
        QCOMPARE(ZCreatorBase::metaObjectForClass("ZSpacer"), &ZSpacer::staticMetaObject);
        QCOMPARE(ZCreatorBase::metaObjectForClass("ZWindow"), &ZWindow::staticMetaObject);
        QVERIFY(!ZCreatorBase::metaObjectForClass("NoSuchClass"));
        // A widget class shadows a window class of the same name.
        ZCreator<ZWindow, ZWindow, QWidget, ZWindowCreatorBase> clash("AppGauge");
        QCOMPARE(ZCreatorBase::metaObjectForClass("AppGauge"), &AppGauge::staticMetaObject);
    }
};

QTEST_MAIN(tst_ZCreator)
#include "tst_zcreator.moc"

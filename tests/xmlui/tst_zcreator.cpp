// The creator registries: exact lookup per kind, creation, removal with the
// creator, and the meta-object lookup for skins.

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

using SpacerCreator = ZCreator<ZSpacer, ZWidget, QGraphicsItem, ZWidgetCreatorBase>;

} // namespace

class tst_ZCreator : public QObject
{
    Q_OBJECT

private slots:
    void lookup_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("kind"); // -1: known to none
        QTest::newRow("ZSpacer") << QByteArray("ZSpacer") << int(ZCreatorBase::WidgetKind);
        QTest::newRow("ZColorTable") << QByteArray("ZColorTable") << int(ZCreatorBase::WidgetKind);
        QTest::newRow("application class") << QByteArray("AppGauge") << int(ZCreatorBase::WidgetKind);
        QTest::newRow("ZWindow") << QByteArray("ZWindow") << int(ZCreatorBase::WindowKind);
        QTest::newRow("lower case") << QByteArray("zspacer") << -1;
        QTest::newRow("trailing space") << QByteArray("ZSpacer ") << -1;
        QTest::newRow("prefix") << QByteArray("ZSpace") << -1;
        QTest::newRow("empty") << QByteArray() << -1;
        QTest::newRow("embedded nul") << QByteArray("ZSpacer\0x", 9) << -1;
    }
    void lookup()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, kind);
        for (int k = ZCreatorBase::WidgetKind; k <= ZCreatorBase::HelperKind; ++k) {
            ZCreatorBase *creator = ZCreatorBase::find(ZCreatorBase::Kind(k), name);
            QCOMPARE(bool(creator), k == kind);
            QCOMPARE(ZCreatorBase::classNames(ZCreatorBase::Kind(k)).contains(name), k == kind);
            if (creator) {
                QCOMPARE(QByteArray(creator->className()), name);
                QCOMPARE(QByteArray(creator->classMetaObject()->className()), name);
            }
        }
    }

    void createsWithParent()
    {
        QGraphicsScene scene;
        auto *parent = new ZWidget;
        scene.addItem(parent);
        ZWidget *made = ZWidgetCreatorBase::find("ZSpacer")->create(parent);
        QVERIFY(qobject_cast<ZSpacer *>(made));
        QCOMPARE(made->parentItem(), parent);
        std::unique_ptr<ZWidget> gauge(ZWidgetCreatorBase::find("AppGauge")->create(nullptr));
        QVERIFY(qobject_cast<AppGauge *>(gauge.get()));
        std::unique_ptr<ZWindow> window(ZWindowCreatorBase::find("ZWindow")->create(nullptr));
        QVERIFY(window && window->rootWidget());
    }

    // Destroying a creator removes its class; a copy that dies first does
    // not take the original's entry along.
    void removalWithTheCreator()
    {
        {
            SpacerCreator temporary("TemporarySpacer");
            QCOMPARE(ZWidgetCreatorBase::find("TemporarySpacer"), &temporary);
            {
                auto copy = temporary;
                QCOMPARE(QByteArray(copy.className()), QByteArray("TemporarySpacer"));
            }
            QCOMPARE(ZWidgetCreatorBase::find("TemporarySpacer"), &temporary);
        }
        QVERIFY(!ZWidgetCreatorBase::find("TemporarySpacer"));
    }

    // A later creator of the same name replaces the entry while it lives;
    // the replaced entry is not restored after it.
    void laterCreatorReplaces()
    {
        {
            ZCreator<AppGauge, ZWidget, QGraphicsItem, ZWidgetCreatorBase> replacement("ZSpacer");
            QCOMPARE(ZWidgetCreatorBase::find("ZSpacer"), &replacement);
            std::unique_ptr<ZWidget> w(ZWidgetCreatorBase::find("ZSpacer")->create(nullptr));
            QVERIFY(qobject_cast<AppGauge *>(w.get()));
        }
        QVERIFY(!ZWidgetCreatorBase::find("ZSpacer"));
        // The library's entry back for the rest of the process.
        static SpacerCreator again("ZSpacer");
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

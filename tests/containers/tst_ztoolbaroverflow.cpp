// The tool bar when its children do not fit: which hide behind the drop
// button, the menu that lists them, and the separators between groups.

#include "zframeitem.h"
#include "zmenu.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "ztoolbar.h"
#include "ztoolbarseparator.h"
#include "zxmlui.h"

#include <QtTest>

#include "../items/itemtestutil.h"

#include <QAction>
#include <QGraphicsScene>

using namespace itemtest;

namespace {

struct Fixture
{
    QGraphicsScene scene;
    ZToolBar *bar = new ZToolBar;
    QList<ZWidget *> items;

    Fixture(int count, Qt::Orientation orientation = Qt::Horizontal)
    {
        scene.addItem(bar);
        bar->setOrientation(orientation);
        for (int i = 0; i < count; ++i) {
            auto *s = new ZSpacer;
            s->setObjectName(QStringLiteral("item%1").arg(i));
            s->setFixSize(orientation == Qt::Horizontal ? QSizeF(30, 20) : QSizeF(20, 30));
            bar->addItem(s);
            items.append(s);
        }
    }

    void setLength(qreal length)
    {
        bar->resize(bar->orientation() == Qt::Horizontal ? QSizeF(length, 24) : QSizeF(24, length));
        bar->activateLayout();
    }

    int visibleCount() const
    {
        int n = 0;
        for (ZWidget *w : items)
            n += w->isVisible() ? 1 : 0;
        return n;
    }
};

} // namespace

class tst_ZToolBarOverflow : public QObject
{
    Q_OBJECT

private slots:
    void hiding_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<qreal>("length");
        QTest::addColumn<int>("shown");
        // Five children of 30, spacing 4 (166 in all); the drop button is 18 long.
        QTest::newRow("room to spare") << Qt::Horizontal << 200.0 << 5;
        QTest::newRow("exactly enough") << Qt::Horizontal << 166.0 << 5;
        QTest::newRow("one short") << Qt::Horizontal << 165.0 << 4;
        QTest::newRow("two fit") << Qt::Horizontal << 100.0 << 2;
        QTest::newRow("only the button") << Qt::Horizontal << 40.0 << 0;
        QTest::newRow("less than the button") << Qt::Horizontal << 5.0 << 0;
        QTest::newRow("vertical") << Qt::Vertical << 125.0 << 3;
    }
    void hiding()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(qreal, length);
        QFETCH(int, shown);
        Fixture f(5, orientation);
        f.setLength(length);
        QCOMPARE(f.bar->overflowCount(), 5 - shown);
        QCOMPARE(f.visibleCount(), shown);
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(f.items.at(i)->isVisible(), i < shown);
            QCOMPARE(f.bar->isOverflowed(f.items.at(i)), i >= shown);
        }
        ZFrameItem *drop = f.bar->dropButton();
        QCOMPARE(drop->isVisible(), shown < 5);
        if (shown < 5 && shown > 0 && length >= 40) {
            // The button follows the last child shown, inside the bar.
            const QRectF last = f.items.at(shown - 1)->geometry();
            const QRectF button = drop->geometry();
            if (orientation == Qt::Horizontal)
                QVERIFY(button.left() >= last.right() && button.right() <= length + 0.5);
            else
                QVERIFY(button.top() >= last.bottom() && button.bottom() <= length + 0.5);
        }
        // Everything comes back when there is room again.
        f.setLength(500);
        QCOMPARE(f.visibleCount(), 5);
        QCOMPARE(f.bar->overflowCount(), 0);
        QVERIFY(!drop->isVisible());
        QCOMPARE(f.bar->items(), f.items);
    }

    void ownersHiddenChildrenStayHidden()
    {
        Fixture f(4);
        f.items.at(1)->hide();
        // Three of 30 and two gaps: the hidden one takes no room.
        f.setLength(98);
        QCOMPARE(f.bar->overflowCount(), 0);
        f.setLength(60);
        f.setLength(400);
        QVERIFY(!f.items.at(1)->isVisible());
        QVERIFY(f.items.at(3)->isVisible());
        // A child taken out of a shrunk bar is visible again for its new owner.
        f.setLength(60);
        ZWidget *last = f.items.at(3);
        QVERIFY(!last->isVisible());
        f.bar->removeItem(last);
        QVERIFY(last->isVisible());
        QCOMPARE(last->parentItem(), nullptr);
        QCOMPARE(f.bar->items().size(), 3);
        delete last;
        delete f.items.at(2);
        QCOMPARE(f.bar->items().size(), 2);
    }

    void sizeHints()
    {
        Fixture f(3);
        f.bar->setMargins(QMargins(2, 1, 3, 1));
        QCOMPARE(f.bar->effectiveSizeHint(Qt::PreferredSize).width(), 2 + 3 * 30 + 2 * 4 + 3.0);
        QCOMPARE(f.bar->effectiveSizeHint(Qt::MinimumSize).width(), 2 + 18 + 3.0);
        f.setLength(50);
        // Hidden children still count for what the bar would like.
        QCOMPARE(f.bar->effectiveSizeHint(Qt::PreferredSize).width(), 2 + 3 * 30 + 2 * 4 + 3.0);
        f.bar->setOverflow(false);
        QCOMPARE(f.bar->overflowCount(), 0);
        QCOMPARE(f.visibleCount(), 3);
        QCOMPARE(f.bar->effectiveSizeHint(Qt::MinimumSize).width(), 2 + 3 * 30 + 2 * 4 + 3.0);
    }

    void menu()
    {
        Fixture f(1);
        auto *button = new ZPushButton;
        button->setText(QStringLiteral("Print"));
        button->setFixSize(QSizeF(30, 20));
        f.bar->addItem(button);
        f.bar->addSeparator()->setObjectName(QStringLiteral("gap"));
        auto *tipped = new ZSpacer;
        tipped->setToolTip(QStringLiteral("Zoom"));
        tipped->setFixSize(QSizeF(30, 20));
        tipped->setEnabled(false);
        f.bar->addItem(tipped);
        f.setLength(40);
        QCOMPARE(f.bar->overflowCount(), 4);

        QSignalSpy triggered(f.bar, &ZToolBar::itemTriggered);
        QSignalSpy clicked(button, &ZAbstractButton::clicked);
        ZFrameItem *drop = f.bar->dropButton();
        const QPointF at = drop->mapToScene(drop->rect().center());
        sendMouse(f.scene, QEvent::GraphicsSceneMousePress, at);
        sendMouse(f.scene, QEvent::GraphicsSceneMouseRelease, at);
        ZMenu *menu = f.bar->overflowMenu();
        QVERIFY(menu);
        const QList<QAction *> actions = menu->actions();
        QCOMPARE(actions.size(), 4);
        QCOMPARE(actions.at(0)->text(), QStringLiteral("item0"));
        QCOMPARE(actions.at(1)->text(), QStringLiteral("Print"));
        QVERIFY(actions.at(2)->isSeparator());
        QCOMPARE(actions.at(3)->text(), QStringLiteral("Zoom"));
        QVERIFY(!actions.at(3)->isEnabled());
        actions.at(1)->trigger();
        QCOMPARE(clicked.size(), 1);
        QCOMPARE(triggered.size(), 1);
        QCOMPARE(triggered.at(0).at(0).value<QObject *>(), button);
        // The child may be gone by the time its entry is chosen.
        QAction *first = actions.at(0);
        delete f.items.at(0);
        first->trigger();
        QCOMPARE(triggered.size(), 1);
        // With everything shown there is no menu to show.
        f.setLength(400);
        f.bar->showOverflowMenu();
        QVERIFY(!f.bar->overflowMenu());
    }

    void separator_data()
    {
        QTest::addColumn<Qt::Orientation>("bar");
        QTest::addColumn<QString>("image");
        QTest::newRow("line across a horizontal bar") << Qt::Horizontal << QString();
        QTest::newRow("line across a vertical bar") << Qt::Vertical << QString();
        QTest::newRow("image across a horizontal bar") << Qt::Horizontal << ":/image/theme/menusperator.png";
    }
    void separator()
    {
        QFETCH(Qt::Orientation, bar);
        QFETCH(QString, image);
        QGraphicsScene scene;
        auto *toolBar = new ZToolBar;
        scene.addItem(toolBar);
        toolBar->setOrientation(bar);
        ZToolBarSeparator *s = toolBar->addSeparator();
        s->setThemePolicy(ZWidget::NoTheme);
        s->setColor(QColor(255, 0, 0));
        s->setImagePath(image);
        QCOMPARE(s->lineOrientation(), bar == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal);
        const QSizeF hint = s->effectiveSizeHint(Qt::PreferredSize);
        QCOMPARE(bar == Qt::Horizontal ? hint.width() : hint.height(), 9.0);
        // The bar sized to the separator alone.
        toolBar->setOverflow(false);
        toolBar->setSpacing(0);
        toolBar->resize(bar == Qt::Horizontal ? QSizeF(9, 30) : QSizeF(30, 9));
        toolBar->activateLayout();
        QCOMPARE(s->geometry(), bar == Qt::Horizontal ? QRectF(0, 0, 9, 30) : QRectF(0, 0, 30, 9));
        const QImage shot = render(scene, QSize(40, 40));
        const QRect drawn = boundingBox(shot, [](QColor c) { return c != QColor(Qt::white); });
        QVERIFY(!drawn.isNull());
        // Across the bar, kept off both ends by the margin, thin along it.
        if (bar == Qt::Vertical) {
            QCOMPARE(drawn.left(), 3);
            QCOMPARE(drawn.right(), 26);
            QCOMPARE(drawn.height(), 1);
            QCOMPARE(shot.pixelColor(15, 4), QColor(255, 0, 0));
        } else if (image.isEmpty()) {
            QCOMPARE(drawn.top(), 3);
            QCOMPARE(drawn.bottom(), 26);
            QCOMPARE(drawn.width(), 1);
            QCOMPARE(shot.pixelColor(4, 15), QColor(255, 0, 0));
        } else {
            QVERIFY(drawn.top() >= 3 && drawn.bottom() <= 26 && drawn.height() > 12);
            QVERIFY(drawn.width() <= 7);
            QVERIFY(shot.pixelColor(4, 15) != QColor(255, 0, 0)); // the image, not the colour
        }
        s->setExtent(-3);
        QCOMPARE(s->extent(), 1);
        s->setColor(QColor());
        s->setImagePath(QString());
        QVERIFY(boundingBox(render(scene, QSize(40, 40)), [](QColor c) { return c != QColor(Qt::white); }).isNull());
    }

    void fromDocument()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        const QByteArray doc = R"(<uitree>
  <ZToolBar objectName="bar" overflow="false" dropButton.fixWidth="24">
    <ZSpacer fixSize="16,16"/>
    <ZToolBarSeparator objectName="gap" color="10,20,30" extent="11"/>
    <ZSpacer fixSize="16,16"/>
  </ZToolBar>
</uitree>)";
        QVERIFY(ZXmlUI::widgetFromMemory(doc, root));
        auto *bar = qobject_cast<ZToolBar *>(root->findObject(QStringLiteral("bar")));
        QVERIFY(bar);
        QVERIFY(!bar->overflow());
        QCOMPARE(bar->dropButton()->fixWidth(), 24.0);
        QCOMPARE(bar->items().size(), 3);
        auto *gap = qobject_cast<ZToolBarSeparator *>(bar->items().at(1));
        QVERIFY(gap);
        QCOMPARE(gap->color(), QColor(10, 20, 30));
        QCOMPARE(gap->extent(), 11);
        bar->resize(20, 24);
        bar->activateLayout();
        QCOMPARE(bar->overflowCount(), 0);
    }
};

QTEST_MAIN(tst_ZToolBarOverflow)
#include "tst_ztoolbaroverflow.moc"

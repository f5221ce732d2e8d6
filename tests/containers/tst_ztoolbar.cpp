// The tool bar: children side by side or one below the other, which hide
// behind the drop button when they do not fit, the menu that lists them, and
// the separators between groups.

#include "zframeitem.h"
#include "zmenu.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "ztoolbar.h"
#include "ztoolbarseparator.h"

#include "common/scenetest.h"

#include <QAction>
#include <QtTest>

namespace {

ZSpacer *box(qreal w, qreal h, const QString &name = QString())
{
    auto *s = new ZSpacer;
    s->setFixSize(QSizeF(w, h));
    s->setObjectName(name);
    return s;
}

// A bar of \a count children 30 long, spacing 4.
struct Fixture
{
    QGraphicsScene scene;
    ZToolBar *bar = new ZToolBar;
    QList<ZWidget *> items;

    explicit Fixture(int count, Qt::Orientation orientation = Qt::Horizontal)
    {
        scene.addItem(bar);
        bar->setOrientation(orientation);
        for (int i = 0; i < count; ++i) {
            items.append(orientation == Qt::Horizontal ? box(30, 20, QStringLiteral("item%1").arg(i))
                                                       : box(20, 30, QStringLiteral("item%1").arg(i)));
            bar->addItem(items.last());
        }
    }
    void setLength(qreal length)
    {
        bar->resize(bar->orientation() == Qt::Horizontal ? QSizeF(length, 24) : QSizeF(24, length));
        bar->activateLayout();
    }
    int visibleCount() const
    {
        return int(std::count_if(items.cbegin(), items.cend(), [](ZWidget *w) { return w->isVisible(); }));
    }
};

} // namespace

class tst_ZToolBar : public QObject
{
    Q_OBJECT

private slots:
    void layout_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<QList<QPointF>>("positions");
        // Children 20x10, 30x20, 10x10, spacing 4, centred across the bar.
        QTest::newRow("horizontal") << Qt::Horizontal << QList<QPointF>{{0, 5}, {24, 0}, {58, 5}};
        QTest::newRow("vertical") << Qt::Vertical << QList<QPointF>{{5, 0}, {0, 14}, {10, 38}};
    }
    void layout()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(QList<QPointF>, positions);
        Fixture f(0);
        const QList<ZSpacer *> items{box(20, 10), box(30, 20), box(10, 10)};
        for (ZSpacer *item : items)
            f.bar->addItem(item);
        f.bar->setOrientation(orientation);
        f.bar->setSizeToChild(true);
        f.bar->activateLayout();
        for (int i = 0; i < items.size(); ++i)
            QCOMPARE(items.at(i)->pos(), positions.at(i));
        QCOMPARE(f.bar->size(), orientation == Qt::Horizontal ? QSizeF(68, 20) : QSizeF(30, 48));
    }

    void insertKeepsOwnAlignment()
    {
        Fixture f(0);
        f.bar->setSpacing(2);
        ZSpacer *a = box(10, 30), *b = box(10, 10), *first = box(6, 10);
        b->setAlignment(Qt::AlignTop);
        f.bar->addItem(a);
        f.bar->addItem(b);
        f.bar->insertItem(first, 0);
        f.bar->addItem(nullptr); // ignored
        QCOMPARE(b->alignment(), Qt::Alignment(Qt::AlignTop));
        QCOMPARE(a->alignment(), Qt::Alignment(Qt::AlignCenter));
        f.bar->setSizeToChild(true);
        f.bar->activateLayout();
        QCOMPARE(first->pos(), QPointF(0, 10));
        QCOMPARE(a->pos(), QPointF(8, 0));
        QCOMPARE(b->pos(), QPointF(20, 0));
    }

    void overflow_data()
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
    void overflow()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(qreal, length);
        QFETCH(int, shown);
        Fixture f(5, orientation);
        f.setLength(length);
        QCOMPARE(f.bar->overflowCount(), 5 - shown);
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(f.items.at(i)->isVisible(), i < shown);
            QCOMPARE(f.bar->isOverflowed(f.items.at(i)), i >= shown);
        }
        ZFrameItem *drop = f.bar->dropButton();
        QCOMPARE(drop->isVisible(), shown < 5);
        if (shown < 5 && shown > 0) {
            // The button follows the last child shown, inside the bar, and its arrow is drawn.
            const QRectF last = f.items.at(shown - 1)->geometry(), button = drop->geometry();
            if (orientation == Qt::Horizontal)
                QVERIFY(button.left() >= last.right() && button.right() <= length + 0.5);
            else
                QVERIFY(button.top() >= last.bottom() && button.bottom() <= length + 0.5);
            const QImage shot = scenetest::render(f.scene, drop->sceneBoundingRect());
            QVERIFY(scenetest::countOf(shot, [](QColor c) { return c.value() < 160; }) >= 6);
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
        delete last;
        delete f.items.at(2);
        QCOMPARE(f.bar->items().size(), 2);
    }

    void sizeHints()
    {
        Fixture f(3);
        f.bar->setMargins(QMargins(2, 1, 3, 1));
        const qreal all = 2 + 3 * 30 + 2 * 4 + 3.0;
        QCOMPARE(f.bar->effectiveSizeHint(Qt::PreferredSize).width(), all);
        QCOMPARE(f.bar->effectiveSizeHint(Qt::MinimumSize).width(), 2 + 18 + 3.0);
        f.setLength(50);
        // Hidden children still count for what the bar would like.
        QCOMPARE(f.bar->effectiveSizeHint(Qt::PreferredSize).width(), all);
        f.bar->setOverflow(false);
        QCOMPARE(f.bar->overflowCount(), 0);
        QCOMPARE(f.visibleCount(), 3);
        QCOMPARE(f.bar->effectiveSizeHint(Qt::MinimumSize).width(), all);
    }

    void menu()
    {
        Fixture f(1);
        auto *button = new ZPushButton;
        button->setText(QStringLiteral("Print"));
        button->setFixSize(QSizeF(30, 20));
        f.bar->addItem(button);
        f.bar->addSeparator();
        ZSpacer *tipped = box(30, 20);
        tipped->setToolTip(QStringLiteral("Zoom"));
        tipped->setEnabled(false);
        f.bar->addItem(tipped);
        f.setLength(40);
        QCOMPARE(f.bar->overflowCount(), 4);
        QSignalSpy triggered(f.bar, &ZToolBar::itemTriggered);
        QSignalSpy clicked(button, &ZAbstractButton::clicked);
        scenetest::click(f.scene, f.bar->dropButton()->sceneBoundingRect().center());
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
        delete f.items.at(0);
        actions.at(0)->trigger();
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
        const bool across = bar == Qt::Horizontal;
        Fixture f(0, bar);
        ZToolBarSeparator *s = f.bar->addSeparator();
        s->setThemePolicy(ZWidget::NoTheme);
        s->setColor(QColor(255, 0, 0));
        s->setImagePath(image);
        QCOMPARE(s->lineOrientation(), across ? Qt::Vertical : Qt::Horizontal);
        const QSizeF hint = s->effectiveSizeHint(Qt::PreferredSize);
        QCOMPARE(across ? hint.width() : hint.height(), 9.0);
        // The bar sized to the separator alone.
        f.bar->setOverflow(false);
        f.bar->setSpacing(0);
        f.bar->resize(across ? QSizeF(9, 30) : QSizeF(30, 9));
        f.bar->activateLayout();
        QCOMPARE(s->geometry(), across ? QRectF(0, 0, 9, 30) : QRectF(0, 0, 30, 9));
        const auto drawn = [&f] {
            return scenetest::boundingBox(scenetest::render(f.scene, QSize(40, 40)),
                                          [](QColor c) { return c != QColor(Qt::white); });
        };
        // A thin line across the bar, kept off its ends, in the colour or the image.
        const QRect box = drawn();
        const int along = across ? box.height() : box.width();
        QVERIFY((across ? QRect(0, 3, 9, 24) : QRect(3, 0, 24, 9)).contains(box));
        QVERIFY(image.isEmpty() ? along == 24 : along > 12);
        QVERIFY((across ? box.width() : box.height()) <= (image.isEmpty() ? 1 : 7));
        const QColor middle = scenetest::render(f.scene, QSize(40, 40)).pixelColor(box.center());
        QCOMPARE(middle == QColor(255, 0, 0), image.isEmpty());
        s->setExtent(-3);
        QCOMPARE(s->extent(), 1);
        s->setColor(QColor());
        s->setImagePath(QString());
        QVERIFY(drawn().isNull());
    }
};

QTEST_MAIN(tst_ZToolBar)
#include "tst_ztoolbar.moc"

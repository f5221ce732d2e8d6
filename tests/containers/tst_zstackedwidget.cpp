// The stacked widget: which page is current after adds, removes and index
// changes, and where the pages stand while one slides in.

#include "zstackedwidget.h"

#include "common/animationclock.h"

#include <QGraphicsScene>
#include <QtTest>

namespace {

// A 100x50 stack of \a pages named by their order, sliding in 200 ms, linear.
struct Fixture
{
    AnimationClock clock;
    QGraphicsScene scene;
    ZStackedWidget *stack = new ZStackedWidget;
    int made = 0;

    explicit Fixture(int pages = 0)
    {
        scene.addItem(stack);
        stack->setGeometry(QRectF(0, 0, 100, 50));
        stack->setDuration(200);
        stack->setEasing(QEasingCurve::Linear);
        for (int i = 0; i < pages; ++i)
            stack->addItem(page());
    }

    ZWidget *page()
    {
        auto *w = new ZWidget;
        w->setObjectName(QString::number(made++));
        return w;
    }
};

} // namespace

class tst_ZStackedWidget : public QObject
{
    Q_OBJECT

private slots:
    void pagesAndIndex_data()
    {
        // Steps: "+" appends a page, "iK" inserts one at K, "sK" sets the
        // index, "rK" removes page K with removeItem(), "dK" deletes page K.
        QTest::addColumn<QString>("steps");
        QTest::addColumn<int>("current");
        QTest::addColumn<QString>("currentPage"); // name of the page shown, "" for none
        QTest::addColumn<QList<int>>("emitted");
        QTest::newRow("first page becomes current") << "+" << 0 << "0" << QList<int>{0};
        QTest::newRow("later pages stay behind") << "+ + +" << 0 << "0" << QList<int>{0};
        QTest::newRow("set") << "+ + + s2" << 2 << "2" << QList<int>{0, 2};
        QTest::newRow("set same") << "+ + s0" << 0 << "0" << QList<int>{0};
        QTest::newRow("set out of range") << "+ + s5 s-1" << 0 << "0" << QList<int>{0};
        QTest::newRow("insert before current") << "+ + s1 i0" << 2 << "1" << QList<int>{0, 1, 2};
        QTest::newRow("insert after current") << "+ + i1" << 0 << "0" << QList<int>{0};
        QTest::newRow("remove before current") << "+ + + s2 r0" << 1 << "2" << QList<int>{0, 2, 1};
        QTest::newRow("remove after current") << "+ + + r2" << 0 << "0" << QList<int>{0};
        QTest::newRow("remove current: next takes over") << "+ + + s1 r1" << 1 << "2" << QList<int>{0, 1, 1};
        QTest::newRow("remove current last") << "+ + + s2 r2" << 1 << "1" << QList<int>{0, 2, 1};
        QTest::newRow("remove only page") << "+ r0" << -1 << "" << QList<int>{0, -1};
        QTest::newRow("delete current") << "+ + s1 d1" << 0 << "0" << QList<int>{0, 1, 0};
        QTest::newRow("delete before current") << "+ + + s2 d1" << 1 << "2" << QList<int>{0, 2, 1};
        QTest::newRow("empty again, then a page") << "+ d0 +" << 0 << "1" << QList<int>{0, -1, 0};
    }
    void pagesAndIndex()
    {
        QFETCH(QString, steps);
        QFETCH(int, current);
        QFETCH(QString, currentPage);
        QFETCH(QList<int>, emitted);
        Fixture f;
        f.stack->setAnimated(false);
        QSignalSpy spy(f.stack, &ZStackedWidget::currentChanged);
        for (const QString &step : steps.split(QLatin1Char(' '))) {
            const int k = step.mid(1).toInt();
            switch (step.at(0).toLatin1()) {
            case '+': f.stack->addItem(f.page()); break;
            case 'i': f.stack->insertItem(f.page(), k); break;
            case 's': f.stack->setCurrentIndex(k); break;
            case 'r': {
                ZWidget *w = f.stack->widget(k);
                f.stack->removeItem(w);
                QCOMPARE(w->parentItem(), nullptr);
                delete w;
                break;
            }
            case 'd': delete f.stack->widget(k); break;
            }
        }
        QCOMPARE(f.stack->currentIndex(), current);
        QList<int> seen;
        for (const QList<QVariant> &args : std::as_const(spy))
            seen.append(args.at(0).toInt());
        QCOMPARE(seen, emitted);
        QCOMPARE(f.stack->currentWidget() ? f.stack->currentWidget()->objectName() : QString(), currentPage);
        // Exactly the current page is visible, and every page fills the widget.
        for (int i = 0; i < f.stack->count(); ++i) {
            QCOMPARE(f.stack->widget(i)->isVisible(), i == current);
            QCOMPARE(f.stack->widget(i)->geometry(), QRectF(0, 0, 100, 50));
        }
    }

    void slide_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<QList<int>>("steps");        // clock steps in ms
        QTest::addColumn<QList<QPointF>>("incoming"); // the new page after each step
        QTest::addColumn<QList<QPointF>>("outgoing"); // the old page after each step
        QTest::newRow("forward from the right")
            << Qt::Horizontal << 0 << 2 << QList<int>{50, 100} << QList<QPointF>{{75, 0}, {25, 0}}
            << QList<QPointF>{{-25, 0}, {-75, 0}};
        QTest::newRow("back from the left")
            << Qt::Horizontal << 2 << 1 << QList<int>{50, 100} << QList<QPointF>{{-75, 0}, {-25, 0}}
            << QList<QPointF>{{25, 0}, {75, 0}};
        QTest::newRow("forward from below")
            << Qt::Vertical << 1 << 2 << QList<int>{100, 50} << QList<QPointF>{{0, 25}, {0, 12.5}}
            << QList<QPointF>{{0, -25}, {0, -37.5}};
    }
    void slide()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(QList<int>, steps);
        QFETCH(QList<QPointF>, incoming);
        QFETCH(QList<QPointF>, outgoing);
        Fixture f(3);
        f.stack->setAnimated(false);
        f.stack->setCurrentIndex(from);
        f.stack->setAnimated(true);
        f.stack->setSlideOrientation(orientation);
        QSignalSpy finished(f.stack, &ZStackedWidget::slideFinished);
        ZWidget *in = f.stack->widget(to), *out = f.stack->widget(from);
        f.stack->setCurrentIndex(to);
        QCOMPARE(f.stack->currentIndex(), to); // the index moves at once
        QVERIFY(f.stack->isSliding());
        QVERIFY(in->isVisible() && out->isVisible());
        for (int i = 0; i < steps.size(); ++i) {
            f.clock.step(steps.at(i));
            QCOMPARE(in->pos(), incoming.at(i));
            QCOMPARE(out->pos(), outgoing.at(i));
        }
        QCOMPARE(finished.size(), 0);
        f.clock.step(200);
        QVERIFY(!f.stack->isSliding());
        QCOMPARE(finished.size(), 1);
        QCOMPARE(in->geometry(), QRectF(0, 0, 100, 50));
        QVERIFY(!out->isVisible() && out->pos() == QPointF(0, 0));
        QVERIFY(!f.stack->widget(3 - from - to)->isVisible()); // the third page never showed
    }

    void noSlide_data()
    {
        QTest::addColumn<QString>("why");
        QTest::newRow("animation off") << "animated";
        QTest::newRow("zero duration") << "duration";
        QTest::newRow("hidden") << "hidden";
        QTest::newRow("disabled") << "disabled";
        QTest::newRow("no scene") << "scene";
    }
    void noSlide()
    {
        QFETCH(QString, why);
        Fixture f(2);
        if (why == QLatin1String("animated"))
            f.stack->setAnimated(false);
        else if (why == QLatin1String("duration"))
            f.stack->setDuration(-5);
        else if (why == QLatin1String("hidden"))
            f.stack->hide();
        else if (why == QLatin1String("disabled"))
            f.stack->setEnabled(false);
        else
            f.scene.removeItem(f.stack);
        f.stack->setCurrentIndex(1);
        QVERIFY(!f.stack->isSliding());
        QCOMPARE(f.stack->widget(1)->pos(), QPointF(0, 0));
        QVERIFY(f.stack->widget(1)->isVisibleTo(f.stack) && !f.stack->widget(0)->isVisibleTo(f.stack));
        if (why == QLatin1String("scene"))
            delete f.stack;
    }

    void slideCutShort()
    {
        Fixture f(3);
        QSignalSpy finished(f.stack, &ZStackedWidget::slideFinished);
        // Hiding ends the slide at once.
        f.stack->setCurrentIndex(1);
        f.clock.step(50);
        f.stack->hide();
        QVERIFY(!f.stack->isSliding());
        QCOMPARE(finished.size(), 1);
        QCOMPARE(f.stack->widget(1)->pos(), QPointF(0, 0));
        f.stack->show();
        QVERIFY(!f.stack->widget(0)->isVisible());
        // A new index ends the running slide and starts another.
        f.stack->setCurrentIndex(2);
        f.clock.step(50);
        f.stack->setCurrentIndex(0);
        QCOMPARE(finished.size(), 2);
        QVERIFY(!f.stack->widget(1)->isVisible());
        QCOMPARE(f.stack->widget(2)->pos().x(), 0.0); // it comes back from the left edge
        f.clock.step(50);
        QCOMPARE(f.stack->widget(0)->pos(), QPointF(-75, 0));
        QCOMPARE(f.stack->widget(2)->pos(), QPointF(25, 0));
        // Resizing ends it too.
        f.stack->resize(80, 40);
        QVERIFY(!f.stack->isSliding());
        QCOMPARE(f.stack->widget(0)->geometry(), QRectF(0, 0, 80, 40));
    }

    // Deleting the page coming in shows the one after it; deleting the old
    // one leaves the new one, now at index 0.
    void pagesDeletedMidSlide()
    {
        for (const bool incoming : {true, false}) {
            Fixture f(3);
            f.stack->setCurrentIndex(1);
            f.clock.step(30);
            delete f.stack->widget(incoming ? 1 : 0);
            QVERIFY(!f.stack->isSliding());
            f.clock.step(300);
            QCOMPARE(f.stack->count(), 2);
            QCOMPARE(f.stack->currentWidget()->objectName(), QString::number(incoming ? 2 : 1));
            QCOMPARE(f.stack->currentWidget()->geometry(), QRectF(0, 0, 100, 50));
            QVERIFY(f.stack->currentWidget()->isVisible());
        }
    }

    void garbageSettings()
    {
        ZStackedWidget stack;
        stack.setEasing(QEasingCurve::Type(-3));
        stack.setEasing(QEasingCurve::Type(9999));
        QCOMPARE(stack.easing(), QEasingCurve::OutCubic);
        stack.setDuration(-1);
        QCOMPARE(stack.duration(), 0);
        stack.setSlideOrientation(Qt::Orientation(7));
        QCOMPARE(stack.slideOrientation(), Qt::Horizontal);
        stack.setCurrentWidget(nullptr);
        stack.finishSlide();
        QCOMPARE(stack.currentIndex(), -1);
    }

    // An index set before the pages exist (as a document sets it) waits for
    // them, and construct() applies it without a slide.
    void indexBeforePages()
    {
        Fixture f;
        f.stack->setCurrentIndex(2);
        for (int i = 0; i < 3; ++i)
            f.stack->addItem(f.page());
        QCOMPARE(f.stack->currentIndex(), 0);
        f.stack->construct();
        QCOMPARE(f.stack->currentWidget()->objectName(), QStringLiteral("2"));
        QVERIFY(!f.stack->isSliding());
    }
};

QTEST_MAIN(tst_ZStackedWidget)
#include "tst_zstackedwidget.moc"

// The stacked widget: which page is current after adds, removes and index
// changes, and where the pages stand while one slides in.

#include "zstackedwidget.h"
#include "zxmlui.h"

#include "../items/animationclock.h"

#include <QGraphicsScene>
#include <QtTest>

namespace {

struct Fixture
{
    QGraphicsScene scene;
    ZStackedWidget *stack = new ZStackedWidget;
    QList<QPointer<ZWidget>> made; // every page ever added, by the name of its order

    Fixture()
    {
        scene.addItem(stack);
        stack->setGeometry(QRectF(0, 0, 100, 50));
    }

    ZWidget *page()
    {
        auto *w = new ZWidget;
        w->setObjectName(QString::number(made.size()));
        made.append(w);
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
        const QStringList list = steps.split(QLatin1Char(' '));
        for (const QString &step : list) {
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
        QTest::addColumn<QList<int>>("steps");       // clock steps in ms
        QTest::addColumn<QList<QPointF>>("incoming"); // the new page after each step
        QTest::addColumn<QList<QPointF>>("outgoing"); // the old page after each step
        // 100 x 50, 200 ms, linear.
        QTest::newRow("forward from the right")
            << Qt::Horizontal << 0 << 2 << QList<int>{50, 100}
            << QList<QPointF>{QPointF(75, 0), QPointF(25, 0)} << QList<QPointF>{QPointF(-25, 0), QPointF(-75, 0)};
        QTest::newRow("back from the left")
            << Qt::Horizontal << 2 << 1 << QList<int>{50, 100}
            << QList<QPointF>{QPointF(-75, 0), QPointF(-25, 0)} << QList<QPointF>{QPointF(25, 0), QPointF(75, 0)};
        QTest::newRow("forward from below")
            << Qt::Vertical << 1 << 2 << QList<int>{100, 50}
            << QList<QPointF>{QPointF(0, 25), QPointF(0, 12.5)} << QList<QPointF>{QPointF(0, -25), QPointF(0, -37.5)};
    }
    void slide()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(QList<int>, steps);
        QFETCH(QList<QPointF>, incoming);
        QFETCH(QList<QPointF>, outgoing);
        AnimationClock clock;
        Fixture f;
        for (int i = 0; i < 3; ++i)
            f.stack->addItem(f.page());
        f.stack->setAnimated(false);
        f.stack->setCurrentIndex(from);
        f.stack->setAnimated(true);
        f.stack->setDuration(200);
        f.stack->setEasing(QEasingCurve::Linear);
        f.stack->setSlideOrientation(orientation);
        QSignalSpy finished(f.stack, &ZStackedWidget::slideFinished);
        ZWidget *in = f.stack->widget(to);
        ZWidget *out = f.stack->widget(from);

        f.stack->setCurrentIndex(to);
        QCOMPARE(f.stack->currentIndex(), to); // the index moves at once
        QVERIFY(f.stack->isSliding());
        QVERIFY(in->isVisible() && out->isVisible());
        for (int i = 0; i < steps.size(); ++i) {
            clock.step(steps.at(i));
            QCOMPARE(in->pos(), incoming.at(i));
            QCOMPARE(out->pos(), outgoing.at(i));
        }
        QCOMPARE(finished.size(), 0);
        clock.step(200);
        QVERIFY(!f.stack->isSliding());
        QCOMPARE(finished.size(), 1);
        QCOMPARE(in->geometry(), QRectF(0, 0, 100, 50));
        QVERIFY(!out->isVisible());
        QCOMPARE(out->pos(), QPointF(0, 0));
        // Pages other than the two never showed.
        for (int i = 0; i < 3; ++i) {
            if (i != from && i != to)
                QVERIFY(!f.stack->widget(i)->isVisible());
        }
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
        AnimationClock clock;
        Fixture f;
        f.stack->addItem(f.page());
        f.stack->addItem(f.page());
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
        QVERIFY(f.stack->widget(1)->isVisible() || why == QLatin1String("hidden"));
        QVERIFY(!f.stack->widget(0)->isVisible());
        if (why == QLatin1String("scene"))
            delete f.stack;
    }

    void slideCutShort()
    {
        AnimationClock clock;
        Fixture f;
        for (int i = 0; i < 3; ++i)
            f.stack->addItem(f.page());
        f.stack->setDuration(200);
        f.stack->setEasing(QEasingCurve::Linear);
        QSignalSpy finished(f.stack, &ZStackedWidget::slideFinished);

        // Hiding ends the slide at once.
        f.stack->setCurrentIndex(1);
        clock.step(50);
        f.stack->hide();
        QVERIFY(!f.stack->isSliding());
        QCOMPARE(finished.size(), 1);
        QCOMPARE(f.stack->widget(1)->pos(), QPointF(0, 0));
        f.stack->show();
        QVERIFY(!f.stack->widget(0)->isVisible());

        // A new index ends the running slide and starts another.
        f.stack->setCurrentIndex(2);
        clock.step(50);
        f.stack->setCurrentIndex(0);
        QCOMPARE(finished.size(), 2);
        QVERIFY(!f.stack->widget(1)->isVisible());
        QCOMPARE(f.stack->widget(2)->pos().x(), 0.0); // it comes back from the left edge
        clock.step(50);
        QCOMPARE(f.stack->widget(0)->pos(), QPointF(-75, 0));
        QCOMPARE(f.stack->widget(2)->pos(), QPointF(25, 0));

        // Resizing ends it too.
        f.stack->resize(80, 40);
        QVERIFY(!f.stack->isSliding());
        QCOMPARE(f.stack->widget(0)->geometry(), QRectF(0, 0, 80, 40));
    }

    void pagesDeletedMidSlide_data()
    {
        QTest::addColumn<bool>("deleteIncoming");
        QTest::newRow("incoming") << true;
        QTest::newRow("outgoing") << false;
    }
    void pagesDeletedMidSlide()
    {
        QFETCH(bool, deleteIncoming);
        AnimationClock clock;
        Fixture f;
        for (int i = 0; i < 3; ++i)
            f.stack->addItem(f.page());
        f.stack->setCurrentIndex(1);
        clock.step(30);
        delete f.stack->widget(deleteIncoming ? 1 : 0);
        QVERIFY(!f.stack->isSliding());
        clock.step(300);
        QCOMPARE(f.stack->count(), 2);
        // Deleting the page coming in shows the one after it; deleting the
        // old one leaves the new one, now at index 0.
        QCOMPARE(f.stack->currentWidget()->objectName(), deleteIncoming ? QStringLiteral("2") : QStringLiteral("1"));
        QCOMPARE(f.stack->currentWidget()->geometry(), QRectF(0, 0, 100, 50));
        QVERIFY(f.stack->currentWidget()->isVisible());
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

    void fromDocument()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        const QByteArray doc = R"(<uitree>
  <ZStackedWidget objectName="stack" currentIndex="2" duration="120" easing="InOutQuad" slideOrientation="Vertical">
    <ZWidget objectName="a"/>
    <ZWidget objectName="b"/>
    <ZWidget objectName="c"/>
  </ZStackedWidget>
</uitree>)";
        QVERIFY(ZXmlUI::widgetFromMemory(doc, root));
        auto *stack = qobject_cast<ZStackedWidget *>(root->findObject(QStringLiteral("stack")));
        QVERIFY(stack);
        QCOMPARE(stack->count(), 3);
        // The index came before the pages: it waits for them, and does not slide.
        QCOMPARE(stack->currentIndex(), 2);
        QCOMPARE(stack->currentWidget()->objectName(), QStringLiteral("c"));
        QVERIFY(!stack->isSliding());
        QCOMPARE(stack->duration(), 120);
        QCOMPARE(stack->easing(), QEasingCurve::InOutQuad);
        QCOMPARE(stack->slideOrientation(), Qt::Vertical);
        QVERIFY(stack->animated());
    }
};

QTEST_MAIN(tst_ZStackedWidget)
#include "tst_zstackedwidget.moc"

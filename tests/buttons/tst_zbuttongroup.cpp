// Button groups: which radio buttons join (also from nested containers and
// documents), exclusivity under real clicks, and members that leave or die.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsScene>

#include "buttons/buttontestutil.h"
#include "zbuttongroup.h"
#include "zcheckbutton.h"
#include "zradiobutton.h"
#include "zspacer.h"
#include "zxmlui.h"

using buttontest::Pointer;

namespace {

// Where to click a button, in scene coordinates.
QPointF centreOf(QGraphicsWidget *w)
{
    return w->mapToScene(w->rect().center());
}

QList<bool> checkedStates(const QList<ZRadioButton *> &radios)
{
    QList<bool> states;
    for (ZRadioButton *radio : radios)
        states << radio->checked();
    return states;
}

} // namespace

class tst_ZButtonGroup : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }

    void exclusive_data();
    void exclusive();
    void nestedFromXml();
    void offeredTwiceJoinsOnce();
    void addItemCollectsNested();
    void leavingAndDeletedMembers();
    void deepNesting();
};

void tst_ZButtonGroup::exclusive_data()
{
    QTest::addColumn<QList<bool>>("before");
    QTest::addColumn<int>("click");
    QTest::newRow("none checked, second") << QList<bool>{false, false, false} << 1;
    QTest::newRow("first checked, second") << QList<bool>{true, false, false} << 1;
    QTest::newRow("second already checked") << QList<bool>{false, true, false} << 1;
    QTest::newRow("all checked, third") << QList<bool>{true, true, true} << 2;
    QTest::newRow("third checked, first") << QList<bool>{false, false, true} << 0;
}

void tst_ZButtonGroup::exclusive()
{
    QFETCH(QList<bool>, before);
    QFETCH(int, click);

    QGraphicsScene scene;
    auto *group = new ZButtonGroup;
    scene.addItem(group);
    group->setLayoutType(ZWidget::VBox);
    QList<ZRadioButton *> radios;
    for (int i = 0; i < 3; ++i) {
        auto *radio = new ZRadioButton;
        radio->setText(QStringLiteral("Choice %1").arg(i));
        radio->setFixHeight(20);
        group->addItem(radio);
        radios << radio;
        radio->setChecked(before[i]);
    }
    group->resize(120, 80);
    group->activateLayout();
    QCOMPARE(group->buttons(), radios);

    QSignalSpy selected(group, &ZButtonGroup::radioSelected);
    Pointer pointer(scene);
    pointer.click(centreOf(radios[click]));
    QList<bool> expected{false, false, false};
    expected[click] = true;
    QCOMPARE(checkedStates(radios), expected);
    QCOMPARE(selected.count(), 1);
    QCOMPARE(selected.first().first().value<QObject *>(), radios[click]);
    QCOMPARE(group->checkedButton(), radios[click]);

    // Clicking the checked one again cannot clear it.
    pointer.click(centreOf(radios[click]));
    QCOMPARE(checkedStates(radios), expected);
    QCOMPARE(selected.count(), 2);
}

void tst_ZButtonGroup::nestedFromXml()
{
    const QByteArray document = R"(<uitree>
  <ZButtonGroup objectName="group" layout="VBox" fixSize="200,200">
    <ZRadioButton objectName="a" text="A" fixHeight="20"/>
    <ZSpacer layout="HBox" fixHeight="40">
      <ZRadioButton objectName="b" text="B"/>
      <ZSpacer layout="VBox">
        <ZRadioButton objectName="c" text="C"/>
      </ZSpacer>
      <ZCheckButton objectName="check" text="Not a member"/>
    </ZSpacer>
  </ZButtonGroup>
  <ZRadioButton objectName="outside" text="Outside" fixSize="80,20"/>
</uitree>)";
    QGraphicsScene scene;
    auto *root = new ZWidget;
    scene.addItem(root);
    root->setLayoutType(ZWidget::VBox);
    root->resize(300, 300);
    QVERIFY(ZXmlUI::widgetFromMemory(document, root));
    root->activateLayout();
    auto *group = qobject_cast<ZButtonGroup *>(root->findObject(QStringLiteral("group")));
    QVERIFY(group);
    group->activateLayout();
    const auto radio = [&](const char *name) {
        return qobject_cast<ZRadioButton *>(root->findObject(QLatin1String(name)));
    };
    QList<ZRadioButton *> members{radio("a"), radio("b"), radio("c")};
    QVERIFY(!members.contains(nullptr));
    QCOMPARE(group->buttons(), members);
    QCoreApplication::processEvents(); // inner layouts settle

    QSignalSpy selected(group, &ZButtonGroup::radioSelected);
    Pointer pointer(scene);
    pointer.click(centreOf(members[2]));
    QCOMPARE(checkedStates(members), (QList<bool>{false, false, true}));
    pointer.click(centreOf(members[0]));
    QCOMPARE(checkedStates(members), (QList<bool>{true, false, false}));
    QCOMPARE(selected.count(), 2);

    // Neither the check button nor the radio button outside belong.
    auto *check = qobject_cast<ZCheckButton *>(root->findObject(QStringLiteral("check")));
    pointer.click(centreOf(check));
    QVERIFY(check->checked());
    QVERIFY(members[0]->checked());
    ZRadioButton *outside = radio("outside");
    pointer.click(centreOf(outside));
    pointer.click(centreOf(outside));
    QVERIFY(!outside->checked()); // toggles like a check box
    QVERIFY(members[0]->checked());
    QCOMPARE(selected.count(), 2);
}

void tst_ZButtonGroup::offeredTwiceJoinsOnce()
{
    // The loader adds an element with addItem() and then runs construct():
    // the radio button is offered twice and must be connected once.
    QGraphicsScene scene;
    auto *group = new ZButtonGroup;
    scene.addItem(group);
    auto *radio = new ZRadioButton;
    group->addItem(radio);
    radio->resize(40, 20);
    group->construct();
    group->construct();
    QCOMPARE(group->buttons().size(), 1);
    QSignalSpy selected(group, &ZButtonGroup::radioSelected);
    Pointer pointer(scene);
    pointer.click(centreOf(radio));
    QCOMPARE(selected.count(), 1);
}

void tst_ZButtonGroup::addItemCollectsNested()
{
    ZButtonGroup group;
    auto *box = new ZSpacer;
    box->setLayoutType(ZWidget::VBox);
    auto *first = new ZRadioButton;
    auto *second = new ZRadioButton;
    box->addItem(first);
    box->addItem(second);
    auto *plain = new ZCheckButton;
    box->addItem(plain);
    group.addItem(box);
    QCOMPARE(group.buttons(), (QList<ZRadioButton *>{first, second}));
    QVERIFY(!group.checkedButton());
}

void tst_ZButtonGroup::leavingAndDeletedMembers()
{
    QGraphicsScene scene;
    auto *group = new ZButtonGroup;
    scene.addItem(group);
    auto *inner = new ZSpacer;
    group->addItem(inner);
    auto *nested = new ZRadioButton(inner);
    auto *direct = new ZRadioButton;
    auto *leaving = new ZRadioButton;
    group->addItem(direct);
    group->addItem(leaving);
    group->construct(); // finds the one that came into the inner box later
    QCOMPARE(group->buttons(), (QList<ZRadioButton *>{direct, leaving, nested}));

    delete nested;
    QCOMPARE(group->buttons(), (QList<ZRadioButton *>{direct, leaving}));

    group->removeItem(leaving);
    QCOMPARE(group->buttons(), QList<ZRadioButton *>{direct});
    leaving->setPos(200, 0);
    leaving->resize(30, 20);
    direct->setPos(0, 0);
    direct->resize(30, 20);

    // The one that left no longer clears the group, nor is cleared by it.
    Pointer pointer(scene);
    pointer.click(centreOf(direct));
    pointer.click(centreOf(leaving));
    QVERIFY(direct->checked());
    QVERIFY(leaving->checked());
    QSignalSpy selected(group, &ZButtonGroup::radioSelected);
    pointer.click(centreOf(direct));
    QCOMPARE(selected.count(), 1);
    QVERIFY(leaving->checked());
    delete leaving;

    // A member deleted by a receiver of the click.
    connect(group, &ZButtonGroup::radioSelected, this, [](QObject *button) { delete button; });
    QPointer<ZRadioButton> guard(direct);
    pointer.click(centreOf(direct));
    QVERIFY(guard.isNull());
    QVERIFY(group->buttons().isEmpty());
}

void tst_ZButtonGroup::deepNesting()
{
    // Every level is looked through, however deep, and only radio buttons join.
    ZButtonGroup group;
    auto *outer = new ZSpacer;
    ZWidget *parent = outer;
    QList<ZRadioButton *> radios;
    for (int i = 0; i < 600; ++i) {
        parent = new ZSpacer(parent);
        if (i % 200 == 199)
            radios << new ZRadioButton(parent);
    }
    new ZCheckButton(parent);
    group.addItem(outer);
    QCOMPARE(group.buttons(), radios);
}

QTEST_MAIN(tst_ZButtonGroup)
#include "tst_zbuttongroup.moc"

// Button groups: which radio buttons join (also from nested containers and
// documents), exclusivity under real clicks, and members that leave or die.

#include <QtTest/QtTest>

#include "common/scenetest.h"
#include "zbuttongroup.h"
#include "zcheckbutton.h"
#include "zradiobutton.h"
#include "zspacer.h"
#include "zxmlui.h"

namespace {

// Clicks the middle of a button, through the scene.
void click(QGraphicsScene &scene, QGraphicsWidget *w)
{
    scenetest::click(scene, w->mapToScene(w->rect().center()));
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

    void exclusive_data()
    {
        QTest::addColumn<QList<bool>>("before");
        QTest::addColumn<int>("clicked");
        QTest::newRow("none checked, second") << QList<bool>{false, false, false} << 1;
        QTest::newRow("first checked, second") << QList<bool>{true, false, false} << 1;
        QTest::newRow("second already checked") << QList<bool>{false, true, false} << 1;
        QTest::newRow("all checked, third") << QList<bool>{true, true, true} << 2;
        QTest::newRow("third checked, first") << QList<bool>{false, false, true} << 0;
    }
    void exclusive()
    {
        QFETCH(QList<bool>, before);
        QFETCH(int, clicked);
        QGraphicsScene scene;
        auto *group = new ZButtonGroup;
        scene.addItem(group);
        group->setLayoutType(ZWidget::VBox);
        QList<ZRadioButton *> radios;
        for (int i = 0; i < 3; ++i) {
            radios << new ZRadioButton;
            radios[i]->setText(QStringLiteral("Choice %1").arg(i));
            radios[i]->setFixHeight(20);
            group->addItem(radios[i]);
            radios[i]->setChecked(before[i]);
        }
        group->resize(120, 80);
        group->activateLayout();
        QCOMPARE(group->buttons(), radios);

        QSignalSpy selected(group, &ZButtonGroup::radioSelected);
        QList<bool> expected{false, false, false};
        expected[clicked] = true;
        for (int times = 1; times <= 2; ++times) { // clicking the checked one again cannot clear it
            click(scene, radios[clicked]);
            QCOMPARE(checkedStates(radios), expected);
            QCOMPARE(selected.count(), times);
            QCOMPARE(selected.last().first().value<QObject *>(), radios[clicked]);
            QCOMPARE(group->checkedButton(), radios[clicked]);
        }
    }

    // Members nested in inner containers join; check buttons and radio
    // buttons outside the group do not.
    void nestedFromXml()
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
        const auto find = [&](const char *name) { return qobject_cast<ZCheckButton *>(root->findObject(QLatin1String(name))); };
        const QList<ZRadioButton *> members{qobject_cast<ZRadioButton *>(find("a")), qobject_cast<ZRadioButton *>(find("b")),
                                            qobject_cast<ZRadioButton *>(find("c"))};
        QVERIFY(!members.contains(nullptr));
        QCOMPARE(group->buttons(), members);
        scenetest::settle(); // inner layouts

        QSignalSpy selected(group, &ZButtonGroup::radioSelected);
        click(scene, members[2]);
        QCOMPARE(checkedStates(members), (QList<bool>{false, false, true}));
        click(scene, members[0]);
        QCOMPARE(checkedStates(members), (QList<bool>{true, false, false}));

        click(scene, find("check"));
        QVERIFY(find("check")->checked());
        click(scene, find("outside"));
        click(scene, find("outside"));
        QVERIFY(!find("outside")->checked()); // toggles like a check box
        QVERIFY(members[0]->checked());
        QCOMPARE(selected.count(), 2);
    }

    // The loader adds an element with addItem() and then runs construct():
    // the radio button is offered twice and must be connected once.
    void offeredTwiceJoinsOnce()
    {
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
        click(scene, radio);
        QCOMPARE(selected.count(), 1);
    }

    void leavingAndDeletedMembers()
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
        leaving->setGeometry(200, 0, 30, 20);
        direct->setGeometry(0, 0, 30, 20);

        // The one that left no longer clears the group, nor is cleared by it.
        click(scene, direct);
        click(scene, leaving);
        QVERIFY(direct->checked() && leaving->checked());
        QSignalSpy selected(group, &ZButtonGroup::radioSelected);
        click(scene, direct);
        QCOMPARE(selected.count(), 1);
        QVERIFY(leaving->checked());
        delete leaving;

        // A member deleted by a receiver of the click.
        connect(group, &ZButtonGroup::radioSelected, this, [](QObject *button) { delete button; });
        QPointer<ZRadioButton> guard(direct);
        click(scene, direct);
        QVERIFY(guard.isNull());
        QVERIFY(group->buttons().isEmpty());
    }

    // Every level is looked through, however deep, and only radio buttons join.
    void deepNesting()
    {
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
        QVERIFY(!group.checkedButton());
    }
};

QTEST_MAIN(tst_ZButtonGroup)
#include "tst_zbuttongroup.moc"

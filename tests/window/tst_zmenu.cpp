// The skinned menu: entries and shortcut texts, modal execution ended by
// keys from timers, sizes and the skin images it draws.

#include "zaction.h"
#include "zmenu.h"
#include "zmenustyle.h"
#include "zresource.h"

#include "common/scenetest.h"

#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QStyleOptionMenuItem>
#include <QTimer>
#include <QtTest>

namespace {

class OpenMenu : public ZMenu
{
public:
    using ZMenu::ZMenu;
    QStyleOptionMenuItem optionFor(QAction *action) const
    {
        QStyleOptionMenuItem option;
        initStyleOption(&option, action);
        return option;
    }
};

// Once the menu is up, types \a keys into it; remembers where it was.
struct Typist
{
    QList<int> keys;
    QPoint shownAt{-1, -1};
    bool sawMenu = false;

    void arm()
    {
        QTimer::singleShot(0, [this] {
            QWidget *popup = QApplication::activePopupWidget();
            sawMenu = popup != nullptr;
            if (!popup)
                return;
            shownAt = popup->pos();
            for (int key : std::as_const(keys))
                QTest::keyClick(popup, Qt::Key(key));
            // Whatever happened, never leave the test hanging in the menu.
            if (QApplication::activePopupWidget() == popup)
                popup->close();
        });
    }
};

// The colour most pixels of a rectangle have.
QColor dominant(const QImage &img, const QRect &r)
{
    QHash<QRgb, int> count;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            ++count[img.pixel(x, y)];
    QRgb best = 0;
    int most = -1;
    for (auto it = count.cbegin(); it != count.cend(); ++it) {
        if (it.value() > most) {
            most = it.value();
            best = it.key();
        }
    }
    return QColor::fromRgba(best);
}

} // namespace

class tst_ZMenu : public QObject
{
    Q_OBJECT

private slots:
    // Every menu and submenu shares the one skinned style.
    void entries()
    {
        ZMenu menu(QStringLiteral("Title"));
        QCOMPARE(menu.style(), ZMenu::menuStyle());
        ZAction *open = menu.addMenuAction(QStringLiteral("&Open"), QStringLiteral("Ctrl+O"));
        QCOMPARE(open->shortcutText(), QStringLiteral("Ctrl+O"));
        QVERIFY(open->shortcut().isEmpty()); // only a text
        ZMenu *sub = menu.addSubMenu(QStringLiteral("More"));
        QCOMPARE(sub->style(), ZMenu::menuStyle());
        QCOMPARE(menu.actions(), (QList<QAction *>{open, sub->menuAction()}));
        QVERIFY(open->parent() == &menu && sub->parent() == &menu);
    }

    void shortcutTextInTheOption_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shortcutText");
        QTest::addColumn<QString>("keys"); // a real shortcut, as text
        QTest::addColumn<QString>("shown");
        QTest::newRow("plain") << "Copy" << QString() << QString() << "Copy";
        QTest::newRow("shortcut text") << "Copy" << "Ctrl+C" << QString() << "Copy\tCtrl+C";
        QTest::newRow("real shortcut") << "Save" << QString() << "Ctrl+S" << "Save\tCtrl+S";
        QTest::newRow("text wins over the real one") << "Save" << "F2" << "Ctrl+S" << "Save\tF2";
        QTest::newRow("tab in the text wins") << "Find\tCtrl+F" << "F3" << QString() << "Find\tCtrl+F";
    }
    void shortcutTextInTheOption()
    {
        QFETCH(QString, text);
        QFETCH(QString, shortcutText);
        QFETCH(QString, keys);
        QFETCH(QString, shown);
        OpenMenu menu;
        ZAction *action = menu.addMenuAction(text, shortcutText);
        action->setShortcutVisibleInContextMenu(true);
        if (!keys.isEmpty())
            action->setShortcut(QKeySequence(keys));
        QCOMPARE(menu.optionFor(action).text, shown);
    }

    void widthMakesRoomForTheShortcut()
    {
        ZMenu menu;
        ZAction *action = menu.addMenuAction(QStringLiteral("Paste"));
        const int plain = menu.sizeHint().width();
        action->setShortcutText(QStringLiteral("Ctrl+Shift+Alt+V"));
        const int wider = menu.sizeHint().width();
        const QFontMetrics fm(menu.font());
        QVERIFY2(wider >= plain + fm.horizontalAdvance(QStringLiteral("Ctrl+Shift+Alt+V")),
                 qPrintable(QStringLiteral("%1 -> %2").arg(plain).arg(wider)));
        QSignalSpy changed(action, &QAction::changed);
        action->setShortcutText(QStringLiteral("Ctrl+Shift+Alt+V"));
        QCOMPARE(changed.count(), 0);
        action->setShortcutText(QString());
        QCOMPARE(changed.count(), 1);
        QCOMPARE(menu.sizeHint().width(), plain);
    }

    void entrySizes()
    {
        ZMenuStyle *style = ZMenu::menuStyle();
        QStyleOptionMenuItem item;
        item.menuItemType = QStyleOptionMenuItem::Normal;
        item.text = QStringLiteral("Item");
        item.font = QApplication::font();
        const QSize s = style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(10, 10));
        QVERIFY(s.height() >= ZMenuStyle::ItemHeight);
        const QFontMetrics fm(item.font);
        const int label = fm.size(Qt::TextSingleLine, QStringLiteral("Item")).width();
        QCOMPARE(s.width(), ZMenuStyle::CheckColumn + label + ZMenuStyle::ArrowColumn);
        // The mnemonic's ampersand takes no room; a shortcut text does.
        item.text = QStringLiteral("&Item");
        QCOMPARE(style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(10, 10)).width(), s.width());
        item.text = QStringLiteral("Item\tCtrl+I");
        QCOMPARE(style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(10, 10)).width(),
                 s.width() + ZMenuStyle::ShortcutGap + fm.horizontalAdvance(QStringLiteral("Ctrl+I")));
        item.text = QStringLiteral("Item");
        item.menuItemType = QStyleOptionMenuItem::Separator;
        QCOMPARE(style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(10, 2)).height(),
                 ZMenuStyle::SeparatorHeight + 2);
        QFont big = item.font;
        big.setPixelSize(40);
        item.menuItemType = QStyleOptionMenuItem::Normal;
        item.font = big;
        QVERIFY(style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(10, 10)).height() >= 40);
    }

    void execReturnsTheChosenEntry_data()
    {
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<QString>("chosen"); // empty: dismissed
        QTest::newRow("first") << QList<int>{Qt::Key_Down, Qt::Key_Return} << "One";
        QTest::newRow("disabled entry skipped") << QList<int>{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return} << "Three";
        QTest::newRow("separator skipped")
            << QList<int>{Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return} << "Four";
        QTest::newRow("escape") << QList<int>{Qt::Key_Down, Qt::Key_Escape} << "";
        QTest::newRow("mnemonic") << QList<int>{Qt::Key_F} << "Four";
    }
    void execReturnsTheChosenEntry()
    {
        QFETCH(QList<int>, keys);
        QFETCH(QString, chosen);
        ZMenu menu;
        menu.addMenuAction(QStringLiteral("One"));
        menu.addMenuAction(QStringLiteral("Two"))->setEnabled(false);
        menu.addMenuAction(QStringLiteral("Three"), QStringLiteral("Ctrl+3"));
        menu.addSeparator();
        menu.addMenuAction(QStringLiteral("&Four"));
        QSignalSpy triggered(&menu, &QMenu::triggered);
        Typist typist;
        typist.keys = keys;
        typist.arm();
        QAction *result = menu.exec(QPoint(100, 100));
        QVERIFY(typist.sawMenu);
        QCOMPARE(result ? result->text().remove(QLatin1Char('&')) : QString(), chosen);
        QCOMPARE(triggered.count(), chosen.isEmpty() ? 0 : 1);
        QVERIFY(!menu.isVisible());
    }

    void execAtTheCursor()
    {
        // An empty menu is dismissed by Return.
        ZMenu empty;
        Typist dismiss;
        dismiss.keys = {Qt::Key_Return};
        dismiss.arm();
        QCOMPARE(empty.exec(QPoint(50, 50)), nullptr);
        const QRect work = QGuiApplication::primaryScreen()->availableGeometry();
        const QPoint cursor = work.topLeft() + QPoint(120, 90);
        QCursor::setPos(cursor);
        if (QCursor::pos() != cursor)
            QSKIP("The platform cannot place the cursor");
        ZMenu menu;
        menu.addMenuAction(QStringLiteral("Only"));
        Typist typist;
        typist.keys = {Qt::Key_Escape};
        typist.arm();
        QCOMPARE(menu.execAtCursor(), nullptr);
        QCOMPARE(typist.shownAt, cursor);
    }

    void drawsTheSkin()
    {
        ZMenu menu;
        menu.addMenuAction(QStringLiteral("Open"), QStringLiteral("Ctrl+O"));
        ZAction *hovered = menu.addMenuAction(QStringLiteral("Hovered entry"));
        menu.addSeparator();
        ZAction *checked = menu.addMenuAction(QStringLiteral("Checked"));
        checked->setCheckable(true);
        checked->setChecked(true);
        ZAction *greyed = menu.addMenuAction(QStringLiteral("Disabled and checked"));
        greyed->setCheckable(true);
        greyed->setChecked(true);
        greyed->setEnabled(false);
        menu.addSubMenu(QStringLiteral("More"))->addMenuAction(QStringLiteral("Inside"));
        menu.popup(QPoint(40, 40));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        menu.setActiveAction(hovered);
        const QImage img = menu.grab().toImage().convertToFormat(QImage::Format_ARGB32);
        menu.close();
        const auto skin = [](const char *name, int y) {
            const QImage i = ZResource::loadPixmap(QLatin1String(":/image/theme/") + QLatin1String(name)).toImage();
            return i.pixelColor(i.width() / 2, y < 0 ? i.height() / 2 : y);
        };
        const auto inked = [&img](const QRect &r) {
            return scenetest::countOf(img.copy(r), [](QColor c) { return c.lightness() < 200; }) > 0;
        };
        const auto row = [&menu](QAction *a) { return menu.actionGeometry(a); };
        // The hover image backs the hovered row (away from the text); other rows are plain.
        QCOMPARE(dominant(img, row(hovered).adjusted(row(hovered).width() - 30, 4, -6, -4)), skin("menuhover.png", -1));
        const QRect open = row(menu.actions().at(0));
        QCOMPARE(dominant(img, open.adjusted(open.width() - 30, 4, -6, -4)), QColor(255, 255, 255));
        // The separator's line runs across its row.
        const QRect sep = row(menu.actions().at(2));
        QVERIFY(!scenetest::boxOf(img.copy(sep.center().x(), sep.top(), 1, sep.height()),
                                  skin("menusperator.png", 3)).isNull());
        // Check marks in the check column of both checked rows; the submenu's arrow at the right end.
        for (QAction *a : {static_cast<QAction *>(checked), static_cast<QAction *>(greyed)}) {
            const QRect column(row(a).left(), row(a).top(), ZMenuStyle::CheckColumn, row(a).height());
            QCOMPARE(dominant(img, column), QColor(255, 255, 255));
            QVERIFY(inked(column));
        }
        const QRect sub = row(menu.actions().last());
        QVERIFY(inked(QRect(sub.right() - ZMenuStyle::ArrowColumn, sub.top(), ZMenuStyle::ArrowColumn + 1,
                            sub.height())));
    }
};

QTEST_MAIN(tst_ZMenu)
#include "tst_zmenu.moc"

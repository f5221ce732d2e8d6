// The skinned menu: entries and shortcut texts, modal execution ended by
// keys from timers, sizes and the skin images it draws.

#include "zaction.h"
#include "zmenu.h"
#include "zmenustyle.h"
#include "zresource.h"

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
    void sharedStyle()
    {
        ZMenu a;
        ZMenu b(QStringLiteral("Title"));
        QVERIFY(ZMenu::menuStyle());
        QCOMPARE(a.style(), ZMenu::menuStyle());
        QCOMPARE(b.style(), ZMenu::menuStyle());
        QCOMPARE(b.title(), QStringLiteral("Title"));
        QCOMPARE(ZMenu::menuStyle()->parent(), qApp);
    }

    void entries()
    {
        ZMenu menu;
        ZAction *open = menu.addMenuAction(QStringLiteral("&Open"), QStringLiteral("Ctrl+O"));
        QCOMPARE(open->text(), QStringLiteral("&Open"));
        QCOMPARE(open->shortcutText(), QStringLiteral("Ctrl+O"));
        QVERIFY(open->shortcut().isEmpty()); // only a text
        QCOMPARE(open->parent(), &menu);
        ZMenu *sub = menu.addSubMenu(QStringLiteral("More"));
        QCOMPARE(sub->parent(), &menu);
        QCOMPARE(sub->style(), ZMenu::menuStyle());
        QCOMPARE(menu.actions().size(), 2);
        QCOMPARE(menu.actions().at(1)->menu(), sub);

        QPointer<ZAction> guard(open);
        QPointer<ZMenu> subGuard(sub);
        { ZMenu scratch; scratch.addMenuAction(QStringLiteral("x")); }
        QVERIFY(guard && subGuard);
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

    void emptyMenuDismisses()
    {
        ZMenu menu;
        Typist typist;
        typist.keys = {Qt::Key_Return};
        typist.arm();
        QCOMPARE(menu.exec(QPoint(50, 50)), nullptr);
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
        img.save(QCoreApplication::applicationDirPath() + QStringLiteral("/menu.png"));
        menu.close();

        const QImage hover = ZResource::loadPixmap(QStringLiteral(":/image/theme/menuhover.png"))
                                 .toImage()
                                 .convertToFormat(QImage::Format_ARGB32);
        const QImage separator = ZResource::loadPixmap(QStringLiteral(":/image/theme/menusperator.png"))
                                     .toImage()
                                     .convertToFormat(QImage::Format_ARGB32);
        const QColor hoverColour = hover.pixelColor(hover.width() / 2, hover.height() / 2);
        const QColor separatorColour = separator.pixelColor(separator.width() / 2, 3);

        const QRect hoverRow = menu.actionGeometry(hovered);
        // The hover image backs the row (away from the text).
        QCOMPARE(dominant(img, hoverRow.adjusted(hoverRow.width() - 30, 4, -6, -4)), hoverColour);
        // Other rows are plain.
        const QRect openRow = menu.actionGeometry(menu.actions().at(0));
        QCOMPARE(dominant(img, openRow.adjusted(openRow.width() - 30, 4, -6, -4)), QColor(255, 255, 255));
        // The separator's line runs across its row.
        const QRect sepRow = menu.actionGeometry(menu.actions().at(2));
        bool line = false;
        for (int y = sepRow.top(); y <= sepRow.bottom(); ++y)
            line = line || img.pixelColor(sepRow.center().x(), y) == separatorColour;
        QVERIFY(line);
        // Check marks: something drawn in the check column of both checked rows.
        for (QAction *a : {static_cast<QAction *>(checked), static_cast<QAction *>(greyed)}) {
            const QRect row = menu.actionGeometry(a);
            const QRect column(row.left(), row.top(), ZMenuStyle::CheckColumn, row.height());
            QVERIFY(dominant(img, column) == QColor(255, 255, 255));
            bool mark = false;
            for (int y = column.top(); y <= column.bottom(); ++y)
                for (int x = column.left(); x <= column.right(); ++x)
                    mark = mark || img.pixelColor(x, y).lightness() < 200;
            QVERIFY(mark);
        }
        // The submenu's arrow at the right end of its row.
        const QRect subRow = menu.actionGeometry(menu.actions().last());
        bool arrow = false;
        for (int y = subRow.top(); y <= subRow.bottom(); ++y)
            for (int x = subRow.right() - ZMenuStyle::ArrowColumn; x <= subRow.right(); ++x)
                arrow = arrow || img.pixelColor(x, y).lightness() < 200;
        QVERIFY(arrow);
    }
};

QTEST_MAIN(tst_ZMenu)
#include "tst_zmenu.moc"

// ZProgressBar: range and value rules, the fill arithmetic and the number texts.

#include <QtTest/QtTest>

#include "zlabel.h"
#include "zprogressbar.h"

#include <climits>

namespace {

QGraphicsWidget *progressItem(ZProgressBar *bar)
{
    return qobject_cast<QGraphicsWidget *>(bar->progress());
}

// The label that shows the number.
ZLabel *textItem(ZProgressBar *bar)
{
    for (QGraphicsItem *child : bar->childItems()) {
        if (auto *label = qobject_cast<ZLabel *>(child->toGraphicsObject()))
            return label;
    }
    return nullptr;
}

} // namespace

class tst_ZProgressBar : public QObject
{
    Q_OBJECT

private slots:
    // Values are clamped and announced once; a narrower range pulls the value
    // in, and a minimum above the maximum takes it along.
    void valueAndRange()
    {
        ZProgressBar bar;
        QSignalSpy spy(&bar, &ZProgressBar::valueChanged);
        bar.setValue(150);
        bar.setValue(150);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toInt(), 100);
        bar.setValue(-10);
        QCOMPARE(bar.value(), 0);
        bar.setValue(70);
        bar.setRange(0, 50);
        bar.setRange(0, 50);
        QCOMPARE(bar.value(), 50);
        QCOMPARE(spy.count(), 4);
        bar.setRange(20, 10);
        QCOMPARE(QPoint(bar.minimum(), bar.maximum()), QPoint(20, 20));
        QCOMPARE(bar.value(), 20);
        bar.setMaximum(40);
        bar.setMinimum(30);
        QCOMPARE(bar.value(), 30);
        bar.setMinimum(60);
        QCOMPARE(bar.maximum(), 60);
        bar.setMaximum(5);
        QCOMPARE(QPoint(bar.minimum(), bar.value()), QPoint(5, 5));
        bar.setMinSize(-5);
        QCOMPARE(bar.minSize(), 0);
    }

    void fill_data()
    {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<int>("min");
        QTest::addColumn<int>("max");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("minSize");
        QTest::addColumn<QRectF>("expected"); // an empty rectangle: hidden
        const QSizeF bar(210, 9);
        QTest::newRow("empty") << bar << 0 << 100 << 0 << 0 << QRectF();
        QTest::newRow("37 of 100 (77.7 rounds up)") << bar << 0 << 100 << 37 << 0 << QRectF(0, 0, 78, 9);
        QTest::newRow("full") << bar << 0 << 100 << 100 << 0 << QRectF(0, 0, 210, 9);
        QTest::newRow("one percent, minSize") << bar << 0 << 100 << 1 << 9 << QRectF(0, 0, 9, 9);
        QTest::newRow("minSize leaves empty empty") << bar << 0 << 100 << 0 << 9 << QRectF();
        QTest::newRow("minSize beyond the bar") << bar << 0 << 100 << 1 << 500 << QRectF(0, 0, 210, 9);
        QTest::newRow("shifted range") << bar << 50 << 150 << 100 << 0 << QRectF(0, 0, 105, 9);
        QTest::newRow("whole int range") << bar << INT_MIN << INT_MAX << 0 << 0 << QRectF(0, 0, 105, 9);
        QTest::newRow("no range") << bar << 7 << 7 << 7 << 0 << QRectF();
        QTest::newRow("upright fills from the bottom") << QSizeF(9, 200) << 0 << 100 << 25 << 0 << QRectF(0, 150, 9, 50);
    }

    void fill()
    {
        QFETCH(QSizeF, size);
        QFETCH(int, min);
        QFETCH(int, max);
        QFETCH(int, value);
        QFETCH(int, minSize);
        QFETCH(QRectF, expected);
        ZProgressBar bar{size.height() > size.width() ? Qt::Vertical : Qt::Horizontal};
        bar.resize(size);
        bar.setMinSize(minSize);
        bar.setRange(min, max);
        bar.setValue(value);
        QCOMPARE(progressItem(&bar)->isVisible(), !expected.isEmpty());
        if (!expected.isEmpty())
            QCOMPARE(progressItem(&bar)->geometry(), expected);
        QCOMPARE(qobject_cast<QGraphicsWidget *>(bar.frame())->geometry(), QRectF(QPointF(), size));
    }

    void text_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("min");
        QTest::addColumn<int>("max");
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << 0 << 0 << 100 << 37 << QString();
        QTest::newRow("value of maximum, shifted") << 1 << 10 << 20 << 15 << QStringLiteral("15/20");
        QTest::newRow("percent") << 2 << 0 << 100 << 37 << QStringLiteral("37%");
        QTest::newRow("percent is cut, not rounded") << 2 << 0 << 3 << 2 << QStringLiteral("66%");
        QTest::newRow("percent of a shifted range") << 2 << 10 << 20 << 15 << QStringLiteral("50%");
        QTest::newRow("percent of no range") << 2 << 5 << 5 << 5 << QStringLiteral("0%");
        QTest::newRow("percent of the whole int range") << 2 << INT_MIN << INT_MAX << INT_MAX << QStringLiteral("100%");
        QTest::newRow("unknown style") << 7 << 0 << 100 << 37 << QString();
        QTest::newRow("negative style") << -1 << 0 << 100 << 37 << QString();
    }

    // The number shows, above the fill and over the whole bar, only when asked for and not empty.
    void text()
    {
        QFETCH(int, style);
        QFETCH(int, min);
        QFETCH(int, max);
        QFETCH(int, value);
        QFETCH(QString, expected);
        ZProgressBar bar;
        bar.resize(200, 20);
        bar.setNumberTextStyle(style);
        bar.setRange(min, max);
        bar.setValue(value);
        QCOMPARE(bar.text(), expected);
        ZLabel *label = textItem(&bar);
        QVERIFY(!label->isVisible());
        bar.setTextVisible(true);
        QCOMPARE(label->text(), expected);
        QCOMPARE(label->isVisible(), !expected.isEmpty());
        QCOMPARE(label->geometry(), QRectF(0, 0, 200, 20));
        if (style == ZProgressBar::Percent && max == 100) {
            bar.setValue(41);
            QCOMPARE(label->text(), QStringLiteral("41%"));
        }
        QVERIFY(label->zValue() > progressItem(&bar)->zValue());
        bar.setTextColor(Qt::red);
        QCOMPARE(label->textColor(), QColor(Qt::red));
        bar.setTextVisible(false);
        QVERIFY(!label->isVisible());
    }

    // The default images follow the orientation; an image of the document's own stays.
    void orientation()
    {
        ZProgressBar bar;
        bar.setFrameImage(QStringLiteral(":/image/theme/lineedit.png"));
        bar.setOrientation(Qt::Vertical);
        QCOMPARE(bar.frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
        QCOMPARE(bar.effectiveSizeHint(Qt::PreferredSize), QSizeF(9, 210));
        ZProgressBar plain(Qt::Vertical);
        QCOMPARE(plain.frameImage(), QStringLiteral(":/image/theme/vslider_bkg.png"));
        plain.setOrientation(Qt::Orientation(0));
        QCOMPARE(plain.orientation(), Qt::Horizontal);
        QCOMPARE(plain.frameImage(), QStringLiteral(":/image/theme/hslider_bkg.png"));
    }
};

QTEST_MAIN(tst_ZProgressBar)
#include "tst_zprogressbar.moc"

// ZProgressBar: range and value rules, the fill arithmetic, the number
// texts, and documents.

#include <QtTest/QtTest>

#include "zframeitem.h"
#include "zlabel.h"
#include "zprogressbar.h"
#include "zxmlui.h"

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
    void construction();
    void valueAndRange();
    void fill_data();
    void fill();
    void text_data();
    void text();
    void textShowsOnlyWhenAsked();
    void orientation();
    void fromXml();
};

void tst_ZProgressBar::construction()
{
    ZProgressBar bar;
    QCOMPARE(bar.geometry(), QRectF(0, 0, 210, 9));
    QCOMPARE(bar.effectiveSizeHint(Qt::PreferredSize), QSizeF(210, 9));
    QCOMPARE(bar.minimum(), 0);
    QCOMPARE(bar.maximum(), 100);
    QCOMPARE(bar.value(), 0);
    QVERIFY(!bar.isTextVisible());
    QCOMPARE(bar.numberTextStyle(), int(ZProgressBar::Percent));
    QCOMPARE(bar.minSize(), 0);
    auto *frame = qobject_cast<ZFrameItem *>(bar.frame());
    auto *progress = qobject_cast<ZFrameItem *>(bar.progress());
    QVERIFY(frame && progress);
    QCOMPARE(frame->frameType(), ZFrameItem::GridFour);
    QCOMPARE(progress->frameType(), ZFrameItem::GridFour);
    QVERIFY(!frame->currentPixmap().isNull());
    QVERIFY(!progress->currentPixmap().isNull());
    QCOMPARE(frame->geometry(), QRectF(0, 0, 210, 9));
    QVERIFY(!progress->isVisible());
    QVERIFY(progress->zValue() > frame->zValue());
}

void tst_ZProgressBar::valueAndRange()
{
    ZProgressBar bar;
    QSignalSpy spy(&bar, &ZProgressBar::valueChanged);
    bar.setValue(150);
    QCOMPARE(bar.value(), 100);
    bar.setValue(150);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 100);
    bar.setValue(-10);
    QCOMPARE(bar.value(), 0);
    bar.setValue(70);
    // A narrower range pulls the value in, and says so.
    bar.setRange(0, 50);
    QCOMPARE(bar.value(), 50);
    QCOMPARE(spy.count(), 4);
    bar.setRange(0, 50);
    QCOMPARE(spy.count(), 4);
    // A maximum below the minimum becomes the minimum.
    bar.setRange(20, 10);
    QCOMPARE(bar.minimum(), 20);
    QCOMPARE(bar.maximum(), 20);
    QCOMPARE(bar.value(), 20);
    bar.setMaximum(40);
    bar.setMinimum(30);
    QCOMPARE(bar.value(), 30);
    bar.setMinimum(60);
    QCOMPARE(bar.maximum(), 60);
    bar.setMaximum(5);
    QCOMPARE(bar.minimum(), 5);
    QCOMPARE(bar.value(), 5);
}

void tst_ZProgressBar::fill_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<int>("orientation");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("minSize");
    QTest::addColumn<QRectF>("expected"); // an empty rectangle: hidden

    const int h = Qt::Horizontal, v = Qt::Vertical;
    const QSizeF bar(210, 9);
    QTest::newRow("empty") << bar << h << 0 << 100 << 0 << 0 << QRectF();
    QTest::newRow("37 of 100 (77.7 rounds up)") << bar << h << 0 << 100 << 37 << 0 << QRectF(0, 0, 78, 9);
    QTest::newRow("full") << bar << h << 0 << 100 << 100 << 0 << QRectF(0, 0, 210, 9);
    QTest::newRow("one percent") << bar << h << 0 << 100 << 1 << 0 << QRectF(0, 0, 2, 9);
    QTest::newRow("one percent, minSize") << bar << h << 0 << 100 << 1 << 9 << QRectF(0, 0, 9, 9);
    QTest::newRow("minSize leaves empty empty") << bar << h << 0 << 100 << 0 << 9 << QRectF();
    QTest::newRow("minSize beyond the bar") << bar << h << 0 << 100 << 1 << 500 << QRectF(0, 0, 210, 9);
    QTest::newRow("shifted range") << bar << h << 50 << 150 << 100 << 0 << QRectF(0, 0, 105, 9);
    QTest::newRow("whole int range") << bar << h << INT_MIN << INT_MAX << 0 << 0 << QRectF(0, 0, 105, 9);
    QTest::newRow("no range") << bar << h << 7 << 7 << 7 << 0 << QRectF();
    QTest::newRow("upright fills from the bottom") << QSizeF(9, 200) << v << 0 << 100 << 25 << 0
                                                   << QRectF(0, 150, 9, 50);
}

void tst_ZProgressBar::fill()
{
    QFETCH(QSizeF, size);
    QFETCH(int, orientation);
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(int, value);
    QFETCH(int, minSize);
    QFETCH(QRectF, expected);

    ZProgressBar bar{Qt::Orientation(orientation)};
    bar.resize(size);
    bar.setMinSize(minSize);
    bar.setRange(min, max);
    bar.setValue(value);
    QCOMPARE(progressItem(&bar)->isVisible(), !expected.isEmpty());
    if (!expected.isEmpty())
        QCOMPARE(progressItem(&bar)->geometry(), expected);
    QCOMPARE(qobject_cast<QGraphicsWidget *>(bar.frame())->geometry(), QRectF(QPointF(), size));
}

void tst_ZProgressBar::text_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("none") << 0 << 0 << 100 << 37 << QString();
    QTest::newRow("value of maximum") << 1 << 0 << 100 << 37 << QStringLiteral("37/100");
    QTest::newRow("value of maximum, shifted") << 1 << 10 << 20 << 15 << QStringLiteral("15/20");
    QTest::newRow("percent") << 2 << 0 << 100 << 37 << QStringLiteral("37%");
    QTest::newRow("percent is cut, not rounded") << 2 << 0 << 3 << 2 << QStringLiteral("66%");
    QTest::newRow("percent of a shifted range") << 2 << 10 << 20 << 15 << QStringLiteral("50%");
    QTest::newRow("percent of no range") << 2 << 5 << 5 << 5 << QStringLiteral("0%");
    QTest::newRow("percent of the whole int range") << 2 << INT_MIN << INT_MAX << INT_MAX << QStringLiteral("100%");
    QTest::newRow("unknown style") << 7 << 0 << 100 << 37 << QString();
    QTest::newRow("negative style") << -1 << 0 << 100 << 37 << QString();
}

void tst_ZProgressBar::text()
{
    QFETCH(int, style);
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(int, value);
    QFETCH(QString, expected);

    ZProgressBar bar;
    bar.setNumberTextStyle(style);
    bar.setRange(min, max);
    bar.setValue(value);
    QCOMPARE(bar.text(), expected);
    bar.setTextVisible(true);
    QCOMPARE(textItem(&bar)->text(), expected);
    QCOMPARE(textItem(&bar)->isVisible(), !expected.isEmpty());
}

void tst_ZProgressBar::textShowsOnlyWhenAsked()
{
    ZProgressBar bar;
    bar.resize(200, 20);
    bar.setValue(40);
    ZLabel *label = textItem(&bar);
    QVERIFY(label);
    QVERIFY(!label->isVisible());
    bar.setTextVisible(true);
    QVERIFY(label->isVisible());
    QCOMPARE(label->text(), QStringLiteral("40%"));
    QCOMPARE(label->geometry(), QRectF(0, 0, 200, 20));
    QVERIFY(label->zValue() > progressItem(&bar)->zValue());
    bar.setValue(41);
    QCOMPARE(label->text(), QStringLiteral("41%"));
    bar.setTextColor(Qt::red);
    QCOMPARE(bar.textColor(), QColor(Qt::red));
    QCOMPARE(label->textColor(), QColor(Qt::red));
    bar.setNumberTextStyle(ZProgressBar::NoNumber);
    QVERIFY(!label->isVisible());
    bar.setNumberTextStyle(ZProgressBar::ValueOfMaximum);
    QCOMPARE(label->text(), QStringLiteral("41/100"));
    bar.setTextVisible(false);
    QVERIFY(!label->isVisible());
}

void tst_ZProgressBar::orientation()
{
    ZProgressBar bar;
    bar.setFrameImage(QStringLiteral(":/image/theme/lineedit.png"));
    bar.setOrientation(Qt::Vertical);
    // An image of the document's own stays.
    QCOMPARE(bar.frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
    QCOMPARE(bar.effectiveSizeHint(Qt::PreferredSize), QSizeF(9, 210));
    ZProgressBar plain(Qt::Vertical);
    QCOMPARE(plain.frameImage(), QStringLiteral(":/image/theme/vslider_bkg.png"));
    plain.setOrientation(Qt::Orientation(0));
    QCOMPARE(plain.orientation(), Qt::Horizontal);
    QCOMPARE(plain.frameImage(), QStringLiteral(":/image/theme/hslider_bkg.png"));
    plain.setMinSize(-5);
    QCOMPARE(plain.minSize(), 0);
}

void tst_ZProgressBar::fromXml()
{
    ZWidget root;
    const QByteArray document = R"(<uitree>
  <ZProgressBar objectName="bar" minimum="10" maximum="30" value="25" textVisible="true" numberTextStyle="1"
                minSize="6" textColor="0,0,255" orientation="Horizontal" fixSize="100,18"
                progressImage=":/image/theme/menuhover.png" frame.frameType="StretchHV"/>
  <ZProgressBar objectName="bad" value="lots" numberTextStyle="-3" minSize="-1"/>
</uitree>)";
    QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
    auto *bar = qobject_cast<ZProgressBar *>(root.findObject(QStringLiteral("bar")));
    QVERIFY(bar);
    QCOMPARE(bar->minimum(), 10);
    QCOMPARE(bar->maximum(), 30);
    QCOMPARE(bar->value(), 25);
    QVERIFY(bar->isTextVisible());
    QCOMPARE(bar->numberTextStyle(), 1);
    QCOMPARE(bar->text(), QStringLiteral("25/30"));
    QCOMPARE(bar->minSize(), 6);
    QCOMPARE(bar->textColor(), QColor(0, 0, 255));
    QCOMPARE(bar->size(), QSizeF(100, 18));
    QCOMPARE(bar->progressImage(), QStringLiteral(":/image/theme/menuhover.png"));
    QCOMPARE(qobject_cast<ZFrameItem *>(bar->frame())->frameType(), ZFrameItem::StretchHV);
    // 15 of 20 over 100 pixels.
    QCOMPARE(progressItem(bar)->geometry(), QRectF(0, 0, 75, 18));

    auto *bad = qobject_cast<ZProgressBar *>(root.findObject(QStringLiteral("bad")));
    QVERIFY(bad);
    QCOMPARE(bad->value(), 0);
    QCOMPARE(bad->text(), QString());
    QCOMPARE(bad->minSize(), 0);
}

QTEST_MAIN(tst_ZProgressBar)
#include "tst_zprogressbar.moc"

// The items as documents write them: every attribute goes through the
// loader's conversion by property type.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsDropShadowEffect>

#include "qtgradient.h"
#include "zicon.h"
#include "zimageitem.h"
#include "zlabel.h"
#include "zmaskimageitem.h"
#include "zshapeitem.h"
#include "ztextitem.h"
#include "zxmlui.h"

class tst_ItemsFromXml : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void attributes_data();
    void attributes();
    void shadowColourAfterShadow();

private:
    ZWidget m_root;
};

void tst_ItemsFromXml::initTestCase()
{
    const QByteArray document = R"(<uitree>
  <ZImageItem objectName="image" imagePath=":/image/theme/messagebox_warning.png" scale="1.5"
              imageMargins="1,2,3,4" imageAlignment="AlignLeft|AlignBottom" borderColor="#ff000080"
              borderPixel="3" rotation="45" autoAdjust="true" acceptClick="true" handHover="true"/>
  <ZMaskImageItem objectName="mask" imagePath=":/image/theme/messagebox_question.png"
                  maskImage=":/image/theme/maskimage.png" maskMouse="true"/>
  <ZIcon objectName="icon" iconPath=":/image/theme/titleicon.png" mode="Selected" state="On"
         iconAlignment="AlignRight|AlignTop"/>
  <ZLabel objectName="label" text="Hello" textColor="255,0,0" fontSize="17" bold="true" elide="ElideMiddle"
          textAlignment="AlignRight|AlignVCenter" wordWrap="true" textMargins="4,0,4,0" click="true"
          link="https://zkit.invalid" underlineOnHover="true" antialiase="true"/>
  <ZTextItem objectName="text" text="&lt;b&gt;rich&lt;/b&gt;" textColor="#00ff00" fontSize="15"
             idealSizeAsMinimun="true"/>
  <ZShapeItem objectName="shape" shape="Chord" fan="160,1440" penStyle="DotLine" capStyle="RoundCap"
              joinStyle="MiterJoin" penColor="#0000ff" penWidth="3" brushColor="#ff0000" brushStyle="Dense3Pattern"
              shapeMargins="2,2,2,2" smooth="true" roundPixel="6"/>
  <ZShapeItem objectName="gradient" gradient="Start:0,0|Final:1,0|Color:0:#ffffff|Color:1:#000000"/>
</uitree>)";
    QVERIFY(ZXmlUI::widgetFromMemory(document, &m_root));
}

void tst_ItemsFromXml::attributes_data()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("image path") << "image" << QByteArray("imagePath") << QVariant(":/image/theme/messagebox_warning.png");
    QTest::newRow("image loaded") << "image" << QByteArray("pixmapSize") << QVariant(QSize(40, 40));
    QTest::newRow("image scale") << "image" << QByteArray("scale") << QVariant(1.5);
    QTest::newRow("image margins") << "image" << QByteArray("imageMargins") << QVariant::fromValue(QMargins(1, 2, 3, 4));
    QTest::newRow("image alignment") << "image" << QByteArray("imageAlignment")
                                     << QVariant::fromValue(Qt::AlignLeft | Qt::AlignBottom);
    QTest::newRow("image border colour") << "image" << QByteArray("borderColor") << QVariant(QColor(255, 0, 0, 128));
    QTest::newRow("image border") << "image" << QByteArray("borderPixel") << QVariant(3);
    QTest::newRow("image rotation") << "image" << QByteArray("rotation") << QVariant(45.0);
    QTest::newRow("image auto") << "image" << QByteArray("autoAdjust") << QVariant(true);
    QTest::newRow("image click") << "image" << QByteArray("acceptClick") << QVariant(true);
    QTest::newRow("image hover") << "image" << QByteArray("handHover") << QVariant(true);
    QTest::newRow("mask mouse") << "mask" << QByteArray("maskMouse") << QVariant(true);
    QTest::newRow("mask image") << "mask" << QByteArray("maskImage") << QVariant(":/image/theme/maskimage.png");
    QTest::newRow("icon mode") << "icon" << QByteArray("mode") << QVariant::fromValue(ZIcon::Selected);
    QTest::newRow("icon state") << "icon" << QByteArray("state") << QVariant::fromValue(ZIcon::On);
    QTest::newRow("icon alignment") << "icon" << QByteArray("iconAlignment")
                                    << QVariant::fromValue(Qt::AlignRight | Qt::AlignTop);
    QTest::newRow("label text") << "label" << QByteArray("text") << QVariant("Hello");
    QTest::newRow("label colour") << "label" << QByteArray("textColor") << QVariant(QColor(Qt::red));
    QTest::newRow("label font size") << "label" << QByteArray("fontSize") << QVariant(17);
    QTest::newRow("label bold") << "label" << QByteArray("bold") << QVariant(true);
    QTest::newRow("label elide") << "label" << QByteArray("elide") << QVariant::fromValue(Qt::ElideMiddle);
    QTest::newRow("label wrap after alignment") << "label" << QByteArray("wordWrap") << QVariant(true);
    QTest::newRow("label margins") << "label" << QByteArray("textMargins") << QVariant::fromValue(QMargins(4, 0, 4, 0));
    QTest::newRow("label click") << "label" << QByteArray("click") << QVariant(true);
    QTest::newRow("label link") << "label" << QByteArray("link") << QVariant("https://zkit.invalid");
    QTest::newRow("label underline") << "label" << QByteArray("underlineOnHover") << QVariant(true);
    QTest::newRow("label antialiase") << "label" << QByteArray("antialiase") << QVariant(true);
    QTest::newRow("text") << "text" << QByteArray("text") << QVariant("rich");
    QTest::newRow("text colour") << "text" << QByteArray("textColor") << QVariant(QColor(Qt::green));
    QTest::newRow("text font size") << "text" << QByteArray("fontSize") << QVariant(15);
    QTest::newRow("text ideal minimum") << "text" << QByteArray("idealSizeAsMinimun") << QVariant(true);
    QTest::newRow("shape") << "shape" << QByteArray("shape") << QVariant::fromValue(ZShapeItem::Chord);
    QTest::newRow("shape fan") << "shape" << QByteArray("fan") << QVariant(QSize(160, 1440));
    QTest::newRow("shape pen style") << "shape" << QByteArray("penStyle") << QVariant::fromValue(Qt::DotLine);
    QTest::newRow("shape cap") << "shape" << QByteArray("capStyle") << QVariant::fromValue(Qt::RoundCap);
    QTest::newRow("shape join") << "shape" << QByteArray("joinStyle") << QVariant::fromValue(Qt::MiterJoin);
    QTest::newRow("shape pen colour") << "shape" << QByteArray("penColor") << QVariant(QColor(Qt::blue));
    QTest::newRow("shape pen width") << "shape" << QByteArray("penWidth") << QVariant(3);
    QTest::newRow("shape brush colour") << "shape" << QByteArray("brushColor") << QVariant(QColor(Qt::red));
    QTest::newRow("shape brush style") << "shape" << QByteArray("brushStyle") << QVariant::fromValue(Qt::Dense3Pattern);
    QTest::newRow("shape margins") << "shape" << QByteArray("shapeMargins") << QVariant::fromValue(QMargins(2, 2, 2, 2));
    QTest::newRow("shape smooth") << "shape" << QByteArray("smooth") << QVariant(true);
    QTest::newRow("shape round") << "shape" << QByteArray("roundPixel") << QVariant(6);
    QTest::newRow("gradient brush") << "gradient" << QByteArray("brushStyle")
                                    << QVariant::fromValue(Qt::LinearGradientPattern);
}

void tst_ItemsFromXml::attributes()
{
    QFETCH(QString, object);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);

    QObject *item = m_root.findObject(object);
    QVERIFY(item);
    QVariant actual = item->property(property.constData());
    QVERIFY(actual.isValid());
    if (actual.metaType() != value.metaType())
        QVERIFY(actual.convert(value.metaType()));
    QCOMPARE(actual, value);
}

// A shadow given before its colour takes the colour all the same.
void tst_ItemsFromXml::shadowColourAfterShadow()
{
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(
        "<uitree><ZLabel objectName='s' text='x' shadow='true' shadowColor='#00ff00' shadowBlurRadius='5'/></uitree>",
        &root));
    auto *label = qobject_cast<ZLabel *>(root.findObject(QStringLiteral("s")));
    QVERIFY(label);
    auto *shadow = qobject_cast<QGraphicsDropShadowEffect *>(label->graphicsEffect());
    QVERIFY(shadow);
    QCOMPARE(shadow->color(), QColor(Qt::green));
    QCOMPARE(shadow->blurRadius(), 5.0);
}

QTEST_MAIN(tst_ItemsFromXml)
#include "tst_itemsfromxml.moc"

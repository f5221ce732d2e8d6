#include "toxmlstringtool.h"
#include "xmlnode.h"

#include <QByteArray>
#include <QtTest>

class tst_ToXMLStringTool : public QObject
{
    Q_OBJECT

private slots:
    void escape_data();
    void escape();
};

void tst_ToXMLStringTool::escape_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("escaped");
    QTest::newRow("plain") << QByteArray("plain text") << QByteArray("plain text");
    QTest::newRow("empty") << QByteArray("") << QByteArray("");
    QTest::newRow("all five") << QByteArray("&<>\"'") << QByteArray("&amp;&lt;&gt;&quot;&apos;");
    QTest::newRow("already escaped") << QByteArray("&amp;") << QByteArray("&amp;amp;");
    QTest::newRow("utf-8 kept") << QByteArray("\xe4\xb8\xad<") << QByteArray("\xe4\xb8\xad&lt;");
    QTest::newRow("gbk trail bytes kept") << QByteArray("\x81\x5c\x81\x7e") << QByteArray("\x81\x5c\x81\x7e");
    QTest::newRow("mixed") << QByteArray("'a' < b && c > \"d\"")
                           << QByteArray("&apos;a&apos; &lt; b &amp;&amp; c &gt; &quot;d&quot;");
}

void tst_ToXMLStringTool::escape()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, escaped);
    QCOMPARE(ToXMLStringTool::lengthXMLString(text.constData()), escaped.size());
    ToXMLStringTool tool;
    QCOMPARE(QByteArray(tool.toXML(text.constData())), escaped);
    QByteArray dest(escaped.size() + 1, '#');
    QCOMPARE(ToXMLStringTool::toXMLUnSafe(dest.data(), text.constData()), dest.data());
    QCOMPARE(dest, escaped + '\0');

    // What the tool writes, the parser reads back as the original text.
    const QByteArray xml = "<t v=\"" + escaped + "\">" + escaped + "</t>";
    XMLResults r;
    const XMLNode t = XMLNode::parseString(xml.constData(), "t", &r);
    QCOMPARE(int(r.error), 0);
    QCOMPARE(QByteArray(t.getAttribute("v")), text);
    QCOMPARE(QByteArray(t.getText()), text);

    tool.freeBuffer();
    QCOMPARE(QByteArray(tool.toXML(nullptr)), QByteArray());
    QCOMPARE(ToXMLStringTool::lengthXMLString(nullptr), 0);
}

QTEST_APPLESS_MAIN(tst_ToXMLStringTool)
#include "tst_toxmlstringtool.moc"

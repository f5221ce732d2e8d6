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
    void parsesBack();
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
    QTest::newRow("edges") << QByteArray("'a'") << QByteArray("&apos;a&apos;");
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
}

void tst_ToXMLStringTool::parsesBack()
{
    // What the tool writes, the parser reads back as the original text.
    const QByteArray original = "a < b && c > \"d\" 'e'";
    ToXMLStringTool tool;
    const QByteArray xml = "<t v=\"" + QByteArray(tool.toXML(original.constData())) + "\">"
                           + QByteArray(tool.toXML(original.constData())) + "</t>";
    tool.freeBuffer();
    XMLResults r;
    XMLNode t = XMLNode::parseString(xml.constData(), "t", &r);
    QCOMPARE(int(r.error), 0);
    QCOMPARE(QByteArray(t.getAttribute("v")), original);
    QCOMPARE(QByteArray(t.getText()), original);
    QCOMPARE(QByteArray(tool.toXML(nullptr)), QByteArray());
    QCOMPARE(ToXMLStringTool::lengthXMLString(nullptr), 0);
}

QTEST_APPLESS_MAIN(tst_ToXMLStringTool)
#include "tst_toxmlstringtool.moc"

#include "xmlnode.h"

#include <QByteArray>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdlib>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

// A forked child exits through openFileHelper(); LeakSanitizer cannot check
// a process whose other threads were lost in the fork, so it is told to skip
// that child (the hook is only read in sanitizer builds).
static bool inForkedChild = false;
extern "C" __attribute__((visibility("default"), used)) int __lsan_is_turned_off()
{
    return inForkedChild;
}

namespace {

const char msgBoxDocument[] =
    "<?xml version=\"1.0\" ?>\n"
    "<uitree>\n"
    "  <ZMessageBox objectName=\"topLevelWindow\" titlebar.iconPath=\"\" titlebar.margins=\"3,1,1,1\" "
    "titlebar.fixHeight=\"20\" windowStyle=\"Dialog\">\n"
    "    <ZSpacer layout=\"VBox\" margins=\"10,5,10,10\">\n"
    "      <ZSpacer objectName=\"objMeasure\" layout=\"HBox\">\n"
    "        <ZFrameItem objectName=\"iconShower\" fixSize=\"45,45\" frameType=\"OneHCenter\"/>\n"
    "        <ZTextItem objectName=\"textShower\" text=\"MyTest\" readOnly=\"true\" selectable=\"false\"/>\n"
    "      </ZSpacer>\n"
    "      <!-- buttons -->\n"
    "      <ZSpacer fixHeight=\"10\"/>\n"
    "      <ZSpacer layout=\"HBox\" fixHeight=\"25\">\n"
    "        <ZSpacer/>\n"
    "        <ZToolBar objectName=\"buttonToolbar\" layout=\"HBox\" sizeToChild=\"true\">\n"
    "          <ZPushButton objectName=\"button0\" text=\"OK &amp; go\" fixWidth=\"60\" itemSpacing=\"10\"/>\n"
    "          <ZPushButton objectName=\"button1\" text=\"Cancel\" fixWidth=\"60\" itemSpacing=\"10\"/>\n"
    "          <ZPushButton objectName=\"button2\" text=\"Abort\" fixWidth=\"60\"/>\n"
    "        </ZToolBar>\n"
    "        <ZSpacer/>\n"
    "      </ZSpacer>\n"
    "      <data><![CDATA[raw <text> & more]]>Some &lt;escaped&gt; text</data>\n"
    "    </ZSpacer>\n"
    "  </ZMessageBox>\n"
    "</uitree>\n";

// Everything a tree holds, in document order, one item per line. Walks with
// an explicit stack so that it also describes very deep trees.
QByteArray describe(const XMLNode &root)
{
    QByteArray out;
    if (root.isEmpty())
        return "(empty)";
    std::vector<std::pair<XMLNode, int>> stack;
    stack.emplace_back(root, 0);
    out += "E " + QByteArray(root.getName() ? root.getName() : "(top)") + (root.isDeclaration() ? " decl\n" : "\n");
    while (!stack.empty()) {
        auto &[node, i] = stack.back();
        if (i >= node.nElement()) {
            out += "/E\n";
            stack.pop_back();
            continue;
        }
        const XMLNodeContents c = node.enumContents(i++);
        switch (c.etype) {
        case eNodeAttribute:
            out += "A " + QByteArray(c.attrib.lpszName) + "="
                   + (c.attrib.lpszValue ? "'" + QByteArray(c.attrib.lpszValue) + "'" : QByteArray("(null)"))
                   + "\n";
            break;
        case eNodeText:
            out += "T '" + QByteArray(c.text) + "'\n";
            break;
        case eNodeClear:
            out += "C " + QByteArray(c.clear.lpszOpenTag) + "|" + QByteArray(c.clear.lpszValue) + "|"
                   + QByteArray(c.clear.lpszCloseTag) + "\n";
            break;
        case eNodeChild: {
            const XMLNode child = c.child;
            out += "E " + QByteArray(child.getName() ? child.getName() : "(null)")
                   + (child.isDeclaration() ? " decl\n" : "\n");
            stack.emplace_back(child, 0);
            break;
        }
        default:
            out += "?\n";
            break;
        }
    }
    return out;
}

XMLNode parse(const QByteArray &text, XMLResults *r = nullptr)
{
    return XMLNode::parseString(text.constData(), nullptr, r);
}

QByteArray toXml(const XMLNode &node, int format)
{
    int size = -1;
    char *s = node.createXMLString(format, &size);
    QByteArray out(s, size);
    std::free(s);
    return out;
}

void setEncoding(XMLCharEncoding e, char dropWhiteSpace = 1, char removeComments = 1)
{
    QCOMPARE(XMLNode::setGlobalOptions(e, 1, dropWhiteSpace, removeComments), char(0));
}

} // namespace

class tst_XMLNode : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { XMLNode::setGlobalOptions(char_encoding_UTF8, 1, 1, 1); }

    void errorTexts();
    void parseResults_data();
    void parseResults();
    void structure();
    void entities_data();
    void entities();
    void characterAbove255();
    void whiteSpaceAndComments_data();
    void whiteSpaceAndComments();
    void globalOptions();
    void multiByteTrailBytes_data();
    void multiByteTrailBytes();
    void guessCharEncoding_data();
    void guessCharEncoding();
    void tagArgument();
    void lookups();
    void positions();
    void serialisation();
    void roundTrip_data();
    void roundTrip();
    void editing();
    void editingOrder();
    void moveAndDetach();
    void deleteNode();
    void ownershipWOSD();
    void handleLifetime();
    void emptyHandle();
    void deepCopy();
    void files();
    void openFileHelper();
    void truncatedDocuments();
    void randomInput();
    void deepNesting();
};

void tst_XMLNode::errorTexts()
{
    // The texts are part of the interface (shown to users, matched by tools).
    QCOMPARE(XMLNode::getError(eXMLErrorNone), "No error");
    QCOMPARE(XMLNode::getError(eXMLErrorMissingEndTag), "Warning: Unmatched end tag");
    QCOMPARE(XMLNode::getError(eXMLErrorEmpty), "Error: No XML data");
    QCOMPARE(XMLNode::getError(eXMLErrorUnknownCharacterEntity), "Error: Unknown character entity");
    QCOMPARE(XMLNode::getError(eXMLErrorCharacterCodeAbove255),
             "Error: Character code above 255 is forbidden in MultiByte char mode.");
    QCOMPARE(XMLNode::getError(eXMLErrorBase64DecodeBufferTooSmall), "Error: Base64 decode output buffer is too small");
    QCOMPARE(XMLNode::getError(static_cast<XMLError>(21)), "Unknown");
    QCOMPARE(XMLNode::getError(static_cast<XMLError>(-1)), "Unknown");
    for (int e = 0; e <= 20; ++e)
        QVERIFY2(std::strcmp(XMLNode::getError(static_cast<XMLError>(e)), "Unknown") != 0, QByteArray::number(e));
    QCOMPARE(XMLNode::getVersion(), "v2.44");
}

void tst_XMLNode::parseResults_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");

    QTest::newRow("ok") << QByteArray("<a><b/></a>") << 0 << 0 << 0;
    QTest::newRow("empty") << QByteArray("") << 3 << 1 << 1;
    QTest::newRow("white space") << QByteArray(" \n\t ") << 3 << 2 << 3;
    QTest::newRow("text only") << QByteArray("hello") << 2 << 1 << 6;
    QTest::newRow("<>") << QByteArray("<a><></a>") << 4 << 1 << 4;
    QTest::newRow("< a>") << QByteArray("< a>") << 4 << 1 << 1;
    QTest::newRow("< at end") << QByteArray("<a>x<") << 4 << 1 << 5;
    QTest::newRow("</>") << QByteArray("<a></>") << 5 << 1 << 4;
    QTest::newRow("</ a>") << QByteArray("<a></ a>") << 5 << 1 << 4;
    QTest::newRow("unmatched") << QByteArray("<a></b>") << 6 << 1 << 4;
    QTest::newRow("end tag at top") << QByteArray("</a>") << 6 << 1 << 1;
    QTest::newRow("end tag after root") << QByteArray("<a/>\n</a>") << 6 << 2 << 1;
    QTest::newRow("closes two levels") << QByteArray("<a><b>\n</a>") << 1 << 2 << 1;
    QTest::newRow("open at end") << QByteArray("<a><b>x") << 1 << 1 << 8;
    QTest::newRow("comment") << QByteArray("<a><!-- x -></a>") << 7 << 1 << 4;
    QTest::newRow("comment <!-->") << QByteArray("<!-->") << 7 << 1 << 1;
    QTest::newRow("cdata") << QByteArray("<a>\n<![CDATA[ x]]</a>") << 7 << 2 << 1;
    QTest::newRow("pi") << QByteArray("<?php echo 1 ?") << 7 << 1 << 1;
    QTest::newRow("doctype") << QByteArray("<!DOCTYPE a [ <!ENTITY x '>'> ") << 7 << 1 << 1;
    QTest::newRow("doctype quote") << QByteArray("<!DOCTYPE a SYSTEM \"x>") << 7 << 1 << 1;
    QTest::newRow("other <!") << QByteArray("<a/><!ELEMENT a") << 7 << 1 << 5;
    QTest::newRow("declaration") << QByteArray("<?xml version=\"1.0\"") << 7 << 1 << 1;
    QTest::newRow("declaration >") << QByteArray("<?xml version=\"1.0\">") << 8 << 1 << 20;
    QTest::newRow("unquoted value") << QByteArray("<a b=c/>") << 8 << 1 << 6;
    QTest::newRow("missing value") << QByteArray("<a b=>") << 8 << 1 << 6;
    QTest::newRow("value to end") << QByteArray("<a b=\"x/>") << 8 << 1 << 10;
    QTest::newRow("quote in tag") << QByteArray("<a \"x\">") << 8 << 1 << 4;
    QTest::newRow("equals in tag") << QByteArray("<a =\"x\">") << 8 << 1 << 4;
    QTest::newRow("slash in tag") << QByteArray("<a / >") << 8 << 1 << 4;
    QTest::newRow("question in tag") << QByteArray("<a?>") << 8 << 1 << 3;
    QTest::newRow("lt in tag") << QByteArray("<a<b>") << 8 << 1 << 3;
    QTest::newRow("end inside tag") << QByteArray("<a b='1'") << 8 << 1 << 9;
    QTest::newRow("end after name") << QByteArray("<abc") << 8 << 1 << 5;
    QTest::newRow("end tag with more") << QByteArray("<a></a b>") << 8 << 1 << 8;
    QTest::newRow("end tag unterminated") << QByteArray("<a></a") << 8 << 1 << 7;
    QTest::newRow("unknown entity") << QByteArray("<a>&foo;</a>") << 12 << 1 << 4;
    QTest::newRow("&#;") << QByteArray("<a>&#;</a>") << 12 << 1 << 4;
    QTest::newRow("&#xZZ;") << QByteArray("<a>&#xZZ;</a>") << 12 << 1 << 4;
    QTest::newRow("& without ;") << QByteArray("<a>fish & chips</a>") << 12 << 1 << 9;
    QTest::newRow("&amp without ;") << QByteArray("<a>&amp</a>") << 12 << 1 << 4;
    QTest::newRow("&#0;") << QByteArray("<a>&#0;</a>") << 12 << 1 << 4;
    QTest::newRow("above U+10FFFF") << QByteArray("<a>&#x110000;</a>") << 12 << 1 << 4;
    QTest::newRow("huge decimal") << QByteArray("<a>&#99999999999999999999999;</a>") << 12 << 1 << 4;
    QTest::newRow("surrogate") << QByteArray("<a>&#xD800;</a>") << 12 << 1 << 4;
    QTest::newRow("hex wrapping around") << QByteArray("<a>&#x10000000000000041;</a>") << 12 << 1 << 4;
    QTest::newRow("entity in value") << QByteArray("<a\n  b='x&bad;'/>") << 12 << 2 << 7;
    QTest::newRow("columns count characters") << QByteArray("<a>\xc3\xa9\xe4\xb8\xad</b>") << 6 << 1 << 6;
    QTest::newRow("third line") << QByteArray("<a>\n  <b>\n</c>") << 6 << 3 << 1;
    QTest::newRow("error after warning") << QByteArray("<a><b></a><c>&x;</c>") << 12 << 1 << 14;
}

void tst_XMLNode::parseResults()
{
    QFETCH(QByteArray, text);
    QFETCH(int, error);
    QFETCH(int, line);
    QFETCH(int, column);

    XMLResults r = {eXMLErrorEmpty, -1, -1};
    const XMLNode top = parse(text, &r);
    QCOMPARE(int(r.error), error);
    QCOMPARE(r.nLine, line);
    QCOMPARE(r.nColumn, column);
    // Warnings keep the tree, errors give nothing.
    const bool warning = error == eXMLErrorMissingEndTag || error == eXMLErrorNoXMLTagFound;
    QCOMPARE(bool(top.isEmpty()), error != 0 && !warning);
    QCOMPARE(XMLNode::parseString(text.constData()).isEmpty(), top.isEmpty());
}

void tst_XMLNode::structure()
{
    const QByteArray doc = "\xef\xbb\xbf<?xml version=\"1.0\" encoding='utf-8'?>\n"
                           "<!DOCTYPE ui [ <!ENTITY e \"]>\"> <!-- ] > --> ]>\n"
                           "<?xml-stylesheet href=\"a.css\"?>\n"
                           "<!-- top comment -->\n"
                           "<ui a = \"1\" checked b='&lt;&amp;&gt;' c=\"it's\" d='say \"hi\"'>\n"
                           "  <![CDATA[<raw> &amp; ]]>\n"
                           "  text &amp; more\n"
                           "  <child/><child x=\"2\"></child>\n"
                           "</ui>\n"
                           "<!ELEMENT stray>\n";
    XMLResults r;
    XMLNode top = parse(doc, &r);
    QCOMPARE(int(r.error), 0);
    QCOMPARE(describe(top),
             QByteArray("E (top)\n"
                        "E ?xml decl\n"
                        "A version='1.0'\n"
                        "A encoding='utf-8'\n"
                        "/E\n"
                        "C <!DOCTYPE| ui [ <!ENTITY e \"]>\"> <!-- ] > --> ]|>\n"
                        "C <?|xml-stylesheet href=\"a.css\"|?>\n"
                        "C <!--| top comment |-->\n"
                        "E ui\n"
                        "A a='1'\n"
                        "A checked=(null)\n"
                        "A b='<&>'\n"
                        "A c='it's'\n"
                        "A d='say \"hi\"'\n"
                        "C <![CDATA[|<raw> &amp; |]]>\n"
                        "T 'text & more'\n"
                        "E child\n"
                        "/E\n"
                        "E child\n"
                        "A x='2'\n"
                        "/E\n"
                        "/E\n"
                        "C <!|ELEMENT stray|>\n"
                        "/E\n"));
    QVERIFY(!top.getName());
    QVERIFY(!top.isDeclaration());
    QCOMPARE(top.nChildNode(), 2);
    QCOMPARE(top.nClear(), 4);
    const XMLNode ui = top.getChildNode("ui");
    QCOMPARE(ui.nElement(), 5 + 4);
    QCOMPARE(ui.getParentNode(), top);
    QVERIFY(ui.isAttributeSet("checked"));
    QVERIFY(!ui.getAttribute("checked"));
    QVERIFY(!ui.isAttributeSet("missing"));
    QCOMPARE(ui.getText(), "text & more");
    QCOMPARE(top.getChildNode(0).getAttribute("encoding"), "utf-8");
    QVERIFY(top.getChildNode(0).isDeclaration());
}

void tst_XMLNode::entities_data()
{
    QTest::addColumn<int>("encoding");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("decoded");

    QTest::newRow("named") << 1 << QByteArray("&lt;&gt;&amp;&quot;&apos;") << QByteArray("<>&\"'");
    QTest::newRow("uppercase X") << 1 << QByteArray("&#X41;") << QByteArray();
    QTest::newRow("ascii") << 1 << QByteArray("x&#65;&#x42;&#x6a;y") << QByteArray("xABjy");
    QTest::newRow("2-byte utf-8") << 1 << QByteArray("&#233;") << QByteArray("\xc3\xa9");
    QTest::newRow("3-byte utf-8") << 1 << QByteArray("&#x4E2D;&#25991;") << QByteArray("\xe4\xb8\xad\xe6\x96\x87");
    QTest::newRow("4-byte utf-8") << 1 << QByteArray("&#x1F600;") << QByteArray("\xf0\x9f\x98\x80");
    QTest::newRow("U+10FFFF") << 1 << QByteArray("&#1114111;") << QByteArray("\xf4\x8f\xbf\xbf");
    QTest::newRow("legacy byte") << 2 << QByteArray("&#233;") << QByteArray("\xe9");
    QTest::newRow("legacy 255") << 2 << QByteArray("&#xff;") << QByteArray("\xff");
    QTest::newRow("gbk ascii") << 6 << QByteArray("&#x41;&amp;") << QByteArray("A&");
}

void tst_XMLNode::entities()
{
    QFETCH(int, encoding);
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, decoded);
    setEncoding(static_cast<XMLCharEncoding>(encoding));

    XMLResults r;
    const XMLNode top = parse("<a v=\"" + text + "\">" + text + "</a>", &r);
    if (decoded.isEmpty()) {
        QCOMPARE(int(r.error), int(eXMLErrorUnknownCharacterEntity));
        return;
    }
    QCOMPARE(int(r.error), 0);
    const XMLNode a = top.getChildNode("a");
    QCOMPARE(QByteArray(a.getText()), decoded);
    QCOMPARE(QByteArray(a.getAttribute("v")), decoded);
    // Clear sections are not decoded.
    const XMLNode c = parse("<a><![CDATA[" + text + "]]></a>").getChildNode(0);
    QCOMPARE(QByteArray(c.getClear().lpszValue), text);
}

void tst_XMLNode::characterAbove255()
{
    for (XMLCharEncoding e : {char_encoding_legacy, char_encoding_ShiftJIS, char_encoding_GB2312, char_encoding_Big5,
                              char_encoding_GBK}) {
        setEncoding(e);
        XMLResults r;
        QVERIFY(parse("<a>\n &#256;</a>", &r).isEmpty());
        QCOMPARE(int(r.error), int(eXMLErrorCharacterCodeAbove255));
        QCOMPARE(r.nLine, 2);
        QCOMPARE(r.nColumn, 2);
        QVERIFY(parse("<a x='&#x100;'/>", &r).isEmpty());
        QCOMPARE(int(r.error), int(eXMLErrorCharacterCodeAbove255));
    }
    setEncoding(char_encoding_UTF8);
    XMLResults r;
    QVERIFY(!parse("<a>&#256;</a>", &r).isEmpty());
    QCOMPARE(int(r.error), 0);
}

void tst_XMLNode::whiteSpaceAndComments_data()
{
    QTest::addColumn<bool>("drop");
    QTest::addColumn<bool>("join");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");

    const QByteArray mixed = "<a> hello <!--c--> world <!--d--> ! <b/> x <!--e--></a>";
    QTest::newRow("drop, join") << true << true << mixed
                                << QByteArray("T 'helloworld!'|C <!--|c|-->|C <!--|d|-->|E b|/E|T 'x'|C <!--|e|-->|");
    QTest::newRow("keep, join") << false << true << mixed
                                << QByteArray("T ' hello  world  ! '|C <!--|c|-->|C <!--|d|-->|E b|/E|T ' x '|"
                                              "C <!--|e|-->|");
    QTest::newRow("drop, no join") << true << false << mixed
                                   << QByteArray("T 'hello'|C <!--|c|-->|T 'world'|C <!--|d|-->|T '!'|E b|/E|T 'x'|"
                                                 "C <!--|e|-->|");
    QTest::newRow("cdata does not join") << true << true << QByteArray("<a>x<![CDATA[y]]>z</a>")
                                         << QByteArray("T 'x'|C <![CDATA[|y|]]>|T 'z'|");
    QTest::newRow("only white space, dropped") << true << true << QByteArray("<a>\n\t <b/>\r\n </a>")
                                               << QByteArray("E b|/E|");
    QTest::newRow("only white space, kept") << false << true << QByteArray("<a>\n\t<b/> </a>")
                                            << QByteArray("T '|\t'|E b|/E|T ' '|");
    QTest::newRow("entity keeps edge space") << true << true << QByteArray("<a> &#32;x&#32; </a>")
                                             << QByteArray("T ' x '|");
    QTest::newRow("many comments") << true << true << QByteArray("<a>1<!---->2<!---->3<!---->4</a>")
                                   << QByteArray("T '1234'|C <!--||-->|C <!--||-->|C <!--||-->|");
}

void tst_XMLNode::whiteSpaceAndComments()
{
    QFETCH(bool, drop);
    QFETCH(bool, join);
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, expected);
    setEncoding(char_encoding_UTF8, drop, join);

    XMLResults r;
    const XMLNode a = parse(text, &r).getChildNode("a");
    QCOMPARE(int(r.error), 0);
    QByteArray d = describe(a);
    // Drop the element's own first and last line, join the rest.
    d = d.mid(d.indexOf('\n') + 1);
    d.chop(3);
    QCOMPARE(d.replace('\n', '|'), expected);
}

void tst_XMLNode::globalOptions()
{
    QVERIFY(XMLNode::setGlobalOptions(char_encoding_error) != 0);
    QVERIFY(XMLNode::setGlobalOptions(static_cast<XMLCharEncoding>(7)) != 0);
    // The invalid calls changed nothing: UTF-8 output for entities.
    QCOMPARE(QByteArray(parse("<a>&#233;</a>").getChildNode(0).getText()), QByteArray("\xc3\xa9"));
    QCOMPARE(XMLNode::setGlobalOptions(char_encoding_legacy, 1, 0, 1), char(0));
    const XMLNode a = parse("<a> &#233; </a>").getChildNode(0);
    QCOMPARE(QByteArray(a.getText()), QByteArray(" \xe9 "));
}

void tst_XMLNode::multiByteTrailBytes_data()
{
    QTest::addColumn<int>("encoding");
    QTest::addColumn<char>("lead");

    QTest::newRow("Shift-JIS") << int(char_encoding_ShiftJIS) << char(0x81);
    QTest::newRow("GBK") << int(char_encoding_GBK) << char(0x81);
    QTest::newRow("Big5") << int(char_encoding_Big5) << char(0xA4);
    QTest::newRow("GB2312") << int(char_encoding_GB2312) << char(0xB0);
    QTest::newRow("legacy") << int(char_encoding_legacy) << char(0x81);
    QTest::newRow("UTF-8") << int(char_encoding_UTF8) << char(0x81);
}

void tst_XMLNode::multiByteTrailBytes()
{
    QFETCH(int, encoding);
    QFETCH(char, lead);
    setEncoding(static_cast<XMLCharEncoding>(encoding));
    const bool multiByte = encoding >= char_encoding_ShiftJIS;
    const QByteArray ch = QByteArray(1, lead) + ']';

    // Lead byte + ']' then "]>": no "]]>" in characters, so the section goes on.
    XMLResults r;
    XMLNode a = parse("<a><![CDATA[" + ch + "]>x]]></a>", &r).getChildNode("a");
    QCOMPARE(int(r.error), 0);
    if (multiByte) {
        QCOMPARE(QByteArray(a.getClear().lpszValue), ch + "]>x");
        QCOMPARE(a.nText(), 0);
    } else {
        QCOMPARE(QByteArray(a.getClear().lpszValue), QByteArray(1, lead));
        QCOMPARE(QByteArray(a.getText()), QByteArray("x]]>"));
    }

    // A trail '[' inside a DOCTYPE subset opens nothing.
    XMLNode top = parse("<!DOCTYPE a [" + QByteArray(1, lead) + "[ ]><a/>", &r);
    QCOMPARE(int(r.error), multiByte ? 0 : int(eXMLErrorUnmatchedEndClearTag));
    if (multiByte)
        QCOMPARE(QByteArray(top.getClear().lpszValue), " a [" + QByteArray(1, lead) + "[ ]");

    // A trail '\' before the closing quote ends nothing early or late.
    a = parse("<a v=\"" + QByteArray(1, lead) + "\\\" w='" + QByteArray(1, lead) + "\\'>" + QByteArray(1, lead)
                  + "\\</a>",
              &r)
            .getChildNode("a");
    QCOMPARE(int(r.error), 0);
    QCOMPARE(QByteArray(a.getAttribute("v")), QByteArray(1, lead) + '\\');
    QCOMPARE(QByteArray(a.getAttribute("w")), QByteArray(1, lead) + '\\');
    QCOMPARE(QByteArray(a.getText()), QByteArray(1, lead) + '\\');

    // Columns count a double-byte character once.
    parse("<a>" + QByteArray(1, lead) + "\x40</b>", &r);
    QCOMPARE(int(r.error), int(eXMLErrorUnmatchedEndTag));
    QCOMPARE(r.nColumn, multiByte ? 5 : encoding == char_encoding_UTF8 ? 5 : 6);

    // A lead byte at the very end of a section does not step over the end.
    QVERIFY(parse("<a><![CDATA[" + QByteArray(1, lead), &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorUnmatchedEndClearTag));
}

void tst_XMLNode::guessCharEncoding_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("useAttribute");
    QTest::addColumn<int>("expected");

    const QByteArray utf8Text = "<a>\xe4\xb8\xad</a>";
    const QByteArray latinText = "<a>\xe9t\xe9</a>";
    auto decl = [](const char *enc) { return "<?xml version=\"1.0\" encoding=\"" + QByteArray(enc) + "\"?>"; };
    QTest::newRow("plain ascii") << QByteArray("<a/>") << true << 1;
    QTest::newRow("utf-8 bytes") << utf8Text << true << 1;
    QTest::newRow("latin bytes") << latinText << true << 2;
    QTest::newRow("overlong") << QByteArray("<a>\xc0\xaf</a>") << true << 2;
    QTest::newRow("surrogate") << QByteArray("<a>\xed\xa0\x80</a>") << true << 2;
    QTest::newRow("cut at end") << QByteArray("<a>\xe4\xb8") << true << 1;
    QTest::newRow("UTF-8 declared") << decl("UTF-8") + utf8Text << true << 1;
    QTest::newRow("utf8 declared") << decl("utf8") + utf8Text << true << 1;
    QTest::newRow("utf-8 declared, bad bytes") << decl("utf-8") + latinText << true << 0;
    QTest::newRow("Shift-JIS") << decl("Shift-JIS") << true << 3;
    QTest::newRow("shiftjis") << decl("SHIFTJIS") << true << 3;
    QTest::newRow("sjis") << decl("sjis") << true << 3;
    QTest::newRow("Shift_JIS is no prefix") << decl("Shift_JIS") << true << 2;
    QTest::newRow("GB2312") << decl("gb2312") << true << 4;
    QTest::newRow("Big5") << decl("BIG5-HKSCS") << true << 5;
    QTest::newRow("GBK") << decl("GBK") << true << 6;
    QTest::newRow("other name") << decl("ISO-8859-1") + utf8Text << true << 2;
    QTest::newRow("single quotes") << QByteArray("<?xml encoding = 'gbk' ?>") << true << 6;
    QTest::newRow("attribute ignored") << decl("GBK") + latinText << false << 2;
    QTest::newRow("beyond 200 bytes") << "<?xml version=\"1.0\"" + QByteArray(200, ' ') + "encoding=\"GBK\"?>" << true
                                      << 1;
    QTest::newRow("not leading") << "<a/>" + decl("GBK") << true << 1;
    QTest::newRow("after the declaration") << QByteArray("<?xml version='1.0'?><a encoding='gbk'/>") << true << 1;
    QTest::newRow("empty") << QByteArray() << true << 1;
}

void tst_XMLNode::guessCharEncoding()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, useAttribute);
    QFETCH(int, expected);
    QCOMPARE(int(XMLNode::guessCharEncoding(bytes.data(), bytes.size(), useAttribute)), expected);
}

void tst_XMLNode::tagArgument()
{
    const QByteArray doc = "<?xml version='1.0'?><uitree><a><b id='1'/><b id='2'/></a></uitree>";
    XMLResults r;
    XMLNode n = XMLNode::parseString(doc.constData(), "uitree", &r);
    QCOMPARE(int(r.error), 0);
    QCOMPARE(n.getName(), "uitree");
    n = XMLNode::parseString(doc.constData(), "uitree/a/b", &r);
    QCOMPARE(n.getAttribute("id"), "1");
    // The top node is gone; the node found keeps its own subtree alive.
    QVERIFY(n.getParentNode().isEmpty());
    n = XMLNode::parseString(doc.constData(), "/uitree//a/", &r);
    QCOMPARE(n.getName(), "a");
    QCOMPARE(n.nChildNode(), 2);

    n = XMLNode::parseString(doc.constData(), "uitree/c", &r);
    QVERIFY(n.isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorFirstTagNotFound));
    QCOMPARE(r.nLine, 1);
    QCOMPARE(r.nColumn, doc.size() + 1);
    // Never created by the lookup.
    XMLNode top = parse(doc);
    QVERIFY(top.getChildNodeByPath("uitree/c", 0).isEmpty());
    QCOMPARE(top.getChildNode("uitree").nChildNode(), 1);

    // A warning survives a successful tag lookup.
    n = XMLNode::parseString("<a><b>", "a", &r);
    QCOMPARE(int(r.error), int(eXMLErrorMissingEndTag));
    QCOMPARE(n.getChildNode().getName(), "b");
    // An error wins over the tag.
    QVERIFY(XMLNode::parseString("<a>&x;</a>", "a", &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorUnknownCharacterEntity));
}

void tst_XMLNode::lookups()
{
    XMLNode top = parse("<r><b k='1'/><c/><b/><b k='2' v/><b k='1' v='x'/></r>");
    XMLNode r = top.getChildNode("r");
    QCOMPARE(r.nChildNode(), 5);
    QCOMPARE(r.nChildNode("b"), 4);
    QCOMPARE(r.nChildNode("x"), 0);
    QCOMPARE(r.getChildNode("b", 1), r.getChildNode(2));
    QVERIFY(r.getChildNode("b", 4).isEmpty());
    QVERIFY(r.getChildNode("b", -1).isEmpty());
    QVERIFY(r.getChildNode(5).isEmpty());
    QVERIFY(r.getChildNode(-1).isEmpty());

    // Iterator forms visit every match once, in order.
    QList<int> seen;
    int i = 0;
    for (XMLNode b; !(b = r.getChildNode("b", &i)).isEmpty();)
        seen << r.positionOfChildNode(b);
    QCOMPARE(seen, (QList<int>{0, 2, 3, 4}));
    QCOMPARE(i, 5);

    i = 0;
    QCOMPARE(r.getChildNodeWithAttribute("b", "k", "1", &i), r.getChildNode(0));
    QCOMPARE(r.getChildNodeWithAttribute("b", "k", "1", &i), r.getChildNode(4));
    QVERIFY(r.getChildNodeWithAttribute("b", "k", "1", &i).isEmpty());
    QCOMPARE(r.getChildNodeWithAttribute("b", "k", "2"), r.getChildNode(3));
    QCOMPARE(r.getChildNodeWithAttribute("b", "v"), r.getChildNode(3));
    QCOMPARE(r.getChildNodeWithAttribute("b", "v", "x"), r.getChildNode(4));
    QVERIFY(r.getChildNodeWithAttribute("c", "k").isEmpty());

    XMLNode m = parse("<m a='1' b='2' a='3' c/>").getChildNode(0);
    QCOMPARE(m.nAttribute(), 4);
    QCOMPARE(m.getAttribute("a", 1), "3");
    QVERIFY(!m.getAttribute("a", 2));
    QVERIFY(!m.getAttribute("c", 0));
    QVERIFY(m.isAttributeSet("c"));
    int j = 0;
    QCOMPARE(m.getAttribute("a", &j), "1");
    QCOMPARE(j, 1);
    QCOMPARE(m.getAttribute("a", &j), "3");
    QCOMPARE(j, 3);
    QVERIFY(!m.getAttribute("a", &j));
    QCOMPARE(m.getAttributeName(1), "b");
    QCOMPARE(m.getAttributeValue(1), "2");
    QVERIFY(!m.getAttributeName(4));
    QVERIFY(!m.getAttribute(9).lpszValue);
}

void tst_XMLNode::positions()
{
    XMLNode a = parse("<a x='1'>t0<b/><!--c0-->t1<c/><![CDATA[c1]]></a>").getChildNode(0);
    QCOMPARE(a.nElement(), 7);
    QCOMPARE(a.positionOfText(0), 0);
    QCOMPARE(a.positionOfChildNode(0), 1);
    QCOMPARE(a.positionOfClear(0), 2);
    QCOMPARE(a.positionOfText(1), 3);
    QCOMPARE(a.positionOfChildNode("c"), 4);
    QCOMPARE(a.positionOfClear(1), 5);
    QCOMPARE(a.positionOfText("t1"), 3);
    QCOMPARE(a.positionOfText(a.getText(1)), 3);
    QCOMPARE(a.positionOfClear("c1"), 5);
    XMLClear c = a.getClear(0);
    QCOMPARE(a.positionOfClear(&c), 2);
    QCOMPARE(a.positionOfChildNode(a.getChildNode(1)), 4);
    QCOMPARE(a.positionOfText(2), -1);
    QCOMPARE(a.positionOfText("none"), -1);
    QCOMPARE(a.positionOfChildNode(parse("<c/>").getChildNode(0)), -1);
    // enumContents: attributes first, then content position p at nAttribute() + p.
    QCOMPARE(int(a.enumContents(0).etype), int(eNodeAttribute));
    QCOMPARE(int(a.enumContents(1 + a.positionOfClear(1)).etype), int(eNodeClear));
    QCOMPARE(a.enumContents(1 + a.positionOfChildNode("c")).child.getName(), "c");
    QCOMPARE(int(a.enumContents(7).etype), int(eNodeNULL));
    QCOMPARE(int(a.enumContents(-1).etype), int(eNodeNULL));
}

void tst_XMLNode::serialisation()
{
    XMLNode top = parse("<?xml version=\"1.0\"?><a x=\"1&amp;2\" y='&quot;&apos;' flag><b/>t&lt;x<!--c--><e><f/></e>"
                        "</a>");
    QCOMPARE(toXml(top, 0), QByteArray("<?xml version=\"1.0\"?><a x=\"1&amp;2\" y=\"&quot;&apos;\" flag><b/>"
                                       "t&lt;x<!--c--><e><f/></e></a>"));
    QCOMPARE(toXml(top, 1), QByteArray("<?xml version=\"1.0\"?>\n<a x=\"1&amp;2\" y=\"&quot;&apos;\" flag><b/>"
                                       "t&lt;x<!--c--><e><f/></e></a>\n"));
    XMLNode tree = parse("<r><!--c--><s a='1'><t/></s><u/></r>");
    QCOMPARE(toXml(tree, 1), QByteArray("<r>\n\t<!--c-->\n\t<s a=\"1\">\n\t\t<t/>\n\t</s>\n\t<u/>\n</r>\n"));
    QCOMPARE(toXml(tree.getChildNode(0).getChildNode("s"), 1), QByteArray("<s a=\"1\">\n\t<t/>\n</s>\n"));

    // Built by hand: declaration without '?' in the name, a nameless child.
    XMLNode built = XMLNode::createXMLTopNode(nullptr);
    built.addChild("xml", 1).addAttribute("version", "1.0");
    XMLNode n = built.addChild("n");
    n.addText("a<b");
    n.addClear("x", "<!--", "-->");
    QCOMPARE(toXml(built, 0), QByteArray("<?xml version=\"1.0\"?><n>a&lt;b<!--x--></n>"));
    int size = -1;
    QVERIFY(!XMLNode().createXMLString(1, &size));
    QCOMPARE(size, 0);
}

void tst_XMLNode::roundTrip_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("dropWhiteSpace");

    QTest::newRow("message box") << QByteArray(msgBoxDocument) << true;
    QTest::newRow("message box, white space kept") << QByteArray(msgBoxDocument) << false;
    QTest::newRow("mixed content") << QByteArray("<p>Hello <b>bold <i>it</i></b> &amp; <br/>done</p>") << true;
    QTest::newRow("mixed content kept") << QByteArray("<p> Hello <b>bold </b>\n</p>") << false;
    QTest::newRow("clears everywhere")
        << QByteArray("<!DOCTYPE x [<!ENTITY a \"b\">]><?pi data?><x><!--1--><![CDATA[<&>]]><?p q?><!X y></x><!--end-->")
        << true;
    QTest::newRow("null attributes") << QByteArray("<a b c='' d=\"'\" e='\"'/>") << true;
    QTest::newRow("all escapes") << QByteArray("<a v='&lt;&gt;&amp;&quot;&apos;'>&lt;&gt;&amp;&quot;&apos;</a>")
                                 << true;
    QTest::newRow("utf-8") << QByteArray("<a \xe5\x90\x8d='\xe5\x80\xbc'>\xe4\xb8\xad\xe6\x96\x87</a>") << true;
    QTest::newRow("declarations") << QByteArray("<?xml version='1.0'?><a><?xml v='2'?></a>") << true;
    QTest::newRow("several roots") << QByteArray("<a/>text<b/>") << true;
}

void tst_XMLNode::roundTrip()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, dropWhiteSpace);
    setEncoding(char_encoding_UTF8, dropWhiteSpace);

    XMLResults r;
    const XMLNode first = parse(text, &r);
    QCOMPARE(int(r.error), 0);
    const QByteArray expected = describe(first);
    for (int format : {0, 1}) {
        // Pretty-printing adds white space, which only dropWhiteSpace removes.
        if (format == 1 && !dropWhiteSpace)
            continue;
        const QByteArray written = toXml(first, format);
        const XMLNode second = parse(written, &r);
        QCOMPARE(int(r.error), 0);
        QCOMPARE(describe(second), expected);
        QCOMPARE(toXml(second, format), written);
    }
}

void tst_XMLNode::editing()
{
    XMLNode top = XMLNode::createXMLTopNode("root");
    QCOMPARE(top.getName(), "root");
    XMLNode a = top.addChild("a");
    XMLAttribute *attr = a.addAttribute("k", "v");
    QCOMPARE(attr->lpszName, "k");
    a.addAttribute("flag", nullptr);
    QVERIFY(!a.addAttribute(nullptr, "x"));
    QCOMPARE(a.nAttribute(), 2);

    // Update: by index, by old name, by pair; missing ones are added.
    QCOMPARE(a.updateAttribute("v2")->lpszValue, "v2");
    QCOMPARE(a.getAttribute("k"), "v2");
    a.updateAttribute("v3", "k2", "k");
    QVERIFY(!a.isAttributeSet("k"));
    QCOMPARE(a.getAttribute("k2"), "v3");
    a.updateAttribute("new", nullptr, "absent");
    QCOMPARE(a.getAttribute("absent"), "new");
    QVERIFY(!a.updateAttribute("x", nullptr, 99));
    a.updateAttribute("y", "added", 99);
    QCOMPARE(a.getAttribute("added"), "y");
    XMLAttribute newA = {"k3", "v4"};
    XMLAttribute oldA = {"k2", nullptr};
    a.updateAttribute(&newA, &oldA);
    QCOMPARE(a.getAttribute("k3"), "v4");
    QVERIFY(!a.isAttributeSet("k2"));
    // Passing back a stored value is safe.
    a.updateAttribute(a.getAttribute("k3"), nullptr, "k3");
    QCOMPARE(a.getAttribute("k3"), "v4");

    a.deleteAttribute("flag");
    QVERIFY(!a.isAttributeSet("flag"));
    a.deleteAttribute(a.addAttribute("tmp", "1"));
    QVERIFY(!a.isAttributeSet("tmp"));
    XMLAttribute byName = {"absent", nullptr};
    a.deleteAttribute(&byName);
    QVERIFY(!a.isAttributeSet("absent"));
    a.deleteAttribute(0);
    a.deleteAttribute(99);
    QCOMPARE(a.nAttribute(), 1);
    QCOMPARE(a.getAttributeName(0), "added");

    // Texts and clears.
    a.addText("one");
    a.addText("two");
    QCOMPARE(QByteArray(a.updateText("ONE")), QByteArray("ONE"));
    a.updateText("TWO", "two");
    a.updateText("three", "missing");
    QCOMPARE(a.nText(), 3);
    QCOMPARE(a.getText(1), "TWO");
    a.deleteText("ONE");
    a.deleteText(5);
    QCOMPARE(a.getText(0), "TWO");
    a.deleteText(a.getText(1));
    QCOMPARE(a.nText(), 1);

    XMLClear *c = a.addClear("data");
    QCOMPARE(c->lpszOpenTag, "<![CDATA[");
    QCOMPARE(c->lpszCloseTag, "]]>");
    a.addClear("note", "<!--", "-->");
    a.updateClear("DATA");
    QCOMPARE(a.getClear(0).lpszValue, "DATA");
    a.updateClear("NOTE", "note");
    QCOMPARE(a.getClear(1).lpszValue, "NOTE");
    XMLClear nc = {"custom", "<%", "%>"};
    XMLClear oc = a.getClear(1);
    a.updateClear(&nc, &oc);
    QCOMPARE(toXml(a, 0), QByteArray("<a added=\"y\">TWO<![CDATA[DATA]]><%custom%></a>"));
    a.deleteClear("DATA");
    QCOMPARE(a.nClear(), 1);
    XMLClear left = a.getClear(0);
    a.deleteClear(&left);
    QCOMPARE(a.nClear(), 0);

    QCOMPARE(QByteArray(a.updateName("renamed")), QByteArray("renamed"));
    QCOMPARE(top.getChildNode(0).getName(), "renamed");
    // Creating a path.
    XMLNode deep = top.getChildNodeByPath("x/y/z");
    QCOMPARE(deep.getName(), "z");
    QCOMPARE(deep.getParentNode().getParentNode().getParentNode(), top);
    QCOMPARE(top.getChildNodeByPath("x|y", 1, '|').getName(), "y");
}

void tst_XMLNode::editingOrder()
{
    // Edits of a parsed node keep the document order of all contents.
    XMLNode a = parse("<a>t0<b/><!--c0--></a>").getChildNode(0);
    a.addChild("first", 0, 0);
    a.addText("t1", 2);
    a.addClear("c1", "<!--", "-->", -1);
    a.addChild("mid", 0, a.positionOfClear(0));
    a.addText("t2", 100);
    QCOMPARE(toXml(a, 0), QByteArray("<a><first/>t0t1<b/><mid/><!--c0--><!--c1-->t2</a>"));
    QCOMPARE(a.getChildNode(2).getName(), "mid");
    QCOMPARE(a.getText(1), "t1");
    a.deleteText(0);
    a.getChildNode("b").deleteNodeContent();
    a.deleteClear(0);
    QCOMPARE(toXml(a, 0), QByteArray("<a><first/>t1<mid/><!--c1-->t2</a>"));
    QCOMPARE(a.positionOfText("t2"), 4);
    QCOMPARE(a.positionOfChildNode("mid"), 2);
    // Re-parsing what was written gives the same order.
    QCOMPARE(describe(parse(toXml(a, 0)).getChildNode(0)), describe(a));
}

void tst_XMLNode::moveAndDetach()
{
    XMLNode doc1 = parse("<r><a><x/></a><b/></r>");
    XMLNode doc2 = parse("<s><c/></s>");
    XMLNode r = doc1.getChildNode(0);
    XMLNode s = doc2.getChildNode(0);
    XMLNode a = r.getChildNode("a");

    // Into another document.
    QCOMPARE(s.addChild(a, 0), a);
    QCOMPARE(a.getParentNode(), s);
    QCOMPARE(toXml(r, 0), QByteArray("<r><b/></r>"));
    QCOMPARE(toXml(s, 0), QByteArray("<s><a><x/></a><c/></s>"));
    // Within one parent, to another position.
    s.addChild(a, -1);
    QCOMPARE(toXml(s, 0), QByteArray("<s><c/><a><x/></a></s>"));
    // Cycles are refused.
    QVERIFY(a.getChildNode(0).addChild(s).isEmpty());
    QVERIFY(a.addChild(a).isEmpty());
    QCOMPARE(toXml(s, 0), QByteArray("<s><c/><a><x/></a></s>"));

    // The first document goes; the moved node lives on in the second.
    doc1 = XMLNode();
    r = XMLNode();
    QCOMPARE(toXml(doc2, 0), QByteArray("<s><c/><a><x/></a></s>"));

    a.detachFromParent();
    QVERIFY(a.getParentNode().isEmpty());
    QCOMPARE(s.nChildNode(), 1);
    doc2 = XMLNode();
    s = XMLNode();
    QCOMPARE(toXml(a, 0), QByteArray("<a><x/></a>"));
    // A detached node can be put back under a new top node.
    XMLNode top = XMLNode::createXMLTopNode("t");
    top.addChild(a);
    a = XMLNode();
    QCOMPARE(toXml(top, 0), QByteArray("<t><a><x/></a></t>"));

    // A node moved into an untouched parsed document is freed with it, and
    // with the node the rest of its old document (the sanitizer build checks
    // for leaks here).
    {
        XMLNode d1 = parse("<a/>");
        XMLNode d2 = parse("<b><c/></b>");
        d1.getChildNode(0).addChild(d2.getChildNode(0).getChildNode(0));
        d2 = XMLNode();
        QCOMPARE(toXml(d1, 0), QByteArray("<a><c/></a>"));
    }
}

void tst_XMLNode::deleteNode()
{
    XMLNode top = parse("<r><a><b><c/></b></a><d/></r>");
    XMLNode a = top.getChildNodeByPath("r/a", 0);
    XMLNode other = a;
    XMLNode c = top.getChildNodeByPath("r/a/b/c", 0);
    a.deleteNodeContent();
    QVERIFY(a.isEmpty());
    QVERIFY(other.isEmpty());
    QVERIFY(!other.getName());
    QCOMPARE(other.nChildNode(), 0);
    QVERIFY(other.addChild("x").isEmpty());
    QCOMPARE(toXml(top, 0), QByteArray("<r><d/></r>"));
    // A descendant still held survives as its own tree.
    QVERIFY(!c.isEmpty());
    QCOMPARE(c.getName(), "c");
    QVERIFY(c.getParentNode().isEmpty());

    // Deleting a top node empties it.
    XMLNode t2 = top;
    top.deleteNodeContent();
    QVERIFY(t2.isEmpty());
    QCOMPARE(c.getName(), "c");
}

void tst_XMLNode::ownershipWOSD()
{
    // The leak and double-free checks of the sanitizer build make this test
    // meaningful: every string below is owned by the tree from the call on.
    XMLNode top = XMLNode::createXMLTopNode_WOSD(strdup("top"));
    XMLNode n = top.addChild_WOSD(strdup("n"));
    n.addAttribute_WOSD(strdup("a"), strdup("1"));
    n.addAttribute_WOSD(strdup("b"), nullptr);
    n.addText_WOSD(strdup("text"));
    n.addClear_WOSD(strdup("clear"), "<!--", "-->");
    n.updateName_WOSD(strdup("m"));
    n.updateAttribute_WOSD(strdup("2"), strdup("a2"), 0);
    n.updateAttribute_WOSD(strdup("3"), nullptr, "a2");
    n.updateAttribute_WOSD(strdup("4"), strdup("c"), "absent");
    XMLAttribute na = {strdup("d"), strdup("5")};
    XMLAttribute oa = {"b", nullptr};
    n.updateAttribute_WOSD(&na, &oa);
    n.updateText_WOSD(strdup("text2"), 0);
    n.updateText_WOSD(strdup("text3"), "text2");
    n.updateClear_WOSD(strdup("clear2"), 0);
    n.updateClear_WOSD(strdup("clear3"), "clear2");
    XMLClear nc = {strdup("clear4"), "<?", "?>"};
    XMLClear oc = {"clear3", nullptr, nullptr};
    n.updateClear_WOSD(&nc, &oc);
    // Same pointer back: kept, not freed.
    n.updateText_WOSD(const_cast<XMLSTR>(n.getText()), 0);
    QCOMPARE(toXml(top, 0), QByteArray("<top><m a2=\"3\" d=\"5\" c=\"4\">text3<?clear4?></m></top>"));
    // Failing calls free what they were given.
    XMLNode empty;
    empty.addText_WOSD(strdup("lost"));
    empty.addAttribute_WOSD(strdup("x"), strdup("y"));
    empty.updateName_WOSD(strdup("z"));
    n.addAttribute_WOSD(nullptr, strdup("no name"));
    n.updateAttribute_WOSD(strdup("no index"), nullptr, 7);
    // Parsed nodes mix arena and heap strings.
    XMLNode parsed = parse("<p a='1'>t<!--c--></p>").getChildNode(0);
    parsed.updateAttribute_WOSD(strdup("2"), nullptr, 0);
    parsed.updateText_WOSD(strdup("u"), 0);
    parsed.updateName_WOSD(strdup("q"));
    parsed.addChild(n);
    QCOMPARE(toXml(parsed, 0), QByteArray("<q a=\"2\">u<!--c--><m a2=\"3\" d=\"5\" c=\"4\">text3<?clear4?></m></q>"));
    parsed.deleteText(0);
    parsed.deleteAttribute(0);
}

void tst_XMLNode::handleLifetime()
{
    XMLNode child;
    {
        XMLNode top = parse("<r><a k='v'><b/></a></r>");
        child = top.getChildNodeByPath("r/a", 0);
        XMLNode copy = top;
        QCOMPARE(copy, top);
        QVERIFY(copy != child);
    }
    // The rest of the document is gone; the child and its subtree remain.
    QCOMPARE(child.getName(), "a");
    QCOMPARE(child.getAttribute("k"), "v");
    QCOMPARE(child.getChildNode(0).getName(), "b");
    QVERIFY(child.getParentNode().isEmpty());
    XMLNode moved = std::move(child);
    QVERIFY(child.isEmpty());
    QCOMPARE(moved.getName(), "a");
    moved = moved; // self-assignment
    QCOMPARE(moved.getName(), "a");
    XMLNode grandChild = moved.getChildNode(0);
    moved = XMLNode();
    QCOMPARE(grandChild.getName(), "b");
}

void tst_XMLNode::emptyHandle()
{
    XMLNode e = XMLNode::emptyNode();
    QVERIFY(e.isEmpty());
    QVERIFY(!e.getName());
    QVERIFY(!e.getText());
    QCOMPARE(e.nText() + e.nChildNode() + e.nChildNode("a") + e.nAttribute() + e.nClear() + e.nElement(), 0);
    QVERIFY(e.getParentNode().isEmpty());
    QVERIFY(e.getChildNode().isEmpty());
    QVERIFY(e.getChildNode("a").isEmpty());
    QVERIFY(e.getChildNode("a", 0).isEmpty());
    QVERIFY(e.getChildNodeByPath("a/b").isEmpty());
    QVERIFY(e.getChildNodeWithAttribute("a", "b").isEmpty());
    QVERIFY(!e.getAttribute().lpszName);
    QVERIFY(!e.getAttribute("a"));
    QVERIFY(!e.isAttributeSet("a"));
    QVERIFY(!e.getClear().lpszValue);
    QVERIFY(!e.isDeclaration());
    QCOMPARE(int(e.enumContents(0).etype), int(eNodeNULL));
    QCOMPARE(e.positionOfText(0) + e.positionOfClear(0) + e.positionOfChildNode(0), -3);
    QVERIFY(e.deepCopy().isEmpty());
    QVERIFY(e.addChild("a").isEmpty());
    QVERIFY(e.addChild(XMLNode::createXMLTopNode("x")).isEmpty());
    QVERIFY(!e.addAttribute("a", "b"));
    QVERIFY(!e.addText("t"));
    QVERIFY(!e.addClear("c"));
    QVERIFY(!e.updateName("n"));
    QVERIFY(!e.updateAttribute("v"));
    QVERIFY(!e.updateText("t"));
    QVERIFY(!e.updateClear("c"));
    e.deleteAttribute();
    e.deleteText();
    e.deleteClear();
    e.detachFromParent();
    e.deleteNodeContent();
    QVERIFY(e.isEmpty());
    // Null arguments on a real node.
    XMLNode n = parse("<a><b/></a>").getChildNode(0);
    QVERIFY(n.getChildNode(static_cast<const char *>(nullptr)).isEmpty());
    QVERIFY(!n.getAttribute(static_cast<const char *>(nullptr)));
    QVERIFY(n.getChildNodeByPath(nullptr).isEmpty());
    QVERIFY(!n.addText(nullptr));
    QVERIFY(!n.addClear(nullptr));
    n.deleteText(static_cast<const char *>(nullptr));
    QCOMPARE(n.nChildNode(), 1);
}

void tst_XMLNode::deepCopy()
{
    XMLNode top = parse(msgBoxDocument);
    auto toolBar = [](XMLNode root) {
        return root.getChildNodeByPath("uitree/ZMessageBox/ZSpacer", 0)
            .getChildNodeWithAttribute("ZSpacer", "fixHeight", "25")
            .getChildNode("ZToolBar");
    };
    XMLNode bar = toolBar(top);
    QCOMPARE(bar.nChildNode(), 3);
    bar.addChild("Extra").addText("x");
    XMLNode copy = top.deepCopy();
    const QByteArray before = describe(top);
    QCOMPARE(describe(copy), before);
    // Independent: editing or freeing one leaves the other alone.
    copy.getChildNode("uitree").addChild("More");
    bar.deleteNodeContent();
    QVERIFY(describe(copy) != before);
    top = XMLNode();
    QCOMPARE(toolBar(copy).getChildNode("Extra").getText(), "x");
    QCOMPARE(toolBar(copy).nChildNode(), 4);
    XMLNode part = copy.getChildNodeByPath("uitree/ZMessageBox", 0).deepCopy();
    QVERIFY(part.getParentNode().isEmpty());
    QCOMPARE(part.getAttribute("windowStyle"), "Dialog");
}

void tst_XMLNode::files()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QByteArray path = QFile::encodeName(dir.filePath("out.xml"));

    XMLNode root = XMLNode::createXMLTopNode("root");
    root.addChild("item").addAttribute("v", "1 & 2");
    QCOMPARE(root.writeToFile(path.constData(), nullptr, 0), eXMLErrorNone);
    QFile f(QString::fromLocal8Bit(path));
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<root><item v=\"1 &amp; 2\"/></root>"));
    f.close();

    XMLResults r;
    XMLNode back = XMLNode::parseFile(path.constData(), "root/item", &r);
    QCOMPARE(int(r.error), 0);
    QCOMPARE(back.getAttribute("v"), "1 & 2");

    // A tree with its own declaration gets no second header.
    XMLNode top = XMLNode::parseFile(path.constData());
    QCOMPARE(top.writeToFile(path.constData(), "GBK", 1), eXMLErrorNone);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<root>\n\t<item v=\"1 &amp; 2\"/>\n"
                                     "</root>\n"));
    f.close();
    // The encoding name given, or the global encoding's.
    root.writeToFile(path.constData(), "ISO-8859-15");
    QVERIFY(f.open(QIODevice::ReadOnly));
    QVERIFY(f.readAll().startsWith("<?xml version=\"1.0\" encoding=\"ISO-8859-15\"?>\n<root>"));
    f.close();
    setEncoding(char_encoding_GBK);
    root.writeToFile(path.constData());
    QVERIFY(f.open(QIODevice::ReadOnly));
    QVERIFY(f.readAll().startsWith("<?xml version=\"1.0\" encoding=\"GBK\"?>\n"));
    f.close();
    setEncoding(char_encoding_UTF8);

    QCOMPARE(root.writeToFile(QFile::encodeName(dir.filePath("no/such/dir.xml")).constData()),
             eXMLErrorCannotOpenWriteFile);
    QCOMPARE(root.writeToFile(nullptr), eXMLErrorCannotOpenWriteFile);
    QVERIFY(XMLNode::parseFile(QFile::encodeName(dir.filePath("missing.xml")).constData(), nullptr, &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorFileNotFound));
    QVERIFY(XMLNode::parseFile(nullptr, nullptr, &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorFileNotFound));

    auto writeBytes = [&](const QByteArray &bytes) {
        QFile w(QString::fromLocal8Bit(path));
        QVERIFY(w.open(QIODevice::WriteOnly | QIODevice::Truncate));
        w.write(bytes);
    };
    // UTF-8 byte-order mark.
    writeBytes("\xef\xbb\xbf<a>\xc3\xa9</a>");
    QCOMPARE(QByteArray(XMLNode::parseFile(path.constData(), "a", &r).getText()), QByteArray("\xc3\xa9"));
    // UTF-16 little and big endian, with and without a byte-order mark.
    const QString text = QString::fromUtf8("<a t='\xe4\xb8\xad'>\xf0\x9f\x98\x80</a>");
    QByteArray le("\xff\xfe", 2);
    QByteArray be("\xfe\xff", 2);
    for (QChar ch : text) {
        le += char(ch.unicode() & 0xFF);
        le += char(ch.unicode() >> 8);
        be += char(ch.unicode() >> 8);
        be += char(ch.unicode() & 0xFF);
    }
    for (const QByteArray &bytes : {le, be, le.mid(2), be.mid(2)}) {
        writeBytes(bytes);
        XMLNode a = XMLNode::parseFile(path.constData(), "a", &r);
        QCOMPARE(int(r.error), 0);
        QCOMPARE(QByteArray(a.getAttribute("t")), QByteArray("\xe4\xb8\xad"));
        QCOMPARE(QByteArray(a.getText()), QByteArray("\xf0\x9f\x98\x80"));
    }
    writeBytes(le.left(le.size() - 1));
    QVERIFY(XMLNode::parseFile(path.constData(), nullptr, &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorCharConversionError));
    setEncoding(char_encoding_legacy);
    writeBytes(le);
    QVERIFY(XMLNode::parseFile(path.constData(), nullptr, &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorCharConversionError));
    setEncoding(char_encoding_UTF8);
    // A NUL byte in a file would cut text short: an error, not lost data.
    writeBytes(QByteArray("<a>x\0y</a>", 10));
    QVERIFY(XMLNode::parseFile(path.constData(), nullptr, &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorUnexpectedToken));
    QCOMPARE(r.nColumn, 5);
}

void tst_XMLNode::openFileHelper()
{
    QTemporaryDir dir;
    const QByteArray good = QFile::encodeName(dir.filePath("good.xml"));
    QFile f(QString::fromLocal8Bit(good));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("<r><a/></r>");
    f.close();
    QCOMPARE(XMLNode::openFileHelper(good.constData(), "r").nChildNode(), 1);

    // Failures print and end the process: run them in a child.
    auto run = [](const QByteArray &path, const char *tag, QByteArray *output) {
        int fds[2];
        if (pipe(fds) != 0)
            return -1;
        const pid_t pid = fork();
        if (pid == 0) {
            inForkedChild = true;
            dup2(fds[1], 2);
            close(fds[0]);
            XMLNode::openFileHelper(path.constData(), tag);
            _exit(0);
        }
        close(fds[1]);
        char buf[512];
        ssize_t n;
        while ((n = read(fds[0], buf, sizeof buf)) > 0)
            output->append(buf, int(n));
        close(fds[0]);
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    QByteArray out;
    const QByteArray missing = QFile::encodeName(dir.filePath("missing.xml"));
    QVERIFY(run(missing, nullptr, &out) != 0);
    QCOMPARE(out, "XML Parsing error inside file '" + missing + "'.\nError: File not found\nAt line 0, column 0.\n");
    out.clear();
    QVERIFY(run(good, "uitree", &out) != 0);
    QCOMPARE(out, "XML Parsing error inside file '" + good
                      + "'.\nError: First Tag not found\nAt line 1, column 12.\nFirst Tag should be 'uitree'\n");
}

void tst_XMLNode::truncatedDocuments()
{
    // Every prefix of a real document, in both white-space modes, parses to a
    // result; warnings keep a tree that writes and re-parses identically.
    const QByteArray doc(msgBoxDocument);
    for (char drop : {1, 0}) {
        setEncoding(char_encoding_UTF8, drop);
        for (int len = 0; len <= doc.size(); ++len) {
            const QByteArray prefix = doc.left(len);
            XMLResults r = {eXMLErrorNone, -1, -1};
            const XMLNode top = parse(prefix, &r);
            QVERIFY2(r.nLine >= 0 && r.nColumn >= 0, prefix);
            switch (r.error) {
            case eXMLErrorNone:
            case eXMLErrorMissingEndTag:
            case eXMLErrorNoXMLTagFound: {
                QVERIFY2(!top.isEmpty(), prefix);
                const XMLNode again = parse(toXml(top, 0));
                QCOMPARE(describe(again), describe(top));
                break;
            }
            case eXMLErrorEmpty:
            case eXMLErrorMissingTagName:
            case eXMLErrorMissingEndTagName:
            case eXMLErrorUnmatchedEndClearTag:
            case eXMLErrorUnexpectedToken:
            case eXMLErrorUnknownCharacterEntity:
                QVERIFY2(top.isEmpty(), prefix);
                break;
            default:
                QFAIL(qPrintable("unexpected result " + QString::number(r.error) + " for " + prefix));
            }
            if (len == doc.size())
                QCOMPARE(int(r.error), 0);
        }
    }
}

void tst_XMLNode::randomInput()
{
    // Markup-heavy random text in every encoding: a result, never a crash,
    // and whatever parses survives writing and re-parsing.
    static const char alphabet[] = "<<<>>>//!!-?-?[[]]&&;;#x='\"  \n\taAbB\\\x81\xa4\xe4";
    QRandomGenerator rng(12345);
    for (int e = char_encoding_UTF8; e <= char_encoding_GBK; ++e) {
        setEncoding(static_cast<XMLCharEncoding>(e));
        for (int i = 0; i < 3000; ++i) {
            QByteArray text;
            const int len = int(rng.bounded(60u));
            for (int k = 0; k < len; ++k) {
                char c = rng.bounded(8u) == 0 ? char(1 + rng.bounded(255u)) : alphabet[rng.bounded(quint32(sizeof alphabet - 1))];
                text += c;
            }
            if (rng.bounded(2u))
                text = "<a b='1'>" + text + "</a>";
            XMLResults r;
            const XMLNode top = parse(text, &r);
            QVERIFY(r.error >= eXMLErrorNone && r.error <= eXMLErrorCharacterCodeAbove255);
            if (!top.isEmpty()) {
                const QByteArray written = toXml(top, 0);
                XMLResults r2;
                const XMLNode again = parse(written, &r2);
                QVERIFY2(r2.error == eXMLErrorNone || r2.error == eXMLErrorNoXMLTagFound,
                         (text.toHex() + " -> " + written.toHex()).constData());
                QCOMPARE(describe(again), describe(top));
            }
        }
    }
}

void tst_XMLNode::deepNesting()
{
    constexpr int depth = 200000;
    QByteArray text;
    text.reserve(depth * 8);
    for (int i = 0; i < depth; ++i)
        text += "<n>";
    text += "leaf";
    for (int i = 0; i < depth; ++i)
        text += "</n>";

    XMLResults r;
    XMLNode top = parse(text, &r);
    QCOMPARE(int(r.error), 0);
    XMLNode n = top;
    int levels = 0;
    while (n.nChildNode()) {
        n = n.getChildNode(0);
        ++levels;
    }
    QCOMPARE(levels, depth);
    QCOMPARE(n.getText(), "leaf");

    const XMLNode copy = top.deepCopy();
    int size = 0;
    char *written = copy.createXMLString(0, &size);
    QCOMPARE(QByteArray(written, size), text);
    std::free(written);
    written = copy.createXMLString(1, &size);
    QVERIFY(size > text.size());
    XMLNode pretty = XMLNode::parseString(written, nullptr, &r);
    std::free(written);
    QCOMPARE(int(r.error), 0);
    pretty = XMLNode();

    // The leaf handle keeps only its node once the rest is released.
    top = XMLNode();
    QCOMPARE(n.getText(), "leaf");
    QVERIFY(n.getParentNode().isEmpty());

    // Unclosed: a warning and the whole tree.
    XMLNode open = parse(text.left(depth * 3), &r);
    QCOMPARE(int(r.error), int(eXMLErrorMissingEndTag));
    QCOMPARE(open.getChildNode().getName(), "n");
    // Deleting the outermost node frees the chain below it.
    XMLNode outer = open.getChildNode();
    outer.deleteNodeContent();
    QCOMPARE(open.nChildNode(), 0);

    // Wide as well as deep: appending stays cheap, and so does the output.
    XMLNode wide = XMLNode::createXMLTopNode("w");
    for (int i = 0; i < depth; ++i) {
        if (i % 2)
            wide.addChild("c");
        else
            wide.addText("t");
    }
    QCOMPARE(wide.nChildNode(), depth / 2);
    QCOMPARE(wide.positionOfChildNode(depth / 2 - 1), depth - 1);
    written = wide.createXMLString(1, &size);
    QCOMPARE(XMLNode::parseString(written, "w", &r).nElement(), depth);
    std::free(written);
}

QTEST_APPLESS_MAIN(tst_XMLNode)
#include "tst_xmlnode.moc"

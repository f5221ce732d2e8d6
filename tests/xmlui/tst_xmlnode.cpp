#include "xmlnode.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

// openFileHelper() ends the process on failure, so it runs in a forked
// child; LeakSanitizer cannot check a process whose other threads were lost
// in the fork and is told to skip it (the hook is read in sanitizer builds).
static bool inForkedChild = false;
extern "C" __attribute__((visibility("default"), used)) int __lsan_is_turned_off()
{
    return inForkedChild;
}

namespace {

const char msgBoxDocument[] =
    "<?xml version=\"1.0\" ?>\n"
    "<uitree>\n"
    "  <ZMessageBox objectName=\"box\" titlebar.margins=\"3,1,1,1\" windowStyle=\"Dialog\">\n"
    "    <ZSpacer layout=\"VBox\" margins=\"10,5,10,10\">\n"
    "      <ZTextItem objectName=\"textShower\" text=\"MyTest\" readOnly=\"true\"/>\n"
    "      <!-- buttons -->\n"
    "      <ZSpacer layout=\"HBox\" fixHeight=\"25\">\n"
    "        <ZToolBar objectName=\"buttonToolbar\" layout=\"HBox\" sizeToChild=\"true\">\n"
    "          <ZPushButton objectName=\"button0\" text=\"OK &amp; go\" fixWidth=\"60\"/>\n"
    "          <ZPushButton objectName=\"button1\" text=\"Cancel\"/>\n"
    "        </ZToolBar>\n"
    "      </ZSpacer>\n"
    "      <data><![CDATA[raw <text> & more]]>Some &lt;escaped&gt; text</data>\n"
    "    </ZSpacer>\n"
    "  </ZMessageBox>\n"
    "</uitree>\n";

// Everything a tree holds, in document order, one item per line. Walks with
// an explicit stack so that it also describes very deep trees.
QByteArray describe(const XMLNode &root)
{
    if (root.isEmpty())
        return "(empty)";
    QByteArray out;
    auto element = [&out](const XMLNode &n, const char *nameless) {
        out += "E " + QByteArray(n.getName() ? n.getName() : nameless) + (n.isDeclaration() ? " decl\n" : "\n");
    };
    element(root, "(top)");
    std::vector<std::pair<XMLNode, int>> stack;
    stack.emplace_back(root, 0);
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
                   + (c.attrib.lpszValue ? "'" + QByteArray(c.attrib.lpszValue) + "'" : QByteArray("(null)")) + "\n";
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
            element(child, "(null)");
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

QByteArray toXml(const XMLNode &node, int format = 0)
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

    void errorTextsAndOptions();
    void parseResults_data();
    void parseResults();
    void structure();
    void entities_data();
    void entities();
    void whiteSpaceAndComments_data();
    void whiteSpaceAndComments();
    void multiByteTrailBytes_data();
    void multiByteTrailBytes();
    void guessCharEncoding_data();
    void guessCharEncoding();
    void tagArgument();
    void lookupsAndPositions();
    void serialisation();
    void roundTrip_data();
    void roundTrip();
    void editing();
    void editingOrder();
    void moveAndDetach();
    void handles();
    void ownershipWOSD();
    void emptyHandle();
    void deepCopy();
    void files();
    void openFileHelper();
    void deepNesting();
};

void tst_XMLNode::errorTextsAndOptions()
{
    // The texts are shown to users and matched by tools; every code has one.
    QCOMPARE(XMLNode::getError(eXMLErrorMissingEndTag), "Warning: Unmatched end tag");
    QCOMPARE(XMLNode::getError(eXMLErrorCharacterCodeAbove255),
             "Error: Character code above 255 is forbidden in MultiByte char mode.");
    QSet<QByteArray> texts;
    for (int e = 0; e <= 20; ++e)
        texts.insert(XMLNode::getError(static_cast<XMLError>(e)));
    QCOMPARE(texts.size(), 21);
    QVERIFY(!texts.contains("Unknown"));
    QCOMPARE(XMLNode::getError(static_cast<XMLError>(21)), "Unknown");
    QCOMPARE(XMLNode::getError(static_cast<XMLError>(-1)), "Unknown");

    // Invalid options are refused and change nothing: UTF-8 output for entities.
    QVERIFY(XMLNode::setGlobalOptions(char_encoding_error) != 0);
    QVERIFY(XMLNode::setGlobalOptions(static_cast<XMLCharEncoding>(7)) != 0);
    QCOMPARE(QByteArray(parse("<a>&#233;</a>").getChildNode(0).getText()), QByteArray("\xc3\xa9"));
    setEncoding(char_encoding_legacy, 0);
    QCOMPARE(QByteArray(parse("<a> &#233; </a>").getChildNode(0).getText()), QByteArray(" \xe9 "));
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
    QTest::newRow("&#X41; (upper-case X)") << QByteArray("<a>&#X41;</a>") << 12 << 1 << 4;
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
    QCOMPARE(describe(top), QByteArray("E (top)\n"
                                       "E ?xml decl\nA version='1.0'\nA encoding='utf-8'\n/E\n"
                                       "C <!DOCTYPE| ui [ <!ENTITY e \"]>\"> <!-- ] > --> ]|>\n"
                                       "C <?|xml-stylesheet href=\"a.css\"|?>\n"
                                       "C <!--| top comment |-->\n"
                                       "E ui\nA a='1'\nA checked=(null)\nA b='<&>'\nA c='it's'\nA d='say \"hi\"'\n"
                                       "C <![CDATA[|<raw> &amp; |]]>\n"
                                       "T 'text & more'\n"
                                       "E child\n/E\nE child\nA x='2'\n/E\n"
                                       "/E\n"
                                       "C <!|ELEMENT stray|>\n"
                                       "/E\n"));
    QVERIFY(!top.getName() && !top.isDeclaration());
    QCOMPARE(top.nChildNode(), 2);
    QCOMPARE(top.nClear(), 4);
    const XMLNode ui = top.getChildNode("ui");
    QCOMPARE(ui.nElement(), 5 + 4);
    QCOMPARE(ui.getParentNode(), top);
    QVERIFY(ui.isAttributeSet("checked") && !ui.getAttribute("checked") && !ui.isAttributeSet("missing"));
    QCOMPARE(ui.getText(), "text & more");
    QVERIFY(top.getChildNode(0).isDeclaration());
}

void tst_XMLNode::entities_data()
{
    QTest::addColumn<int>("encoding");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("decoded");

    QTest::newRow("named") << 1 << QByteArray("&lt;&gt;&amp;&quot;&apos;") << 0 << QByteArray("<>&\"'");
    QTest::newRow("ascii") << 1 << QByteArray("x&#65;&#x42;&#x6a;y") << 0 << QByteArray("xABjy");
    QTest::newRow("2-byte utf-8") << 1 << QByteArray("&#233;") << 0 << QByteArray("\xc3\xa9");
    QTest::newRow("3-byte utf-8") << 1 << QByteArray("&#x4E2D;&#25991;") << 0 << QByteArray("\xe4\xb8\xad\xe6\x96\x87");
    QTest::newRow("4-byte utf-8") << 1 << QByteArray("&#x1F600;") << 0 << QByteArray("\xf0\x9f\x98\x80");
    QTest::newRow("U+10FFFF") << 1 << QByteArray("&#1114111;") << 0 << QByteArray("\xf4\x8f\xbf\xbf");
    QTest::newRow("utf-8 above 255") << 1 << QByteArray("&#256;") << 0 << QByteArray("\xc4\x80");
    QTest::newRow("legacy byte") << 2 << QByteArray("&#233;") << 0 << QByteArray("\xe9");
    QTest::newRow("legacy 255") << 2 << QByteArray("&#xff;") << 0 << QByteArray("\xff");
    QTest::newRow("gbk ascii") << 6 << QByteArray("&#x41;&amp;") << 0 << QByteArray("A&");
    // Single-byte and multi-byte modes cannot hold a character above 255.
    for (int e = char_encoding_legacy; e <= char_encoding_GBK; ++e)
        QTest::addRow("above 255, encoding %d", e) << e << QByteArray("&#x100;") << 13 << QByteArray();
}

void tst_XMLNode::entities()
{
    QFETCH(int, encoding);
    QFETCH(QByteArray, text);
    QFETCH(int, error);
    QFETCH(QByteArray, decoded);
    setEncoding(static_cast<XMLCharEncoding>(encoding));

    XMLResults r, rv;
    const XMLNode a = parse("<a>" + text + "</a>", &r).getChildNode("a");
    const XMLNode v = parse("<a v=\"" + text + "\"/>", &rv).getChildNode("a");
    QCOMPARE(int(r.error), error);
    QCOMPARE(int(rv.error), error);
    if (error) {
        QVERIFY(a.isEmpty() && v.isEmpty());
        return;
    }
    QCOMPARE(QByteArray(a.getText()), decoded);
    QCOMPARE(QByteArray(v.getAttribute("v")), decoded);
    // Clear sections are not decoded.
    QCOMPARE(QByteArray(parse("<a><![CDATA[" + text + "]]></a>").getChildNode(0).getClear().lpszValue), text);
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
    // The element's contents only, one item per "|".
    QByteArray d = describe(a);
    d = d.mid(d.indexOf('\n') + 1);
    d.chop(3);
    QCOMPARE(d.replace('\n', '|'), expected);
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
    const QByteArray l(1, lead);

    // Lead byte + ']' then "]>": no "]]>" in characters, so the section goes on.
    XMLResults r;
    XMLNode a = parse("<a><![CDATA[" + l + "]]>x]]></a>", &r).getChildNode("a");
    QCOMPARE(int(r.error), 0);
    QCOMPARE(QByteArray(a.getClear().lpszValue), multiByte ? l + "]]>x" : l);
    QCOMPARE(QByteArray(a.getText()), multiByte ? QByteArray() : QByteArray("x]]>"));

    // A trail '[' inside a DOCTYPE subset opens nothing.
    XMLNode top = parse("<!DOCTYPE a [" + l + "[ ]><a/>", &r);
    QCOMPARE(int(r.error), multiByte ? 0 : int(eXMLErrorUnmatchedEndClearTag));
    if (multiByte)
        QCOMPARE(QByteArray(top.getClear().lpszValue), " a [" + l + "[ ]");

    // A trail '\' before the closing quote ends nothing early or late.
    a = parse("<a v=\"" + l + "\\\" w='" + l + "\\'>" + l + "\\</a>", &r).getChildNode("a");
    QCOMPARE(int(r.error), 0);
    QCOMPARE(QByteArray(a.getAttribute("v")), l + '\\');
    QCOMPARE(QByteArray(a.getAttribute("w")), l + '\\');
    QCOMPARE(QByteArray(a.getText()), l + '\\');

    // Columns count a double-byte character once.
    parse("<a>" + l + "\x40</b>", &r);
    QCOMPARE(int(r.error), int(eXMLErrorUnmatchedEndTag));
    QCOMPARE(r.nColumn, encoding == char_encoding_legacy ? 6 : 5);

    // A lead byte at the very end of a section does not step over the end.
    QVERIFY(parse("<a><![CDATA[" + l, &r).isEmpty());
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
    QCOMPARE(XMLNode::parseString(doc.constData(), "uitree", &r).getName(), "uitree");
    QCOMPARE(int(r.error), 0);
    // The top node is gone; the node found keeps its own subtree alive.
    XMLNode n = XMLNode::parseString(doc.constData(), "uitree/a/b", &r);
    QCOMPARE(n.getAttribute("id"), "1");
    QVERIFY(n.getParentNode().isEmpty());
    n = XMLNode::parseString(doc.constData(), "/uitree//a/", &r);
    QCOMPARE(n.nChildNode(), 2);

    QVERIFY(XMLNode::parseString(doc.constData(), "uitree/c", &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorFirstTagNotFound));
    QCOMPARE(r.nLine, 1);
    QCOMPARE(r.nColumn, doc.size() + 1);
    // Never created by the lookup.
    XMLNode top = parse(doc);
    QVERIFY(top.getChildNodeByPath("uitree/c", 0).isEmpty());
    QCOMPARE(top.getChildNode("uitree").nChildNode(), 1);

    // A warning survives a successful tag lookup; an error wins over the tag.
    QCOMPARE(XMLNode::parseString("<a><b>", "a", &r).getChildNode().getName(), "b");
    QCOMPARE(int(r.error), int(eXMLErrorMissingEndTag));
    QVERIFY(XMLNode::parseString("<a>&x;</a>", "a", &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorUnknownCharacterEntity));
}

void tst_XMLNode::lookupsAndPositions()
{
    XMLNode r = parse("<r><b k='1'/><c/><b/><b k='2' v/><b k='1' v='x'/></r>").getChildNode("r");
    QCOMPARE(r.nChildNode(), 5);
    QCOMPARE(r.nChildNode("b"), 4);
    QCOMPARE(r.nChildNode("x"), 0);
    QCOMPARE(r.getChildNode("b", 1), r.getChildNode(2));
    QVERIFY(r.getChildNode("b", 4).isEmpty() && r.getChildNode("b", -1).isEmpty());
    QVERIFY(r.getChildNode(5).isEmpty() && r.getChildNode(-1).isEmpty());
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
    QVERIFY(!m.getAttribute("a", 2) && !m.getAttribute("c", 0) && m.isAttributeSet("c"));
    int j = 0;
    QCOMPARE(m.getAttribute("a", &j), "1");
    QCOMPARE(j, 1);
    QCOMPARE(m.getAttribute("a", &j), "3");
    QCOMPARE(j, 3);
    QVERIFY(!m.getAttribute("a", &j));
    QCOMPARE(m.getAttributeName(1), "b");
    QCOMPARE(m.getAttributeValue(1), "2");
    QVERIFY(!m.getAttributeName(4) && !m.getAttribute(9).lpszValue);

    // Positions count texts, children and clears together, in document order.
    XMLNode a = parse("<a x='1'>t0<b/><!--c0-->t1<c/><![CDATA[c1]]></a>").getChildNode(0);
    QCOMPARE(a.nElement(), 7);
    const QList<int> positions{a.positionOfText(0), a.positionOfChildNode(0), a.positionOfClear(0),
                               a.positionOfText(1), a.positionOfChildNode("c"), a.positionOfClear(1)};
    QCOMPARE(positions, (QList<int>{0, 1, 2, 3, 4, 5}));
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
    QCOMPARE(int(a.enumContents(1 + 5).etype), int(eNodeClear));
    QCOMPARE(a.enumContents(1 + 4).child.getName(), "c");
    QCOMPARE(int(a.enumContents(7).etype), int(eNodeNULL));
    QCOMPARE(int(a.enumContents(-1).etype), int(eNodeNULL));
}

void tst_XMLNode::serialisation()
{
    XMLNode top = parse("<?xml version=\"1.0\"?><a x=\"1&amp;2\" y='&quot;&apos;' flag><b/>t&lt;x<!--c--><e><f/></e>"
                        "</a>");
    const QByteArray body = "<a x=\"1&amp;2\" y=\"&quot;&apos;\" flag><b/>t&lt;x<!--c--><e><f/></e></a>";
    QCOMPARE(toXml(top, 0), "<?xml version=\"1.0\"?>" + body);
    QCOMPARE(toXml(top, 1), "<?xml version=\"1.0\"?>\n" + body + "\n"); // mixed content stays on one line
    XMLNode tree = parse("<r><!--c--><s a='1'><t/></s><u/></r>");
    QCOMPARE(toXml(tree, 1), QByteArray("<r>\n\t<!--c-->\n\t<s a=\"1\">\n\t\t<t/>\n\t</s>\n\t<u/>\n</r>\n"));
    QCOMPARE(toXml(tree.getChildNode(0).getChildNode("s"), 1), QByteArray("<s a=\"1\">\n\t<t/>\n</s>\n"));

    // Built by hand: declaration without '?' in the name, a nameless top.
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
    // Past the byte-order mark, text that itself opens with U+FEFF.
    QTest::newRow("text opening with U+FEFF") << QByteArray("\xef\xbb\xbf\xef\xbb\xbfhead<a/>") << true;
}

void tst_XMLNode::roundTrip()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, dropWhiteSpace);
    setEncoding(char_encoding_UTF8, dropWhiteSpace);

    XMLResults r;
    const XMLNode first = parse(text, &r);
    QCOMPARE(int(r.error), 0);
    // Pretty-printing adds white space, which only dropWhiteSpace removes.
    for (int format = 0; format <= (dropWhiteSpace ? 1 : 0); ++format) {
        const QByteArray written = toXml(first, format);
        const XMLNode second = parse(written, &r);
        QCOMPARE(int(r.error), 0);
        QCOMPARE(describe(second), describe(first));
        QCOMPARE(toXml(second, format), written);
    }
}

void tst_XMLNode::editing()
{
    XMLNode top = XMLNode::createXMLTopNode("root");
    XMLNode a = top.addChild("a");
    QCOMPARE(a.addAttribute("k", "v")->lpszName, "k");
    a.addAttribute("flag", nullptr);
    QVERIFY(!a.addAttribute(nullptr, "x"));
    // Update by index, by old name, by pair; missing ones are added.
    QCOMPARE(a.updateAttribute("v2")->lpszValue, "v2");
    a.updateAttribute("v3", "k2", "k");
    a.updateAttribute("new", nullptr, "absent");
    QVERIFY(!a.updateAttribute("x", nullptr, 99));
    a.updateAttribute("y", "added", 99);
    XMLAttribute newA = {"k3", "v4"};
    XMLAttribute oldA = {"k2", nullptr};
    a.updateAttribute(&newA, &oldA);
    a.updateAttribute(a.getAttribute("k3"), nullptr, "k3"); // a stored value passed back
    QCOMPARE(toXml(a), QByteArray("<a k3=\"v4\" flag absent=\"new\" added=\"y\"/>"));
    a.deleteAttribute("flag");
    a.deleteAttribute(a.addAttribute("tmp", "1"));
    XMLAttribute byName = {"absent", nullptr};
    a.deleteAttribute(&byName);
    a.deleteAttribute(0);
    a.deleteAttribute(99);
    QCOMPARE(toXml(a), QByteArray("<a added=\"y\"/>"));

    a.addText("one");
    a.addText("two");
    QCOMPARE(QByteArray(a.updateText("ONE")), QByteArray("ONE"));
    a.updateText("TWO", "two");
    a.updateText("three", "missing");
    QCOMPARE(a.nText(), 3);
    QCOMPARE(a.getText(1), "TWO");
    a.deleteText("ONE");
    a.deleteText(5);
    a.deleteText(a.getText(1));
    QCOMPARE(a.nText(), 1);

    QCOMPARE(a.addClear("data")->lpszOpenTag, "<![CDATA[");
    a.addClear("note", "<!--", "-->");
    a.updateClear("DATA");
    a.updateClear("NOTE", "note");
    QCOMPARE(a.getClear(1).lpszValue, "NOTE");
    XMLClear nc = {"custom", "<%", "%>"};
    XMLClear oc = a.getClear(1);
    a.updateClear(&nc, &oc);
    QCOMPARE(toXml(a), QByteArray("<a added=\"y\">TWO<![CDATA[DATA]]><%custom%></a>"));
    a.deleteClear("DATA");
    XMLClear left = a.getClear(0);
    a.deleteClear(&left);
    QCOMPARE(a.nClear(), 0);

    QCOMPARE(QByteArray(a.updateName("renamed")), QByteArray("renamed"));
    // A path is created where it is missing.
    XMLNode deep = top.getChildNodeByPath("x/y/z");
    QCOMPARE(deep.getParentNode().getParentNode().getParentNode(), top);
    QCOMPARE(top.getChildNodeByPath("x|y", 1, '|').getName(), "y");
    QCOMPARE(toXml(top), QByteArray("<root><renamed added=\"y\">TWO</renamed><x><y><z/></y></x></root>"));
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
    QCOMPARE(toXml(a), QByteArray("<a><first/>t0t1<b/><mid/><!--c0--><!--c1-->t2</a>"));
    QCOMPARE(a.getChildNode(2).getName(), "mid");
    QCOMPARE(a.getText(1), "t1");
    a.deleteText(0);
    a.getChildNode("b").deleteNodeContent();
    a.deleteClear(0);
    QCOMPARE(toXml(a), QByteArray("<a><first/>t1<mid/><!--c1-->t2</a>"));
    QCOMPARE(a.positionOfText("t2"), 4);
    QCOMPARE(a.positionOfChildNode("mid"), 2);
    QCOMPARE(describe(parse(toXml(a)).getChildNode(0)), describe(a));
}

void tst_XMLNode::moveAndDetach()
{
    XMLNode doc1 = parse("<r><a><x/></a><b/></r>");
    XMLNode doc2 = parse("<s><c/></s>");
    XMLNode r = doc1.getChildNode(0);
    XMLNode s = doc2.getChildNode(0);
    XMLNode a = r.getChildNode("a");

    // Into another document, then within it; cycles are refused.
    QCOMPARE(s.addChild(a, 0), a);
    QCOMPARE(a.getParentNode(), s);
    QCOMPARE(toXml(r), QByteArray("<r><b/></r>"));
    QCOMPARE(toXml(s), QByteArray("<s><a><x/></a><c/></s>"));
    s.addChild(a, -1);
    QVERIFY(a.getChildNode(0).addChild(s).isEmpty());
    QVERIFY(a.addChild(a).isEmpty());
    QCOMPARE(toXml(s), QByteArray("<s><c/><a><x/></a></s>"));

    // The first document goes; the moved node lives on in the second.
    doc1 = r = XMLNode();
    QCOMPARE(toXml(doc2), QByteArray("<s><c/><a><x/></a></s>"));
    a.detachFromParent();
    QVERIFY(a.getParentNode().isEmpty());
    QCOMPARE(s.nChildNode(), 1);
    doc2 = s = XMLNode();
    QCOMPARE(toXml(a), QByteArray("<a><x/></a>"));
    XMLNode top = XMLNode::createXMLTopNode("t");
    top.addChild(a);
    a = XMLNode();
    QCOMPARE(toXml(top), QByteArray("<t><a><x/></a></t>"));

    // A node moved into an untouched parsed document is freed with it, and
    // with the node the rest of its old document (the sanitizer build checks).
    XMLNode d1 = parse("<a/>");
    XMLNode d2 = parse("<b><c/></b>");
    d1.getChildNode(0).addChild(d2.getChildNode(0).getChildNode(0));
    d2 = XMLNode();
    QCOMPARE(toXml(d1), QByteArray("<a><c/></a>"));
}

void tst_XMLNode::handles()
{
    // A handle keeps its node and subtree alive after the rest is released.
    XMLNode child;
    {
        XMLNode top = parse("<r><a k='v'><b/></a></r>");
        child = top.getChildNodeByPath("r/a", 0);
        XMLNode copy = top;
        QCOMPARE(copy, top);
        QVERIFY(copy != child);
    }
    QCOMPARE(toXml(child), QByteArray("<a k=\"v\"><b/></a>"));
    QVERIFY(child.getParentNode().isEmpty());
    XMLNode moved = std::move(child);
    QVERIFY(child.isEmpty());
    moved = moved; // self-assignment
    QCOMPARE(moved.getName(), "a");
    XMLNode grandChild = moved.getChildNode(0);
    moved = XMLNode();
    QCOMPARE(grandChild.getName(), "b");

    // Deleting empties every handle to the node; descendants still held
    // survive as their own trees.
    XMLNode top = parse("<r><a><b><c/></b></a><d/></r>");
    XMLNode a = top.getChildNodeByPath("r/a", 0);
    XMLNode other = a;
    XMLNode c = top.getChildNodeByPath("r/a/b/c", 0);
    a.deleteNodeContent();
    QVERIFY(a.isEmpty() && other.isEmpty() && !other.getName());
    QCOMPARE(other.nChildNode(), 0);
    QVERIFY(other.addChild("x").isEmpty());
    QCOMPARE(toXml(top), QByteArray("<r><d/></r>"));
    QCOMPARE(c.getName(), "c");
    QVERIFY(c.getParentNode().isEmpty());
    XMLNode t2 = top;
    top.deleteNodeContent();
    QVERIFY(t2.isEmpty());
    QCOMPARE(c.getName(), "c");
}

void tst_XMLNode::ownershipWOSD()
{
    // Every string handed over is owned by the tree from the call on, and
    // failing calls free theirs: the sanitizer build checks leaks and frees.
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
    n.updateText_WOSD(const_cast<XMLSTR>(n.getText()), 0); // same pointer back: kept, not freed
    QCOMPARE(toXml(top), QByteArray("<top><m a2=\"3\" d=\"5\" c=\"4\">text3<?clear4?></m></top>"));
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
    QCOMPARE(toXml(parsed), QByteArray("<q a=\"2\">u<!--c--><m a2=\"3\" d=\"5\" c=\"4\">text3<?clear4?></m></q>"));
    parsed.deleteText(0);
    parsed.deleteAttribute(0);
}

void tst_XMLNode::emptyHandle()
{
    // Every call on an empty handle answers "nothing" and changes nothing.
    XMLNode e = XMLNode::emptyNode();
    QVERIFY(e.isEmpty() && !e.getName() && !e.getText() && !e.isDeclaration() && !e.isAttributeSet("a"));
    QCOMPARE(e.nText() + e.nChildNode() + e.nChildNode("a") + e.nAttribute() + e.nClear() + e.nElement(), 0);
    for (const XMLNode &n : {e.getParentNode(), e.getChildNode(), e.getChildNode("a"), e.getChildNode("a", 0),
                             e.getChildNodeByPath("a/b"), e.getChildNodeWithAttribute("a", "b"), e.deepCopy(),
                             e.addChild("a"), e.addChild(XMLNode::createXMLTopNode("x"))})
        QVERIFY(n.isEmpty());
    QVERIFY(!e.getAttribute().lpszName && !e.getAttribute("a") && !e.getClear().lpszValue);
    QCOMPARE(int(e.enumContents(0).etype), int(eNodeNULL));
    QCOMPARE(e.positionOfText(0) + e.positionOfClear(0) + e.positionOfChildNode(0), -3);
    QVERIFY(!e.addAttribute("a", "b") && !e.addText("t") && !e.addClear("c"));
    QVERIFY(!e.updateName("n") && !e.updateAttribute("v") && !e.updateText("t") && !e.updateClear("c"));
    e.deleteAttribute();
    e.deleteText();
    e.deleteClear();
    e.detachFromParent();
    e.deleteNodeContent();
    QVERIFY(e.isEmpty());
    // Null arguments on a real node.
    XMLNode n = parse("<a><b/></a>").getChildNode(0);
    QVERIFY(n.getChildNode(static_cast<const char *>(nullptr)).isEmpty() && n.getChildNodeByPath(nullptr).isEmpty());
    QVERIFY(!n.getAttribute(static_cast<const char *>(nullptr)) && !n.addText(nullptr) && !n.addClear(nullptr));
    n.deleteText(static_cast<const char *>(nullptr));
    QCOMPARE(toXml(n), QByteArray("<a><b/></a>"));
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
    QCOMPARE(bar.nChildNode(), 2);
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
    QCOMPARE(toolBar(copy).nChildNode(), 3);
    XMLNode part = copy.getChildNodeByPath("uitree/ZMessageBox", 0).deepCopy();
    QVERIFY(part.getParentNode().isEmpty());
    QCOMPARE(part.getAttribute("windowStyle"), "Dialog");
}

void tst_XMLNode::files()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString name = dir.filePath(QStringLiteral("out.xml"));
    const QByteArray path = QFile::encodeName(name);
    auto contents = [&name] {
        QFile f(name);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(unreadable)");
    };
    auto write = [&name](const QByteArray &bytes) {
        QFile f(name);
        return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
    };

    XMLNode root = XMLNode::createXMLTopNode("root");
    root.addChild("item").addAttribute("v", "1 & 2");
    QCOMPARE(root.writeToFile(path.constData(), nullptr, 0), eXMLErrorNone);
    QCOMPARE(contents(), QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<root><item v=\"1 &amp; 2\"/></root>"));
    XMLResults r;
    QCOMPARE(XMLNode::parseFile(path.constData(), "root/item", &r).getAttribute("v"), "1 & 2");
    QCOMPARE(int(r.error), 0);
    // A tree with its own declaration gets no second header.
    QCOMPARE(XMLNode::parseFile(path.constData()).writeToFile(path.constData(), "GBK", 1), eXMLErrorNone);
    QCOMPARE(contents(), QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<root>\n\t<item v=\"1 &amp; 2\"/>\n"
                                    "</root>\n"));
    // The encoding name given, or the global encoding's.
    root.writeToFile(path.constData(), "ISO-8859-15");
    QVERIFY(contents().startsWith("<?xml version=\"1.0\" encoding=\"ISO-8859-15\"?>\n<root>"));
    setEncoding(char_encoding_GBK);
    root.writeToFile(path.constData());
    QVERIFY(contents().startsWith("<?xml version=\"1.0\" encoding=\"GBK\"?>\n"));
    setEncoding(char_encoding_UTF8);

    QCOMPARE(root.writeToFile(QFile::encodeName(dir.filePath("no/such/dir.xml")).constData()),
             eXMLErrorCannotOpenWriteFile);
    QCOMPARE(root.writeToFile(nullptr), eXMLErrorCannotOpenWriteFile);
    for (const QByteArray &missing : {QFile::encodeName(dir.filePath("missing.xml")), QByteArray()}) {
        QVERIFY(XMLNode::parseFile(missing.isNull() ? nullptr : missing.constData(), nullptr, &r).isEmpty());
        QCOMPARE(int(r.error), int(eXMLErrorFileNotFound));
    }

    // Byte-order marks: UTF-8, and UTF-16 in both byte orders, with and without a mark.
    QVERIFY(write("\xef\xbb\xbf<a>\xc3\xa9</a>"));
    QCOMPARE(QByteArray(XMLNode::parseFile(path.constData(), "a", &r).getText()), QByteArray("\xc3\xa9"));
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
        QVERIFY(write(bytes));
        XMLNode a = XMLNode::parseFile(path.constData(), "a", &r);
        QCOMPARE(int(r.error), 0);
        QCOMPARE(QByteArray(a.getAttribute("t")), QByteArray("\xe4\xb8\xad"));
        QCOMPARE(QByteArray(a.getText()), QByteArray("\xf0\x9f\x98\x80"));
    }
    // An odd byte count, or UTF-16 in a single-byte mode, does not convert.
    QVERIFY(write(le.chopped(1)));
    QVERIFY(XMLNode::parseFile(path.constData(), nullptr, &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorCharConversionError));
    setEncoding(char_encoding_legacy);
    QVERIFY(write(le));
    QVERIFY(XMLNode::parseFile(path.constData(), nullptr, &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorCharConversionError));
    setEncoding(char_encoding_UTF8);
    // A NUL byte in a file would cut text short: an error, not lost data.
    QVERIFY(write(QByteArray("<a>x\0y</a>", 10)));
    QVERIFY(XMLNode::parseFile(path.constData(), nullptr, &r).isEmpty());
    QCOMPARE(int(r.error), int(eXMLErrorUnexpectedToken));
    QCOMPARE(r.nColumn, 5);
}

void tst_XMLNode::openFileHelper()
{
    QTemporaryDir dir;
    const QByteArray good = QFile::encodeName(dir.filePath("good.xml"));
    QFile f(QString::fromLocal8Bit(good));
    QVERIFY(f.open(QIODevice::WriteOnly) && f.write("<r><a/></r>") == 11);
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
    for (; n.nChildNode(); ++levels)
        n = n.getChildNode(0);
    QCOMPARE(levels, depth);
    QCOMPARE(n.getText(), "leaf");
    // Copying and writing walk without recursion too.
    const XMLNode copy = top.deepCopy();
    QCOMPARE(toXml(copy), text);
    QVERIFY(!parse(toXml(copy, 1), &r).isEmpty());
    QCOMPARE(int(r.error), 0);
    // The leaf handle keeps only its node once the rest is released.
    top = XMLNode();
    QCOMPARE(n.getText(), "leaf");
    QVERIFY(n.getParentNode().isEmpty());

    // Unclosed: a warning and the whole tree; deleting the outermost node
    // frees the chain below it.
    XMLNode open = parse(text.left(depth * 3), &r);
    QCOMPARE(int(r.error), int(eXMLErrorMissingEndTag));
    QCOMPARE(open.getChildNode().getChildNode().getName(), "n");
    open.getChildNode().deleteNodeContent();
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
    QCOMPARE(XMLNode::parseString(toXml(wide, 1).constData(), "w", &r).nElement(), depth);
}

QTEST_APPLESS_MAIN(tst_XMLNode)
#include "tst_xmlnode.moc"

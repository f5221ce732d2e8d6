// The XML document model: whatever parses is written out (compact and
// indented), parsed again and must give the same tree; a deep copy must be
// the same tree too. Base64 and the escaping helper get the raw bytes.
//
// The first input byte picks the parser options, the rest is the text.

#include "toxmlstringtool.h"
#include "xmlnode.h"
#include "xmlparserbase64tool.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

bool sameString(XMLCSTR a, XMLCSTR b)
{
    if (!a || !b)
        return a == b;
    return std::strcmp(a, b) == 0;
}

// Structural equality: names, declaration flags, attributes and the
// contents in document order. Iterative, as deep trees are valid input.
bool sameTree(const XMLNode &left, const XMLNode &right, std::string *why)
{
    std::vector<std::pair<XMLNode, XMLNode>> stack{{left, right}};
    while (!stack.empty()) {
        const XMLNode a = stack.back().first;
        const XMLNode b = stack.back().second;
        stack.pop_back();
        if (!sameString(a.getName(), b.getName()) || a.isDeclaration() != b.isDeclaration()) {
            *why = "name";
            return false;
        }
        if (a.nAttribute() != b.nAttribute() || a.nElement() != b.nElement()) {
            *why = std::string("counts of <") + (a.getName() ? a.getName() : "") + ">";
            return false;
        }
        for (int i = 0; i < a.nElement(); ++i) {
            const XMLNodeContents ca = a.enumContents(i);
            const XMLNodeContents cb = b.enumContents(i);
            if (ca.etype != cb.etype) {
                *why = "content order";
                return false;
            }
            switch (ca.etype) {
            case eNodeAttribute:
                if (!sameString(ca.attrib.lpszName, cb.attrib.lpszName)
                    || !sameString(ca.attrib.lpszValue, cb.attrib.lpszValue)) {
                    *why = "attribute";
                    return false;
                }
                break;
            case eNodeText:
                if (!sameString(ca.text, cb.text)) {
                    *why = "text";
                    return false;
                }
                break;
            case eNodeClear:
                if (!sameString(ca.clear.lpszValue, cb.clear.lpszValue)
                    || !sameString(ca.clear.lpszOpenTag, cb.clear.lpszOpenTag)
                    || !sameString(ca.clear.lpszCloseTag, cb.clear.lpszCloseTag)) {
                    *why = "clear";
                    return false;
                }
                break;
            case eNodeChild:
                stack.emplace_back(ca.child, cb.child);
                break;
            case eNodeNULL:
                *why = "null element inside the counts";
                return false;
            }
        }
    }
    return true;
}

[[noreturn]] void fail(const char *what, const std::string &why, XMLCSTR text)
{
    std::fprintf(stderr, "xmlnode round trip: %s differs (%s)\nwritten text:\n%s\n", what, why.c_str(),
                 text ? text : "(null)");
    std::abort();
}

bool parsed(const XMLResults &r)
{
    return r.error == eXMLErrorNone || r.error == eXMLErrorMissingEndTag || r.error == eXMLErrorNoXMLTagFound;
}

void roundTrip(const XMLNode &doc, int format)
{
    int size = -1;
    XMLSTR text = doc.createXMLString(format, &size);
    if (!text)
        fail("output", "null string for a parsed document", nullptr);
    if (size != int(std::strlen(text)))
        fail("output", "reported size", text);
    XMLResults r;
    const XMLNode again = XMLNode::parseString(text, nullptr, &r);
    // A text-only document gives text again; anything else must parse cleanly.
    if (r.error != eXMLErrorNone && r.error != eXMLErrorNoXMLTagFound && r.error != eXMLErrorEmpty) {
        fail("reparse", XMLNode::getError(r.error), text);
    }
    if (r.error != eXMLErrorEmpty) {
        std::string why;
        if (!sameTree(doc, again, &why))
            fail(format ? "indented output" : "compact output", why, text);
    }
    std::free(text);
}

void exerciseHelpers(const std::string &bytes)
{
    ToXMLStringTool escaper;
    XMLCSTR escaped = escaper.toXML(bytes.c_str());
    if (int(std::strlen(escaped)) != ToXMLStringTool::lengthXMLString(bytes.c_str()))
        fail("escape", "length", escaped);

    XMLParserBase64Tool b64;
    std::vector<unsigned char> raw(bytes.begin(), bytes.end());
    for (char formatted : {char(0), char(1)}) {
        XMLSTR encoded = b64.encode(raw.data(), unsigned(raw.size()), formatted);
        if (!encoded)
            fail("base64", "encode gave null", nullptr);
        std::string copy(encoded);
        int outLen = -1;
        XMLError err = eXMLErrorNone;
        unsigned char *decoded = b64.decode(copy.c_str(), &outLen, &err);
        if (err != eXMLErrorNone || outLen != int(raw.size())
            || (outLen && (!decoded || std::memcmp(decoded, raw.data(), raw.size()) != 0)))
            fail("base64", "decode(encode(x)) != x", copy.c_str());
    }
    // Arbitrary text as base64: any code, never a crash or overrun.
    XMLError err = eXMLErrorNone;
    const unsigned size = XMLParserBase64Tool::decodeSize(bytes.c_str(), &err);
    std::vector<unsigned char> out(size > 65536 ? 65536 : size + 1);
    XMLParserBase64Tool::decode(bytes.c_str(), out.data(), int(out.size()), &err);
    int outLen = 0;
    b64.decode(bytes.c_str(), &outLen, &err);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const uint8_t options = data[0];
    // The text stops at the first NUL, as every char* of the API does.
    const std::string text(reinterpret_cast<const char *>(data + 1), size - 1);

    static const XMLCharEncoding encodings[] = {char_encoding_UTF8,   char_encoding_legacy, char_encoding_ShiftJIS,
                                                char_encoding_GB2312, char_encoding_Big5,   char_encoding_GBK};
    const XMLCharEncoding encoding = encodings[(options & 0x7) % 6];
    const char dropWhiteSpace = (options & 0x8) ? 0 : 1;
    const char joinTexts = (options & 0x10) ? 0 : 1;
    XMLNode::setGlobalOptions(encoding, 1, dropWhiteSpace, joinTexts);

    XMLResults r;
    const XMLNode doc = XMLNode::parseString(text.c_str(), nullptr, &r);
    if (parsed(r)) {
        if (doc.isEmpty())
            fail("parse", "empty tree with a success code", text.c_str());
        std::string why;
        if (!sameTree(doc, doc.deepCopy(), &why))
            fail("deep copy", why, text.c_str());
        // Indentation adds white space between items, which only the
        // white-space dropping mode removes again.
        roundTrip(doc, 0);
        if (dropWhiteSpace)
            roundTrip(doc, 1);
        // Lookups with names taken from the input.
        XMLNode d = doc;
        d.getChildNodeByPath(text.c_str(), 0);
        XMLNode first = doc.getChildNode(0);
        if (!first.isEmpty() && first.getName())
            d.getChildNodeWithAttribute(first.getName(), first.getAttributeName(0));
    } else if (!doc.isEmpty()) {
        fail("parse", "a tree with an error code", text.c_str());
    }
    int line = 0, column = 0;
    doc.getChildNode(0).sourcePosition(text.c_str(), &line, &column);
    XMLNode::guessCharEncoding(const_cast<char *>(text.data()), int(text.size()), 1);
    exerciseHelpers(text.substr(0, 512));

    XMLNode::setGlobalOptions();
    return 0;
}

#include "xmlnode_p.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <vector>

// The parser works on a private copy of the text inside the document's
// arena: names, values and texts are NUL-terminated and entity-decoded in
// place, so parsing allocates nothing per node on the heap. It is a loop with
// an explicit stack of open elements; the contents of every open element are
// collected on shared scratch stacks and copied into the arena, sized
// exactly, when the element closes.

namespace XMLPrivate {

namespace {

enum : unsigned char {
    CSpace = 1,        // white space
    CNameEnd = 2,      // ends a tag or attribute name
    CDQuoteStop = 4,   // stops a value in "..."
    CSQuoteStop = 8,   // stops a value in '...'
};

struct CharTable
{
    unsigned char c[256];
    constexpr CharTable() : c()
    {
        c[0] = CNameEnd | CDQuoteStop | CSQuoteStop;
        c[static_cast<unsigned char>(' ')] = CSpace | CNameEnd;
        c[static_cast<unsigned char>('\t')] = CSpace | CNameEnd;
        c[static_cast<unsigned char>('\n')] = CSpace | CNameEnd;
        c[static_cast<unsigned char>('\r')] = CSpace | CNameEnd;
        c[static_cast<unsigned char>('/')] = CNameEnd;
        c[static_cast<unsigned char>('>')] = CNameEnd;
        c[static_cast<unsigned char>('<')] = CNameEnd;
        c[static_cast<unsigned char>('=')] = CNameEnd;
        c[static_cast<unsigned char>('?')] = CNameEnd;
        c[static_cast<unsigned char>('"')] = CNameEnd | CDQuoteStop;
        c[static_cast<unsigned char>('\'')] = CNameEnd | CSQuoteStop;
        c[static_cast<unsigned char>('&')] = CDQuoteStop | CSQuoteStop;
    }
};
constexpr CharTable charTable;

inline unsigned char cls(char c)
{
    return charTable.c[static_cast<unsigned char>(c)];
}
inline bool isSpace(char c)
{
    return cls(c) & CSpace;
}

// First character at or after s of a class in mask. The checks run in order,
// so nothing past the terminating NUL (always in the mask) is read.
inline char *scanTo(char *s, unsigned char mask)
{
    for (;;) {
        if (cls(s[0]) & mask)
            return s;
        if (cls(s[1]) & mask)
            return s + 1;
        if (cls(s[2]) & mask)
            return s + 2;
        if (cls(s[3]) & mask)
            return s + 3;
        s += 4;
    }
}

// Finds "-->", "?>" or "]]>" (tok, n bytes, ending with '>') in [s, end):
// looks for the '>' and checks the bytes before it, never before s.
inline char *findCloser(char *s, char *end, const char *tok, size_t n)
{
    char *from = s + (n - 1);
    while (from < end) {
        auto *gt = static_cast<char *>(std::memchr(from, '>', static_cast<size_t>(end - from)));
        if (!gt)
            return nullptr;
        if (std::memcmp(gt - (n - 1), tok, n - 1) == 0)
            return gt - (n - 1);
        from = gt + 1;
    }
    return nullptr;
}

inline int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

struct OpenElement
{
    XMLNodeData *node;
    size_t kids, texts, clears, order;
};

struct Piece
{
    const char *s;
    size_t n;
};

class Parser
{
public:
    explicit Parser(const Options &o)
        : opt(o), multiByte(o.encoding >= char_encoding_ShiftJIS)
    {
    }
    ~Parser() { std::free(attrs); }
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;

    XMLNodeData *run(const char *text, size_t length, XMLResults *results);

private:
    bool parseContent();
    bool addText(char *t, char *e);
    bool startTag(char *&p, bool declaration);
    bool endTag(char *&p);
    bool comment(char *&p);
    bool cdata(char *&p);
    bool docType(char *&p);
    bool processingInstruction(char *&p);
    bool otherMarkup(char *&p);
    bool entity(char *&r, char *&w);
    bool decodeText(char *s, char **newEnd);
    bool decodeValue(char *&q, char quote);
    const char *findCDataEnd(const char *s) const;

    XMLNodeData *newNode(const char *name, bool declaration);
    void growAttributes();
    void pushChild(XMLNodeData *n);
    void pushText(const char *s, size_t n);
    void pushClear(const char *value, const char *open, const char *close, bool isComment);
    void flushJoin();
    void closeElement();

    template <typename T>
    T *copyToArena(const std::vector<T> &v, size_t from)
    {
        size_t n = v.size() - from;
        T *dst = static_cast<T *>(arena->alloc(n * sizeof(T)));
        std::memcpy(static_cast<void *>(dst), v.data() + from, n * sizeof(T));
        return dst;
    }

    bool fail(XMLError e, const char *at)
    {
        error = e;
        errorAt = at;
        return false;
    }
    void warn(XMLError e, const char *at)
    {
        if (warning == eXMLErrorNone) {
            warning = e;
            warningAt = at;
        }
    }

    Options opt;
    bool multiByte;
    char *buf = nullptr;
    char *end = nullptr;
    XMLArena *arena = nullptr;
    long nodeCount = 0;
    bool sawMarkup = false;

    std::vector<OpenElement> open;
    std::vector<XMLNodeData *> kids;
    std::vector<const char *> texts;
    std::vector<XMLClear> clears;
    std::vector<int> order;
    // Attributes of the tag being read. Stored field by field: building a
    // temporary pair and copying it costs a store-forwarding stall.
    XMLAttribute *attrs = nullptr;
    size_t nAttrs = 0;
    size_t attrCapacity = 0;

    // Texts around comments are joined: textRun is the index (in texts) of
    // the last text of the current element while only comments followed it.
    long textRun = -1;
    size_t textRunLength = 0;
    bool afterComment = false;
    std::vector<Piece> pieces;

    XMLError error = eXMLErrorNone;
    const char *errorAt = nullptr;
    XMLError warning = eXMLErrorNone;
    const char *warningAt = nullptr;
};

XMLNodeData *Parser::newNode(const char *name, bool declaration)
{
    // Copying a zero record compiles to a few vector stores; memset of this
    // size becomes a slow "rep stos".
    static constexpr XMLNodeData zero = {};
    auto *n = static_cast<XMLNodeData *>(arena->alloc(sizeof(XMLNodeData)));
    std::memcpy(static_cast<void *>(n), &zero, sizeof(XMLNodeData));
    n->name = name;
    n->arena = arena;
    n->isDecl = declaration;
    ++nodeCount;
    return n;
}

void Parser::growAttributes()
{
    attrCapacity = attrCapacity ? attrCapacity * 2 : 16;
    auto *a = static_cast<XMLAttribute *>(std::realloc(static_cast<void *>(attrs), attrCapacity * sizeof(XMLAttribute)));
    if (!a)
        XMLPrivate::outOfMemory();
    attrs = a;
}

void Parser::pushChild(XMLNodeData *n)
{
    if (textRun >= 0)
        flushJoin();
    const OpenElement &e = open.back();
    n->parent = e.node;
    n->ref = 1;
    order.push_back(static_cast<int>((kids.size() - e.kids) << 2) | eNodeChild);
    kids.push_back(n);
}

void Parser::pushText(const char *s, size_t n)
{
    if (textRun >= 0 && afterComment) {
        if (pieces.empty())
            pieces.push_back({texts[textRun], textRunLength});
        pieces.push_back({s, n});
        return;
    }
    flushJoin();
    const OpenElement &e = open.back();
    order.push_back(static_cast<int>((texts.size() - e.texts) << 2) | eNodeText);
    textRun = static_cast<long>(texts.size());
    textRunLength = n;
    afterComment = false;
    texts.push_back(s);
}

void Parser::pushClear(const char *value, const char *openTag, const char *closeTag, bool isComment)
{
    if (isComment && textRun >= 0 && opt.removeCommentsInMiddleOfText)
        afterComment = true;
    else if (textRun >= 0)
        flushJoin();
    const OpenElement &e = open.back();
    order.push_back(static_cast<int>((clears.size() - e.clears) << 2) | eNodeClear);
    clears.push_back({value, openTag, closeTag});
}

void Parser::flushJoin()
{
    if (pieces.size() > 1) {
        size_t total = 0;
        for (const Piece &p : pieces)
            total += p.n;
        char *s = static_cast<char *>(arena->alloc(total + 1));
        char *w = s;
        for (const Piece &p : pieces) {
            std::memcpy(w, p.s, p.n);
            w += p.n;
        }
        *w = 0;
        texts[textRun] = s;
    }
    pieces.clear();
    textRun = -1;
    afterComment = false;
}

void Parser::closeElement()
{
    if (textRun >= 0)
        flushJoin();
    const OpenElement e = open.back();
    open.pop_back();
    XMLNodeData *n = e.node;
    int kinds = 0;
    if (size_t k = kids.size() - e.kids) {
        n->child = copyToArena(kids, e.kids);
        n->nChild = static_cast<int>(k);
        kids.resize(e.kids);
        ++kinds;
    }
    if (size_t t = texts.size() - e.texts) {
        n->text = copyToArena(texts, e.texts);
        n->nText = static_cast<int>(t);
        texts.resize(e.texts);
        ++kinds;
    }
    if (size_t c = clears.size() - e.clears) {
        n->clear = copyToArena(clears, e.clears);
        n->nClear = static_cast<int>(c);
        clears.resize(e.clears);
        ++kinds;
    }
    if (kinds > 1)
        n->order = copyToArena(order, e.order);
    order.resize(e.order);
}

// r points at '&'; the character is written at w. Both move on.
bool Parser::entity(char *&r, char *&w)
{
    const char *s = r + 1;
    if (*s == '#') {
        ++s;
        unsigned long v = 0;
        bool digits = false;
        if (*s == 'x') {
            ++s;
            for (int h; (h = hexValue(*s)) >= 0; ++s) {
                v = v * 16 + static_cast<unsigned long>(h);
                if (v > 0x10FFFF)
                    v = 0x110000;
                digits = true;
            }
        } else {
            for (; *s >= '0' && *s <= '9'; ++s) {
                v = v * 10 + static_cast<unsigned long>(*s - '0');
                if (v > 0x10FFFF)
                    v = 0x110000;
                digits = true;
            }
        }
        if (!digits || *s != ';' || v == 0)
            return fail(eXMLErrorUnknownCharacterEntity, r);
        if (opt.encoding != char_encoding_UTF8) {
            if (v > 255)
                return fail(eXMLErrorCharacterCodeAbove255, r);
            *w++ = static_cast<char>(v);
        } else if (v < 0x80) {
            *w++ = static_cast<char>(v);
        } else if (v < 0x800) {
            *w++ = static_cast<char>(0xC0 | (v >> 6));
            *w++ = static_cast<char>(0x80 | (v & 0x3F));
        } else if (v < 0x10000) {
            if (v >= 0xD800 && v <= 0xDFFF)
                return fail(eXMLErrorUnknownCharacterEntity, r);
            *w++ = static_cast<char>(0xE0 | (v >> 12));
            *w++ = static_cast<char>(0x80 | ((v >> 6) & 0x3F));
            *w++ = static_cast<char>(0x80 | (v & 0x3F));
        } else if (v <= 0x10FFFF) {
            *w++ = static_cast<char>(0xF0 | (v >> 18));
            *w++ = static_cast<char>(0x80 | ((v >> 12) & 0x3F));
            *w++ = static_cast<char>(0x80 | ((v >> 6) & 0x3F));
            *w++ = static_cast<char>(0x80 | (v & 0x3F));
        } else {
            return fail(eXMLErrorUnknownCharacterEntity, r);
        }
        r = const_cast<char *>(s) + 1;
        return true;
    }
    // The comparisons stop at the first mismatch, so a NUL ends them.
    char c;
    int len;
    if (s[0] == 'a' && s[1] == 'm' && s[2] == 'p' && s[3] == ';') {
        c = '&';
        len = 4;
    } else if (s[0] == 'l' && s[1] == 't' && s[2] == ';') {
        c = '<';
        len = 3;
    } else if (s[0] == 'g' && s[1] == 't' && s[2] == ';') {
        c = '>';
        len = 3;
    } else if (s[0] == 'q' && s[1] == 'u' && s[2] == 'o' && s[3] == 't' && s[4] == ';') {
        c = '"';
        len = 5;
    } else if (s[0] == 'a' && s[1] == 'p' && s[2] == 'o' && s[3] == 's' && s[4] == ';') {
        c = '\'';
        len = 5;
    } else {
        return fail(eXMLErrorUnknownCharacterEntity, r);
    }
    *w++ = c;
    r += 1 + len;
    return true;
}

// s is NUL-terminated and holds an '&'; decodes from its first '&'.
bool Parser::decodeText(char *s, char **newEnd)
{
    char *r = s;
    char *w = s;
    while (*r) {
        if (*r == '&') {
            if (!entity(r, w))
                return false;
        } else {
            *w++ = *r++;
        }
    }
    *w = 0;
    *newEnd = w;
    return true;
}

// q points at the first '&' of a quoted value; on return it points at the
// closing quote and the value is decoded and NUL-terminated.
bool Parser::decodeValue(char *&q, char quote)
{
    char *r = q;
    char *w = q;
    for (;;) {
        char c = *r;
        if (c == quote)
            break;
        if (c == '&') {
            if (!entity(r, w))
                return false;
        } else if (c == 0) {
            return fail(eXMLErrorUnexpectedToken, r);
        } else {
            *w++ = c;
            ++r;
        }
    }
    *w = 0;
    q = r;
    return true;
}

bool Parser::addText(char *t, char *e)
{
    if (opt.dropWhiteSpace) {
        while (e > t && isSpace(e[-1]))
            --e;
        if (e == t)
            return true;
    }
    *e = 0;
    if (std::memchr(t, '&', static_cast<size_t>(e - t))) {
        if (!decodeText(t, &e))
            return false;
    }
    pushText(t, static_cast<size_t>(e - t));
    return true;
}

// p points at '<'. A declaration ("<?xml") ends with "?>" and gets no
// contents.
bool Parser::startTag(char *&p, bool declaration)
{
    char *const lt = p;
    char *name = lt + 1;
    char *s = scanTo(declaration ? name + 1 : name, CNameEnd);
    if (s == name)
        return fail(eXMLErrorMissingTagName, lt);
    char c = *s;
    *s = 0;
    nAttrs = 0;
    bool selfClosing = false;
    for (;;) {
        while (cls(c) & CSpace)
            c = *++s;
        if (c == '>') {
            if (declaration)
                return fail(eXMLErrorUnexpectedToken, s);
            p = s + 1;
            break;
        }
        if (c == '/') {
            if (declaration || s[1] != '>')
                return fail(eXMLErrorUnexpectedToken, s);
            p = s + 2;
            selfClosing = true;
            break;
        }
        if (c == '?') {
            if (!declaration || s[1] != '>')
                return fail(eXMLErrorUnexpectedToken, s);
            p = s + 2;
            break;
        }
        if (c == 0)
            return declaration ? fail(eXMLErrorUnmatchedEndClearTag, lt) : fail(eXMLErrorUnexpectedToken, s);

        char *attrName = s;
        s = scanTo(s, CNameEnd);
        if (s == attrName)
            return fail(eXMLErrorUnexpectedToken, s);
        c = *s;
        *s = 0;
        while (cls(c) & CSpace)
            c = *++s;
        const char *value = nullptr;
        if (c == '=') {
            c = *++s;
            while (cls(c) & CSpace)
                c = *++s;
            if (c != '"' && c != '\'')
                return fail(eXMLErrorUnexpectedToken, s);
            char *v = s + 1;
            char *q = scanTo(v, c == '"' ? CDQuoteStop : CSQuoteStop);
            if (*q == '&') {
                if (!decodeValue(q, c))
                    return false;
            } else if (*q == 0) {
                return fail(eXMLErrorUnexpectedToken, q);
            } else {
                *q = 0;
            }
            value = v;
            s = q;
            c = *++s;
        }
        if (nAttrs == attrCapacity)
            growAttributes();
        attrs[nAttrs].lpszName = attrName;
        attrs[nAttrs].lpszValue = value;
        ++nAttrs;
    }

    XMLNodeData *n = newNode(name, declaration);
    const size_t offset = static_cast<size_t>(lt - buf);
    if (offset < size_t(INT_MAX))
        n->sourcePos = static_cast<int>(offset) + 1;
    if (nAttrs) {
        n->attr = static_cast<XMLAttribute *>(arena->alloc(nAttrs * sizeof(XMLAttribute)));
        std::memcpy(static_cast<void *>(n->attr), attrs, nAttrs * sizeof(XMLAttribute));
        n->nAttr = static_cast<int>(nAttrs);
    }
    pushChild(n);
    if (!selfClosing && !declaration)
        open.push_back({n, kids.size(), texts.size(), clears.size(), order.size()});
    return true;
}

bool Parser::endTag(char *&p)
{
    char *const lt = p;
    char *name = lt + 2;
    char *s = scanTo(name, CNameEnd);
    if (s == name)
        return fail(eXMLErrorMissingEndTagName, lt);
    const size_t len = static_cast<size_t>(s - name);
    while (isSpace(*s))
        ++s;
    if (*s != '>')
        return fail(eXMLErrorUnexpectedToken, s);
    p = s + 1;

    auto matches = [name, len](const char *open) {
        return std::strncmp(open, name, len) == 0 && open[len] == 0;
    };
    // open[0] is the nameless top node.
    const size_t depth = open.size() - 1;
    if (depth > 0 && matches(open.back().node->name)) {
        closeElement();
        return true;
    }
    for (size_t k = depth; k-- > 1;) {
        if (matches(open[k].node->name)) {
            warn(eXMLErrorMissingEndTag, lt);
            while (open.size() > k)
                closeElement();
            return true;
        }
    }
    return fail(eXMLErrorUnmatchedEndTag, lt);
}

bool Parser::comment(char *&p)
{
    char *v = p + 4;
    char *e = findCloser(v, end, "-->", 3);
    if (!e)
        return fail(eXMLErrorUnmatchedEndClearTag, p);
    *e = 0;
    pushClear(v, tagCommentOpen, tagCommentClose, true);
    p = e + 3;
    return true;
}

const char *Parser::findCDataEnd(const char *s) const
{
    if (!multiByte)
        return findCloser(const_cast<char *>(s), end, "]]>", 3);
    // A trail byte may be ']': step over whole characters.
    while (*s) {
        if (s[0] == ']' && s[1] == ']' && s[2] == '>')
            return s;
        s = nextChar(opt.encoding, s);
    }
    return nullptr;
}

bool Parser::cdata(char *&p)
{
    char *v = p + 9;
    char *e = const_cast<char *>(findCDataEnd(v));
    if (!e)
        return fail(eXMLErrorUnmatchedEndClearTag, p);
    *e = 0;
    pushClear(v, tagCDataOpen, tagCDataClose, false);
    p = e + 3;
    return true;
}

// "<!DOCTYPE" up to the '>' outside quotes and outside the internal subset.
bool Parser::docType(char *&p)
{
    char *v = p + 9;
    const char *s = v;
    int depth = 0;
    for (;;) {
        const char c = *s;
        if (c == 0)
            return fail(eXMLErrorUnmatchedEndClearTag, p);
        if (c == '"' || c == '\'') {
            const char *q = static_cast<const char *>(std::memchr(s + 1, c, static_cast<size_t>(end - s - 1)));
            if (!q)
                return fail(eXMLErrorUnmatchedEndClearTag, p);
            s = q + 1;
            continue;
        }
        if (depth && c == '<' && s[1] == '!' && s[2] == '-' && s[3] == '-') {
            const char *q = findCloser(const_cast<char *>(s) + 4, end, "-->", 3);
            if (!q)
                return fail(eXMLErrorUnmatchedEndClearTag, p);
            s = q + 3;
            continue;
        }
        if (c == '[') {
            ++depth;
        } else if (c == ']') {
            if (depth)
                --depth;
        } else if (c == '>' && !depth) {
            break;
        }
        s = multiByte ? nextChar(opt.encoding, s) : s + 1;
    }
    char *e = const_cast<char *>(s);
    *e = 0;
    pushClear(v, tagDocTypeOpen, tagGreater, false);
    p = e + 1;
    return true;
}

bool Parser::processingInstruction(char *&p)
{
    char *v = p + 2;
    char *e = findCloser(v, end, "?>", 2);
    if (!e)
        return fail(eXMLErrorUnmatchedEndClearTag, p);
    *e = 0;
    pushClear(v, tagPIOpen, tagPIClose, false);
    p = e + 2;
    return true;
}

bool Parser::otherMarkup(char *&p)
{
    char *v = p + 2;
    auto *e = static_cast<char *>(std::memchr(v, '>', static_cast<size_t>(end - v)));
    if (!e)
        return fail(eXMLErrorUnmatchedEndClearTag, p);
    *e = 0;
    pushClear(v, tagGenericOpen, tagGreater, false);
    p = e + 1;
    return true;
}

bool Parser::parseContent()
{
    char *p = buf;
    for (;;) {
        // Character data up to the next '<'.
        char *t = p;
        if (opt.dropWhiteSpace) {
            while (isSpace(*t))
                ++t;
        }
        char *lt = t;
        if (*t != '<') {
            lt = static_cast<char *>(std::memchr(t, '<', static_cast<size_t>(end - t)));
            if (!lt)
                lt = end;
            if (t < lt && !addText(t, lt))
                return false;
        }
        if (lt == end)
            return true;

        // Markup; *lt may have been overwritten by the text's terminator.
        p = lt;
        bool ok;
        switch (p[1]) {
        case '/':
            ok = endTag(p);
            break;
        case '!':
            if (p[2] == '-' && p[3] == '-')
                ok = comment(p);
            else if (std::strncmp(p + 2, "[CDATA[", 7) == 0)
                ok = cdata(p);
            else if (std::strncmp(p + 2, "DOCTYPE", 7) == 0)
                ok = docType(p);
            else
                ok = otherMarkup(p);
            break;
        case '?':
            if (p[2] == 'x' && p[3] == 'm' && p[4] == 'l' && (isSpace(p[5]) || p[5] == '?'))
                ok = startTag(p, true);
            else
                ok = processingInstruction(p);
            break;
        default:
            ok = startTag(p, false);
            break;
        }
        if (!ok)
            return false;
        sawMarkup = true;
    }
}

XMLNodeData *Parser::run(const char *text, size_t length, XMLResults *results)
{
    // The arena's first block holds the copy and, for typical documents, all
    // the nodes (about 1.4 bytes of records per byte of markup-heavy text).
    arena = XMLArena::create(length + 1 + length + length / 2 + 4096);
    buf = static_cast<char *>(arena->alloc(length + 1));
    std::memcpy(buf, text, length);
    buf[length] = 0;
    end = buf + length;

    XMLNodeData *top = newNode(nullptr, false);
    open.reserve(256);
    open.push_back({top, 0, 0, 0, 0});

    bool ok = parseContent();
    if (ok) {
        if (open.size() > 1) {
            warn(eXMLErrorMissingEndTag, end);
            while (open.size() > 1)
                closeElement();
        }
        closeElement();
        if (!sawMarkup)
            warn(eXMLErrorNoXMLTagFound, end);
    }

    XMLResults r = {eXMLErrorNone, 0, 0};
    const char *at = nullptr;
    if (!ok) {
        r.error = error;
        at = errorAt;
    } else if (warning != eXMLErrorNone) {
        r.error = warning;
        at = warningAt;
    }
    if (at)
        lineAndColumn(text, static_cast<size_t>(at - buf), opt.encoding, &r.nLine, &r.nColumn);
    if (results)
        *results = r;

    if (!ok) {
        XMLArena::destroy(arena);
        return nullptr;
    }
    arena->live = nodeCount;
    return top;
}

} // namespace

void lineAndColumn(const char *text, size_t offset, XMLCharEncoding enc, int *line, int *column)
{
    int l = 1;
    int c = 1;
    const char *s = text;
    const char *const stop = text + offset;
    const bool multiByte = enc >= char_encoding_ShiftJIS;
    while (s < stop) {
        const unsigned char b = static_cast<unsigned char>(*s++);
        if (b == '\n') {
            ++l;
            c = 1;
        } else if (multiByte) {
            ++c;
            // Trail bytes are 0x40 or above; anything else starts a character.
            if (charLength(enc, b) == 2 && s < stop && static_cast<unsigned char>(*s) >= 0x40)
                ++s;
        } else if (enc != char_encoding_UTF8 || (b & 0xC0) != 0x80) {
            ++c;
        }
    }
    *line = l;
    *column = c;
}

XMLNodeData *parse(const char *text, size_t length, XMLResults *results)
{
    const Options &opt = options();
    size_t skip = 0;
    if (opt.encoding == char_encoding_UTF8 && length >= 3 && static_cast<unsigned char>(text[0]) == 0xEF
        && static_cast<unsigned char>(text[1]) == 0xBB && static_cast<unsigned char>(text[2]) == 0xBF)
        skip = 3;
    size_t i = skip;
    while (i < length && isSpace(text[i]))
        ++i;
    if (i == length) {
        if (results) {
            *results = {eXMLErrorEmpty, 0, 0};
            lineAndColumn(text + skip, length - skip, opt.encoding, &results->nLine, &results->nColumn);
        }
        return nullptr;
    }
    Parser parser(opt);
    return parser.run(text + skip, length - skip, results);
}

} // namespace XMLPrivate

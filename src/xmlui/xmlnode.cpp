#include "xmlnode.h"
#include "xmlnode_p.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

XMLArena *XMLArena::create(size_t firstBlock)
{
    auto *a = static_cast<XMLArena *>(std::malloc(sizeof(XMLArena)));
    auto *b = static_cast<XMLArenaBlock *>(std::malloc(sizeof(XMLArenaBlock) + firstBlock));
    if (!a || !b)
        XMLPrivate::outOfMemory();
    b->next = nullptr;
    b->size = firstBlock;
    b->used = 0;
    a->head = b;
    a->nextSize = firstBlock / 4 < 65536 ? 65536 : firstBlock / 4;
    a->live = 0;
    a->handles = 0;
    a->pristine = true;
    return a;
}

void XMLArena::destroy(XMLArena *arena)
{
    XMLArenaBlock *b = arena->head;
    while (b) {
        XMLArenaBlock *next = b->next;
        std::free(b);
        b = next;
    }
    std::free(arena);
}

XMLArenaBlock *XMLArena::grow(size_t bytes)
{
    size_t size = nextSize > bytes ? nextSize : bytes;
    if (nextSize < (size_t(16) << 20))
        nextSize *= 2;
    auto *b = static_cast<XMLArenaBlock *>(std::malloc(sizeof(XMLArenaBlock) + size));
    if (!b)
        XMLPrivate::outOfMemory();
    b->next = head;
    b->size = size;
    b->used = 0;
    head = b;
    return b;
}

bool XMLArena::contains(const void *p) const
{
    const auto a = reinterpret_cast<std::uintptr_t>(p);
    for (XMLArenaBlock *b = head; b; b = b->next) {
        const auto start = reinterpret_cast<std::uintptr_t>(b->data());
        if (a >= start && a < start + b->size)
            return true;
    }
    return false;
}

namespace XMLPrivate {

void outOfMemory()
{
    std::fprintf(stderr, "zkit: out of memory\n");
    std::abort();
}

const char *const tagCommentOpen = "<!--";
const char *const tagCommentClose = "-->";
const char *const tagCDataOpen = "<![CDATA[";
const char *const tagCDataClose = "]]>";
const char *const tagDocTypeOpen = "<!DOCTYPE";
const char *const tagPIOpen = "<?";
const char *const tagPIClose = "?>";
const char *const tagGenericOpen = "<!";
const char *const tagGreater = ">";

static const char *const staticTags[] = {tagCommentOpen, tagCommentClose, tagCDataOpen, tagCDataClose,
                                         tagDocTypeOpen, tagPIOpen, tagPIClose, tagGenericOpen, tagGreater};

bool isStaticTag(const char *s)
{
    for (const char *t : staticTags) {
        if (s == t)
            return true;
    }
    return false;
}

// The start-up code of the library sets these again; the defaults match it.
static Options globalOptions = {char_encoding_UTF8, 1, 1, 1};

const Options &options()
{
    return globalOptions;
}

namespace {

char *duplicate(const char *s, size_t n)
{
    auto *r = static_cast<char *>(std::malloc(n + 1));
    if (!r)
        XMLPrivate::outOfMemory();
    std::memcpy(r, s, n);
    r[n] = 0;
    return r;
}

char *duplicate(const char *s)
{
    return s ? duplicate(s, std::strlen(s)) : nullptr;
}

void *checkedMalloc(size_t bytes)
{
    void *p = std::malloc(bytes);
    if (!p)
        XMLPrivate::outOfMemory();
    return p;
}

bool ownsString(const XMLNodeData *n, const char *s)
{
    return s && n->heapStrings && !(n->arena && n->arena->contains(s)) && !isStaticTag(s);
}

void freeString(const XMLNodeData *n, const char *s)
{
    if (ownsString(n, s))
        std::free(const_cast<char *>(s));
}

// Frees the strings and arrays of n (not its children) and empties it.
void freeContents(XMLNodeData *n)
{
    if (n->heapStrings) {
        freeString(n, n->name);
        for (int i = 0; i < n->nAttr; ++i) {
            freeString(n, n->attr[i].lpszName);
            freeString(n, n->attr[i].lpszValue);
        }
        for (int i = 0; i < n->nText; ++i)
            freeString(n, n->text[i]);
        for (int i = 0; i < n->nClear; ++i) {
            freeString(n, n->clear[i].lpszValue);
            freeString(n, n->clear[i].lpszOpenTag);
            freeString(n, n->clear[i].lpszCloseTag);
        }
    }
    if (n->capChild)
        std::free(n->child);
    if (n->capAttr)
        std::free(n->attr);
    if (n->capText)
        std::free(n->text);
    if (n->capClear)
        std::free(n->clear);
    if (n->capOrder)
        std::free(n->order);
    n->name = nullptr;
    n->child = nullptr;
    n->attr = nullptr;
    n->text = nullptr;
    n->clear = nullptr;
    n->order = nullptr;
    n->nChild = n->nAttr = n->nText = n->nClear = 0;
    n->capChild = n->capAttr = n->capText = n->capClear = n->capOrder = 0;
}

void destroyRecord(XMLNodeData *n)
{
    if (XMLArena *a = n->arena) {
        if (--a->live == 0)
            XMLArena::destroy(a);
    } else {
        std::free(n);
    }
}

template <typename T>
void reserve(T *&array, int count, int &capacity, int needed)
{
    if (capacity >= needed)
        return;
    int c = capacity * 2;
    if (c < 4)
        c = 4;
    if (c < needed)
        c = needed;
    auto *a = static_cast<T *>(checkedMalloc(sizeof(T) * static_cast<size_t>(c)));
    if (count)
        std::memcpy(static_cast<void *>(a), array, sizeof(T) * static_cast<size_t>(count));
    if (capacity)
        std::free(array);
    array = a;
    capacity = c;
}

// The order array on the heap, with room for `extra` more entries.
void reserveOrder(XMLNodeData *n, int extra)
{
    const int total = n->nContent();
    if (n->capOrder >= total + extra)
        return;
    int c = n->capOrder * 2;
    if (c < 8)
        c = 8;
    if (c < total + extra)
        c = total + extra;
    auto *o = static_cast<int *>(checkedMalloc(sizeof(int) * static_cast<size_t>(c)));
    for (int i = 0; i < total; ++i)
        o[i] = n->orderAt(i);
    if (n->capOrder)
        std::free(n->order);
    n->order = o;
    n->capOrder = c;
}

// Inserts an entry of `type` at content position pos (appending when out of
// range) and returns the index the new item gets in its own array. The
// caller inserts the item there and increments the count.
int insertContent(XMLNodeData *n, int type, int pos)
{
    touch(n);
    reserveOrder(n, 1);
    const int total = n->nContent();
    if (pos < 0 || pos >= total) {
        // Appending, the common case, stays O(1).
        const int index = type == eNodeChild ? n->nChild : type == eNodeText ? n->nText : n->nClear;
        n->order[total] = index << 2 | type;
        return index;
    }
    int index = 0;
    for (int i = 0; i < pos; ++i) {
        if ((n->order[i] & 3) == type)
            ++index;
    }
    for (int i = total; i > pos; --i) {
        int e = n->order[i - 1];
        n->order[i] = (e & 3) == type ? e + 4 : e;
    }
    n->order[pos] = index << 2 | type;
    return index;
}

// Removes the order entry of item `index` of `type`; the caller removes the
// item and decrements the count.
void removeContent(XMLNodeData *n, int type, int index)
{
    touch(n);
    reserveOrder(n, 0);
    const int total = n->nContent();
    const int entry = index << 2 | type;
    int w = 0;
    for (int i = 0; i < total; ++i) {
        int e = n->order[i];
        if (e == entry)
            continue;
        if ((e & 3) == type && (e >> 2) > index)
            e -= 4;
        n->order[w++] = e;
    }
}

template <typename T>
void removeAt(T *array, int &count, int index)
{
    std::memmove(static_cast<void *>(array + index), array + index + 1,
                 sizeof(T) * static_cast<size_t>(count - index - 1));
    --count;
}

template <typename T>
void insertAt(T *array, int &count, int index, const T &value)
{
    std::memmove(static_cast<void *>(array + index + 1), array + index,
                 sizeof(T) * static_cast<size_t>(count - index));
    array[index] = value;
    ++count;
}

void attachChild(XMLNodeData *n, XMLNodeData *c, int pos)
{
    reserve(n->child, n->nChild, n->capChild, n->nChild + 1);
    const int index = insertContent(n, eNodeChild, pos);
    insertAt(n->child, n->nChild, index, c);
    c->parent = n;
    touch(c);
}

// Unlinks c from its parent; the parent's reference now belongs to the
// caller.
void unlinkChild(XMLNodeData *c)
{
    XMLNodeData *p = c->parent;
    touch(c);
    for (int i = 0; i < p->nChild; ++i) {
        if (p->child[i] == c) {
            removeContent(p, eNodeChild, i);
            removeAt(p->child, p->nChild, i);
            break;
        }
    }
    c->parent = nullptr;
}

int findText(const XMLNodeData *n, const char *s)
{
    if (!s)
        return -1;
    for (int i = 0; i < n->nText; ++i) {
        if (n->text[i] == s)
            return i;
    }
    for (int i = 0; i < n->nText; ++i) {
        if (std::strcmp(n->text[i], s) == 0)
            return i;
    }
    return -1;
}

int findClear(const XMLNodeData *n, const char *s)
{
    if (!s)
        return -1;
    for (int i = 0; i < n->nClear; ++i) {
        if (n->clear[i].lpszValue == s)
            return i;
    }
    for (int i = 0; i < n->nClear; ++i) {
        if (n->clear[i].lpszValue && std::strcmp(n->clear[i].lpszValue, s) == 0)
            return i;
    }
    return -1;
}

int findClear(const XMLNodeData *n, const XMLClear *c)
{
    if (!c)
        return -1;
    const auto p = reinterpret_cast<std::uintptr_t>(c);
    const auto first = reinterpret_cast<std::uintptr_t>(n->clear);
    if (n->nClear && p >= first && p < first + sizeof(XMLClear) * static_cast<size_t>(n->nClear))
        return static_cast<int>((p - first) / sizeof(XMLClear));
    return findClear(n, c->lpszValue);
}

int findAttribute(const XMLNodeData *n, const char *name)
{
    if (!name)
        return -1;
    for (int i = 0; i < n->nAttr; ++i) {
        if (std::strcmp(n->attr[i].lpszName, name) == 0)
            return i;
    }
    return -1;
}

int positionOf(const XMLNodeData *n, int type, int index)
{
    if (index < 0)
        return -1;
    const int entry = index << 2 | type;
    const int total = n->nContent();
    for (int i = 0; i < total; ++i) {
        if (n->orderAt(i) == entry)
            return i;
    }
    return -1;
}

// Known clear tags map to the static strings, others are copied.
const char *internTag(const char *tag, const char *fallback)
{
    if (!tag)
        return fallback;
    for (const char *t : staticTags) {
        if (std::strcmp(t, tag) == 0)
            return t;
    }
    return duplicate(tag);
}

bool holdsText(const XMLNodeData *n)
{
    return n->nText > 0;
}

class Writer
{
public:
    ~Writer() { std::free(buf); }

    void put(const char *s, size_t n)
    {
        ensure(n);
        std::memcpy(buf + len, s, n);
        len += n;
    }
    void put(const char *s) { put(s, std::strlen(s)); }
    void put(char c)
    {
        ensure(1);
        buf[len++] = c;
    }
    // Indentation stops growing at MaxIndent levels, so that output stays
    // linear in the size of very deep trees.
    static constexpr int MaxIndent = 100;
    void indent(int depth)
    {
        if (depth > MaxIndent)
            depth = MaxIndent;
        ensure(static_cast<size_t>(depth));
        std::memset(buf + len, '\t', static_cast<size_t>(depth));
        len += static_cast<size_t>(depth);
    }
    void escaped(const char *s) { escaped(s, std::strlen(s)); }
    void escaped(const char *s, size_t n)
    {
        const char *const e = s + n;
        while (s < e) {
            const char *run = s;
            while (s < e && *s != '&' && *s != '<' && *s != '>' && *s != '"' && *s != '\'')
                ++s;
            put(run, static_cast<size_t>(s - run));
            if (s == e)
                break;
            switch (*s++) {
            case '&': put("&amp;", 5); break;
            case '<': put("&lt;", 4); break;
            case '>': put("&gt;", 4); break;
            case '"': put("&quot;", 6); break;
            default: put("&apos;", 6); break;
            }
        }
    }
    // A text; with protectEdges, white space at its ends is written as
    // character references, which a parser dropping white space keeps.
    void text(const char *s, bool protectEdges)
    {
        size_t n = std::strlen(s);
        // U+FEFF opening the output would be read back as the UTF-8
        // byte-order mark and dropped: it goes as a reference.
        if (len == 0 && n >= 3 && options().encoding == char_encoding_UTF8
            && static_cast<unsigned char>(s[0]) == 0xEF && static_cast<unsigned char>(s[1]) == 0xBB
            && static_cast<unsigned char>(s[2]) == 0xBF) {
            put("&#65279;", 8);
            s += 3;
            n -= 3;
        }
        if (!protectEdges) {
            escaped(s, n);
            return;
        }
        auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
        auto reference = [this](char c) {
            char r[8];
            const int k = std::snprintf(r, sizeof r, "&#%d;", c);
            put(r, static_cast<size_t>(k));
        };
        while (n && isSpace(*s)) {
            reference(*s++);
            --n;
        }
        size_t tail = 0;
        while (tail < n && isSpace(s[n - 1 - tail]))
            ++tail;
        escaped(s, n - tail);
        for (size_t i = n - tail; i < n; ++i)
            reference(s[i]);
    }
    char *take(int *size)
    {
        ensure(1);
        buf[len] = 0;
        if (size)
            *size = static_cast<int>(len);
        char *r = buf;
        buf = nullptr;
        return r;
    }

private:
    void ensure(size_t n)
    {
        if (len + n + 1 <= cap)
            return;
        size_t c = cap ? cap * 2 : 256;
        while (c < len + n + 1)
            c *= 2;
        auto *b = static_cast<char *>(std::realloc(buf, c));
        if (!b)
            XMLPrivate::outOfMemory();
        buf = b;
        cap = c;
    }

    char *buf = nullptr;
    size_t len = 0;
    size_t cap = 0;
};

struct WriteFrame
{
    const XMLNodeData *node;
    int pos;
    int depth;        // depth of the contents
    bool compact;     // contents written without line breaks
    bool outerCompact;
    bool closeTag;
};

// Writes the start of n (at depth, in a compact context or not) and pushes
// the frame for its contents.
void writeOpen(Writer &w, std::vector<WriteFrame> &stack, const XMLNodeData *n, int depth, bool compact)
{
    if (!n->name) {
        stack.push_back({n, 0, depth, compact || holdsText(n), compact, false});
        return;
    }
    if (!compact)
        w.indent(depth);
    w.put('<');
    if (n->isDecl && n->name[0] != '?')
        w.put('?');
    w.put(n->name);
    for (int i = 0; i < n->nAttr; ++i) {
        w.put(' ');
        w.put(n->attr[i].lpszName);
        if (const char *v = n->attr[i].lpszValue) {
            w.put("=\"", 2);
            w.escaped(v);
            w.put('"');
        }
    }
    if (n->isDecl) {
        w.put("?>", 2);
        if (!compact)
            w.put('\n');
        // Contents of a declaration (only made by editing) follow it.
        if (n->nContent())
            stack.push_back({n, 0, depth, compact || holdsText(n), compact, false});
        return;
    }
    if (!n->nContent()) {
        w.put("/>", 2);
        if (!compact)
            w.put('\n');
        return;
    }
    w.put('>');
    const bool inner = compact || holdsText(n);
    if (!inner)
        w.put('\n');
    stack.push_back({n, 0, depth + 1, inner, compact, true});
}

} // namespace

XMLNodeData *newHeapNode(const char *name, bool isDecl)
{
    auto *n = static_cast<XMLNodeData *>(std::calloc(1, sizeof(XMLNodeData)));
    if (!n)
        XMLPrivate::outOfMemory();
    n->name = name;
    n->isDecl = isDecl;
    n->heapStrings = 1;
    touch(n);
    return n;
}

void retainHandle(XMLNodeData *n)
{
    if (n) {
        ++n->ref;
        if (n->arena)
            ++n->arena->handles;
    }
}

void releaseHandle(XMLNodeData *n)
{
    if (!n)
        return;
    if (XMLArena *a = n->arena) {
        --a->handles;
        if (n->ref == 1 && a->pristine && a->handles == 0) {
            XMLArena::destroy(a);
            return;
        }
    }
    release(n);
}

// Frees n when its last reference goes, and with it every descendant that
// nothing else holds. The dying records are chained through their parent
// field, so there is no recursion and no allocation.
void release(XMLNodeData *n)
{
    if (!n || --n->ref > 0)
        return;
    n->parent = nullptr;
    XMLNodeData *dying = n;
    while (dying) {
        XMLNodeData *cur = dying;
        dying = cur->parent;
        for (int i = 0; i < cur->nChild; ++i) {
            XMLNodeData *c = cur->child[i];
            c->parent = nullptr;
            if (--c->ref == 0) {
                c->parent = dying;
                dying = c;
            }
        }
        touch(cur);
        freeContents(cur);
        destroyRecord(cur);
    }
}

} // namespace XMLPrivate

using namespace XMLPrivate;

// Handles ---------------------------------------------------------------

XMLNode::XMLNode(XMLNodeData *data) noexcept : d(data)
{
    retainHandle(d);
}

XMLNode::XMLNode(const XMLNode &other) noexcept : d(other.d)
{
    retainHandle(d);
}

XMLNode &XMLNode::operator=(const XMLNode &other) noexcept
{
    if (d != other.d) {
        retainHandle(other.d);
        XMLNodeData *old = d;
        d = other.d;
        releaseHandle(old);
    }
    return *this;
}

XMLNode &XMLNode::operator=(XMLNode &&other) noexcept
{
    if (this != &other) {
        XMLNodeData *old = d;
        d = other.d;
        other.d = nullptr;
        releaseHandle(old);
    }
    return *this;
}

XMLNode::~XMLNode()
{
    releaseHandle(d);
}

XMLNodeData *XMLNode::node() const noexcept
{
    return d && !d->deleted ? d : nullptr;
}

// Parsing ---------------------------------------------------------------

namespace {

XMLNode finishParse(XMLNode top, const char *text, size_t length, XMLCSTR tag, XMLResults *results)
{
    if (top.isEmpty() || !tag)
        return top;
    XMLNode found = top.getChildNodeByPath(tag, 0);
    if (found.isEmpty() && results) {
        results->error = eXMLErrorFirstTagNotFound;
        lineAndColumn(text, length, options().encoding, &results->nLine, &results->nColumn);
    }
    return found;
}

// UTF-16 text (by byte-order mark, or a '<' on two bytes) converted to the
// global encoding. Returns false when it is not UTF-16; sets *error when it
// cannot be converted.
bool convertWideText(const unsigned char *b, size_t n, std::vector<char> &out, XMLError *error)
{
    bool bigEndian;
    size_t i = 0;
    if (n >= 2 && b[0] == 0xFF && b[1] == 0xFE) {
        bigEndian = false;
        i = 2;
    } else if (n >= 2 && b[0] == 0xFE && b[1] == 0xFF) {
        bigEndian = true;
        i = 2;
    } else if (n >= 2 && b[0] == '<' && b[1] == 0) {
        bigEndian = false;
    } else if (n >= 2 && b[0] == 0 && b[1] == '<') {
        bigEndian = true;
    } else {
        return false;
    }
    *error = eXMLErrorNone;
    const XMLCharEncoding enc = options().encoding;
    out.clear();
    out.reserve(n);
    auto unit = [&](size_t k) {
        return bigEndian ? static_cast<unsigned>(b[k] << 8 | b[k + 1]) : static_cast<unsigned>(b[k + 1] << 8 | b[k]);
    };
    if ((n - i) % 2) {
        *error = eXMLErrorCharConversionError;
        return true;
    }
    for (; i < n; i += 2) {
        unsigned v = unit(i);
        if (v >= 0xD800 && v <= 0xDBFF) {
            if (i + 4 > n) {
                *error = eXMLErrorCharConversionError;
                return true;
            }
            const unsigned lo = unit(i + 2);
            if (lo < 0xDC00 || lo > 0xDFFF) {
                *error = eXMLErrorCharConversionError;
                return true;
            }
            v = 0x10000 + ((v - 0xD800) << 10) + (lo - 0xDC00);
            i += 2;
        } else if (v >= 0xDC00 && v <= 0xDFFF) {
            *error = eXMLErrorCharConversionError;
            return true;
        }
        if (v == 0) {
            *error = eXMLErrorCharConversionError;
            return true;
        }
        if (enc != char_encoding_UTF8) {
            if (v > (enc == char_encoding_legacy ? 0xFFu : 0x7Fu)) {
                *error = eXMLErrorCharConversionError;
                return true;
            }
            out.push_back(static_cast<char>(v));
        } else if (v < 0x80) {
            out.push_back(static_cast<char>(v));
        } else if (v < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (v >> 6)));
            out.push_back(static_cast<char>(0x80 | (v & 0x3F)));
        } else if (v < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (v >> 12)));
            out.push_back(static_cast<char>(0x80 | ((v >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (v & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (v >> 18)));
            out.push_back(static_cast<char>(0x80 | ((v >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((v >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (v & 0x3F)));
        }
    }
    return true;
}

} // namespace

XMLNode XMLNode::parseString(XMLCSTR text, XMLCSTR tag, XMLResults *results)
{
    if (!text) {
        if (results)
            *results = {eXMLErrorEmpty, 1, 1};
        return XMLNode();
    }
    const size_t length = std::strlen(text);
    XMLNode top(parse(text, length, results));
    return finishParse(top, text, length, tag, results);
}

XMLNode XMLNode::parseFile(XMLCSTR path, XMLCSTR tag, XMLResults *results)
{
    std::FILE *f = path ? std::fopen(path, "rb") : nullptr;
    if (!f) {
        if (results)
            *results = {eXMLErrorFileNotFound, 0, 0};
        return XMLNode();
    }
    std::vector<char> data;
    char chunk[65536];
    size_t got;
    while ((got = std::fread(chunk, 1, sizeof chunk, f)) > 0)
        data.insert(data.end(), chunk, chunk + got);
    const bool readError = std::ferror(f);
    std::fclose(f);
    if (readError) {
        if (results)
            *results = {eXMLErrorFileNotFound, 0, 0};
        return XMLNode();
    }

    if (options().guessWideCharChars) {
        std::vector<char> converted;
        XMLError error = eXMLErrorNone;
        if (convertWideText(reinterpret_cast<const unsigned char *>(data.data()), data.size(), converted, &error)) {
            if (error != eXMLErrorNone) {
                if (results)
                    *results = {error, 0, 0};
                return XMLNode();
            }
            data.swap(converted);
        }
    }
    // A NUL byte would silently cut names and texts short.
    if (const void *nul = std::memchr(data.data(), 0, data.size())) {
        if (results) {
            results->error = eXMLErrorUnexpectedToken;
            lineAndColumn(data.data(), static_cast<size_t>(static_cast<const char *>(nul) - data.data()),
                          options().encoding, &results->nLine, &results->nColumn);
        }
        return XMLNode();
    }
    XMLNode top(parse(data.data(), data.size(), results));
    return finishParse(top, data.data(), data.size(), tag, results);
}

XMLNode XMLNode::openFileHelper(XMLCSTR path, XMLCSTR tag)
{
    XMLResults r;
    XMLNode node = parseFile(path, tag, &r);
    if (r.error != eXMLErrorNone && r.error != eXMLErrorMissingEndTag && r.error != eXMLErrorNoXMLTagFound) {
        const bool noTag = r.error == eXMLErrorFirstTagNotFound;
        std::fprintf(stderr, "XML Parsing error inside file '%s'.\n%s\nAt line %i, column %i.\n%s%s%s",
                     path ? path : "", getError(r.error), r.nLine, r.nColumn,
                     noTag ? "First Tag should be '" : "", noTag ? tag : "", noTag ? "'\n" : "");
        std::fflush(stderr);
        std::exit(1);
    }
    return node;
}

XMLNode XMLNode::createXMLTopNode(XMLCSTR name, char isDeclaration)
{
    return XMLNode(newHeapNode(duplicate(name), isDeclaration));
}

XMLNode XMLNode::createXMLTopNode_WOSD(XMLSTR name, char isDeclaration)
{
    return XMLNode(newHeapNode(name, isDeclaration));
}

XMLCSTR XMLNode::getError(XMLError error)
{
    switch (error) {
    case eXMLErrorNone: return "No error";
    case eXMLErrorMissingEndTag: return "Warning: Unmatched end tag";
    case eXMLErrorNoXMLTagFound: return "Warning: No XML tag found";
    case eXMLErrorEmpty: return "Error: No XML data";
    case eXMLErrorMissingTagName: return "Error: Missing start tag name";
    case eXMLErrorMissingEndTagName: return "Error: Missing end tag name";
    case eXMLErrorUnmatchedEndTag: return "Error: Unmatched end tag";
    case eXMLErrorUnmatchedEndClearTag: return "Error: Unmatched clear tag end";
    case eXMLErrorUnexpectedToken: return "Error: Unexpected token found";
    case eXMLErrorNoElements: return "Error: No elements found";
    case eXMLErrorFileNotFound: return "Error: File not found";
    case eXMLErrorFirstTagNotFound: return "Error: First Tag not found";
    case eXMLErrorUnknownCharacterEntity: return "Error: Unknown character entity";
    case eXMLErrorCharacterCodeAbove255:
        return "Error: Character code above 255 is forbidden in MultiByte char mode.";
    case eXMLErrorCharConversionError: return "Error: unable to convert between WideChar and MultiByte chars";
    case eXMLErrorCannotOpenWriteFile: return "Error: unable to open file for writing";
    case eXMLErrorCannotWriteFile: return "Error: cannot write into file";
    case eXMLErrorBase64DataSizeIsNotMultipleOf4: return "Warning: Base64-string length is not a multiple of 4";
    case eXMLErrorBase64DecodeIllegalCharacter: return "Error: Base64-string contains an illegal character";
    case eXMLErrorBase64DecodeTruncatedData: return "Warning: Base64-string is truncated";
    case eXMLErrorBase64DecodeBufferTooSmall: return "Error: Base64 decode output buffer is too small";
    }
    return "Unknown";
}

XMLCSTR XMLNode::getVersion()
{
    return "v2.44";
}

char XMLNode::setGlobalOptions(XMLCharEncoding encoding, char guessWideCharChars, char dropWhiteSpace,
                               char removeCommentsInMiddleOfText)
{
    if (encoding < char_encoding_UTF8 || encoding > char_encoding_GBK)
        return 1;
    globalOptions = {encoding, guessWideCharChars, dropWhiteSpace, removeCommentsInMiddleOfText};
    return 0;
}

namespace {

// Well-formed UTF-8 (no overlong forms, no surrogates, at most U+10FFFF). A
// sequence cut by the end of the buffer counts as well-formed: the buffer is
// often only the start of a file.
bool isWellFormedUtf8(const unsigned char *b, size_t n)
{
    size_t i = 0;
    while (i < n) {
        const unsigned char c = b[i];
        if (c < 0x80) {
            ++i;
            continue;
        }
        int len;
        unsigned char lo = 0x80, hi = 0xBF;
        if (c >= 0xC2 && c <= 0xDF) {
            len = 2;
        } else if (c >= 0xE0 && c <= 0xEF) {
            len = 3;
            if (c == 0xE0)
                lo = 0xA0;
            else if (c == 0xED)
                hi = 0x9F;
        } else if (c >= 0xF0 && c <= 0xF4) {
            len = 4;
            if (c == 0xF0)
                lo = 0x90;
            else if (c == 0xF4)
                hi = 0x8F;
        } else {
            return false;
        }
        for (int k = 1; k < len; ++k) {
            if (i + static_cast<size_t>(k) >= n)
                return true;
            const unsigned char t = b[i + static_cast<size_t>(k)];
            if (k == 1 ? (t < lo || t > hi) : (t < 0x80 || t > 0xBF))
                return false;
        }
        i += static_cast<size_t>(len);
    }
    return true;
}

bool startsWithNoCase(const char *s, size_t n, const char *prefix)
{
    const size_t p = std::strlen(prefix);
    if (n < p)
        return false;
    for (size_t i = 0; i < p; ++i) {
        char a = s[i];
        if (a >= 'A' && a <= 'Z')
            a = static_cast<char>(a - 'A' + 'a');
        if (a != prefix[i])
            return false;
    }
    return true;
}

} // namespace

XMLCharEncoding XMLNode::guessCharEncoding(void *buffer, int length, char useXMLEncodingAttribute)
{
    if (!buffer)
        return char_encoding_error;
    const auto *b = static_cast<const unsigned char *>(buffer);
    const size_t n = length > 0 ? static_cast<size_t>(length) : 0;
    const bool utf8 = isWellFormedUtf8(b, n);
    const XMLCharEncoding guess = utf8 ? char_encoding_UTF8 : char_encoding_legacy;
    if (!useXMLEncodingAttribute)
        return guess;

    // The encoding attribute of a leading declaration, within 200 bytes.
    const char *s = reinterpret_cast<const char *>(b);
    size_t limit = n < 200 ? n : 200;
    size_t i = 0;
    if (limit >= 3 && b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF)
        i = 3;
    if (limit - i < 5 || std::strncmp(s + i, "<?xml", 5) != 0)
        return guess;
    for (size_t k = i + 5; k + 1 < limit; ++k) {
        if (s[k] == '?' && s[k + 1] == '>') {
            limit = k;
            break;
        }
    }
    const char *value = nullptr;
    size_t valueLength = 0;
    for (size_t k = i + 5; k + 8 <= limit; ++k) {
        if (std::strncmp(s + k, "encoding", 8) != 0)
            continue;
        size_t j = k + 8;
        while (j < limit && (s[j] == ' ' || s[j] == '\t' || s[j] == '\r' || s[j] == '\n'))
            ++j;
        if (j >= limit || s[j] != '=')
            continue;
        ++j;
        while (j < limit && (s[j] == ' ' || s[j] == '\t' || s[j] == '\r' || s[j] == '\n'))
            ++j;
        if (j >= limit || (s[j] != '"' && s[j] != '\''))
            continue;
        const char quote = s[j++];
        size_t e = j;
        while (e < limit && s[e] != quote)
            ++e;
        value = s + j;
        valueLength = e - j;
        break;
    }
    if (!value)
        return guess;
    if (startsWithNoCase(value, valueLength, "utf-8") || startsWithNoCase(value, valueLength, "utf8"))
        return utf8 ? char_encoding_UTF8 : char_encoding_error;
    if (startsWithNoCase(value, valueLength, "shiftjis") || startsWithNoCase(value, valueLength, "shift-jis")
        || startsWithNoCase(value, valueLength, "sjis"))
        return char_encoding_ShiftJIS;
    if (startsWithNoCase(value, valueLength, "gb2312"))
        return char_encoding_GB2312;
    if (startsWithNoCase(value, valueLength, "big5"))
        return char_encoding_Big5;
    if (startsWithNoCase(value, valueLength, "gbk"))
        return char_encoding_GBK;
    return char_encoding_legacy;
}

// Reading ---------------------------------------------------------------

XMLCSTR XMLNode::getName() const
{
    XMLNodeData *n = node();
    return n ? n->name : nullptr;
}

XMLCSTR XMLNode::getText(int i) const
{
    XMLNodeData *n = node();
    return n && i >= 0 && i < n->nText ? n->text[i] : nullptr;
}

int XMLNode::nText() const
{
    XMLNodeData *n = node();
    return n ? n->nText : 0;
}

XMLNode XMLNode::getParentNode() const
{
    XMLNodeData *n = node();
    return n ? XMLNode(n->parent) : XMLNode();
}

XMLNode XMLNode::getChildNode(int i) const
{
    XMLNodeData *n = node();
    return n && i >= 0 && i < n->nChild ? XMLNode(n->child[i]) : XMLNode();
}

XMLNode XMLNode::getChildNode(XMLCSTR name, int i) const
{
    XMLNodeData *n = node();
    if (!n || !name || i < 0)
        return XMLNode();
    for (int k = 0; k < n->nChild; ++k) {
        const char *cn = n->child[k]->name;
        if (cn && std::strcmp(cn, name) == 0 && i-- == 0)
            return XMLNode(n->child[k]);
    }
    return XMLNode();
}

XMLNode XMLNode::getChildNode(XMLCSTR name, int *i) const
{
    XMLNodeData *n = node();
    if (!n || !name)
        return XMLNode();
    for (int k = i && *i > 0 ? *i : 0; k < n->nChild; ++k) {
        const char *cn = n->child[k]->name;
        if (cn && std::strcmp(cn, name) == 0) {
            if (i)
                *i = k + 1;
            return XMLNode(n->child[k]);
        }
    }
    return XMLNode();
}

XMLNode XMLNode::getChildNodeByPath(XMLCSTR path, char createMissing, XMLCHAR sep)
{
    XMLNodeData *cur = node();
    if (!cur || !path)
        return XMLNode();
    const char *s = path;
    while (*s) {
        if (*s == sep) {
            ++s;
            continue;
        }
        const char *e = sep ? std::strchr(s, sep) : nullptr;
        if (!e)
            e = s + std::strlen(s);
        const size_t len = static_cast<size_t>(e - s);
        XMLNodeData *next = nullptr;
        for (int k = 0; k < cur->nChild; ++k) {
            const char *cn = cur->child[k]->name;
            if (cn && std::strncmp(cn, s, len) == 0 && cn[len] == 0) {
                next = cur->child[k];
                break;
            }
        }
        if (!next) {
            if (!createMissing)
                return XMLNode();
            next = newHeapNode(duplicate(s, len), false);
            next->ref = 1;
            attachChild(cur, next, -1);
        }
        cur = next;
        s = e;
    }
    return XMLNode(cur);
}

XMLNode XMLNode::getChildNodeWithAttribute(XMLCSTR tag, XMLCSTR attrName, XMLCSTR attrValue, int *i) const
{
    XMLNodeData *n = node();
    if (!n || !tag || !attrName)
        return XMLNode();
    for (int k = i && *i > 0 ? *i : 0; k < n->nChild; ++k) {
        const XMLNodeData *c = n->child[k];
        if (!c->name || std::strcmp(c->name, tag) != 0)
            continue;
        for (int a = 0; a < c->nAttr; ++a) {
            if (std::strcmp(c->attr[a].lpszName, attrName) != 0)
                continue;
            const char *v = c->attr[a].lpszValue;
            if (!attrValue || (v && std::strcmp(v, attrValue) == 0)) {
                if (i)
                    *i = k + 1;
                return XMLNode(n->child[k]);
            }
        }
    }
    return XMLNode();
}

int XMLNode::nChildNode() const
{
    XMLNodeData *n = node();
    return n ? n->nChild : 0;
}

int XMLNode::nChildNode(XMLCSTR name) const
{
    XMLNodeData *n = node();
    if (!n || !name)
        return 0;
    int count = 0;
    for (int k = 0; k < n->nChild; ++k) {
        const char *cn = n->child[k]->name;
        if (cn && std::strcmp(cn, name) == 0)
            ++count;
    }
    return count;
}

XMLAttribute XMLNode::getAttribute(int i) const
{
    XMLNodeData *n = node();
    if (n && i >= 0 && i < n->nAttr)
        return n->attr[i];
    return {nullptr, nullptr};
}

XMLCSTR XMLNode::getAttributeName(int i) const
{
    return getAttribute(i).lpszName;
}

XMLCSTR XMLNode::getAttributeValue(int i) const
{
    return getAttribute(i).lpszValue;
}

XMLCSTR XMLNode::getAttribute(XMLCSTR name, int i) const
{
    XMLNodeData *n = node();
    if (!n || !name || i < 0)
        return nullptr;
    for (int k = 0; k < n->nAttr; ++k) {
        if (std::strcmp(n->attr[k].lpszName, name) == 0 && i-- == 0)
            return n->attr[k].lpszValue;
    }
    return nullptr;
}

XMLCSTR XMLNode::getAttribute(XMLCSTR name, int *i) const
{
    XMLNodeData *n = node();
    if (!n || !name)
        return nullptr;
    for (int k = i && *i > 0 ? *i : 0; k < n->nAttr; ++k) {
        if (std::strcmp(n->attr[k].lpszName, name) == 0) {
            if (i)
                *i = k + 1;
            return n->attr[k].lpszValue;
        }
    }
    return nullptr;
}

char XMLNode::isAttributeSet(XMLCSTR name) const
{
    XMLNodeData *n = node();
    return n && findAttribute(n, name) >= 0;
}

int XMLNode::nAttribute() const
{
    XMLNodeData *n = node();
    return n ? n->nAttr : 0;
}

XMLClear XMLNode::getClear(int i) const
{
    XMLNodeData *n = node();
    if (n && i >= 0 && i < n->nClear)
        return n->clear[i];
    return {nullptr, nullptr, nullptr};
}

int XMLNode::nClear() const
{
    XMLNodeData *n = node();
    return n ? n->nClear : 0;
}

int XMLNode::nElement() const
{
    XMLNodeData *n = node();
    return n ? n->nAttr + n->nContent() : 0;
}

char XMLNode::isEmpty() const
{
    return node() == nullptr;
}

char XMLNode::isDeclaration() const
{
    XMLNodeData *n = node();
    return n ? n->isDecl : 0;
}

int XMLNode::sourceOffset() const
{
    XMLNodeData *n = node();
    return n ? n->sourcePos - 1 : -1;
}

char XMLNode::sourcePosition(XMLCSTR text, int *line, int *column) const
{
    const int offset = sourceOffset();
    if (offset < 0 || !text)
        return 0;
    const XMLCharEncoding enc = options().encoding;
    // Offsets count from after a byte-order mark that the parser skipped.
    if (enc == char_encoding_UTF8 && static_cast<unsigned char>(text[0]) == 0xEF
        && static_cast<unsigned char>(text[1]) == 0xBB && static_cast<unsigned char>(text[2]) == 0xBF)
        text += 3;
    // Not the text the node came from if it ends before the offset.
    const void *nul = std::memchr(text, 0, static_cast<size_t>(offset) + 1);
    if (nul && static_cast<const char *>(nul) <= text + offset)
        return 0;
    int l, c;
    lineAndColumn(text, static_cast<size_t>(offset), enc, &l, &c);
    if (line)
        *line = l;
    if (column)
        *column = c;
    return 1;
}

XMLNodeContents XMLNode::enumContents(XMLElementPosition i) const
{
    XMLNodeContents c = {eNodeNULL, XMLNode(), {nullptr, nullptr}, nullptr, {nullptr, nullptr, nullptr}};
    XMLNodeData *n = node();
    if (!n || i < 0)
        return c;
    if (i < n->nAttr) {
        c.etype = eNodeAttribute;
        c.attrib = n->attr[i];
        return c;
    }
    i -= n->nAttr;
    if (i >= n->nContent())
        return c;
    const int e = n->orderAt(i);
    const int index = e >> 2;
    c.etype = static_cast<XMLElementType>(e & 3);
    switch (c.etype) {
    case eNodeChild:
        c.child = XMLNode(n->child[index]);
        break;
    case eNodeText:
        c.text = n->text[index];
        break;
    default:
        c.clear = n->clear[index];
        break;
    }
    return c;
}

XMLElementPosition XMLNode::positionOfText(int i) const
{
    XMLNodeData *n = node();
    return n && i < n->nText ? positionOf(n, eNodeText, i) : -1;
}

XMLElementPosition XMLNode::positionOfText(XMLCSTR text) const
{
    XMLNodeData *n = node();
    return n ? positionOf(n, eNodeText, findText(n, text)) : -1;
}

XMLElementPosition XMLNode::positionOfClear(int i) const
{
    XMLNodeData *n = node();
    return n && i < n->nClear ? positionOf(n, eNodeClear, i) : -1;
}

XMLElementPosition XMLNode::positionOfClear(XMLCSTR value) const
{
    XMLNodeData *n = node();
    return n ? positionOf(n, eNodeClear, findClear(n, value)) : -1;
}

XMLElementPosition XMLNode::positionOfClear(XMLClear *clear) const
{
    XMLNodeData *n = node();
    return n ? positionOf(n, eNodeClear, findClear(n, clear)) : -1;
}

XMLElementPosition XMLNode::positionOfChildNode(int i) const
{
    XMLNodeData *n = node();
    return n && i < n->nChild ? positionOf(n, eNodeChild, i) : -1;
}

XMLElementPosition XMLNode::positionOfChildNode(XMLNode x) const
{
    XMLNodeData *n = node();
    XMLNodeData *c = x.node();
    if (!n || !c)
        return -1;
    for (int k = 0; k < n->nChild; ++k) {
        if (n->child[k] == c)
            return positionOf(n, eNodeChild, k);
    }
    return -1;
}

XMLElementPosition XMLNode::positionOfChildNode(XMLCSTR name, int i) const
{
    XMLNodeData *n = node();
    if (!n || !name || i < 0)
        return -1;
    for (int k = 0; k < n->nChild; ++k) {
        const char *cn = n->child[k]->name;
        if (cn && std::strcmp(cn, name) == 0 && i-- == 0)
            return positionOf(n, eNodeChild, k);
    }
    return -1;
}

// Copies and output -----------------------------------------------------

XMLNode XMLNode::deepCopy() const
{
    XMLNodeData *src = node();
    if (!src)
        return XMLNode();
    XMLArena *arena = XMLArena::create(4096);
    long count = 0;
    auto str = [arena](const char *s) -> const char * {
        if (!s || isStaticTag(s))
            return s;
        const size_t n = std::strlen(s) + 1;
        char *c = static_cast<char *>(arena->alloc(n));
        std::memcpy(c, s, n);
        return c;
    };
    auto copy = [&](const XMLNodeData *s) {
        auto *n = static_cast<XMLNodeData *>(arena->alloc(sizeof(XMLNodeData)));
        std::memset(static_cast<void *>(n), 0, sizeof(XMLNodeData));
        ++count;
        n->arena = arena;
        n->name = str(s->name);
        n->isDecl = s->isDecl;
        n->sourcePos = s->sourcePos;
        if ((n->nAttr = s->nAttr)) {
            n->attr = static_cast<XMLAttribute *>(arena->alloc(sizeof(XMLAttribute) * static_cast<size_t>(s->nAttr)));
            for (int i = 0; i < s->nAttr; ++i)
                n->attr[i] = {str(s->attr[i].lpszName), str(s->attr[i].lpszValue)};
        }
        if ((n->nText = s->nText)) {
            n->text = static_cast<const char **>(arena->alloc(sizeof(char *) * static_cast<size_t>(s->nText)));
            for (int i = 0; i < s->nText; ++i)
                n->text[i] = str(s->text[i]);
        }
        if ((n->nClear = s->nClear)) {
            n->clear = static_cast<XMLClear *>(arena->alloc(sizeof(XMLClear) * static_cast<size_t>(s->nClear)));
            for (int i = 0; i < s->nClear; ++i)
                n->clear[i] = {str(s->clear[i].lpszValue), str(s->clear[i].lpszOpenTag),
                               str(s->clear[i].lpszCloseTag)};
        }
        if ((n->nChild = s->nChild))
            n->child = static_cast<XMLNodeData **>(arena->alloc(sizeof(XMLNodeData *) * static_cast<size_t>(s->nChild)));
        if (s->order) {
            const int total = s->nContent();
            n->order = static_cast<int *>(arena->alloc(sizeof(int) * static_cast<size_t>(total)));
            std::memcpy(n->order, s->order, sizeof(int) * static_cast<size_t>(total));
        }
        return n;
    };

    XMLNodeData *root = copy(src);
    std::vector<std::pair<const XMLNodeData *, XMLNodeData *>> stack;
    stack.emplace_back(src, root);
    while (!stack.empty()) {
        const auto [s, n] = stack.back();
        stack.pop_back();
        for (int i = 0; i < s->nChild; ++i) {
            XMLNodeData *c = copy(s->child[i]);
            c->parent = n;
            c->ref = 1;
            n->child[i] = c;
            stack.emplace_back(s->child[i], c);
        }
    }
    arena->live = count;
    return XMLNode(root);
}

XMLSTR XMLNode::createXMLString(int format, int *size) const
{
    XMLNodeData *root = node();
    if (!root) {
        if (size)
            *size = 0;
        return nullptr;
    }
    Writer w;
    const bool protectEdges = options().dropWhiteSpace;
    std::vector<WriteFrame> stack;
    writeOpen(w, stack, root, 0, format == 0);
    while (!stack.empty()) {
        WriteFrame &f = stack.back();
        const XMLNodeData *n = f.node;
        if (f.pos < n->nContent()) {
            const int e = n->orderAt(f.pos++);
            const int index = e >> 2;
            const int depth = f.depth;
            const bool compact = f.compact;
            switch (e & 3) {
            case eNodeChild:
                writeOpen(w, stack, n->child[index], depth, compact); // may invalidate f
                break;
            case eNodeText:
                if (!compact)
                    w.indent(depth);
                w.text(n->text[index], protectEdges);
                if (!compact)
                    w.put('\n');
                break;
            default: {
                const XMLClear &c = n->clear[index];
                if (!compact)
                    w.indent(depth);
                if (c.lpszOpenTag)
                    w.put(c.lpszOpenTag);
                if (c.lpszValue)
                    w.put(c.lpszValue);
                if (c.lpszCloseTag)
                    w.put(c.lpszCloseTag);
                if (!compact)
                    w.put('\n');
                break;
            }
            }
            continue;
        }
        if (f.closeTag) {
            if (!f.compact)
                w.indent(f.depth - 1);
            w.put("</", 2);
            w.put(n->name);
            w.put('>');
            if (!f.outerCompact)
                w.put('\n');
        }
        stack.pop_back();
    }
    return w.take(size);
}

XMLError XMLNode::writeToFile(XMLCSTR path, const char *encoding, char format) const
{
    std::FILE *f = path ? std::fopen(path, "wb") : nullptr;
    if (!f)
        return eXMLErrorCannotOpenWriteFile;
    bool ok = true;
    XMLNodeData *n = node();
    bool declared = n && n->isDecl;
    for (int i = 0; n && !declared && i < n->nChild; ++i)
        declared = n->child[i]->isDecl;
    if (!declared) {
        if (!encoding) {
            switch (options().encoding) {
            case char_encoding_legacy: encoding = "ISO-8859-1"; break;
            case char_encoding_ShiftJIS: encoding = "SHIFT-JIS"; break;
            case char_encoding_GB2312: encoding = "GB2312"; break;
            case char_encoding_Big5: encoding = "Big5"; break;
            case char_encoding_GBK: encoding = "GBK"; break;
            default: encoding = "utf-8"; break;
            }
        }
        ok = std::fprintf(f, "<?xml version=\"1.0\" encoding=\"%s\"?>\n", encoding) > 0;
    }
    int size = 0;
    if (char *s = createXMLString(format, &size)) {
        ok = ok && std::fwrite(s, 1, static_cast<size_t>(size), f) == static_cast<size_t>(size);
        std::free(s);
    }
    ok = std::fclose(f) == 0 && ok;
    return ok ? eXMLErrorNone : eXMLErrorCannotWriteFile;
}

// Editing ---------------------------------------------------------------

XMLNode XMLNode::addChild(XMLCSTR name, char isDeclaration, XMLElementPosition pos)
{
    if (!node())
        return XMLNode();
    return addChild_WOSD(duplicate(name), isDeclaration, pos);
}

XMLNode XMLNode::addChild_WOSD(XMLSTR name, char isDeclaration, XMLElementPosition pos)
{
    XMLNodeData *n = node();
    if (!n) {
        std::free(name);
        return XMLNode();
    }
    XMLNodeData *c = newHeapNode(name, isDeclaration);
    c->ref = 1;
    attachChild(n, c, pos);
    return XMLNode(c);
}

XMLNode XMLNode::addChild(XMLNode child, XMLElementPosition pos)
{
    XMLNodeData *n = node();
    XMLNodeData *c = child.node();
    if (!n || !c)
        return XMLNode();
    for (XMLNodeData *a = n; a; a = a->parent) {
        if (a == c)
            return XMLNode();
    }
    if (c->parent)
        unlinkChild(c);
    else
        ++c->ref;
    attachChild(n, c, pos);
    return child;
}

XMLAttribute *XMLNode::addAttribute(XMLCSTR name, XMLCSTR value)
{
    if (!node() || !name)
        return nullptr;
    return addAttribute_WOSD(duplicate(name), duplicate(value));
}

XMLAttribute *XMLNode::addAttribute_WOSD(XMLSTR name, XMLSTR value)
{
    XMLNodeData *n = node();
    if (!n || !name) {
        std::free(name);
        std::free(value);
        return nullptr;
    }
    reserve(n->attr, n->nAttr, n->capAttr, n->nAttr + 1);
    n->attr[n->nAttr] = {name, value};
    n->heapStrings = 1;
    touch(n);
    return &n->attr[n->nAttr++];
}

XMLCSTR XMLNode::addText(XMLCSTR text, XMLElementPosition pos)
{
    if (!node() || !text)
        return nullptr;
    return addText_WOSD(duplicate(text), pos);
}

XMLCSTR XMLNode::addText_WOSD(XMLSTR text, XMLElementPosition pos)
{
    XMLNodeData *n = node();
    if (!n || !text) {
        std::free(text);
        return nullptr;
    }
    reserve(n->text, n->nText, n->capText, n->nText + 1);
    const int index = insertContent(n, eNodeText, pos);
    insertAt(n->text, n->nText, index, static_cast<const char *>(text));
    n->heapStrings = 1;
    touch(n);
    return text;
}

XMLClear *XMLNode::addClear(XMLCSTR value, XMLCSTR openTag, XMLCSTR closeTag, XMLElementPosition pos)
{
    if (!node() || !value)
        return nullptr;
    return addClear_WOSD(duplicate(value), openTag, closeTag, pos);
}

XMLClear *XMLNode::addClear_WOSD(XMLSTR value, XMLCSTR openTag, XMLCSTR closeTag, XMLElementPosition pos)
{
    XMLNodeData *n = node();
    if (!n || !value) {
        std::free(value);
        return nullptr;
    }
    reserve(n->clear, n->nClear, n->capClear, n->nClear + 1);
    const int index = insertContent(n, eNodeClear, pos);
    const XMLClear c = {value, internTag(openTag, tagCDataOpen), internTag(closeTag, tagCDataClose)};
    insertAt(n->clear, n->nClear, index, c);
    n->heapStrings = 1;
    touch(n);
    return &n->clear[index];
}

XMLCSTR XMLNode::updateName(XMLCSTR name)
{
    if (!node())
        return nullptr;
    return updateName_WOSD(duplicate(name));
}

XMLCSTR XMLNode::updateName_WOSD(XMLSTR name)
{
    XMLNodeData *n = node();
    if (!n) {
        std::free(name);
        return nullptr;
    }
    if (name != n->name) {
        freeString(n, n->name);
        n->name = name;
        n->heapStrings = 1;
    touch(n);
    }
    return name;
}

XMLAttribute *XMLNode::updateAttribute(XMLAttribute *newA, XMLAttribute *oldA)
{
    if (!node() || !newA)
        return nullptr;
    XMLAttribute copy = {duplicate(newA->lpszName), duplicate(newA->lpszValue)};
    return updateAttribute_WOSD(&copy, oldA);
}

XMLAttribute *XMLNode::updateAttribute_WOSD(XMLAttribute *newA, XMLAttribute *oldA)
{
    if (!newA)
        return nullptr;
    auto *name = const_cast<XMLSTR>(newA->lpszName);
    auto *value = const_cast<XMLSTR>(newA->lpszValue);
    XMLNodeData *n = node();
    if (!n) {
        std::free(name);
        std::free(value);
        return nullptr;
    }
    const int i = findAttribute(n, oldA ? oldA->lpszName : name);
    if (i < 0)
        return addAttribute_WOSD(name, value);
    return updateAttribute_WOSD(value, name, i);
}

XMLAttribute *XMLNode::updateAttribute(XMLCSTR value, XMLCSTR newName, int i)
{
    if (!node())
        return nullptr;
    return updateAttribute_WOSD(duplicate(value), duplicate(newName), i);
}

XMLAttribute *XMLNode::updateAttribute_WOSD(XMLSTR value, XMLSTR newName, int i)
{
    XMLNodeData *n = node();
    if (!n || i < 0 || i >= n->nAttr) {
        if (n && newName)
            return addAttribute_WOSD(newName, value);
        std::free(value);
        std::free(newName);
        return nullptr;
    }
    XMLAttribute &a = n->attr[i];
    if (value != a.lpszValue) {
        freeString(n, a.lpszValue);
        a.lpszValue = value;
    }
    if (newName && newName != a.lpszName) {
        freeString(n, a.lpszName);
        a.lpszName = newName;
    }
    n->heapStrings = 1;
    touch(n);
    return &a;
}

XMLAttribute *XMLNode::updateAttribute(XMLCSTR value, XMLCSTR newName, XMLCSTR oldName)
{
    if (!node())
        return nullptr;
    return updateAttribute_WOSD(duplicate(value), duplicate(newName), oldName);
}

XMLAttribute *XMLNode::updateAttribute_WOSD(XMLSTR value, XMLSTR newName, XMLCSTR oldName)
{
    XMLNodeData *n = node();
    if (!n || (!oldName && !newName)) {
        std::free(value);
        std::free(newName);
        return nullptr;
    }
    const int i = findAttribute(n, oldName);
    if (i < 0)
        return addAttribute_WOSD(newName ? newName : duplicate(oldName), value);
    return updateAttribute_WOSD(value, newName, i);
}

XMLCSTR XMLNode::updateText(XMLCSTR text, int i)
{
    if (!node() || !text)
        return nullptr;
    return updateText_WOSD(duplicate(text), i);
}

XMLCSTR XMLNode::updateText_WOSD(XMLSTR text, int i)
{
    XMLNodeData *n = node();
    if (!n || !text) {
        std::free(text);
        return nullptr;
    }
    if (i < 0 || i >= n->nText)
        return addText_WOSD(text);
    if (text != n->text[i]) {
        freeString(n, n->text[i]);
        n->text[i] = text;
        n->heapStrings = 1;
    touch(n);
    }
    return text;
}

XMLCSTR XMLNode::updateText(XMLCSTR newText, XMLCSTR oldText)
{
    if (!node() || !newText)
        return nullptr;
    return updateText_WOSD(duplicate(newText), oldText);
}

XMLCSTR XMLNode::updateText_WOSD(XMLSTR newText, XMLCSTR oldText)
{
    XMLNodeData *n = node();
    if (!n || !newText) {
        std::free(newText);
        return nullptr;
    }
    const int i = findText(n, oldText);
    if (i < 0)
        return addText_WOSD(newText);
    return updateText_WOSD(newText, i);
}

XMLClear *XMLNode::updateClear(XMLCSTR value, int i)
{
    if (!node() || !value)
        return nullptr;
    return updateClear_WOSD(duplicate(value), i);
}

XMLClear *XMLNode::updateClear_WOSD(XMLSTR value, int i)
{
    XMLNodeData *n = node();
    if (!n || !value) {
        std::free(value);
        return nullptr;
    }
    if (i < 0 || i >= n->nClear)
        return addClear_WOSD(value);
    XMLClear &c = n->clear[i];
    if (value != c.lpszValue) {
        freeString(n, c.lpszValue);
        c.lpszValue = value;
        n->heapStrings = 1;
    touch(n);
    }
    return &c;
}

XMLClear *XMLNode::updateClear(XMLClear *nc, XMLClear *oc)
{
    if (!node() || !nc || !nc->lpszValue)
        return nullptr;
    XMLClear copy = {duplicate(nc->lpszValue), nc->lpszOpenTag, nc->lpszCloseTag};
    return updateClear_WOSD(&copy, oc);
}

XMLClear *XMLNode::updateClear_WOSD(XMLClear *nc, XMLClear *oc)
{
    if (!nc)
        return nullptr;
    auto *value = const_cast<XMLSTR>(nc->lpszValue);
    XMLNodeData *n = node();
    if (!n || !value) {
        std::free(value);
        return nullptr;
    }
    const int i = findClear(n, oc);
    if (i < 0)
        return addClear_WOSD(value, nc->lpszOpenTag, nc->lpszCloseTag);
    XMLClear &c = n->clear[i];
    const char *openTag = internTag(nc->lpszOpenTag, tagCDataOpen);
    const char *closeTag = internTag(nc->lpszCloseTag, tagCDataClose);
    n->heapStrings = 1;
    touch(n);
    if (value != c.lpszValue)
        freeString(n, c.lpszValue);
    freeString(n, c.lpszOpenTag);
    freeString(n, c.lpszCloseTag);
    c = {value, openTag, closeTag};
    return &c;
}

XMLClear *XMLNode::updateClear(XMLCSTR newValue, XMLCSTR oldValue)
{
    if (!node() || !newValue)
        return nullptr;
    return updateClear_WOSD(duplicate(newValue), oldValue);
}

XMLClear *XMLNode::updateClear_WOSD(XMLSTR newValue, XMLCSTR oldValue)
{
    XMLNodeData *n = node();
    if (!n || !newValue) {
        std::free(newValue);
        return nullptr;
    }
    const int i = findClear(n, oldValue);
    if (i < 0)
        return addClear_WOSD(newValue);
    return updateClear_WOSD(newValue, i);
}

void XMLNode::deleteNodeContent()
{
    XMLNodeData *n = node();
    if (!n)
        return;
    touch(n);
    if (n->parent) {
        unlinkChild(n);
        --n->ref; // the parent's reference; this handle still holds one
    }
    for (int i = 0; i < n->nChild; ++i) {
        XMLNodeData *c = n->child[i];
        c->parent = nullptr;
        release(c);
    }
    n->nChild = 0;
    freeContents(n);
    n->deleted = 1;
    d = nullptr;
    releaseHandle(n);
}

void XMLNode::deleteAttribute(int i)
{
    XMLNodeData *n = node();
    if (!n || i < 0 || i >= n->nAttr)
        return;
    touch(n);
    freeString(n, n->attr[i].lpszName);
    freeString(n, n->attr[i].lpszValue);
    removeAt(n->attr, n->nAttr, i);
}

void XMLNode::deleteAttribute(XMLCSTR name)
{
    XMLNodeData *n = node();
    if (n)
        deleteAttribute(findAttribute(n, name));
}

void XMLNode::deleteAttribute(XMLAttribute *a)
{
    XMLNodeData *n = node();
    if (!n || !a)
        return;
    const auto p = reinterpret_cast<std::uintptr_t>(a);
    const auto first = reinterpret_cast<std::uintptr_t>(n->attr);
    if (n->nAttr && p >= first && p < first + sizeof(XMLAttribute) * static_cast<size_t>(n->nAttr))
        deleteAttribute(static_cast<int>((p - first) / sizeof(XMLAttribute)));
    else
        deleteAttribute(a->lpszName);
}

void XMLNode::deleteText(int i)
{
    XMLNodeData *n = node();
    if (!n || i < 0 || i >= n->nText)
        return;
    freeString(n, n->text[i]);
    removeContent(n, eNodeText, i);
    removeAt(n->text, n->nText, i);
}

void XMLNode::deleteText(XMLCSTR text)
{
    XMLNodeData *n = node();
    if (n)
        deleteText(findText(n, text));
}

void XMLNode::deleteClear(int i)
{
    XMLNodeData *n = node();
    if (!n || i < 0 || i >= n->nClear)
        return;
    freeString(n, n->clear[i].lpszValue);
    freeString(n, n->clear[i].lpszOpenTag);
    freeString(n, n->clear[i].lpszCloseTag);
    removeContent(n, eNodeClear, i);
    removeAt(n->clear, n->nClear, i);
}

void XMLNode::deleteClear(XMLCSTR value)
{
    XMLNodeData *n = node();
    if (n)
        deleteClear(findClear(n, value));
}

void XMLNode::deleteClear(XMLClear *clear)
{
    XMLNodeData *n = node();
    if (n)
        deleteClear(findClear(n, clear));
}

void XMLNode::detachFromParent()
{
    XMLNodeData *n = node();
    if (!n || !n->parent)
        return;
    unlinkChild(n);
    --n->ref;
}

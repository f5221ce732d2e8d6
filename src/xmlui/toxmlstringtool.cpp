#include "toxmlstringtool.h"
#include "xmlnode_p.h"

#include <cstdlib>
#include <cstring>

namespace {

// Replacement for each byte that needs one, null otherwise.
const char *replacement(char c)
{
    switch (c) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return "&quot;";
    case '\'': return "&apos;";
    default: return nullptr;
    }
}

// 1 for the bytes to escape, so that runs of plain bytes are copied at once.
struct EscapeTable
{
    bool c[256];
    constexpr EscapeTable() : c()
    {
        c[static_cast<unsigned char>('&')] = true;
        c[static_cast<unsigned char>('<')] = true;
        c[static_cast<unsigned char>('>')] = true;
        c[static_cast<unsigned char>('"')] = true;
        c[static_cast<unsigned char>('\'')] = true;
    }
};
constexpr EscapeTable escapeTable;

} // namespace

ToXMLStringTool::~ToXMLStringTool()
{
    std::free(buf);
}

void ToXMLStringTool::freeBuffer()
{
    std::free(buf);
    buf = nullptr;
    bufSize = 0;
}

XMLSTR ToXMLStringTool::toXML(XMLCSTR source)
{
    const int needed = lengthXMLString(source) + 1;
    if (needed > bufSize) {
        auto *b = static_cast<XMLSTR>(std::realloc(buf, static_cast<size_t>(needed)));
        if (!b)
            XMLPrivate::outOfMemory();
        buf = b;
        bufSize = needed;
    }
    return toXMLUnSafe(buf, source);
}

XMLSTR ToXMLStringTool::toXMLUnSafe(XMLSTR dest, XMLCSTR source)
{
    char *w = dest;
    if (source) {
        const char *s = source;
        for (;;) {
            const char *run = s;
            while (*s && !escapeTable.c[static_cast<unsigned char>(*s)])
                ++s;
            std::memcpy(w, run, static_cast<size_t>(s - run));
            w += s - run;
            if (!*s)
                break;
            const char *r = replacement(*s++);
            const size_t n = std::strlen(r);
            std::memcpy(w, r, n);
            w += n;
        }
    }
    *w = 0;
    return dest;
}

int ToXMLStringTool::lengthXMLString(XMLCSTR source)
{
    if (!source)
        return 0;
    int n = 0;
    for (const char *s = source; *s; ++s) {
        if (const char *r = escapeTable.c[static_cast<unsigned char>(*s)] ? replacement(*s) : nullptr)
            n += static_cast<int>(std::strlen(r));
        else
            ++n;
    }
    return n;
}

#include "xmlparserbase64tool.h"
#include "xmlnode_p.h"

#include <cstdlib>

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

enum : signed char { Pad = -1, Space = -2, Illegal = -3 };

struct DecodeTable
{
    signed char v[256];
    constexpr DecodeTable() : v()
    {
        for (int i = 0; i < 256; ++i)
            v[i] = Illegal;
        for (int i = 0; i < 64; ++i)
            v[static_cast<unsigned char>(alphabet[i])] = static_cast<signed char>(i);
        v[static_cast<unsigned char>('=')] = Pad;
        v[static_cast<unsigned char>(' ')] = Space;
        v[static_cast<unsigned char>('\t')] = Space;
        v[static_cast<unsigned char>('\r')] = Space;
        v[static_cast<unsigned char>('\n')] = Space;
    }
};
constexpr DecodeTable decodeTable;

void setError(XMLError *error, XMLError e)
{
    if (error)
        *error = e;
}

// Decodes data, known to be legal, into out.
void decodeInto(const char *data, unsigned char *out)
{
    unsigned bits = 0;
    int nBits = 0;
    for (const char *s = data; *s; ++s) {
        const int v = decodeTable.v[static_cast<unsigned char>(*s)];
        if (v == Pad)
            break;
        if (v < 0)
            continue;
        bits = (bits << 6) | static_cast<unsigned>(v);
        nBits += 6;
        if (nBits >= 8) {
            nBits -= 8;
            *out++ = static_cast<unsigned char>(bits >> nBits);
            bits &= (1u << nBits) - 1;
        }
    }
}

} // namespace

XMLParserBase64Tool::~XMLParserBase64Tool()
{
    std::free(buf);
}

int XMLParserBase64Tool::encodeLength(int inBufLen, char formatted)
{
    if (inBufLen <= 0)
        return 0;
    const int out = (inBufLen + 2) / 3 * 4;
    return formatted ? out + (out - 1) / 72 : out;
}

XMLSTR XMLParserBase64Tool::encode(unsigned char *in, unsigned int inBufLen, char formatted)
{
    if (!in && inBufLen)
        return nullptr;
    const int length = encodeLength(static_cast<int>(inBufLen), formatted);
    auto *out = static_cast<char *>(alloc(length + 1));
    char *w = out;
    int column = 0;
    auto put = [&](char c) {
        if (formatted && column == 72) {
            *w++ = '\n';
            column = 0;
        }
        *w++ = c;
        ++column;
    };
    unsigned int i = 0;
    for (; i + 3 <= inBufLen; i += 3) {
        const unsigned v = unsigned(in[i]) << 16 | unsigned(in[i + 1]) << 8 | in[i + 2];
        put(alphabet[v >> 18]);
        put(alphabet[(v >> 12) & 63]);
        put(alphabet[(v >> 6) & 63]);
        put(alphabet[v & 63]);
    }
    if (const unsigned rest = inBufLen - i) {
        const unsigned v = unsigned(in[i]) << 16 | (rest > 1 ? unsigned(in[i + 1]) << 8 : 0u);
        put(alphabet[v >> 18]);
        put(alphabet[(v >> 12) & 63]);
        put(rest > 1 ? alphabet[(v >> 6) & 63] : '=');
        put('=');
    }
    *w = 0;
    return out;
}

unsigned int XMLParserBase64Tool::decodeSize(XMLCSTR data, XMLError *error)
{
    setError(error, eXMLErrorNone);
    if (!data)
        return 0;
    unsigned int n = 0;
    unsigned int pad = 0;
    for (const char *s = data; *s; ++s) {
        const int v = decodeTable.v[static_cast<unsigned char>(*s)];
        if (v == Space)
            continue;
        if (v == Pad) {
            ++pad;
        } else if (v == Illegal || pad) {
            setError(error, eXMLErrorBase64DecodeIllegalCharacter);
            return 0;
        } else {
            ++n;
        }
    }
    if (pad > 2) {
        setError(error, eXMLErrorBase64DecodeIllegalCharacter);
        return 0;
    }
    const unsigned int rest = n % 4;
    if (rest == 1)
        setError(error, eXMLErrorBase64DecodeTruncatedData);
    else if ((n + pad) % 4)
        setError(error, eXMLErrorBase64DataSizeIsNotMultipleOf4);
    return n / 4 * 3 + (rest == 2 ? 1 : rest == 3 ? 2 : 0);
}

unsigned char *XMLParserBase64Tool::decode(XMLCSTR data, int *outByteLen, XMLError *error)
{
    XMLError e;
    const unsigned int size = decodeSize(data, &e);
    setError(error, e);
    if (outByteLen)
        *outByteLen = 0;
    if (e == eXMLErrorBase64DecodeIllegalCharacter || !data)
        return nullptr;
    auto *out = static_cast<unsigned char *>(alloc(static_cast<int>(size) + 1));
    decodeInto(data, out);
    out[size] = 0;
    if (outByteLen)
        *outByteLen = static_cast<int>(size);
    return out;
}

unsigned char XMLParserBase64Tool::decode(XMLCSTR data, unsigned char *out, int outByteLen, XMLError *error)
{
    XMLError e;
    const unsigned int size = decodeSize(data, &e);
    setError(error, e);
    if (e == eXMLErrorBase64DecodeIllegalCharacter || !data)
        return 0;
    if (outByteLen < 0 || size > static_cast<unsigned int>(outByteLen) || (size && !out)) {
        setError(error, eXMLErrorBase64DecodeBufferTooSmall);
        return 0;
    }
    decodeInto(data, out);
    return 1;
}

void *XMLParserBase64Tool::alloc(int newSize)
{
    if (newSize > bufSize) {
        void *b = std::realloc(buf, static_cast<size_t>(newSize));
        if (!b)
            XMLPrivate::outOfMemory();
        buf = b;
        bufSize = newSize;
    }
    return buf;
}

void XMLParserBase64Tool::freeBuffer()
{
    std::free(buf);
    buf = nullptr;
    bufSize = 0;
}

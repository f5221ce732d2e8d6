#ifndef XMLPARSERBASE64TOOL_H
#define XMLPARSERBASE64TOOL_H

#include "xmlnode.h"

// Base64 (RFC 4648 alphabet, '=' padding) for binary data kept in XML texts.
// Results live in a buffer owned by the tool, valid until the next call,
// alloc() or freeBuffer().
//
// Decoding skips white space (space, tab, CR, LF). It reports
//   18 eXMLErrorBase64DecodeIllegalCharacter: any other character, a data
//      character after '=', or more than two '=' (nothing is decoded);
//   19 eXMLErrorBase64DecodeTruncatedData (warning): a last group of a single
//      character, whose 6 bits make no byte and are dropped;
//   17 eXMLErrorBase64DataSizeIsNotMultipleOf4 (warning): otherwise, data
//      plus padding not a multiple of 4 (the last group is decoded);
//   20 eXMLErrorBase64DecodeBufferTooSmall: decode() into a caller's buffer
//      that is too small (nothing is written).
class ZKIT_EXPORT XMLParserBase64Tool
{
public:
    XMLParserBase64Tool() = default;
    ~XMLParserBase64Tool();
    XMLParserBase64Tool(const XMLParserBase64Tool &) = delete;
    XMLParserBase64Tool &operator=(const XMLParserBase64Tool &) = delete;

    // Characters encode() produces, without the NUL. Formatted output has a
    // line break after every 72 characters (none at the end).
    static int encodeLength(int inBufLen, char formatted = 0);
    XMLSTR encode(unsigned char *inByteBuf, unsigned int inBufLen, char formatted = 0);

    // Bytes that decode() would produce; 0 on an illegal character.
    static unsigned int decodeSize(XMLCSTR data, XMLError *error = nullptr);
    // The decoded bytes (null on an illegal character).
    unsigned char *decode(XMLCSTR data, int *outByteLen = nullptr, XMLError *error = nullptr);
    // Decodes into out; returns 1 on success (warnings included), 0 on an
    // error.
    static unsigned char decode(XMLCSTR data, unsigned char *out, int outByteLen, XMLError *error = nullptr);

    // Makes the tool's buffer at least newSize bytes and returns it.
    void *alloc(int newSize);
    void freeBuffer();

private:
    void *buf = nullptr;
    int bufSize = 0;
};

#endif // XMLPARSERBASE64TOOL_H

#ifndef TOXMLSTRINGTOOL_H
#define TOXMLSTRINGTOOL_H

#include "xmlnode.h"

// Makes text safe for XML: & < > " ' become &amp; &lt; &gt; &quot; &apos;.
// Works byte by byte, which is safe for UTF-8 and the supported multi-byte
// encodings (none of these characters can be a trail byte).
class ZKIT_EXPORT ToXMLStringTool
{
public:
    ToXMLStringTool() = default;
    ~ToXMLStringTool();
    ToXMLStringTool(const ToXMLStringTool &) = delete;
    ToXMLStringTool &operator=(const ToXMLStringTool &) = delete;

    // The escaped text in a buffer owned by the tool, valid until the next
    // call or freeBuffer(). A null source gives "".
    XMLSTR toXML(XMLCSTR source);
    void freeBuffer();

    // Writes the escaped source and a NUL to dest, which must hold
    // lengthXMLString(source) + 1 bytes; returns dest.
    static XMLSTR toXMLUnSafe(XMLSTR dest, XMLCSTR source);
    // Length of the escaped text, without the NUL.
    static int lengthXMLString(XMLCSTR source);

private:
    XMLSTR buf = nullptr;
    int bufSize = 0;
};

#endif // TOXMLSTRINGTOOL_H

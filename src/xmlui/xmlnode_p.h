#ifndef XMLNODE_P_H
#define XMLNODE_P_H

#include "xmlnode.h"

#include <cstddef>

/*
 * Storage.
 *
 * A parsed document lives in one arena: a private copy of the text (names,
 * values and texts point into it, NUL-terminated in place) followed by large
 * blocks for node records and their arrays. Every node record remembers the
 * arena holding it, and the arena counts the live records in it; the arena is
 * freed with its last record. So a node moved into another document or kept
 * by a handle pins only its own arena.
 *
 * Edits never allocate from an arena: new node records, grown arrays and new
 * strings go to the heap. An array with a non-zero capacity is on the heap; a
 * string is on the heap when the node's heapStrings flag is set and it lies
 * neither in the node's arena nor among the static clear tags.
 *
 * Freeing a document node by node would cost a visit to every record. An
 * arena stays "pristine" while its records form one untouched tree (as
 * parsed or copied: no edits, nothing moved in or out, no record freed); it
 * also counts the handles to its records. When the last handle to the root
 * of a pristine arena goes and no other handle points into it, the whole
 * arena is freed at once.
 */

struct XMLArenaBlock
{
    XMLArenaBlock *next;
    size_t size;
    size_t used;
    char *data() { return reinterpret_cast<char *>(this + 1); }
};

struct XMLArena
{
    XMLArenaBlock *head;   // block being filled
    XMLArenaBlock *full;   // blocks filled before it
    size_t nextSize;
    long live;             // node records allocated here and still alive
    long handles;          // XMLNode handles to records allocated here
    bool pristine;

    static XMLArena *create(size_t firstBlock);
    static void destroy(XMLArena *arena);

    void *alloc(size_t bytes)
    {
        bytes = (bytes + 7) & ~size_t(7);
        XMLArenaBlock *b = head;
        if (b->size - b->used < bytes)
            b = grow(bytes);
        void *p = b->data() + b->used;
        b->used += bytes;
        return p;
    }
    bool contains(const void *p) const;

private:
    XMLArenaBlock *grow(size_t bytes);
};

struct XMLNodeData
{
    const char *name;
    XMLNodeData *parent;     // also the link of the free list while dying
    XMLArena *arena;         // holds this record; null when on the heap
    XMLNodeData **child;
    XMLAttribute *attr;
    const char **text;
    XMLClear *clear;
    // Document order of children, texts and clears: (index << 2) | type.
    // Null when the contents are all of one type.
    int *order;
    int nChild, nAttr, nText, nClear;
    int capChild, capAttr, capText, capClear, capOrder;
    int ref;                 // handles + 1 while it has a parent
    int sourcePos;           // offset of the element's '<' in the parsed text + 1; 0 unknown
    unsigned char isDecl;
    unsigned char deleted;
    unsigned char heapStrings;

    int nContent() const { return nChild + nText + nClear; }
    int orderAt(int pos) const
    {
        if (order)
            return order[pos];
        if (nChild)
            return pos << 2 | eNodeChild;
        if (nText)
            return pos << 2 | eNodeText;
        return pos << 2 | eNodeClear;
    }
};

namespace XMLPrivate {

// Ends the process: allocation failures are not recoverable here.
[[noreturn]] void outOfMemory();

// Static tags used by the parser; never freed.
extern const char *const tagCommentOpen;
extern const char *const tagCommentClose;
extern const char *const tagCDataOpen;
extern const char *const tagCDataClose;
extern const char *const tagDocTypeOpen;
extern const char *const tagDeclOpen;
extern const char *const tagPIOpen;
extern const char *const tagPIClose;
extern const char *const tagGenericOpen;
extern const char *const tagGreater;
bool isStaticTag(const char *s);

struct Options
{
    XMLCharEncoding encoding;
    char guessWideCharChars;
    char dropWhiteSpace;
    char removeCommentsInMiddleOfText;
};
const Options &options();

// Length in bytes of the character starting with lead byte c; 1 for ASCII
// and for bytes that cannot start a longer sequence.
inline int charLength(XMLCharEncoding enc, unsigned char c)
{
    if (c < 0x80)
        return 1;
    switch (enc) {
    case char_encoding_UTF8:
        if (c >= 0xF0)
            return c < 0xF8 ? 4 : 1;
        if (c >= 0xE0)
            return 3;
        return c >= 0xC0 ? 2 : 1;
    case char_encoding_ShiftJIS:
        return ((c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC)) ? 2 : 1;
    case char_encoding_GB2312:
        return (c >= 0xA1 && c <= 0xFE) ? 2 : 1;
    case char_encoding_GBK:
    case char_encoding_Big5:
        return (c >= 0x81 && c <= 0xFE) ? 2 : 1;
    default:
        return 1;
    }
}

// Advances over one character without stepping over a NUL.
inline const char *nextChar(XMLCharEncoding enc, const char *s)
{
    int n = charLength(enc, static_cast<unsigned char>(*s));
    const char *e = s + 1;
    while (--n > 0 && *e)
        ++e;
    return e;
}

// Line and column (1-based, in characters) of offset in text.
void lineAndColumn(const char *text, size_t offset, XMLCharEncoding enc, int *line, int *column);

// Parses text[0..length) (text[length] need not be readable) into a new
// document; returns its top node with ref 0, or null on an error.
XMLNodeData *parse(const char *text, size_t length, XMLResults *results);

// Node records and their lifetime. A record's ref counts the handles to it
// plus one for its parent's link.
XMLNodeData *newHeapNode(const char *name, bool isDecl);
void retainHandle(XMLNodeData *n);
void releaseHandle(XMLNodeData *n);
// Drops a reference (handle or parent link) and frees what dies.
void release(XMLNodeData *n);
// Marks the arena of n as edited.
inline void touch(XMLNodeData *n)
{
    if (n && n->arena)
        n->arena->pristine = false;
}

} // namespace XMLPrivate

#endif // XMLNODE_P_H

#ifndef XMLNODE_H
#define XMLNODE_H

#include "zglobal.h"

/*
 * A small XML parser and document tree.
 *
 * XMLNode is a handle: copying it shares the node, and the node is freed
 * with the last handle or parent that reaches it. A handle to a child keeps
 * that child and its subtree alive after the rest of the document is gone
 * (its getParentNode() is then empty). Failed lookups return an empty handle
 * (isEmpty()); every operation on an empty handle is safe and returns
 * 0, null or an empty handle. Handles are not thread-safe: a document and
 * all handles into it belong to one thread at a time.
 *
 * Strings are char based, in UTF-8 or in the multi-byte encoding chosen with
 * setGlobalOptions(). Strings returned by the reading functions belong to the
 * document and stay valid until the part holding them is edited or freed.
 *
 * Parse results (XMLResults). Positions are 1-based; the column counts
 * characters of the chosen encoding, a tab counts as one. On eXMLErrorNone
 * nLine and nColumn are 0. Codes 1 and 2 are warnings: the tree parsed so far
 * is returned. Every other code is an error: parseString() returns an empty
 * node.
 *   3  eXMLErrorEmpty: the text is null, empty or white space only.
 *      Reported at the end.
 *   2  eXMLErrorNoXMLTagFound: the text holds no markup at all, only
 *      character data (kept as texts of the top node). Reported at the end.
 *   4  eXMLErrorMissingTagName: '<' not followed by a name ("<>", "< a>",
 *      "<" at the end of the text). Reported at the '<'.
 *   5  eXMLErrorMissingEndTagName: "</" not followed by a name ("</>",
 *      "</ a>"). Reported at the '<'.
 *   6  eXMLErrorUnmatchedEndTag: an end tag whose name matches no open
 *      element. Reported at the '<'.
 *   1  eXMLErrorMissingEndTag (warning): an end tag that matches an outer
 *      open element closes the inner ones implicitly (reported at the '<'),
 *      or the text ends with open elements, which are closed (reported at the
 *      end). The first such warning is kept; a later error replaces it.
 *   7  eXMLErrorUnmatchedEndClearTag: a comment, CDATA section, processing
 *      instruction, declaration, DOCTYPE or other "<!" section without its
 *      end. Reported at its '<'.
 *   8  eXMLErrorUnexpectedToken: malformed markup inside a tag: an attribute
 *      value without quotes after '=', a stray character (quote, '=', '<',
 *      '/' not followed by '>', '?' outside a declaration, '>' or '/' ending a
 *      declaration), an end tag with
 *      more than a name, the end of the text inside a tag, or a NUL byte in a
 *      file. Reported at the offending character.
 *  12  eXMLErrorUnknownCharacterEntity: an entity other than &amp; &lt; &gt;
 *      &quot; &apos; &#N; &#xH; (this includes "&#;", "&#xZZ;", "&#0;",
 *      code points above U+10FFFF or surrogates, and a '&' without ';').
 *      Reported at the '&'.
 *  13  eXMLErrorCharacterCodeAbove255: a numeric entity above 255 when the
 *      encoding is not UTF-8. Reported at the '&'.
 *  11  eXMLErrorFirstTagNotFound: parseString()/parseFile() was given a tag
 *      (path) that the document does not contain. Reported at the end.
 *  10  eXMLErrorFileNotFound: parseFile() could not read the file.
 *  14  eXMLErrorCharConversionError: parseFile() found UTF-16 text (with
 *      guessWideCharChars on) that cannot be converted to the encoding.
 *
 * Markup kept as clear sections (XMLClear, value between the two tags, not
 * entity-decoded): "<!--" "-->", "<![CDATA[" "]]>", "<!DOCTYPE" ">" (an
 * internal subset in [...] may contain '>'), "<?" "?>" (processing
 * instructions other than the declaration) and any other "<!" ">". The
 * declaration "<?xml ...?>" becomes a child node named "?xml" whose
 * isDeclaration() is true ("<?xml" followed by white space or '?'; other
 * names are processing instructions). Attributes without a value
 * (<a checked/>) have a null value. Line ends are kept as they are; in UTF-8
 * mode a leading byte-order mark is skipped.
 *
 * In the Shift-JIS, GB2312, GBK and Big5 modes, CDATA sections and DOCTYPE
 * subsets are scanned character by character, so a trail byte such as ']'
 * or '[' is never taken for markup. The other markup characters are below
 * 0x40 and cannot be trail bytes.
 *
 * The parser, the copy, the output and the freeing of a tree are iterative:
 * nesting depth is limited by memory only.
 */

typedef const char *XMLCSTR;
typedef char *XMLSTR;
typedef char XMLCHAR;
typedef int XMLElementPosition;

enum XMLError {
    eXMLErrorNone = 0,
    eXMLErrorMissingEndTag = 1,
    eXMLErrorNoXMLTagFound = 2,
    eXMLErrorEmpty = 3,
    eXMLErrorMissingTagName = 4,
    eXMLErrorMissingEndTagName = 5,
    eXMLErrorUnmatchedEndTag = 6,
    eXMLErrorUnmatchedEndClearTag = 7,
    eXMLErrorUnexpectedToken = 8,
    eXMLErrorNoElements = 9,
    eXMLErrorFileNotFound = 10,
    eXMLErrorFirstTagNotFound = 11,
    eXMLErrorUnknownCharacterEntity = 12,
    eXMLErrorCharacterCodeAbove255 = 13,
    eXMLErrorCharConversionError = 14,
    eXMLErrorCannotOpenWriteFile = 15,
    eXMLErrorCannotWriteFile = 16,
    eXMLErrorBase64DataSizeIsNotMultipleOf4 = 17,
    eXMLErrorBase64DecodeIllegalCharacter = 18,
    eXMLErrorBase64DecodeTruncatedData = 19,
    eXMLErrorBase64DecodeBufferTooSmall = 20
};

enum XMLElementType {
    eNodeChild = 0,
    eNodeAttribute = 1,
    eNodeText = 2,
    eNodeClear = 3,
    eNodeNULL = 4
};

enum XMLCharEncoding {
    char_encoding_error = 0,
    char_encoding_UTF8 = 1,
    char_encoding_legacy = 2,
    char_encoding_ShiftJIS = 3,
    char_encoding_GB2312 = 4,
    char_encoding_Big5 = 5,
    char_encoding_GBK = 6
};

struct XMLResults {
    XMLError error;
    int nLine, nColumn;
};

struct XMLClear {
    XMLCSTR lpszValue, lpszOpenTag, lpszCloseTag;
};

struct XMLAttribute {
    XMLCSTR lpszName, lpszValue;
};

struct XMLNodeContents;
struct XMLNodeData;

class ZKIT_EXPORT XMLNode
{
public:
    XMLNode() noexcept : d(nullptr) {}
    XMLNode(const XMLNode &other) noexcept;
    XMLNode(XMLNode &&other) noexcept : d(other.d) { other.d = nullptr; }
    XMLNode &operator=(const XMLNode &other) noexcept;
    XMLNode &operator=(XMLNode &&other) noexcept;
    ~XMLNode();

    // Same node (two empty handles are equal).
    bool operator==(const XMLNode &other) const noexcept { return d == other.d; }
    bool operator!=(const XMLNode &other) const noexcept { return d != other.d; }

    // Parsing. The text is copied; the tag, if given, is a path as for
    // getChildNodeByPath() (never creating) and its node is returned.
    static XMLNode parseString(XMLCSTR text, XMLCSTR tag = nullptr, XMLResults *results = nullptr);
    // Reads the whole file. A leading UTF-8 byte-order mark is skipped; with
    // guessWideCharChars on, UTF-16 text (byte-order mark, or "<" encoded on
    // two bytes) is converted first.
    static XMLNode parseFile(XMLCSTR path, XMLCSTR tag = nullptr, XMLResults *results = nullptr);
    // For small programs: parses the file and, on an error, prints it to
    // stderr and exits the process with code 1. Warnings are not errors.
    static XMLNode openFileHelper(XMLCSTR path, XMLCSTR tag = nullptr);

    static XMLNode createXMLTopNode(XMLCSTR name, char isDeclaration = 0);
    static XMLNode createXMLTopNode_WOSD(XMLSTR name, char isDeclaration = 0);
    static XMLNode emptyNode() { return XMLNode(); }

    static XMLCSTR getError(XMLError error);
    static XMLCSTR getVersion();

    // Process-wide parser options, read without locking by every parse and
    // write: set them at start-up. Returns non-zero (and changes nothing) for
    // an invalid encoding. guessWideCharChars applies to parseFile();
    // dropWhiteSpace trims texts and drops white-space-only ones;
    // removeCommentsInMiddleOfText joins the texts on both sides of comments
    // into one text (the comments stay as clear sections).
    static char setGlobalOptions(XMLCharEncoding encoding = char_encoding_UTF8,
                                 char guessWideCharChars = 1,
                                 char dropWhiteSpace = 1,
                                 char removeCommentsInMiddleOfText = 1);
    // Guesses from the bytes: well-formed UTF-8 (a sequence cut by the end of
    // the buffer counts as well-formed) or single-byte. Then, if asked, the
    // encoding attribute of a leading declaration within the first 200 bytes
    // decides, by case-insensitive prefix: "utf-8"/"utf8" (UTF-8, or
    // char_encoding_error when the bytes are not), "shiftjis"/"shift-jis"/
    // "sjis", "gb2312", "big5", "gbk"; any other name means single-byte.
    static XMLCharEncoding guessCharEncoding(void *buffer, int length, char useXMLEncodingAttribute = 1);

    // Reading.
    XMLCSTR getName() const;
    XMLCSTR getText(int i = 0) const;
    int nText() const;
    XMLNode getParentNode() const;
    XMLNode getChildNode(int i = 0) const;
    // The i-th child (0-based) with that name.
    XMLNode getChildNode(XMLCSTR name, int i) const;
    // Iterator form: searches from *i (0 when i is null); on success *i is
    // set past the node found.
    XMLNode getChildNode(XMLCSTR name, int *i = nullptr) const;
    // Names separated by sep; empty steps are skipped. Missing steps are
    // created when createMissing is set, otherwise an empty node is returned.
    XMLNode getChildNodeByPath(XMLCSTR path, char createMissing = 1, XMLCHAR sep = '/');
    // A child named tag having attribute attrName (with that value when
    // attrValue is given); iterator form as for getChildNode().
    XMLNode getChildNodeWithAttribute(XMLCSTR tag, XMLCSTR attrName, XMLCSTR attrValue = nullptr,
                                      int *i = nullptr) const;
    int nChildNode() const;
    int nChildNode(XMLCSTR name) const;

    XMLAttribute getAttribute(int i = 0) const;
    XMLCSTR getAttributeName(int i = 0) const;
    XMLCSTR getAttributeValue(int i = 0) const;
    // Value of the i-th attribute with that name; null when absent (and for
    // an attribute without a value).
    XMLCSTR getAttribute(XMLCSTR name, int i) const;
    // Iterator form: searches from *i; on success *i is set past it.
    XMLCSTR getAttribute(XMLCSTR name, int *i = nullptr) const;
    char isAttributeSet(XMLCSTR name) const;
    int nAttribute() const;

    XMLClear getClear(int i = 0) const;
    int nClear() const;

    // Where a parsed element starts: the byte offset of its '<' in the text
    // given to parseString() (after a skipped byte-order mark); -1 for the
    // top node and for nodes made by editing. Copies keep it.
    int sourceOffset() const;
    // Line and column (1-based, counted as in XMLResults) of that '<', given
    // the very text the node was parsed from. Returns 0 when unknown, or when
    // the text ends before the offset.
    char sourcePosition(XMLCSTR text, int *line, int *column) const;

    // Attributes + children + texts + clears.
    int nElement() const;
    char isEmpty() const;
    char isDeclaration() const;

    // Element i of nElement(): first the attributes, then children, texts and
    // clears in document order. Positions (XMLElementPosition) count only
    // children, texts and clears, so content position p is element
    // nAttribute() + p.
    XMLNodeContents enumContents(XMLElementPosition i) const;

    // Content positions, -1 when there is no such item. Strings match by
    // address first, then by content.
    XMLElementPosition positionOfText(int i = 0) const;
    XMLElementPosition positionOfText(XMLCSTR text) const;
    XMLElementPosition positionOfClear(int i = 0) const;
    XMLElementPosition positionOfClear(XMLCSTR value) const;
    XMLElementPosition positionOfClear(XMLClear *clear) const;
    XMLElementPosition positionOfChildNode(int i = 0) const;
    XMLElementPosition positionOfChildNode(XMLNode node) const;
    XMLElementPosition positionOfChildNode(XMLCSTR name, int i = 0) const;

    // An independent copy of this node and its subtree (without parent).
    XMLNode deepCopy() const;

    // format 0: compact; format 1: one item per line, a tab per level (up to
    // 100 levels).
    // Elements holding text are written on one line so that texts keep their
    // exact content. Texts and attribute values are escaped; clear sections
    // are written as they are. A node without name (the top node) writes its
    // contents only. Returns a malloc'd string (free() it), null for an empty
    // handle; *size gets its length.
    XMLSTR createXMLString(int format = 1, int *size = nullptr) const;
    // Writes the header line unless the node is or holds a declaration
    // (an empty handle writes the header only); encoding defaults to the
    // name of the global encoding ("utf-8", "ISO-8859-1", "SHIFT-JIS",
    // "GB2312", "Big5", "GBK").
    XMLError writeToFile(XMLCSTR path, const char *encoding = nullptr, char format = 1) const;

    // Editing. The non-WOSD functions copy the strings given; the _WOSD
    // ("without string duplication") ones take ownership of malloc'd strings
    // and free() them when replaced, deleted, when the node dies, or at once
    // if the operation fails. Clear tags are always copied.
    // A position below 0 or past the end appends. Pointers returned into
    // attribute and clear arrays stay valid until the next edit of the node.
    XMLNode addChild(XMLCSTR name, char isDeclaration = 0, XMLElementPosition pos = -1);
    XMLNode addChild_WOSD(XMLSTR name, char isDeclaration = 0, XMLElementPosition pos = -1);
    // Moves node (detaching it from its old parent, in any document) under
    // this node. Refused (empty result) for this node itself or an ancestor.
    XMLNode addChild(XMLNode node, XMLElementPosition pos = -1);
    XMLAttribute *addAttribute(XMLCSTR name, XMLCSTR value);
    XMLAttribute *addAttribute_WOSD(XMLSTR name, XMLSTR value);
    XMLCSTR addText(XMLCSTR text, XMLElementPosition pos = -1);
    XMLCSTR addText_WOSD(XMLSTR text, XMLElementPosition pos = -1);
    // Tags default to "<![CDATA[" and "]]>".
    XMLClear *addClear(XMLCSTR value, XMLCSTR openTag = nullptr, XMLCSTR closeTag = nullptr,
                       XMLElementPosition pos = -1);
    XMLClear *addClear_WOSD(XMLSTR value, XMLCSTR openTag = nullptr, XMLCSTR closeTag = nullptr,
                            XMLElementPosition pos = -1);

    // The update functions add what they do not find (an attribute, text or
    // clear with that index or old value) and return what they stored.
    XMLCSTR updateName(XMLCSTR name);
    XMLCSTR updateName_WOSD(XMLSTR name);
    // Replaces the attribute named oldA->lpszName by newA.
    XMLAttribute *updateAttribute(XMLAttribute *newA, XMLAttribute *oldA);
    XMLAttribute *updateAttribute_WOSD(XMLAttribute *newA, XMLAttribute *oldA);
    // Sets the value (and the name, when newName is given) of attribute i.
    XMLAttribute *updateAttribute(XMLCSTR value, XMLCSTR newName = nullptr, int i = 0);
    XMLAttribute *updateAttribute_WOSD(XMLSTR value, XMLSTR newName = nullptr, int i = 0);
    // Sets the value (and the name, when newName is given) of the first
    // attribute named oldName.
    XMLAttribute *updateAttribute(XMLCSTR value, XMLCSTR newName, XMLCSTR oldName);
    XMLAttribute *updateAttribute_WOSD(XMLSTR value, XMLSTR newName, XMLCSTR oldName);
    XMLCSTR updateText(XMLCSTR text, int i = 0);
    XMLCSTR updateText_WOSD(XMLSTR text, int i = 0);
    XMLCSTR updateText(XMLCSTR newText, XMLCSTR oldText);
    XMLCSTR updateText_WOSD(XMLSTR newText, XMLCSTR oldText);
    XMLClear *updateClear(XMLCSTR value, int i = 0);
    XMLClear *updateClear_WOSD(XMLSTR value, int i = 0);
    // Replaces the clear whose value is o->lpszValue by n (value and tags).
    XMLClear *updateClear(XMLClear *n, XMLClear *o);
    XMLClear *updateClear_WOSD(XMLClear *n, XMLClear *o);
    XMLClear *updateClear(XMLCSTR newValue, XMLCSTR oldValue);
    XMLClear *updateClear_WOSD(XMLSTR newValue, XMLCSTR oldValue);

    // Removes this node and its subtree from its parent and frees them. This
    // handle and all other handles to this node become empty; descendants
    // still held by other handles survive as detached trees.
    void deleteNodeContent();
    void deleteAttribute(int i = 0);
    // The first attribute with that name.
    void deleteAttribute(XMLCSTR name);
    // The attribute a points to (as returned by addAttribute()), else the
    // first attribute named a->lpszName.
    void deleteAttribute(XMLAttribute *a);
    void deleteText(int i = 0);
    void deleteText(XMLCSTR text);
    void deleteClear(int i = 0);
    void deleteClear(XMLCSTR value);
    void deleteClear(XMLClear *clear);
    // Makes this node the root of its own tree.
    void detachFromParent();

private:
    explicit XMLNode(XMLNodeData *data) noexcept;
    XMLNodeData *node() const noexcept;

    XMLNodeData *d;
};

struct XMLNodeContents {
    XMLElementType etype;
    XMLNode child;
    XMLAttribute attrib;
    XMLCSTR text;
    XMLClear clear;
};

#endif // XMLNODE_H

#include "zxmlui.h"
#include "zxmlui_p.h"

#include "xmlnode.h"
#include "xmlnode_p.h"
#include "zcreator.h"
#include "zhelper.h"
#include "zpropertyconverter.h"
#include "zresource.h"
#include "ztheme_p.h"
#include "zwidget.h"
#include "zwindow.h"

#include <QtCore/qfileinfo.h>
#include <QtCore/qhash.h>
#include <QtCore/qmap.h>
#include <QtCore/qmetaobject.h>
#include <QtCore/qpointer.h>
#include <QtCore/qset.h>
#include <QtCore/qvarlengtharray.h>
#include <QtWidgets/qwidget.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

using Diagnostic = ZXmlUI::Diagnostic;

namespace {

// ---------------------------------------------------------------------------
// Process-wide state

struct Where
{
    QString file;
    int line = 0;
    int column = 0;
};

struct PendingConnection
{
    QPointer<QObject> container;
    QString sender;
    QByteArray signal;
    QByteArray slot;
    Qt::ConnectionType type;
    Where where;
    QString element; // for messages
};

struct PendingInvocation
{
    QPointer<QObject> container;
    QByteArray method;
    QByteArray arguments;
    Qt::ConnectionType type;
    Where where;
    QString element; // for messages
};

struct LoaderState
{
    QHash<QString, QPointer<QObject>> named;
    std::vector<PendingConnection> connections;
    std::vector<PendingInvocation> invocations;
    int runningLoads = 0;
};

LoaderState &state()
{
    static LoaderState s;
    return s;
}

struct CachedValue
{
    QMetaType type;
    QVariant value;
};

struct SkinEntry
{
    QString name;
    const QMetaObject *metaObject = nullptr;
    QMap<QByteArray, QByteArray> assignments; // path -> value text, in the order of the paths
    QHash<QByteArray, CachedValue> cache;     // converted values of declared properties
    Where where;
};
using SkinStore = QHash<QString, std::shared_ptr<SkinEntry>>;

SkinStore &skins()
{
    static SkinStore s;
    return s;
}

ZXmlUI::DiagnosticsSink &sink()
{
    static ZXmlUI::DiagnosticsSink s;
    return s;
}

bool reporting()
{
    return bool(sink());
}

// The document a load is working on, for the positions of diagnostics.
struct Document
{
    Document(const QString &file = QString(), const QByteArray &text = QByteArray())
        : file(file), text(text) {}

    QString file;
    QByteArray text; // exactly as parsed

    // Line and column of a parser offset. Lines are indexed on first use,
    // so that many diagnostics in a large document stay cheap.
    bool position(int offset, int *line, int *column) const;

private:
    struct Line
    {
        int start;
        bool ascii; // columns are byte counts
    };
    mutable std::vector<Line> m_lines;
    mutable int m_base = -1; // where parser offsets start (after a byte-order mark)
};

bool Document::position(int offset, int *line, int *column) const
{
    if (m_base < 0) {
        const XMLCharEncoding encoding = XMLPrivate::options().encoding;
        m_base = encoding == char_encoding_UTF8 && text.startsWith("\xEF\xBB\xBF") ? 3 : 0;
        const char *t = text.constData() + m_base;
        const int size = int(qstrlen(t)); // the parser stops at a NUL too
        m_lines.push_back({0, true});
        for (int i = 0; i < size; ++i) {
            const unsigned char c = static_cast<unsigned char>(t[i]);
            if (c == '\n')
                m_lines.push_back({i + 1, true});
            else if (c >= 0x80)
                m_lines.back().ascii = false;
        }
        m_lines.push_back({size + 1, true}); // sentinel
    }
    if (offset < 0 || offset >= m_lines.back().start)
        return false;
    const auto it = std::upper_bound(m_lines.begin(), m_lines.end(), offset,
                                     [](int o, const Line &l) { return o < l.start; }) - 1;
    *line = int(it - m_lines.begin()) + 1;
    if (it->ascii) {
        *column = offset - it->start + 1;
    } else {
        int l = 0;
        XMLPrivate::lineAndColumn(text.constData() + m_base + it->start, size_t(offset - it->start),
                                  XMLPrivate::options().encoding, &l, column);
    }
    return true;
}

const Document *g_document = nullptr;

// ---------------------------------------------------------------------------
// Diagnostics

QString elementName(const XMLNode &node)
{
    const char *name = node.getName();
    return QString::fromLocal8Bit(name ? name : "");
}

Where whereOf(const XMLNode &node)
{
    Where w;
    if (!g_document)
        return w;
    w.file = g_document->file;
    int line = 0, column = 0;
    if (g_document->position(node.sourceOffset(), &line, &column)) {
        w.line = line;
        w.column = column;
    }
    return w;
}

void report(Diagnostic::Kind kind, const QString &message, const Where &where)
{
    const ZXmlUI::DiagnosticsSink &s = sink();
    if (!s)
        return;
    Diagnostic d;
    d.kind = kind;
    d.message = message;
    d.file = where.file;
    d.line = where.line;
    d.column = where.column;
    // A copy: the sink may replace itself.
    const ZXmlUI::DiagnosticsSink call = s;
    call(d);
}

void report(Diagnostic::Kind kind, const QString &message, const XMLNode &node)
{
    if (reporting())
        report(kind, message, whereOf(node));
}

// Where a property is being set from, to name it in messages.
struct Site
{
    const XMLNode *node = nullptr;     // element of a document
    const SkinEntry *skin = nullptr;   // or assignment of a skin
    const QByteArray *path = nullptr;  // the name as written ("titlebar.fixHeight")

    QString describe(const QObject *object) const
    {
        QString text;
        if (node)
            text = QStringLiteral("<%1>").arg(elementName(*node));
        else if (skin)
            text = QStringLiteral("skin \"%1\"").arg(skin->name);
        else if (object)
            text = QLatin1String(object->metaObject()->className());
        if (path)
            text += QStringLiteral(" attribute \"%1\"").arg(QString::fromLocal8Bit(*path));
        return text;
    }
    Where where() const
    {
        if (node)
            return whereOf(*node);
        if (skin)
            return skin->where;
        return Where();
    }
};

void report(Diagnostic::Kind kind, const QString &message, const Site &site, const QObject *object)
{
    if (reporting())
        report(kind, site.describe(object) + QLatin1String(": ") + message, site.where());
}

// ---------------------------------------------------------------------------
// Paths and properties: one mechanism for attributes, setPropertyEx and skins

// Prefixes of dotted names resolved for one element (or one skin application).
using PathCache = QVarLengthArray<std::pair<QByteArray, QPointer<QObject>>, 4>;

QString className(const QObject *object)
{
    return QLatin1String(object->metaObject()->className());
}

// The object a dotted \a path leads to from \a root, and in \a property the
// name at its end. Every piece before the last must be a property holding a
// non-null QObject*. Null when the path does not resolve.
QObject *resolvePath(QObject *root, const QByteArray &path, QByteArray *property, PathCache *cache,
                     const Site &site)
{
    if (!root)
        return nullptr;
    const int dot = path.lastIndexOf('.');
    if (dot < 0) {
        *property = path;
        return root;
    }
    *property = path.mid(dot + 1);
    const QByteArray prefix = path.left(dot);
    if (cache) {
        for (const auto &entry : *cache) {
            if (entry.first == prefix)
                return entry.second;
        }
    }
    QObject *current = root;
    for (const QByteArray &piece : prefix.split('.')) {
        const QVariant value = current->property(piece.constData());
        QObject *next = value.metaType().flags().testFlag(QMetaType::PointerToQObject)
                            ? value.value<QObject *>()
                            : nullptr;
        if (!next) {
            if (reporting()) {
                const QString why = !value.isValid()
                    ? QStringLiteral("%1 has no property \"%2\"")
                    : value.metaType().flags().testFlag(QMetaType::PointerToQObject)
                        ? QStringLiteral("property \"%2\" of %1 is null")
                        : QStringLiteral("property \"%2\" of %1 is not a QObject*");
                report(Diagnostic::UnresolvedPath,
                       why.arg(className(current), QString::fromLocal8Bit(piece)) + QLatin1String("; not set"),
                       site, root);
            }
            current = nullptr;
            break;
        }
        current = next;
    }
    if (current && property->isEmpty()) {
        report(Diagnostic::UnresolvedPath, QStringLiteral("the name ends with \".\"; not set"), site, root);
        return nullptr;
    }
    if (cache)
        cache->append({prefix, current});
    return current;
}

// Whether \a text may be written to an enumeration property. Qt's own
// enumerations have no fixed underlying type, so a number that is none of
// their values must not reach them (loading it is undefined behaviour); the
// toolkit's enumerations are int-based and take any number, as documented
// where they give every other value a meaning.
bool acceptsEnumValue(const QMetaProperty &property, const QString &text)
{
    if (!property.isEnumType() || property.isFlagType())
        return true;
    const QMetaEnum e = property.enumerator();
    if (e.scope() && e.scope()[0] == 'Z')
        return true;
    // Check what Qt itself would store: numbers beyond int (cut to 32 bits)
    // and key combinations ("A|B") can give a value that is no enumerator.
    bool isNumber = false;
    const qlonglong asNumber = text.trimmed().toLongLong(&isNumber, 0);
    if (isNumber && asNumber != int(asNumber))
        return false;
    QVariant v(text);
    if (!v.convert(property.metaType()))
        return true; // setProperty() refuses it
    qint64 number = 0;
    switch (property.metaType().sizeOf()) {
    case 1: number = *static_cast<const qint8 *>(v.constData()); break;
    case 2: number = *static_cast<const qint16 *>(v.constData()); break;
    case 4: number = *static_cast<const qint32 *>(v.constData()); break;
    default: number = *static_cast<const qint64 *>(v.constData()); break;
    }
    return number == int(number) && e.valueToKey(int(number));
}

// A whole number of at most nine digits, the most common attribute value, or
// -1 when \a text is anything else.
int plainNumber(QStringView text, bool *negative)
{
    *negative = !text.isEmpty() && text.front() == QLatin1Char('-');
    if (*negative)
        text = text.mid(1);
    if (text.isEmpty() || text.size() > 9)
        return -1;
    int n = 0;
    for (const QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return -1;
        n = n * 10 + (c.unicode() - '0');
    }
    return n;
}

// ZPropertyConverter's conversion; whole numbers for int and double
// properties are read here, which is what QMetaProperty::write would do
// with the text, only without going through the locale.
QVariant convertText(QMetaType type, const QString &text, bool *ok)
{
    const int id = type.id();
    if ((id == QMetaType::Int || id == QMetaType::Double) && !ZPropertyConverter::converter(type)) {
        bool negative = false;
        if (const int n = plainNumber(text, &negative); n >= 0) {
            *ok = true;
            const int number = negative ? -n : n;
            return id == QMetaType::Int ? QVariant(number) : QVariant(double(number));
        }
    }
    return ZPropertyConverter::convert(type, text, ok);
}

// Sets the property \a name of \a object from \a text: a declared property
// gets the text converted by its type, "objectArgument" registers the object
// under its objectName, anything else becomes a dynamic string property.
// Returns the converted value of a declared property, else an invalid one.
QVariant setPropertyText(QObject *object, const QByteArray &name, const QString &text, const Site &site)
{
    if (!object)
        return QVariant();
    const QMetaObject *mo = object->metaObject();
    const int index = mo->indexOfProperty(name.constData());
    if (index >= 0) {
        const QMetaProperty property = mo->property(index);
        bool ok = true;
        const QVariant value = convertText(property.metaType(), text, &ok);
        if (!acceptsEnumValue(property, text)) {
            report(Diagnostic::ConversionFailed,
                   QStringLiteral("\"%1\" is not a value of %2; property %3 of %4 left unchanged")
                       .arg(text, QLatin1String(property.typeName()), QLatin1String(property.name()),
                            className(object)),
                   site, object);
            return QVariant();
        }
        if (!ok) {
            report(Diagnostic::ConversionFailed,
                   QStringLiteral("\"%1\" is not a valid %2; property %3 of %4 set to the fallback %2")
                       .arg(text, QLatin1String(property.typeName()), QLatin1String(property.name()),
                            className(object)),
                   site, object);
        }
        if (!property.write(object, value) && reporting()) {
            const QString why = !property.isWritable()
                ? QStringLiteral("property %1 of %2 is read-only")
                      .arg(QLatin1String(property.name()), className(object))
                : QStringLiteral("property %1 (%2) of %3 does not take \"%4\"")
                      .arg(QLatin1String(property.name()), QLatin1String(property.typeName()), className(object),
                           text);
            report(Diagnostic::PropertyWriteFailed, why, site, object);
        }
        return value;
    }
    if (name == "objectArgument") {
        // The value is not used: the object goes in under its current name.
        state().named.insert(object->objectName(), object);
        return QVariant();
    }
    object->setProperty(name.constData(), text);
    return QVariant();
}

QString fromDocument(const char *text)
{
    return QString::fromLocal8Bit(text ? text : "");
}

void applyAttributes(const XMLNode &element, QObject *object)
{
    PathCache cache;
    const int n = element.nAttribute();
    for (int i = 0; i < n; ++i) {
        const XMLAttribute a = element.getAttribute(i);
        if (!a.lpszName || !*a.lpszName)
            continue;
        // The element outlives the loop; its name needs no copy.
        const QByteArray path = QByteArray::fromRawData(a.lpszName, qsizetype(qstrlen(a.lpszName)));
        const Site site{&element, nullptr, &path};
        QByteArray property;
        if (QObject *target = resolvePath(object, path, &property, &cache, site))
            setPropertyText(target, property, fromDocument(a.lpszValue), site);
    }
}

// ---------------------------------------------------------------------------
// Calls through the meta-object system

struct Argument
{
    QByteArray typeName;
    QVariant value;                // a converted value,
    const void *pointer = nullptr; // or a pointer: an object, the data element
    bool isPointer = false;
    bool isVariant = false;        // the argument is the QVariant itself
    // QGenericArgument wants the address of the value, so of the pointer too.
    const void *data() const
    {
        if (isPointer)
            return &pointer;
        return isVariant ? static_cast<const void *>(&value) : value.constData();
    }
};

QString signatureText(const QByteArray &method, const std::vector<Argument> &args)
{
    QByteArray s = method + '(';
    for (size_t i = 0; i < args.size(); ++i) {
        if (i)
            s += ',';
        s += args[i].typeName;
    }
    s += ')';
    return QString::fromLatin1(s);
}

bool callMethod(QObject *target, const QByteArray &method, const std::vector<Argument> &args,
                Qt::ConnectionType type, QString *error)
{
    Q_ASSERT(args.size() <= 10);
    const QString signature = signatureText(method, args);
    // Checked first so that a missing method is reported, not printed.
    const QByteArray normalized = QMetaObject::normalizedSignature(signature.toLatin1().constData());
    if (target->metaObject()->indexOfMethod(normalized.constData()) < 0) {
        *error = QStringLiteral("%1 has no invokable method %2").arg(className(target), signature);
        return false;
    }
    QGenericArgument a[10];
    for (size_t i = 0; i < args.size(); ++i)
        a[i] = QGenericArgument(args[i].typeName.constData(), args[i].data());
    if (!QMetaObject::invokeMethod(target, method.constData(), type, a[0], a[1], a[2], a[3], a[4], a[5], a[6],
                                   a[7], a[8], a[9])) {
        *error = QStringLiteral("the meta-object system refused the call %1::%2")
                     .arg(className(target), signature);
        return false;
    }
    return true;
}

// ---------------------------------------------------------------------------
// Action elements

void runData(const XMLNode &element, ZWidget *container)
{
    const char *function = element.getAttribute("function");
    const QByteArray method = function ? QByteArray(function) : QByteArray("setData");
    const char *model = element.getAttribute("model");
    Qt::ConnectionType type = ZXmlUIPrivate::connectionType(element.getAttribute("connect"));

    std::vector<Argument> args(1);
    if (!model || std::strcmp(model, "xml") == 0) {
        if (type == Qt::QueuedConnection) {
            // The element dies with the document, before a queued call would run.
            report(Diagnostic::DataFailed,
                   QStringLiteral("<%1>: an xml data element cannot be delivered queued; delivered directly")
                       .arg(elementName(element)),
                   element);
            type = Qt::DirectConnection;
        }
        args[0].typeName = "const XMLNode*";
        args[0].pointer = &element;
        args[0].isPointer = true;
    } else if (std::strcmp(model, "variant") == 0) {
        QVariantList list;
        const int n = element.nChildNode();
        for (int i = 0; i < n; ++i) {
            const XMLNode child = element.getChildNode(i);
            QVariantMap attributes;
            const int na = child.nAttribute();
            for (int k = 0; k < na; ++k) {
                const XMLAttribute a = child.getAttribute(k);
                attributes.insert(fromDocument(a.lpszName), fromDocument(a.lpszValue));
            }
            // Grandchildren are not delivered: an entry holds the child's
            // own attributes only, never a "children" key.
            list.append(QVariantMap{{elementName(child), attributes}});
        }
        args[0].typeName = "QVariant";
        args[0].value = list;
        args[0].isVariant = true;
    } else {
        report(Diagnostic::DataFailed,
               QStringLiteral("<%1>: unknown model \"%2\" (xml or variant); nothing delivered")
                   .arg(elementName(element), fromDocument(model)),
               element);
        return;
    }
    QString error;
    if (!callMethod(container, method, args, type, &error))
        report(Diagnostic::DataFailed, QStringLiteral("<%1>: ").arg(elementName(element)) + error, element);
}

void recordEvent(const XMLNode &element, ZWidget *container)
{
    PendingConnection c;
    c.container = container;
    c.sender = fromDocument(element.getAttribute("object"));
    c.signal = element.getAttribute("signal");
    c.slot = element.getAttribute("slot");
    c.type = ZXmlUIPrivate::connectionType(element.getAttribute("connect"));
    if (reporting()) {
        c.where = whereOf(element);
        c.element = elementName(element);
    }
    state().connections.push_back(std::move(c));
}

void recordInvoke(const XMLNode &element, ZWidget *container)
{
    PendingInvocation i;
    i.container = container;
    i.method = element.getAttribute("function");
    i.arguments = element.getAttribute("arguments");
    i.type = ZXmlUIPrivate::connectionType(element.getAttribute("connect"));
    if (reporting()) {
        i.where = whereOf(element);
        i.element = elementName(element);
    }
    state().invocations.push_back(std::move(i));
}

void runAction(const XMLNode &element, ZWidget *container)
{
    const char *name = element.getName();
    const char *colon = std::strchr(name, ':');
    const char *word = colon + 1;
    if (std::strcmp(word, "data") == 0)
        runData(element, container);
    else if (std::strcmp(word, "event") == 0)
        recordEvent(element, container);
    else if (std::strcmp(word, "invoke") == 0)
        recordInvoke(element, container);
    else
        report(Diagnostic::UnknownAction,
               QStringLiteral("<%1>: \"%2\" is no action (data, event or invoke); element ignored")
                   .arg(elementName(element), fromDocument(word)),
               element);
}

// Connections first, then the calls. Each list is taken out before it runs,
// so a load started by a slot neither sees nor repeats it.
void runPending()
{
    LoaderState &s = state();
    std::vector<PendingConnection> connections;
    connections.swap(s.connections);
    for (const PendingConnection &c : connections) {
        if (!c.container)
            continue;
        QObject *sender = s.named.value(c.sender);
        if (!sender) {
            report(Diagnostic::ConnectionFailed,
                   QStringLiteral("<%1>: no object is registered under \"%2\" (objectArgument); "
                                  "%3 not connected to %4")
                       .arg(c.element, c.sender, QString::fromLatin1(c.signal), QString::fromLatin1(c.slot)),
                   c.where);
            continue;
        }
        QString error;
        if (!ZXmlUIPrivate::connectChecked(sender, c.signal, c.container, c.slot, c.type, false, &error))
            report(Diagnostic::ConnectionFailed, QStringLiteral("<%1>: %2").arg(c.element, error), c.where);
    }

    std::vector<PendingInvocation> invocations;
    invocations.swap(s.invocations);
    for (const PendingInvocation &i : invocations) {
        if (!i.container)
            continue;
        QString error;
        if (!ZXmlUIPrivate::invoke(i.container, i.method, i.arguments, i.type, &error))
            report(Diagnostic::InvocationFailed, QStringLiteral("<%1>: %2").arg(i.element, error), i.where);
    }
}

// ---------------------------------------------------------------------------
// Widget trees

// Lists the unknown classes inside a subtree that is skipped as a whole, so
// that one run shows every name that needs a class.
void reportSkippedSubtree(const XMLNode &root)
{
    if (!reporting())
        return;
    const QString skipped = elementName(root);
    std::vector<std::pair<XMLNode, int>> stack{{root, 0}};
    while (!stack.empty()) {
        auto &top = stack.back();
        if (top.second >= top.first.nChildNode()) {
            stack.pop_back();
            continue;
        }
        const XMLNode child = top.first.getChildNode(top.second++);
        const char *name = child.getName();
        if (std::strchr(name, ':'))
            continue;
        if (!ZWidgetCreatorBase::find(QByteArray(name))) {
            report(Diagnostic::UnknownClass,
                   QStringLiteral("<%1>: no widget class \"%1\" is registered (inside the skipped <%2>)")
                       .arg(elementName(child), skipped),
                   child);
        }
        stack.emplace_back(child, 0);
    }
}

// A QGraphicsWidget joins its parent's tab focus chain at the end of the
// parent's part of it, which Qt finds by walking every widget below the
// parent: filling a container one child at a time costs the square of its
// size. Panels are kept out of their parent's chain, so while a container
// of many elements is being filled its new children are panels; when the
// container is complete they become ordinary widgets again, each put right
// behind the container - in reverse, which leaves the chain in document
// order. Every widget is visited once per level above it. A small container
// fills the usual way, which costs less than holding its children; so does
// one that already holds widgets, so that the new children still follow the
// old ones.
class FocusChainHold
{
public:
    FocusChainHold(const XMLNode &element, const ZWidget *container)
        : m_on(container && manyWidgets(element) && !holdsWidgets(container))
    {
    }

    void hold(ZWidget *widget)
    {
        if (!m_on || widget->isPanel())
            return;
        widget->setFlag(QGraphicsItem::ItemIsPanel);
        m_held.emplace_back(widget);
    }

    void release()
    {
        for (auto it = m_held.rbegin(); it != m_held.rend(); ++it) {
            // A widget whose attributes made it a window stays a panel.
            if (*it && !(*it)->isWindow())
                (*it)->setFlag(QGraphicsItem::ItemIsPanel, false);
        }
        m_held.clear();
    }

private:
    // From this many widget elements on, holding is the cheaper way.
    static constexpr int kManyWidgets = 16;

    static bool manyWidgets(const XMLNode &element)
    {
        int widgets = 0;
        for (int i = 0, n = element.nChildNode(); i < n && widgets < kManyWidgets; ++i)
            widgets += std::strchr(element.getChildNode(i).getName(), ':') ? 0 : 1;
        return widgets >= kManyWidgets;
    }

    static bool holdsWidgets(const ZWidget *container)
    {
        const QList<QGraphicsItem *> children = container->childItems();
        return std::any_of(children.begin(), children.end(), [](QGraphicsItem *c) { return c->isWidget(); });
    }

    bool m_on;
    std::vector<QPointer<ZWidget>> m_held;
};

// Creates the widget elements among the children of \a parentElement into
// \a parent, depth first in document order, without recursion: each element
// is added to its parent before its attributes are set, its children follow,
// and its construct() runs when they are done. Action elements count only
// below a created widget.
void createChildren(const XMLNode &parentElement, ZWidget *parent)
{
    struct Frame
    {
        XMLNode element;
        QPointer<ZWidget> widget;    // to construct() when done; null for the top
        QPointer<ZWidget> container; // where the children go
        int next;
        int depth;
        FocusChainHold held;
    };
    std::vector<Frame> stack;
    stack.push_back({parentElement, nullptr, parent, 0, 0, FocusChainHold(parentElement, parent)});
    while (!stack.empty()) {
        Frame &frame = stack.back();
        if (frame.next >= frame.element.nChildNode() || !frame.container) {
            frame.held.release();
            QPointer<ZWidget> done = frame.widget;
            stack.pop_back();
            if (done)
                done->construct();
            continue;
        }
        const XMLNode element = frame.element.getChildNode(frame.next++);
        const char *name = element.getName();
        const bool topLevel = !frame.widget;
        if (!topLevel && std::strchr(name, ':')) {
            runAction(element, frame.container);
            continue;
        }
        if (frame.depth >= ZXmlUI::MaximumDepth) {
            report(Diagnostic::DepthLimit,
                   QStringLiteral("<%1>: nested deeper than %2 widget levels; skipped with its children")
                       .arg(elementName(element))
                       .arg(ZXmlUI::MaximumDepth),
                   element);
            continue;
        }
        // Looked up without a copy of the name.
        const QByteArray className = QByteArray::fromRawData(name, qsizetype(std::strlen(name)));
        ZWidgetCreatorBase *creator = ZWidgetCreatorBase::find(className);
        ZWidget *widget = creator ? creator->create(frame.container) : nullptr;
        if (!widget) {
            report(Diagnostic::UnknownClass,
                   QStringLiteral("<%1>: no widget class \"%1\" is registered; skipped with its children")
                       .arg(elementName(element)),
                   element);
            reportSkippedSubtree(element);
            continue;
        }
        frame.held.hold(widget);
        const int depth = frame.depth + 1;
        QPointer<ZWidget> guard(widget);
        frame.container->addItem(widget);
        if (guard)
            applyAttributes(element, widget);
        if (!guard)
            continue;
        // frame is not used past this point: the push may move it.
        ZWidget *container = widget->layoutWidget();
        stack.push_back({element, guard, container, 0, depth, FocusChainHold(element, container)});
    }
}

// ---------------------------------------------------------------------------
// Helpers

void runHelpers(XMLNode &top, QObject *root)
{
    const XMLNode section = top.getChildNodeByPath("uihelper", 0);
    if (section.isEmpty())
        return;
    struct Frame
    {
        XMLNode element;
        QPointer<QObject> root;   // what the helpers' paths start from
        QPointer<QObject> parent; // their object parent
        int next;
        int depth;
    };
    std::vector<Frame> stack;
    stack.push_back({section, root, root, 0, 0});
    while (!stack.empty()) {
        Frame &frame = stack.back();
        if (frame.next >= frame.element.nChildNode() || !frame.parent) {
            stack.pop_back();
            continue;
        }
        const XMLNode element = frame.element.getChildNode(frame.next++);
        if (frame.depth >= ZXmlUI::MaximumDepth) {
            report(Diagnostic::DepthLimit,
                   QStringLiteral("<%1>: helper nested deeper than %2 levels; skipped with its children")
                       .arg(elementName(element))
                       .arg(ZXmlUI::MaximumDepth),
                   element);
            continue;
        }
        ZHelperCreatorBase *creator = ZHelperCreatorBase::find(QByteArray(element.getName()));
        ZHelper *helper = creator ? creator->create(frame.parent) : nullptr;
        if (!helper) {
            report(Diagnostic::UnknownHelper,
                   QStringLiteral("<%1>: no helper class \"%1\" is registered; skipped with its children")
                       .arg(elementName(element)),
                   element);
            continue;
        }
        QPointer<ZHelper> guard(helper);
        const QPointer<QObject> helperRoot = frame.root;
        const int depth = frame.depth + 1;
        applyAttributes(element, helper);
        if (!guard)
            continue;
        helper->setRootObject(helperRoot);
        if (!helper->execute()) {
            if (guard) {
                report(Diagnostic::HelperFailed,
                       QStringLiteral("<%1>: %2%3")
                           .arg(elementName(element), helper->errorString(),
                                element.nChildNode() ? QStringLiteral("; its nested helpers are skipped")
                                                     : QString()),
                       element);
            }
            continue;
        }
        if (guard && element.nChildNode())
            stack.push_back({element, helper->target(), helper, 0, depth});
    }
}

// ---------------------------------------------------------------------------
// Loads

// Marks a load: the named objects and pending work start empty (a nested
// load drops the outer one's), and diagnostics point into this document.
class LoadScope
{
public:
    explicit LoadScope(const Document &document)
        : m_previous(g_document)
    {
        LoaderState &s = state();
        if (s.runningLoads > 0 && (!s.connections.empty() || !s.invocations.empty())) {
            report(Diagnostic::PendingDropped,
                   QStringLiteral("a load started inside another drops the outer load's %1 pending "
                                  "connection(s) and %2 pending call(s)")
                       .arg(s.connections.size())
                       .arg(s.invocations.size()),
                   Where{document.file, 0, 0});
        }
        ++s.runningLoads;
        s.named.clear();
        s.connections.clear();
        s.invocations.clear();
        g_document = &document;
    }
    ~LoadScope()
    {
        LoaderState &s = state();
        --s.runningLoads;
        s.named.clear();
        g_document = m_previous;
    }
    Q_DISABLE_COPY(LoadScope)

private:
    const Document *m_previous;
};

// Reads the file through the resource lookup, as ZResource::loadXml() does.
bool readFile(const QString &path, Document *document)
{
    document->file = path;
    const QByteArray raw = ZResource::loadRawData(path);
    if (raw.isEmpty() && !QFileInfo::exists(ZResource::absoluteFileName(path))) {
        report(Diagnostic::FileNotFound, QStringLiteral("cannot read \"%1\"").arg(path), Where{path, 0, 0});
        return false;
    }
    // Documents are UTF-8; the parser reads the process's 8-bit encoding.
    document->text = QString::fromUtf8(raw).toLocal8Bit();
    return true;
}

XMLNode parse(const Document &document)
{
    XMLResults results = {eXMLErrorNone, 0, 0};
    XMLNode top = XMLNode::parseString(document.text.constData(), nullptr, &results);
    if (results.error != eXMLErrorNone) {
        const bool fatal = top.isEmpty();
        report(fatal ? Diagnostic::ParseError : Diagnostic::ParseWarning,
               QString::fromLatin1(XMLNode::getError(results.error)),
               Where{document.file, results.nLine, results.nColumn});
    }
    return top;
}

ZWindow *loadWindow(const Document &document, QWidget *parent)
{
    XMLNode top = parse(document);
    if (top.isEmpty())
        return nullptr;
    LoadScope scope(document);
    QPointer<ZWindow> window;
    const XMLNode tree = top.getChildNodeByPath("uitree", 0);
    const XMLNode element = tree.getChildNode(0);
    if (tree.isEmpty()) {
        report(Diagnostic::MissingRoot, QStringLiteral("the document has no <uitree>"), Where{document.file, 0, 0});
    } else if (element.isEmpty()) {
        report(Diagnostic::MissingRoot, QStringLiteral("<uitree> holds no window element"), tree);
    } else {
        ZWindowCreatorBase *creator = ZWindowCreatorBase::find(QByteArray(element.getName()));
        window = creator ? creator->create(parent) : nullptr;
        if (!window) {
            report(Diagnostic::UnknownClass,
                   QStringLiteral("<%1>: no window class \"%1\" is registered; the window is not loaded")
                       .arg(elementName(element)),
                   element);
            reportSkippedSubtree(element);
        } else {
            applyAttributes(element, window);
            if (window)
                createChildren(element, window->rootWidget());
            if (window)
                window->construct();
        }
    }
    if (window)
        runHelpers(top, window);
    runPending();
    return window;
}

bool loadWidget(const Document &document, ZWidget *target)
{
    if (!target) {
        report(Diagnostic::MissingRoot, QStringLiteral("no target widget to load into"), Where{document.file, 0, 0});
        return false;
    }
    XMLNode top = parse(document);
    if (top.isEmpty())
        return false;
    LoadScope scope(document);
    QPointer<ZWidget> guard(target);
    const XMLNode tree = top.getChildNodeByPath("uitree", 0);
    if (tree.isEmpty())
        report(Diagnostic::MissingRoot, QStringLiteral("the document has no <uitree>"), Where{document.file, 0, 0});
    else
        createChildren(tree, target);
    if (!tree.isEmpty() && guard)
        runHelpers(top, guard);
    runPending();
    return !tree.isEmpty();
}

// ---------------------------------------------------------------------------
// Skins

bool readSkins(const Document &document)
{
    XMLNode top = parse(document);
    if (top.isEmpty())
        return false;
    const XMLNode root = top.getChildNodeByPath("uiskin", 0);
    if (root.isEmpty()) {
        report(Diagnostic::MissingRoot, QStringLiteral("the document has no <uiskin>"), Where{document.file, 0, 0});
        return false;
    }
    const Document *previous = g_document;
    g_document = &document;
    SkinStore store;
    const int n = root.nChildNode();
    for (int i = 0; i < n; ++i) {
        const XMLNode element = root.getChildNode(i);
        const QMetaObject *mo = ZCreatorBase::metaObjectForClass(QByteArray(element.getName()));
        if (!mo) {
            report(Diagnostic::UnknownClass,
                   QStringLiteral("<%1>: no widget or window class \"%1\" is registered; skin ignored")
                       .arg(elementName(element)),
                   element);
            continue;
        }
        auto entry = std::make_shared<SkinEntry>();
        entry->metaObject = mo;
        const int na = element.nAttribute();
        for (int k = 0; k < na; ++k) {
            const XMLAttribute a = element.getAttribute(k);
            if (!a.lpszName || !*a.lpszName)
                continue;
            if (std::strcmp(a.lpszName, "name") == 0)
                entry->name = fromDocument(a.lpszValue);
            else
                entry->assignments.insert(QByteArray(a.lpszName), QByteArray(a.lpszValue ? a.lpszValue : ""));
        }
        if (entry->name.isEmpty()) {
            report(Diagnostic::UnknownSkin,
                   QStringLiteral("<%1>: a skin without a name cannot be used; ignored").arg(elementName(element)),
                   element);
            continue;
        }
        if (reporting())
            entry->where = whereOf(element);
        store.insert(entry->name, entry); // a later skin of the same name wins
    }
    g_document = previous;
    skins() = std::move(store);
    return true;
}

void applySkin(QObject *object, const QString &name)
{
    if (!object || name.isEmpty())
        return;
    const std::shared_ptr<SkinEntry> entry = skins().value(name); // kept alive while applied
    if (!entry) {
        if (reporting())
            report(Diagnostic::UnknownSkin,
                   QStringLiteral("%1 \"%2\": skinName \"%3\" names no skin")
                       .arg(className(object), object->objectName(), name),
                   Where());
        return;
    }
    if (!object->metaObject()->inherits(entry->metaObject)) {
        if (reporting())
            report(Diagnostic::SkinClassMismatch,
                   QStringLiteral("%1 \"%2\": skin \"%3\" is for %4, which %1 does not derive from; not applied")
                       .arg(className(object), object->objectName(), name,
                            QLatin1String(entry->metaObject->className())),
                   entry->where);
        return;
    }
    // A skin may set skinName and so chain to another skin, but one that
    // leads back to a skin being applied would go round without end.
    static QSet<std::pair<const QObject *, QString>> applying;
    const std::pair<const QObject *, QString> key(object, name);
    if (applying.contains(key)) {
        if (reporting())
            report(Diagnostic::PropertyWriteFailed,
                   QStringLiteral("skin \"%1\" is reached again from a skin it applies to %2; not applied twice")
                       .arg(name, className(object)),
                   entry->where);
        return;
    }
    applying.insert(key);
    QPointer<QObject> guard(object);
    PathCache paths;
    for (auto it = entry->assignments.cbegin(); it != entry->assignments.cend() && guard; ++it) {
        const Site site{nullptr, entry.get(), &it.key()};
        QByteArray property;
        QObject *target = resolvePath(object, it.key(), &property, &paths, site);
        if (!target)
            continue;
        const int index = target->metaObject()->indexOfProperty(property.constData());
        if (index < 0) {
            setPropertyText(target, property, fromDocument(it.value().constData()), site);
            continue;
        }
        const QMetaType type = target->metaObject()->property(index).metaType();
        const auto cached = entry->cache.constFind(it.key());
        if (cached != entry->cache.cend() && cached->type == type) {
            if (!target->setProperty(property.constData(), cached->value))
                report(Diagnostic::PropertyWriteFailed,
                       QStringLiteral("%1 does not take the value").arg(className(target)), site, target);
        } else {
            const QVariant value = setPropertyText(target, property, fromDocument(it.value().constData()), site);
            entry->cache.insert(it.key(), CachedValue{type, value});
        }
    }
    applying.remove(key);
}

// The theme hands skinName changes to the loader, which owns the skins.
const bool g_applierInstalled = [] {
    zSetSkinApplier(&applySkin);
    return true;
}();

} // namespace

// ---------------------------------------------------------------------------
// ZXmlUIPrivate

namespace ZXmlUIPrivate {

Qt::ConnectionType connectionType(const char *word)
{
    if (!word)
        return Qt::AutoConnection;
    if (std::strcmp(word, "direct") == 0)
        return Qt::DirectConnection;
    if (std::strcmp(word, "queue") == 0)
        return Qt::QueuedConnection;
    return Qt::AutoConnection; // "auto" and everything else
}

QObject *namedObject(const QString &name)
{
    return state().named.value(name);
}

bool connectChecked(QObject *sender, const QByteArray &signal, QObject *receiver, const QByteArray &slot,
                    Qt::ConnectionType type, bool slotMayBeSignal, QString *error)
{
    const QByteArray signalSignature = QMetaObject::normalizedSignature(signal.constData());
    const QMetaObject *sm = sender->metaObject();
    const int signalIndex = sm->indexOfSignal(signalSignature.constData());
    if (signalIndex < 0) {
        *error = QStringLiteral("%1 \"%2\" has no signal %3")
                     .arg(className(sender), sender->objectName(), QString::fromLatin1(signalSignature));
        return false;
    }
    const QByteArray slotSignature = QMetaObject::normalizedSignature(slot.constData());
    const QMetaObject *rm = receiver->metaObject();
    int slotIndex = rm->indexOfSlot(slotSignature.constData());
    if (slotIndex < 0 && slotMayBeSignal)
        slotIndex = rm->indexOfSignal(slotSignature.constData());
    if (slotIndex < 0) {
        *error = QStringLiteral("%1 \"%2\" has no %3 %4")
                     .arg(className(receiver), receiver->objectName(),
                          slotMayBeSignal ? QStringLiteral("slot or signal") : QStringLiteral("slot"),
                          QString::fromLatin1(slotSignature));
        return false;
    }
    const QMetaMethod signalMethod = sm->method(signalIndex);
    const QMetaMethod slotMethod = rm->method(slotIndex);
    if (!QMetaObject::checkConnectArgs(signalMethod, slotMethod)) {
        *error = QStringLiteral("the arguments of signal %1 do not fit %2")
                     .arg(QString::fromLatin1(signalSignature), QString::fromLatin1(slotSignature));
        return false;
    }
    if (!QObject::connect(sender, signalMethod, receiver, slotMethod, type)) {
        *error = QStringLiteral("cannot connect %1 to %2")
                     .arg(QString::fromLatin1(signalSignature), QString::fromLatin1(slotSignature));
        return false;
    }
    return true;
}

bool invoke(QObject *target, const QByteArray &method, const QByteArray &arguments, Qt::ConnectionType type,
            QString *error)
{
    if (!target) {
        *error = QStringLiteral("no object to call");
        return false;
    }
    std::vector<Argument> args;
    const QList<QByteArray> pieces = arguments.split(',');
    for (const QByteArray &piece : pieces) {
        if (piece.isEmpty())
            break; // "int(1),,int(2)" passes one argument
        const QString pieceText = QString::fromLocal8Bit(piece);
        if (args.size() == 10) {
            *error = QStringLiteral("%1: more than ten arguments").arg(QString::fromLocal8Bit(method));
            return false;
        }
        const int open = piece.lastIndexOf('(');
        const int close = piece.lastIndexOf(')');
        if (open <= 0 || close < open) {
            *error = QStringLiteral("argument %1 \"%2\" is not written type(value)").arg(args.size() + 1).arg(pieceText);
            return false;
        }
        Argument arg;
        arg.typeName = QMetaObject::normalizedType(piece.left(open).trimmed().constData());
        const QString valueText = QString::fromLocal8Bit(piece.mid(open + 1, close - open - 1));
        // QWidget* need not be known to the meta-type system by name.
        const QMetaType metaType = arg.typeName == "QWidget*" ? QMetaType::fromType<QWidget *>()
                                                              : QMetaType::fromName(arg.typeName);
        if (!metaType.isValid()) {
            *error = QStringLiteral("argument %1 \"%2\": unknown type %3")
                         .arg(args.size() + 1)
                         .arg(pieceText, QString::fromLatin1(arg.typeName));
            return false;
        }
        if (metaType.flags().testFlag(QMetaType::PointerToQObject)) {
            // Objects come from the registry, and only when of the right class.
            QObject *object = namedObject(valueText);
            const QMetaObject *wanted = metaType.metaObject();
            if (object && (!wanted || object->metaObject()->inherits(wanted)))
                arg.pointer = object;
            arg.isPointer = true;
        } else if (metaType == QMetaType::fromType<QVariant>()) {
            arg.value = valueText;
            arg.isVariant = true;
        } else {
            bool ok = true;
            arg.value = ZPropertyConverter::convert(metaType, valueText, &ok);
            if (ok && arg.value.metaType() != metaType)
                ok = arg.value.convert(metaType);
            if (!ok) {
                *error = QStringLiteral("argument %1: \"%2\" is not a valid %3")
                             .arg(args.size() + 1)
                             .arg(valueText, QString::fromLatin1(arg.typeName));
                return false;
            }
        }
        args.push_back(std::move(arg));
    }
    return callMethod(target, method, args, type, error);
}

} // namespace ZXmlUIPrivate

// ---------------------------------------------------------------------------
// ZXmlUI

const char *ZXmlUI::diagnosticKindName(Diagnostic::Kind kind)
{
    switch (kind) {
    case Diagnostic::ParseError: return "ParseError";
    case Diagnostic::ParseWarning: return "ParseWarning";
    case Diagnostic::FileNotFound: return "FileNotFound";
    case Diagnostic::MissingRoot: return "MissingRoot";
    case Diagnostic::UnknownClass: return "UnknownClass";
    case Diagnostic::UnknownHelper: return "UnknownHelper";
    case Diagnostic::UnknownAction: return "UnknownAction";
    case Diagnostic::UnresolvedPath: return "UnresolvedPath";
    case Diagnostic::ConversionFailed: return "ConversionFailed";
    case Diagnostic::PropertyWriteFailed: return "PropertyWriteFailed";
    case Diagnostic::DataFailed: return "DataFailed";
    case Diagnostic::ConnectionFailed: return "ConnectionFailed";
    case Diagnostic::InvocationFailed: return "InvocationFailed";
    case Diagnostic::HelperFailed: return "HelperFailed";
    case Diagnostic::DepthLimit: return "DepthLimit";
    case Diagnostic::PendingDropped: return "PendingDropped";
    case Diagnostic::UnknownSkin: return "UnknownSkin";
    case Diagnostic::SkinClassMismatch: return "SkinClassMismatch";
    }
    return "";
}

void ZXmlUI::setDiagnosticsSink(DiagnosticsSink s)
{
    sink() = std::move(s);
}

ZXmlUI::DiagnosticsSink ZXmlUI::diagnosticsSink()
{
    return sink();
}

ZWindow *ZXmlUI::windowFromFile(const char *path, QWidget *parent)
{
    return windowFromFile(QString::fromUtf8(path ? path : ""), parent);
}

ZWindow *ZXmlUI::windowFromFile(const QString &path, QWidget *parent)
{
    Document document;
    if (!readFile(path, &document))
        return nullptr;
    return loadWindow(document, parent);
}

ZWindow *ZXmlUI::windowFromMemory(const QByteArray &text, QWidget *parent)
{
    return loadWindow(Document{QString(), text}, parent);
}

bool ZXmlUI::widgetFromFile(const char *path, ZWidget *target)
{
    return widgetFromFile(QString::fromUtf8(path ? path : ""), target);
}

bool ZXmlUI::widgetFromFile(const QString &path, ZWidget *target)
{
    if (!target)
        return loadWidget(Document{path, QByteArray()}, target);
    Document document;
    if (!readFile(path, &document))
        return false;
    return loadWidget(document, target);
}

bool ZXmlUI::widgetFromMemory(const QByteArray &text, ZWidget *target)
{
    return loadWidget(Document{QString(), text}, target);
}

bool ZXmlUI::initSkin(const char *path)
{
    Document document;
    if (!readFile(QString::fromUtf8(path ? path : ""), &document))
        return false;
    return readSkins(document);
}

bool ZXmlUI::initSkin(const QByteArray &text)
{
    return readSkins(Document{QString(), text});
}

bool ZXmlUI::setPropertyEx(QObject *object, const char *name, const char *value)
{
    if (!object || !name)
        return false;
    const QByteArray path(name);
    const Site site{nullptr, nullptr, &path};
    QByteArray property;
    QObject *target = resolvePath(object, path, &property, nullptr, site);
    if (!target)
        return false;
    setPropertyText(target, property, QString::fromUtf8(value ? value : ""), site);
    return true;
}

bool ZXmlUI::setPropertyEx(QObject *object, const char *name, const QVariant &value)
{
    if (!object || !name)
        return false;
    const QByteArray path(name);
    const Site site{nullptr, nullptr, &path};
    QByteArray property;
    QObject *target = resolvePath(object, path, &property, nullptr, site);
    return target && target->setProperty(property.constData(), value);
}

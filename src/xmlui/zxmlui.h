#ifndef ZXMLUI_H
#define ZXMLUI_H

#include "zglobal.h"

#include <QtCore/qbytearray.h>
#include <QtCore/qstring.h>
#include <QtCore/qvariant.h>

#include <functional>

class QObject;
class QWidget;
class ZWidget;
class ZWindow;

/*!
 * \brief Builds windows and widget trees from XML documents, and reads skins.
 *
 * A UI document has the root element \c uitree. For a window load its first
 * child names a window class (ZWindow or a registered subclass); the children
 * of that element are widget elements, created into the window's root widget.
 * For a widget load every child of \c uitree is a widget element, created into
 * the given widget. A widget element names a registered widget class; its
 * attributes set properties (converted by the property's type through
 * ZPropertyConverter), and a name with dots walks through QObject* properties
 * first ("titlebar.fixHeight"). Each element is added to its parent with
 * ZWidget::addItem() before its attributes are set, and its construct() runs
 * once its children exist.
 *
 * Elements whose name holds a colon are actions on the parent's
 * layoutWidget(); only the part after the first colon counts:
 *
 * - \c x:data function="setData" model="xml|variant" connect="..." calls the
 *   function with the element itself (const XMLNode*), or with a QVariantList
 *   holding one QVariantMap {childName: {attribute: value}} per child;
 * - \c x:event object="name" signal="clicked()" slot="onOk()" connect="..."
 *   connects, once the tree is complete, a signal of the object registered
 *   under that name (see objectArgument) to a slot of the container;
 * - \c x:invoke function="name" arguments="int(1),QString(a),QObject*(ok)"
 *   connect="..." calls the function after the connections are made, with up
 *   to ten arguments; QObject* and QWidget* arguments name registered objects.
 *
 * The connect words are "auto", "direct" and "queue", exactly so spelt; any
 * other value is automatic. The undeclared attribute \c objectArgument
 * registers its element's object under its current objectName (so objectName
 * must come first); any other undeclared attribute becomes a dynamic string
 * property.
 *
 * A \c uihelper element beside \c uitree lists helper objects (ZHelper
 * subclasses), created after the tree and run against the window or widget;
 * a helper's child elements run only when it succeeded.
 *
 * A skin document (root \c uiskin) defines named property sets per class:
 * \code
 * <uiskin><ZWidget name="dark" backgroundColor="#202020" margins="4,4,4,4"/></uiskin>
 * \endcode
 * Setting \c skinName on an object of that class (or a subclass) applies
 * them; the converted values are kept for the next object.
 *
 * Failures are quiet: unknown elements and attributes are skipped and loading
 * goes on, and only a document that does not parse, a missing \c uitree or an
 * unknown window class fail the load. Everything that was skipped can be
 * observed through setDiagnosticsSink().
 *
 * Nesting is bounded: widget elements (and helper elements) deeper than
 * MaximumDepth levels below the window or target widget are skipped with
 * their subtrees and reported as DepthLimit; the rest of the document loads.
 *
 * GUI thread only. The loader state (named objects, pending connections and
 * invocations) is shared by the process: a load started while another runs,
 * for instance from a construct(), drops what the outer load had registered
 * and queued so far.
 */
class ZKIT_EXPORT ZXmlUI
{
public:
    /*! Levels of widget (or helper) elements below the window or target widget that are created. */
    static constexpr int MaximumDepth = 256;

    /*! One thing the loader skipped or could not do. */
    struct Diagnostic
    {
        enum Kind {
            ParseError,          // the document does not parse: nothing was created
            ParseWarning,        // the parser closed elements it found open; loading goes on
            FileNotFound,        // the file (or resource) could not be read
            MissingRoot,         // no uitree, uiskin, window element or target widget
            UnknownClass,        // an element names no registered widget or window class
            UnknownHelper,       // a uihelper element names no registered helper class
            UnknownAction,       // an "x:word" element whose word is not data, event or invoke
            UnresolvedPath,      // a dotted name whose prefix is not a non-null QObject* property
            ConversionFailed,    // the text does not read as the property's type; the fallback was set
            PropertyWriteFailed, // QObject::setProperty refused the value (read-only, wrong type, ...)
            DataFailed,          // a data element could not be delivered
            ConnectionFailed,    // an event element's sender, signal or slot is unknown or incompatible
            InvocationFailed,    // an invoke element's method or arguments were rejected
            HelperFailed,        // a helper's execute() failed; its child helpers were skipped
            DepthLimit,          // an element nested deeper than MaximumDepth was skipped
            PendingDropped,      // a nested load dropped the outer load's pending connections and calls
            UnknownSkin,         // skinName names no skin
            SkinClassMismatch    // the skin is for a class the object is not
        };
        Kind kind = ParseError;
        QString message;
        QString file;   // the document's path; empty for text loaded from memory
        int line = 0;   // 1-based; 0 when unknown
        int column = 0; // 1-based; 0 when unknown
    };
    using DiagnosticsSink = std::function<void(const Diagnostic &)>;

    /*! The enumerator's name, e.g. "UnknownClass". */
    static const char *diagnosticKindName(Diagnostic::Kind kind);

    /*!
     * Installs \a sink to receive a Diagnostic for everything skipped or
     * failed from now on, in every load, skin application and
     * setPropertyEx(); an empty function removes it. Without a sink the
     * loader is silent and does not compute positions.
     */
    static void setDiagnosticsSink(DiagnosticsSink sink);
    static DiagnosticsSink diagnosticsSink();

    /*! Loads the window described by the file (or resource path) \a path; null on failure. */
    static ZWindow *windowFromFile(const char *path, QWidget *parent = nullptr);
    static ZWindow *windowFromFile(const QString &path, QWidget *parent = nullptr);
    /*! Loads the window described by \a text; null on failure. */
    static ZWindow *windowFromMemory(const QByteArray &text, QWidget *parent = nullptr);

    /*!
     * Creates the widget elements of the file into \a target. True when the
     * document has a uitree; false for a null target, before anything is made.
     */
    static bool widgetFromFile(const char *path, ZWidget *target);
    static bool widgetFromFile(const QString &path, ZWidget *target);
    static bool widgetFromMemory(const QByteArray &text, ZWidget *target);

    /*!
     * Replaces every skin with those defined by the uiskin document at \a path
     * (or in \a text). False, and the skins unchanged, when the document does
     * not parse or has no uiskin.
     */
    static bool initSkin(const char *path);
    static bool initSkin(const QByteArray &text);

    /*!
     * Sets a property from text as an attribute does (dotted paths, type
     * conversion, objectArgument, dynamic properties). False when the object
     * is null or the path does not resolve; true otherwise, even when the
     * write itself failed.
     */
    static bool setPropertyEx(QObject *object, const char *name, const char *value);
    /*!
     * Walks the dotted path and sets \a value with QObject::setProperty(),
     * returning its result; false when the path does not resolve.
     */
    static bool setPropertyEx(QObject *object, const char *name, const QVariant &value);

private:
    ZXmlUI() = delete;
};

#endif // ZXMLUI_H

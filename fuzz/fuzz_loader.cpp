// The XML UI loader, end to end: a document is loaded as a window or into a
// widget, then themed, resized, shown, painted and deleted, with the event
// loop run in between.
//
// Byte 0 chooses how the document comes about:
//   bit 0     window load / load into a widget
//   bit 1     the rest is the document text as it stands (seeds from the
//             tests and examples) / the rest is a program that builds a
//             document over the registered class, property, enumeration and
//             method names, so that mutations stay meaningful
//   bit 2     a skin document is built too and read first
// The bytes that follow the document choose the theme colour and the size.

#include "fuzzcommon.h"

#include "zhelper.h"
#include "ztheme.h"
#include "zwidget.h"
#include "zwindow.h"
#include "zxmlui.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneWheelEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QPointer>

#include <cstdio>

namespace {

const std::vector<const fuzz::ClassInfo *> &classesOf(ZCreatorBase::Kind kind)
{
    static std::vector<const fuzz::ClassInfo *> byKind[3];
    std::vector<const fuzz::ClassInfo *> &list = byKind[kind];
    if (list.empty())
        for (const fuzz::ClassInfo &c : fuzz::registeredClasses())
            if (c.kind == kind)
                list.push_back(&c);
    return list;
}

// Every property name of every class: the last step of a dotted path
// reaches objects of any type.
const QByteArrayList &allPropertyNames()
{
    static const QByteArrayList names = [] {
        QByteArrayList all;
        for (const fuzz::ClassInfo &c : fuzz::registeredClasses())
            for (const QMetaProperty &p : c.properties)
                if (!all.contains(p.name()))
                    all.append(p.name());
        // Read-only child objects are the first steps of dotted paths.
        for (const fuzz::ClassInfo &c : fuzz::registeredClasses())
            for (int i = 0; i < c.meta->propertyCount(); ++i)
                if (c.meta->property(i).metaType().flags() & QMetaType::PointerToQObject)
                    if (!all.contains(c.meta->property(i).name()))
                        all.append(c.meta->property(i).name());
        return all;
    }();
    return names;
}

// Values that reach the corners of the converters and setters.
const char *const kValues[] = {
    "0", "1", "-1", "2", "7", "8", "100", "255", "256", "65535", "2147483647", "-2147483648", "4294967296",
    "1e30", "-1e30", "nan", "inf", "0.5", "-0.5", "true", "false", "", " ", "abc",
    "#ff0000", "#12345678", "#fff", "#zzzzzz", "red", "255,0,0", "0,0,0,0", "1,2", "10,20", "-10,-20",
    "0,0", "100000,100000", "1,2,3,4", "-5,-5,-5,-5", "0,0,0,0", "1e9,1e9,1e9,1e9", "VBox", "HBox", "Flow",
    "Anchor", "None", "Left:8|Top:8|HCenter:0|VCenter:0", "Start:0,0|Final:0,1|Color:0:#fff|Color:1:#000",
    "Center:0.5,0.5|Radius:0.5|Color:0:red", "Angle:45|Center:1,1", ":/image/theme/button.png",
    ":/image/theme/none.png", "a|b|c|d|e|f|g|h|i", "appdir:missing.png", "DejaVu Sans,12,-1,5,700,0,0,0,0,0",
    "SimSun", "\xe4\xb8\xad\xe6\x96\x87", "x,y", ",,,", "|||", "::", "%1%2", "&amp;&lt;"};

QByteArray escape(const QByteArray &text)
{
    QByteArray out;
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&apos;"; break;
        default: out += c;
        }
    }
    return out;
}

QByteArray enumValue(fuzz::Input &in, const QMetaEnum &e)
{
    if (e.keyCount() == 0)
        return "0";
    QByteArray v = e.key(int(in.pick(size_t(e.keyCount()))));
    if (e.isFlag() && (in.byte() & 1))
        v += "|" + QByteArray(e.key(int(in.pick(size_t(e.keyCount())))));
    return v;
}

QByteArray value(fuzz::Input &in, const QMetaProperty *prop)
{
    const uint8_t how = in.byte();
    if (prop && prop->isEnumType() && (how & 3) != 3)
        return enumValue(in, prop->enumerator());
    if ((how & 0xc0) == 0xc0)
        return in.bytes(48); // raw bytes, escaped
    return kValues[in.pick(std::size(kValues))];
}

QByteArray attribute(const QByteArray &name, const QByteArray &v)
{
    return " " + name + "=\"" + escape(v) + "\"";
}

// The "x:..." action elements: data, event, invoke, and an unknown word.
QByteArray actionElement(fuzz::Input &in, const fuzz::ClassInfo &owner, const QByteArrayList &objectNames)
{
    const QMetaObject *meta = owner.meta;
    auto someMethod = [&](bool signature, bool signalsOnly) -> QByteArray {
        if (meta->methodCount() == 0)
            return "none";
        const QMetaMethod m = meta->method(int(in.pick(size_t(meta->methodCount()))));
        if (signalsOnly && m.methodType() != QMetaMethod::Signal)
            return "destroyed()";
        return signature ? m.methodSignature() : m.name();
    };
    auto connect = [&]() -> QByteArray {
        static const char *const words[] = {"auto", "direct", "queue", "queued", ""};
        return attribute("connect", words[in.pick(5)]);
    };
    auto object = [&]() -> QByteArray {
        return objectNames.isEmpty() ? QByteArray("nobody") : objectNames.at(int(in.pick(objectNames.size())));
    };
    switch (in.byte() % 4) {
    case 0: {
        static const char *const models[] = {"xml", "variant", "other"};
        QByteArray e = "<x:data" + attribute("function", in.byte() & 1 ? "setData" : someMethod(false, false))
                       + attribute("model", models[in.pick(3)]) + connect() + ">";
        for (int i = in.byte() % 4; i > 0; --i)
            e += "<row" + QByteArray::number(i) + attribute("text", value(in, nullptr))
                 + attribute("icon", value(in, nullptr)) + "/>";
        return e + "</x:data>";
    }
    case 1:
        return "<x:event" + attribute("object", object()) + attribute("signal", someMethod(true, true))
               + attribute("slot", someMethod(true, false)) + connect() + "/>";
    case 2: {
        static const char *const argTypes[] = {"int", "QString", "bool", "double", "QObject*", "QWidget*",
                                               "QColor", "QSize", "unknown", ""};
        QByteArray args;
        for (int i = in.byte() % 5; i > 0; --i) {
            const char *t = argTypes[in.pick(std::size(argTypes))];
            const bool named = !qstrcmp(t, "QObject*") || !qstrcmp(t, "QWidget*");
            args += (args.isEmpty() ? "" : ",") + QByteArray(t) + "(" + (named ? object() : value(in, nullptr))
                    + ")";
        }
        return "<x:invoke" + attribute("function", someMethod(false, false)) + attribute("arguments", args)
               + connect() + "/>";
    }
    default:
        return "<x:other/>";
    }
}

// Attributes of one element of class c.
QByteArray attributes(fuzz::Input &in, const fuzz::ClassInfo &c, QByteArrayList *objectNames)
{
    QByteArray out;
    if (in.byte() & 1) {
        const QByteArray name = "o" + QByteArray::number(objectNames->size());
        objectNames->append(name);
        out += attribute("objectName", name) + attribute("objectArgument", "1");
    }
    for (int n = in.byte() % 5; n > 0 && !in.atEnd(); --n) {
        const uint8_t how = in.byte();
        if ((how & 7) == 7) { // a dotted path
            const QByteArrayList &names = allPropertyNames();
            const QByteArray path = names.at(int(in.pick(names.size()))) + "." + names.at(int(in.pick(names.size())));
            out += attribute(path, value(in, nullptr));
        } else if ((how & 7) == 6) { // an undeclared name
            out += attribute("dyn" + QByteArray::number(how), value(in, nullptr));
        } else if (!c.properties.empty()) {
            const QMetaProperty &p = c.properties[in.pick(c.properties.size())];
            out += attribute(p.name(), value(in, &p));
        }
    }
    return out;
}

struct Built
{
    QByteArray document;
    QByteArray skin;
};

// The document program: each step opens a widget element, closes one, or
// adds an action element, an unknown element or a helper.
Built build(fuzz::Input &in, bool windowLoad, bool withSkin)
{
    const auto &widgets = classesOf(ZCreatorBase::WidgetKind);
    const auto &windows = classesOf(ZCreatorBase::WindowKind);
    const auto &helpers = classesOf(ZCreatorBase::HelperKind);
    QByteArrayList objectNames;
    Built b;

    if (withSkin && !widgets.empty()) {
        b.skin = "<uiskin>";
        for (int n = in.byte() % 4; n > 0; --n) {
            const fuzz::ClassInfo &c = *widgets[in.pick(widgets.size())];
            b.skin += "<" + c.name + attribute("name", "s" + QByteArray::number(n)) + attributes(in, c, &objectNames)
                      + "/>";
        }
        b.skin += "</uiskin>";
    }

    QByteArray &doc = b.document;
    std::vector<const fuzz::ClassInfo *> open;
    doc = "<uitree>";
    if (windowLoad && !windows.empty()) {
        const fuzz::ClassInfo &w = *windows[in.pick(windows.size())];
        doc += "<" + w.name + attributes(in, w, &objectNames) + ">";
        open.push_back(&w);
    }
    const size_t base = open.size();
    for (int steps = 0; steps < 48 && !in.atEnd(); ++steps) {
        const uint8_t op = in.byte();
        if (op == 0xff)
            break; // the rest chooses theme and size
        switch (op % 8) {
        case 0:
        case 1:
        case 2: {
            if (widgets.empty())
                break;
            const fuzz::ClassInfo &c = *widgets[in.pick(widgets.size())];
            QByteArray attrs = attributes(in, c, &objectNames);
            if (withSkin && (in.byte() & 1))
                attrs += attribute("skinName", "s" + QByteArray::number(1 + in.byte() % 3));
            doc += "<" + c.name + attrs + ">";
            open.push_back(&c);
            break;
        }
        case 3:
        case 4:
            if (open.size() > base) {
                doc += "</" + open.back()->name + ">";
                open.pop_back();
            }
            break;
        case 5:
            if (!open.empty())
                doc += actionElement(in, *open.back(), objectNames);
            break;
        case 6:
            doc += "<NoSuchClass" + attribute("text", value(in, nullptr)) + "/>";
            break;
        case 7:
            if (!open.empty())
                doc += "<!-- c -->" + escape(in.bytes(8));
            break;
        }
    }
    while (!open.empty()) {
        doc += "</" + open.back()->name + ">";
        open.pop_back();
    }
    doc += "</uitree>";

    if (!in.atEnd() && (in.byte() & 1) && !helpers.empty()) {
        doc += "<uihelper>";
        for (int n = in.byte() % 3 + 1; n > 0; --n) {
            const fuzz::ClassInfo &h = *helpers[in.pick(helpers.size())];
            const QByteArray target = objectNames.isEmpty() ? QByteArray("nobody")
                                                            : objectNames.at(int(in.pick(objectNames.size())));
            doc += "<" + h.name + attribute("targetPath", target) + attributes(in, h, &objectNames);
            if (in.byte() & 1) {
                const fuzz::ClassInfo &inner = *helpers[in.pick(helpers.size())];
                doc += "><" + inner.name + attributes(in, inner, &objectNames) + "/></" + h.name + ">";
            } else {
                doc += "/>";
            }
        }
        doc += "</uihelper>";
    }
    return b;
}

// A document may ask for a window of any size up to Qt's limit of 2^24
// pixels a side; its backing store would not fit in memory, so such a
// window is loaded and themed but not shown.
bool showable(const QWidget *window)
{
    constexpr int Limit = 2048;
    return window && window->minimumWidth() <= Limit && window->minimumHeight() <= Limit
        && window->width() <= Limit && window->height() <= Limit;
}

// A shown window may still grow past the limit afterwards, and so may the
// other top-level widgets an input brings up - pop-ups, and the editors
// that line edits embed, which paint into a buffer of their own size: any
// of them is hidden before it paints at such a size.
class HideWhenOversized : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Resize && event->type() != QEvent::Show && event->type() != QEvent::UpdateRequest)
            return false;
        auto *widget = qobject_cast<QWidget *>(watched);
        if (widget && widget->isWindow() && !showable(widget)) {
            widget->hide();
            return event->type() == QEvent::UpdateRequest;
        }
        return false;
    }
};

void exercise(QPointer<QWidget> window, fuzz::Input &in)
{
    HideWhenOversized oversized;
    qApp->installEventFilter(&oversized);
    ZTheme::setThemeColor(QColor(in.byte(), in.byte(), in.byte()));
    // Raw documents use every byte for the text: they get a plain size.
    const int w = in.atEnd() ? 320 : in.byte() * 4;
    const int h = in.atEnd() ? 240 : in.byte() * 4;
    if (window)
        window->resize(w, h);
    if (showable(window))
        window->show();
    fuzz::drainEvents();
    if (showable(window))
        (void)window->grab();
    // Clicks, a wheel turn and a key at places the input chooses, so that
    // buttons, drop lists and connected slots run (and may delete things).
    auto *view = qobject_cast<QGraphicsView *>(window);
    for (int clicks = in.byte() % 4; window && view && view->scene() && clicks > 0; --clicks) {
        const QPointF at(in.byte() * view->width() / 256.0, in.byte() * view->height() / 256.0);
        const QPointF scenePos = view->mapToScene(at.toPoint());
        for (QEvent::Type type : {QEvent::GraphicsSceneMouseMove, QEvent::GraphicsSceneMousePress,
                                  QEvent::GraphicsSceneMouseRelease}) {
            if (!window || !view->scene())
                break;
            QGraphicsSceneMouseEvent e(type);
            e.setScenePos(scenePos);
            e.setScreenPos(scenePos.toPoint());
            e.setButton(type == QEvent::GraphicsSceneMouseMove ? Qt::NoButton : Qt::LeftButton);
            e.setButtons(type == QEvent::GraphicsSceneMousePress ? Qt::LeftButton : Qt::NoButton);
            e.setButtonDownScenePos(Qt::LeftButton, scenePos);
            e.setAccepted(false);
            QCoreApplication::sendEvent(view->scene(), &e);
        }
        if (window && view->scene()) {
            QGraphicsSceneWheelEvent wheel(QEvent::GraphicsSceneWheel);
            wheel.setScenePos(scenePos);
            wheel.setDelta(in.byte() & 1 ? 120 : -120);
            wheel.setOrientation(Qt::Vertical);
            wheel.setAccepted(false);
            QCoreApplication::sendEvent(view->scene(), &wheel);
        }
        fuzz::drainEvents();
        if (!window)
            return;
    }
    if (window && view && view->scene()) {
        static const int keys[] = {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Down, Qt::Key_Up, Qt::Key_Space};
        QKeyEvent key(QEvent::KeyPress, keys[in.pick(std::size(keys))], Qt::NoModifier);
        QCoreApplication::sendEvent(view->scene(), &key);
        fuzz::drainEvents();
    }
    if (!window)
        return;
    ZTheme::setThemeIndex(in.byte() % 16);
    if (window)
        window->resize(h / 2 + 1, w / 2 + 1);
    fuzz::drainEvents();
    if (window && !showable(window))
        window->hide();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    fuzz::startApplication(argc, argv);
    if (classesOf(ZCreatorBase::WidgetKind).empty() || classesOf(ZCreatorBase::WindowKind).empty()) {
        std::fprintf(stderr, "loader: no registered classes\n");
        std::abort();
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1 || size > 16384)
        return 0;
    fuzz::Input in(data, size);
    const uint8_t mode = in.byte();
    const bool windowLoad = !(mode & 1);
    const bool rawText = mode & 2;
    const bool withSkin = mode & 4;

    Built b;
    if (rawText) {
        b.document = in.rest();
    } else {
        b = build(in, windowLoad, withSkin);
    }
    // ZKIT_FUZZ_PRINT shows the document of a reproducer.
    if (getenv("ZKIT_FUZZ_PRINT"))
        std::fprintf(stderr, "skin:\n%s\ndocument:\n%s\n", b.skin.constData(), b.document.constData());
    if (!b.skin.isEmpty())
        ZXmlUI::initSkin(b.skin);

    if (windowLoad) {
        QPointer<ZWindow> window = ZXmlUI::windowFromMemory(b.document);
        exercise(window.data(), in);
        delete window.data();
    } else {
        QPointer<ZWindow> host = new ZWindow;
        ZWidget *target = new ZWidget;
        host->rootWidget()->addItem(target);
        ZXmlUI::widgetFromMemory(b.document, target);
        exercise(host.data(), in);
        delete host.data();
    }
    fuzz::drainEvents();

    // Nothing of this input may shape the next one.
    ZTheme::resetTheme();
    if (!b.skin.isEmpty())
        ZXmlUI::initSkin(QByteArray("<uiskin/>"));
    return 0;
}

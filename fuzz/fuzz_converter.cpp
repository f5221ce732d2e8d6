// Property value conversion: the input text goes through every converter in
// the registry and through the built-in conversions, whose documented
// bounds are checked; then it is written, as an attribute would be, to one
// property of a fresh object of a registered class, and every property of
// that object is read back.
//
// Input: byte 0 picks the converter, byte 1-2 the class and property, the
// rest is the text (UTF-8).

#include "fuzzcommon.h"

#include "qtgradient.h"
#include "zhelper.h"
#include "zpropertyconverter.h"
#include "zwidget.h"
#include "zwindow.h"
#include "zxmlui.h"

#include <QGraphicsScene>
#include <QPointer>

#include <cmath>
#include <cstdio>
#include <memory>

namespace {

std::vector<QMetaType> g_types; // every type that has a converter

[[noreturn]] void fail(const char *what, const QString &text)
{
    std::fprintf(stderr, "converter: %s for \"%s\"\n", what, text.toUtf8().constData());
    std::abort();
}

void collectConverters()
{
    auto add = [](QMetaType t) {
        if (!t.isValid() || !ZPropertyConverter::converter(t))
            return;
        for (const QMetaType &known : g_types)
            if (known == t)
                return;
        g_types.push_back(t);
    };
    for (int id = 1; id <= QMetaType::HighestInternalId; ++id)
        add(QMetaType(id));
    for (int id = QMetaType::User; id < QMetaType::User + 4096; ++id)
        if (QMetaType::isRegistered(id))
            add(QMetaType(id));
    for (const fuzz::ClassInfo &c : fuzz::registeredClasses())
        for (const QMetaProperty &p : c.properties)
            add(p.metaType());
}

constexpr qreal IntegralBound = 1 << 29;

bool finite(qreal a, qreal b) { return std::isfinite(a) && std::isfinite(b); }
bool bounded(int v) { return v >= -IntegralBound && v <= IntegralBound; }

void checkBuiltIns(const QString &text)
{
    bool ok = true;
    const QSizeF sf = ZPropertyConverter::toSizeF(text, &ok);
    if (!finite(sf.width(), sf.height()))
        fail("size not finite", text);
    const QSize s = ZPropertyConverter::toSize(text, &ok);
    if (s.isValid() && !(bounded(s.width()) && bounded(s.height())))
        fail("integer size out of bounds", text);
    const QPointF pf = ZPropertyConverter::toPointF(text, &ok);
    if (!finite(pf.x(), pf.y()))
        fail("point not finite", text);
    const QPoint p = ZPropertyConverter::toPoint(text, &ok);
    if (!bounded(p.x()) || !bounded(p.y()))
        fail("integer point out of bounds", text);
    const QRectF rf = ZPropertyConverter::toRectF(text, &ok);
    if (!finite(rf.x(), rf.y()) || !finite(rf.width(), rf.height()))
        fail("rectangle not finite", text);
    const QRect r = ZPropertyConverter::toRect(text, &ok);
    if (!bounded(r.x()) || !bounded(r.y()) || !bounded(r.width()) || !bounded(r.height()))
        fail("integer rectangle out of bounds", text);
    (void)r.right();
    (void)r.bottom();
    ZPropertyConverter::toMargins(text, &ok);
    ZPropertyConverter::toFont(text, &ok);
    const QColor c = ZPropertyConverter::toColor(text, &ok);
    if (ok != c.isValid())
        fail("colour: ok and validity disagree", text);
    (void)QtGradient::fromString(text).isValid();
}

void checkRegistry(QMetaType type, const QString &text)
{
    bool ok = true;
    const QVariant v = ZPropertyConverter::convert(type, text, &ok);
    if (v.metaType() != type)
        fail("converted value has another type", text);
    (void)v.toString();
}

// One property of a fresh object, written as the loader writes attributes.
void checkProperty(fuzz::Input &in, const QString &text)
{
    const std::vector<fuzz::ClassInfo> &classes = fuzz::registeredClasses();
    const fuzz::ClassInfo &c = classes[in.pick(classes.size())];
    if (c.properties.empty())
        return;
    const QMetaProperty &prop = c.properties[in.pick(c.properties.size())];

    QGraphicsScene scene;
    QPointer<QObject> object;
    switch (c.kind) {
    case ZCreatorBase::WidgetKind: {
        ZWidget *w = ZWidgetCreatorBase::find(c.name)->create(nullptr);
        scene.addItem(w);
        object = w;
        break;
    }
    case ZCreatorBase::WindowKind:
        object = ZWindowCreatorBase::find(c.name)->create(nullptr);
        break;
    case ZCreatorBase::HelperKind:
        object = ZHelperCreatorBase::find(c.name)->create(nullptr);
        break;
    }
    if (!object)
        return;
    const QByteArray utf8 = text.toUtf8();
    ZXmlUI::setPropertyEx(object, prop.name(), utf8.constData());
    const QMetaObject *meta = object->metaObject();
    for (int i = 0; object && i < meta->propertyCount(); ++i)
        (void)meta->property(i).read(object);
    fuzz::drainEvents();
    if (c.kind == ZCreatorBase::WidgetKind) {
        // The scene deletes its items; a widget that deleted itself is gone.
        scene.clear();
    } else {
        delete object.data();
    }
    fuzz::drainEvents();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    fuzz::startApplication(argc, argv);
    collectConverters();
    if (g_types.empty()) {
        std::fprintf(stderr, "converter: the registry is empty\n");
        std::abort();
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::Input in(data, size);
    const QMetaType type = g_types[in.pick(g_types.size())];
    const uint8_t classByte = in.byte();
    const uint8_t propertyByte = in.byte();
    const QString text = QString::fromUtf8(in.rest());

    checkBuiltIns(text);
    checkRegistry(type, text);
    const uint8_t pickBytes[] = {classByte, propertyByte};
    fuzz::Input pickIn(pickBytes, 2);
    checkProperty(pickIn, text);
    return 0;
}

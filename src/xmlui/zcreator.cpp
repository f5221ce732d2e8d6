#include "zcreator.h"

#include <QHash>
#include <QMetaObject>

#include <algorithm>

namespace {

using Registry = QHash<QByteArray, ZCreatorBase *>;

// Function-local, so that static creators in any order of initialisation
// find their registry.
Registry &registry(ZCreatorBase::Kind kind)
{
    static Registry registries[3];
    return registries[kind];
}

} // namespace

ZCreatorBase::ZCreatorBase(Kind kind, const char *className)
    : m_kind(kind)
    , m_className(className)
{
    if (m_className)
        registry(m_kind).insert(QByteArray(m_className), this);
}

ZCreatorBase::ZCreatorBase(const ZCreatorBase &other) = default;
ZCreatorBase &ZCreatorBase::operator=(const ZCreatorBase &other) = default;

ZCreatorBase::~ZCreatorBase()
{
    if (!m_className)
        return;
    // A copy shares the name but was never entered: it must not take the
    // original's entry with it.
    Registry &r = registry(m_kind);
    const auto it = r.constFind(QByteArray::fromRawData(m_className, int(qstrlen(m_className))));
    if (it != r.constEnd() && it.value() == this)
        r.erase(it);
}

ZCreatorBase *ZCreatorBase::find(Kind kind, const QByteArray &name)
{
    return registry(kind).value(name, nullptr);
}

QByteArrayList ZCreatorBase::classNames(Kind kind)
{
    QByteArrayList names = registry(kind).keys();
    std::sort(names.begin(), names.end());
    return names;
}

const QMetaObject *ZCreatorBase::metaObjectForClass(const QByteArray &name)
{
    if (ZCreatorBase *c = find(WidgetKind, name))
        return c->classMetaObject();
    if (ZCreatorBase *c = find(WindowKind, name))
        return c->classMetaObject();
    return nullptr;
}

#include "vocabulary.h"

#include "zcreator.h"

#include <QMetaEnum>
#include <QMetaObject>
#include <QMetaProperty>
#include <QStringList>

namespace Vocabulary {

namespace {

const ZCreatorBase *findAnywhere(const QByteArray &name)
{
    for (auto kind : {ZCreatorBase::WidgetKind, ZCreatorBase::WindowKind, ZCreatorBase::HelperKind}) {
        if (const ZCreatorBase *creator = ZCreatorBase::find(kind, name))
            return creator;
    }
    return nullptr;
}

QString enumKeys(const QMetaEnum &metaEnum)
{
    QStringList keys;
    keys.reserve(metaEnum.keyCount());
    for (int i = 0; i < metaEnum.keyCount(); ++i)
        keys << QStringLiteral("%1=%2").arg(QLatin1String(metaEnum.key(i))).arg(metaEnum.value(i));
    return keys.join(QLatin1Char(' '));
}

} // namespace

QString listClasses()
{
    static const struct {
        ZCreatorBase::Kind kind;
        const char *title;
    } groups[] = {
        {ZCreatorBase::WidgetKind, "widgets"},
        {ZCreatorBase::WindowKind, "windows"},
        {ZCreatorBase::HelperKind, "helpers"},
    };
    QString out;
    for (const auto &group : groups) {
        out += QLatin1String(group.title) + QLatin1String(":\n");
        for (const QByteArray &name : ZCreatorBase::classNames(group.kind))
            out += QLatin1String("  ") + QString::fromLatin1(name) + QLatin1Char('\n');
    }
    return out;
}

QString describe(const QByteArray &className)
{
    const ZCreatorBase *creator = findAnywhere(className);
    if (!creator)
        return QString();
    const QMetaObject *meta = creator->classMetaObject();

    QStringList chain;
    for (const QMetaObject *m = meta; m; m = m->superClass())
        chain << QString::fromLatin1(m->className());
    QString out = QString::fromLatin1(className) + QLatin1String(": ") + chain.join(QLatin1String(" < "))
        + QLatin1Char('\n');

    // Most derived first: the class's own attributes are what a reader looks for.
    for (const QMetaObject *m = meta; m; m = m->superClass()) {
        QString block;
        for (int i = m->propertyOffset(); i < m->propertyCount(); ++i) {
            const QMetaProperty property = m->property(i);
            if (!property.isWritable())
                continue;
            block += QStringLiteral("  %1: %2").arg(QLatin1String(property.name()), QLatin1String(property.typeName()));
            if (property.isEnumType()) {
                const QMetaEnum metaEnum = property.enumerator();
                block += (metaEnum.isFlag() ? QLatin1String(" flags ") : QLatin1String(" enum "))
                    + enumKeys(metaEnum);
            }
            block += QLatin1Char('\n');
        }
        if (!block.isEmpty())
            out += QString::fromLatin1(m->className()) + QLatin1String(":\n") + block;
    }
    return out;
}

} // namespace Vocabulary

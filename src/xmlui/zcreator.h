#ifndef ZCREATOR_H
#define ZCREATOR_H

#include "zglobal.h"

#include <QByteArray>
#include <QByteArrayList>

class QGraphicsItem;
class QObject;
class QWidget;
struct QMetaObject;
class ZHelper;
class ZWidget;
class ZWindow;

/*!
 * Common part of the three creator registries: the class name (a string
 * literal, not copied) and the class's meta-object.
 *
 * Constructing a creator enters it into the registry of its kind under its
 * class name (a later creator with the same name replaces an earlier one);
 * destroying it removes the entry again, so a class whose creator is gone
 * is no longer known to the loader.
 */
class ZKIT_EXPORT ZCreatorBase
{
public:
    enum Kind { WidgetKind, WindowKind, HelperKind };

    virtual ~ZCreatorBase();

    /// The name under which the class is registered.
    const char *className() const { return m_className; }
    Kind kind() const { return m_kind; }
    /// The meta-object of the class the creator makes.
    virtual const QMetaObject *classMetaObject() const = 0;

    /// The creator registered under \a name (exact, case-sensitive), or null.
    static ZCreatorBase *find(Kind kind, const QByteArray &name);
    /// Every class name of a registry, sorted.
    static QByteArrayList classNames(Kind kind);
    /// The meta-object of a widget or window class (widgets are asked
    /// first), or null: the skins name their classes this way.
    static const QMetaObject *metaObjectForClass(const QByteArray &name);

protected:
    ZCreatorBase(Kind kind, const char *className);
    ZCreatorBase(const ZCreatorBase &other);
    ZCreatorBase &operator=(const ZCreatorBase &other);

private:
    Kind m_kind;
    const char *m_className;
};

/// Creators of widgets, the elements of a document's widget tree.
class ZKIT_EXPORT ZWidgetCreatorBase : public ZCreatorBase
{
public:
    explicit ZWidgetCreatorBase(const char *className) : ZCreatorBase(WidgetKind, className) {}
    virtual ZWidget *create(QGraphicsItem *parent) const = 0;
    static ZWidgetCreatorBase *find(const QByteArray &name)
    {
        return static_cast<ZWidgetCreatorBase *>(ZCreatorBase::find(WidgetKind, name));
    }
};

/// Creators of top-level windows.
class ZKIT_EXPORT ZWindowCreatorBase : public ZCreatorBase
{
public:
    explicit ZWindowCreatorBase(const char *className) : ZCreatorBase(WindowKind, className) {}
    virtual ZWindow *create(QWidget *parent) const = 0;
    static ZWindowCreatorBase *find(const QByteArray &name)
    {
        return static_cast<ZWindowCreatorBase *>(ZCreatorBase::find(WindowKind, name));
    }
};

/// Creators of the helper objects of a document's uihelper section.
class ZKIT_EXPORT ZHelperCreatorBase : public ZCreatorBase
{
public:
    explicit ZHelperCreatorBase(const char *className) : ZCreatorBase(HelperKind, className) {}
    virtual ZHelper *create(QObject *parent) const = 0;
    static ZHelperCreatorBase *find(const QByteArray &name)
    {
        return static_cast<ZHelperCreatorBase *>(ZCreatorBase::find(HelperKind, name));
    }
};

/*!
 * The creator of class T: makes a new T with the given parent and hands it
 * back as a Base. A class becomes an element name of the XML grammar by
 * one static creator in its own source file:
 *
 *   static const ZCreator<ZPushButton, ZWidget, QGraphicsItem, ZWidgetCreatorBase>
 *       creator("ZPushButton");
 *
 * or, the same, Z_REGISTER_WIDGET(ZPushButton). Applications register their
 * own classes in the same way.
 */
template<typename T, typename Base, typename ParentType, typename CreatorBase>
class ZCreator : public CreatorBase
{
public:
    explicit ZCreator(const char *className) : CreatorBase(className) {}
    Base *create(ParentType *parent) const override { return new T(parent); }
    const QMetaObject *classMetaObject() const override { return &T::staticMetaObject; }
};

#define Z_REGISTER_CREATOR_(Class, Base, Parent, CreatorBase) \
    static const ZCreator<Class, Base, Parent, CreatorBase> zCreator_##Class(#Class)
#define Z_REGISTER_WIDGET(Class) Z_REGISTER_CREATOR_(Class, ZWidget, QGraphicsItem, ZWidgetCreatorBase)
#define Z_REGISTER_WINDOW(Class) Z_REGISTER_CREATOR_(Class, ZWindow, QWidget, ZWindowCreatorBase)
#define Z_REGISTER_HELPER(Class) Z_REGISTER_CREATOR_(Class, ZHelper, QObject, ZHelperCreatorBase)

#endif // ZCREATOR_H

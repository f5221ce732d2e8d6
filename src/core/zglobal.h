#ifndef ZGLOBAL_H
#define ZGLOBAL_H

#include <QtCore/qglobal.h>

#if defined(ZKIT_BUILD_LIBRARY)
#  define ZKIT_EXPORT Q_DECL_EXPORT
#else
#  define ZKIT_EXPORT Q_DECL_IMPORT
#endif

/*
 * Private data.
 *
 * A root class of a hierarchy (ZWidget, ZWindow, ...) owns its private record
 * through the member `d_zptr` (a std::unique_ptr<RootPrivate>); every class
 * below it passes its own, larger record to a protected constructor of its
 * base. The records derive along the class hierarchy, so the single pointer
 * can be cast to the record of whatever class is asking.
 *
 * Qt's own Q_DECLARE_PRIVATE cannot be used: QGraphicsWidget already carries
 * two d-pointers of its own (QObject's and QGraphicsItem's).
 *
 *   class ZFoo : public ZWidget {
 *       Z_DECLARE_PRIVATE(ZFoo)
 *   };
 *   class ZFooPrivate : public ZWidgetPrivate {
 *       Z_DECLARE_PUBLIC(ZFoo)
 *   };
 *   void ZFoo::bar() { Z_D(ZFoo); d->value = 1; }
 */
#define Z_DECLARE_PRIVATE(Class) \
    inline Class##Private *d_func() noexcept \
    { return reinterpret_cast<Class##Private *>(d_zptr.get()); } \
    inline const Class##Private *d_func() const noexcept \
    { return reinterpret_cast<const Class##Private *>(d_zptr.get()); } \
    friend class Class##Private;

#define Z_DECLARE_PUBLIC(Class) \
    inline Class *q_func() noexcept { return static_cast<Class *>(q_zptr); } \
    inline const Class *q_func() const noexcept { return static_cast<const Class *>(q_zptr); } \
    friend class Class;

#define Z_D(Class) Class##Private *const d = d_func()
#define Z_Q(Class) Class *const q = q_func()

/*!
 * The date the toolkit's sources were released, "YYYY-MM-DD". Applications use
 * it as a version query.
 */
ZKIT_EXPORT const char *zkitBuildDate();

#endif // ZGLOBAL_H

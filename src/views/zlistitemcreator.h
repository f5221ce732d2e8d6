#ifndef ZLISTITEMCREATOR_H
#define ZLISTITEMCREATOR_H

#include "zglobal.h"

#include <QtCore/qlist.h>
#include <QtCore/qpointer.h>

class ZListItem;
class ZListWidget;

/*!
 * \brief Makes and pools the item widgets of a ZListWidget.
 *
 * The view owns its creator. Released items stay children of the view,
 * hidden, until create() hands them out again; the pool holds guarded
 * pointers, so items deleted meanwhile are skipped.
 */
class ZKIT_EXPORT ZListItemCreator
{
public:
    virtual ~ZListItemCreator();

    /*! A pooled item when there is one, else a new one, child of \a view. */
    virtual ZListItem *create(ZListWidget *view) = 0;
    /*! Puts \a item into the pool. */
    virtual void release(ZListItem *item);

    int poolSize() const;

protected:
    // The next live pooled item of \a view, taken out of the pool; null when none is left.
    ZListItem *takePooled(ZListWidget *view);

private:
    QList<QPointer<ZListItem>> m_pool;
};

/*! The creator of items of class T (a ZListItem taking the view as parent). */
template<typename T>
class ZListItemCreatorT : public ZListItemCreator
{
public:
    ZListItem *create(ZListWidget *view) override
    {
        if (ZListItem *item = takePooled(view))
            return item;
        return new T(view);
    }
};

#endif // ZLISTITEMCREATOR_H

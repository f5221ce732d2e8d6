#ifndef ZTABWIDGET_P_H
#define ZTABWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztabwidget.h"
#include "zwidget_p.h"

#include <QtCore/qlist.h>
#include <QtCore/qpointer.h>

class ZKIT_EXPORT ZTabWidgetPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZTabWidget)
public:
    struct Tab
    {
        ZTabItem *item;
        const QObject *object; // the same, to recognise it in its destroyed() signal
        QPointer<ZWidget> page;
        const QObject *pageObject;
    };

    int indexOfObject(const QObject *object) const;
    void syncSelection();
    void forget(int index);
    int insert(int index, ZTabItem *tab, ZWidget *page);
    void onStackChanged(int index);

    QList<Tab> tabs;
    ZWidget *bar = nullptr;
    ZStackedWidget *stack = nullptr;
    bool closable = false;
    int requested = -1;
    int lastCurrent = -1;
};

#endif // ZTABWIDGET_P_H

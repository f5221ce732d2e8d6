#ifndef ZBUTTONGROUP_P_H
#define ZBUTTONGROUP_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zbuttongroup.h"
#include "zradiobutton.h"
#include "zwidget_p.h"

#include <QtCore/qlist.h>
#include <QtCore/qpointer.h>

class ZKIT_EXPORT ZButtonGroupPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZButtonGroup)
public:
    // Takes \a item in when it is a radio button, else looks through its
    // descendants (without recursion: nesting may be deep).
    void addRadioButton(ZWidget *item);
    bool contains(const QObject *button) const;

    // Guarded: members live elsewhere in the tree and may be deleted there.
    QList<QPointer<ZRadioButton>> buttons;
};

#endif // ZBUTTONGROUP_P_H

#ifndef ZHOTKEY_P_H
#define ZHOTKEY_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zhotkey.h"
#include "zwidget_p.h"

class ZLineEdit;
class QLineEditEx;

class ZHotkeyPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZHotkey)
public:
    void init();

    ZLineEdit *lineEdit = nullptr;
    QLineEditEx *editor = nullptr;
    quint32 modifier = 0;
    quint32 virtualKey = 0;
    QString text;
    bool enabled = true;
};

#endif // ZHOTKEY_P_H

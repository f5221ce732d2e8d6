#ifndef ZLINEEDIT_P_H
#define ZLINEEDIT_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zlineedit.h"
#include "zwidget_p.h"

class QValidator;
class ZEditorProxy;
class ZFrameItem;

class ZLineEditPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZLineEdit)
public:
    void init();
    // Frame and proxy cover the whole widget.
    void layoutChildren();
    // Installs \a validator; the previous one goes, deleted when it was ours.
    void replaceValidator(QValidator *validator);
    // What the user is told when \a validator does not accept the text.
    QString rejectionMessage(const QValidator *validator) const;

    ZEditorProxy *proxy = nullptr;
    QLineEditEx *edit = nullptr;
    ZFrameItem *frame = nullptr;
    QString lastCheckedText;
    QString validatorTip;
    bool contextMenu = true;
    bool frameShown = false;
};

#endif // ZLINEEDIT_P_H

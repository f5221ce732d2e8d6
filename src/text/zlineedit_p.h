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
    // Connects the editor's signal of the same name when \a signal is one
    // the field passes on from its editor and was not yet connected.
    void forward(const QMetaMethod &signal);
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
    unsigned forwarded = 0; // bit per signal passed on from the editor
};

#endif // ZLINEEDIT_P_H

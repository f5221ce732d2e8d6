#ifndef ZMESSAGEBOX_P_H
#define ZMESSAGEBOX_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zdialog_p.h"
#include "zmessagebox.h"

#include <QPointer>

class QTimer;
class ZFrameItem;
class ZTextItem;

class ZKIT_EXPORT ZMessageBoxPrivate : public ZDialogPrivate
{
    Z_DECLARE_PUBLIC(ZMessageBox)
public:
    explicit ZMessageBoxPrivate(ZMessageBox *q) : ZDialogPrivate(q) {}

    // Finds the named parts of the layout.
    void locateParts();
    // Shows "text(seconds)" on the countdown button and sizes it.
    void showCountdown();
    // Sizes a button to its text, never narrower than the layout made it.
    void sizeButton(int index);
    void stopCountdown();
    // Sizes the text item and the window to the text.
    void fitToText();

    ZMessageBox::Kind kind = ZMessageBox::Information;
    QPointer<ZFrameItem> iconShower;
    QPointer<ZTextItem> textShower;
    QPointer<ZPushButton> buttons[3];
    qreal layoutWidth[3] = {0, 0, 0}; // the widths the document gave the buttons
    QString buttonText[3];            // without the countdown
    bool partsLocated = false;

    QTimer *timer = nullptr; // the one-second countdown
    int remaining = 0;       // seconds left
    int countdownButton = 0; // the button that shows them
    bool countdownStarted = false;
};

#endif // ZMESSAGEBOX_P_H

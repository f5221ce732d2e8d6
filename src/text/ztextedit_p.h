#ifndef ZTEXTEDIT_P_H
#define ZTEXTEDIT_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztextedit.h"
#include "zwidget_p.h"

#include <QtCore/qpointer.h>

class ZEditorProxy;
class QScrollBar;
class ZFrameItem;

class ZTextEditPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZTextEdit)
public:
    void init();
    // Copies range, steps and value of the editor's bar into the skinned
    // one, shows it when there is something to scroll, and lays out again
    // when that changed.
    void syncBar(Qt::Orientation orientation);
    void layoutChildren();
    ZScrollBar *bar(Qt::Orientation orientation) const { return orientation == Qt::Vertical ? vbar : hbar; }
    QScrollBar *nativeBar(Qt::Orientation orientation) const;

    ZEditorProxy *proxy = nullptr;
    QTextEdit *edit = nullptr;
    ZFrameItem *frame = nullptr;
    ZScrollBar *vbar = nullptr;
    ZScrollBar *hbar = nullptr;
    int barThickness = ZTextEdit::DefaultBarThickness;
    bool contextMenu = true;
    bool chineseContextMenu = false;
    bool frameShown = false;
    bool vShown = false;
    bool hShown = false;
    bool laying = false;
    bool relayout = false;
};

#endif // ZTEXTEDIT_P_H

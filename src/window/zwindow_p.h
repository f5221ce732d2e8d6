#ifndef ZWINDOW_P_H
#define ZWINDOW_P_H

#include "zwindow.h"

#include <QTimer>

class QGraphicsScene;
class ZSpacer;

class ZKIT_EXPORT ZWindowPrivate
{
    Z_DECLARE_PUBLIC(ZWindow)
public:
    explicit ZWindowPrivate(ZWindow *q);
    virtual ~ZWindowPrivate();

    ZWindow *q_zptr;
    QGraphicsScene *scene = nullptr;
    ZSpacer *root = nullptr;
    QMargins sceneMargins;
    bool abortClose = false;
    QTimer *viewportTimer = nullptr; // periodic repaint of what the scene missed
    bool closing = false;      // close() re-entry guard
    bool skipOwnClose = false; // close() is a plain widget close
    QString skinName;
};

#endif // ZWINDOW_P_H

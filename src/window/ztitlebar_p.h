#ifndef ZTITLEBAR_P_H
#define ZTITLEBAR_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztitlebar.h"
#include "zwidget_p.h"

#include <QtCore/qlist.h>
#include <QtCore/qpointer.h>
#include <QtGui/qcolor.h>

class ZWindow;

/*!
 * Puts a new title bar (object name "titlebar") at the top of \a window's
 * root widget, so that the content the window receives later goes below it.
 */
ZKIT_EXPORT ZTitlebar *zInstallTitlebar(ZWindow *window);

class ZKIT_EXPORT ZTitlebarPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZTitlebar)
public:
    void init();
    // The window whose scene holds the bar, or null.
    ZWindow *window() const;
    ZFrameItem *makeButton(const QString &name, const QString &images);
    // Shows the images of \a path on \a button, or hides it for an empty path.
    void applyButtonImages(ZFrameItem *button, const QString &path);
    // Shows or hides a window button, whatever the reason it is hidden by.
    void applyButtonVisibility();
    void applyTitleFont();

    // Guarded: documents and applications reach these through properties
    // and may delete them.
    QPointer<ZImageItem> icon;
    QPointer<ZLabel> titleLabel;
    QPointer<ZFrameItem> minButton;
    QPointer<ZFrameItem> maxButton;
    QPointer<ZFrameItem> closeButton;
    QList<QPointer<ZWidget>> appended;

    QString iconPath;
    QString maximumPath;
    QString restorePath;
    QString minimumPath;
    QString closePath;
    QString title;
    QColor titleColor;
    bool titleBold = false;
    bool iconClickExit = false;

    // What the window offers, from the last updateTitelbar().
    bool offersMinimum = false;
    bool offersMaximum = false;
    bool offersClose = true;
    bool showsRestore = false;
};

#endif // ZTITLEBAR_P_H

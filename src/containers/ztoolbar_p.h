#ifndef ZTOOLBAR_P_H
#define ZTOOLBAR_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztoolbar.h"
#include "zwidget_p.h"

#include <QtCore/qlist.h>
#include <QtCore/qpointer.h>

class ZKIT_EXPORT ZToolBarPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZToolBar)
public:
    struct Entry
    {
        ZWidget *widget;
        const QGraphicsItem *item; // to recognise one leaving in its destructor
        bool hidden;               // hidden by the bar, not by its owner
    };

    bool isBox() const { return layoutType == ZWidget::HBox || layoutType == ZWidget::VBox; }
    qreal along(const QSizeF &size) const { return layoutType == ZWidget::VBox ? size.height() : size.width(); }
    // How many leading children fit into the bar's length; all when overflow is off.
    int fitting() const;
    // Puts the first \a shown children into the layout, hides the rest behind the drop button.
    void apply(int shown);
    void update();
    void trigger(QObject *item);

    QList<Entry> entries;
    int shown = -1; // children in the layout; -1 before the first pass
    bool overflow = true;
    ZFrameItem *drop = nullptr;
    QPointer<ZMenu> menu;
};

#endif // ZTOOLBAR_P_H

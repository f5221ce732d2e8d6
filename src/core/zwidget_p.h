#ifndef ZWIDGET_P_H
#define ZWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zwidget.h"

#include <QtCore/qpointer.h>

class QGraphicsAnchorLayout;
class QGraphicsColorizeEffect;
class QGraphicsFlowLayout;
class QGraphicsLinearLayout;

class ZKIT_EXPORT ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZWidget)
public:
    ZWidgetPrivate();
    virtual ~ZWidgetPrivate();

    QGraphicsLinearLayout *linearLayout() const;
    QGraphicsFlowLayout *flowLayout() const;
    QGraphicsAnchorLayout *anchorLayout() const;
    // The graphics parent when it is a ZWidget.
    ZWidget *parentZWidget() const;

    bool followsWidth() const { return sizeToChild || widthToChild; }
    // calcIdealSize() for one size hint, with the width a layout offers
    // (negative: none).
    QSizeF idealSize(Qt::SizeHint which, qreal widthConstraint) const;
    bool followsHeight() const { return sizeToChild || heightToChild; }
    // Children of None and Flow widgets change the ideal size without the
    // layout noticing; re-evaluate on the next event-loop turn.
    void scheduleIdealSize();
    void childGeometryChanged(bool resized);
    // Whether the parent's box layout measured this widget after the
    // widget's own box layout last changed, and that layout has just placed
    // its items: its hints are then the ones the parent knows.
    bool parentLayoutKnowsHints() const;

    // The scene announces each item it polishes as becoming visible, also one
    // visible all along, and QGraphicsWidget then drops the item's size
    // hints: every layout of a window laid out before its first polish would
    // run again for nothing. For that announcement \a widget gets only what a
    // shown widget gets, and the answer is true; false for any other change.
    static bool showVisibleAllAlong(QGraphicsWidget *widget, QGraphicsItem::GraphicsItemChange change,
                                    const QVariant &value);

    // Whether \a change is part of leaving the parent from a destructor
    // (\a dying): QGraphicsWidget announces it with two events, and resolves
    // font and palette, for an object nobody can make use of any more.
    static bool leavingOnTheWayOut(bool dying, QGraphicsItem::GraphicsItemChange change)
    {
        return dying && (change == QGraphicsItem::ItemParentChange || change == QGraphicsItem::ItemParentHasChanged);
    }

    // Runs \a set, which changes several size hints, and updates the geometry
    // once at the end rather than after each hint.
    template<typename Set>
    void batchHints(Set &&set)
    {
        batchingHints = true;
        set();
        batchingHints = false;
        q_zptr->updateGeometry();
    }

    void updateTransform();
    void updateGrayEffect();
    // Hands the widget and its skin name to the theme.
    void applySkin();

    ZWidget *q_zptr = nullptr;

    ZWidget::DragPolicy dragPolicy = ZWidget::AskParent;
    ZWidget::ThemePolicy themePolicy = ZWidget::ThemeWithParent;
    mutable bool themeChecked = false;
    mutable bool themeResult = false;

    ZWidget::LayoutType layoutType = ZWidget::None;
    QMargins margins;
    int spacing = 0;
    int itemSpacing = 0;
    QString anchor;
    bool anchored = false;
    Qt::Alignment alignment;

    qreal fixWidth = -1;
    qreal fixHeight = -1;
    bool sizeToChild = false;
    bool widthToChild = false;
    bool heightToChild = false;
    bool idealPending = false;
    bool dying = false; // in ~ZWidget: leaving the parent resolves no font or palette
    // Sizes itself after its children's hints with no layout between them
    // (layer widgets): a child's new hints are this widget's new hints.
    bool hintsFollowChildren = false;
    bool batchingHints = false; // inside batchHints(): updateGeometry() waits
    bool activatingLayout = false; // the widget's box layout is being activated

    bool content = false;
    QBrush background;
    QtGradient gradient;

    qreal xRotate = 0;
    qreal yRotate = 0;
    qreal zRotate = 0;
    QPointF originPoint;

    bool grayToDisable = false;
    QPointer<QGraphicsColorizeEffect> grayEffect;

    Qt::ContextMenuPolicy contextMenuPolicy = Qt::DefaultContextMenu;
    QString xmlPath;
    QString skinName;
    bool removePostedEvents = false;
};

#endif // ZWIDGET_P_H

#ifndef ZSPLITWIDGETEXT_H
#define ZSPLITWIDGETEXT_H

#include "zsplitwidget.h"

class ZSplitWidgetExtPrivate;

/*!
 * \brief A split widget whose handles fold a pane away on a click.
 *
 * A click (press and release without a drag) on a handle collapses the pane
 * on the handle's collapseSide, Before (left or top) by default, and a
 * click on the same handle brings it back with the ratio it had. A
 * collapsed pane is hidden and takes no room; the handle stays, marked with
 * a small arrow pointing the way the pane will open. Drags on a handle next
 * to a collapsed pane do nothing.
 */
class ZKIT_EXPORT ZSplitWidgetExt : public ZSplitWidget
{
    Q_OBJECT
    Q_PROPERTY(CollapseSide collapseSide READ collapseSide WRITE setCollapseSide)

public:
    /*! Which neighbour of a clicked handle folds away. */
    enum CollapseSide : int { Before = 0, After = 1 };
    Q_ENUM(CollapseSide)

    Q_INVOKABLE explicit ZSplitWidgetExt(QGraphicsItem *parent = nullptr);
    ~ZSplitWidgetExt() override;

    CollapseSide collapseSide() const;
    /*! Values other than Before and After are ignored. */
    void setCollapseSide(CollapseSide side);

    Q_INVOKABLE bool isCollapsed(int pane) const;
    /*! Collapses or restores pane \a pane; answers whether the pane exists. */
    Q_INVOKABLE bool setCollapsed(int pane, bool collapsed);

Q_SIGNALS:
    void collapsedChanged(int pane, bool collapsed);

protected:
    void handleClicked(int index) override;

private:
    Z_DECLARE_PRIVATE(ZSplitWidgetExt)
    Q_DISABLE_COPY(ZSplitWidgetExt)
};

#endif // ZSPLITWIDGETEXT_H

#ifndef ZSCROLLWIDGET_H
#define ZSCROLLWIDGET_H

#include "zscrollarea.h"

class ZScrollWidgetPrivate;

/*!
 * \brief A scroll area that owns its content and lays children out in it.
 *
 * Children added to the widget (in documents, its child elements) go into
 * the inner content widget, and the layout, margins and spacing attributes
 * are those of the content. With a VBox layout the content keeps the
 * viewport's width and takes its height from its children, so it scrolls
 * vertically and never shows a horizontal bar; with HBox the same across.
 * Other layouts keep the content as high as the viewport.
 */
class ZKIT_EXPORT ZScrollWidget : public ZScrollArea
{
    Q_OBJECT
    // The content's, so that documents set up the scrolled layout.
    Q_PROPERTY(QMargins margins READ margins WRITE setMargins)
    Q_PROPERTY(int spacing READ spacing WRITE setSpacing)
    Q_PROPERTY(int itemSpacing READ itemSpacing WRITE setItemSpacing)

public:
    Q_INVOKABLE explicit ZScrollWidget(QGraphicsItem *parent = nullptr);
    ~ZScrollWidget() override;

    /*! The inner content widget. */
    ZWidget *layoutWidget() override;
    void addItem(ZWidget *item) override;
    void insertItem(ZWidget *item, int index) override;
    void removeItem(ZWidget *item) override;
    /*! The content's layout type. */
    LayoutType layoutType() const override;
    /*!
     * Gives the content layout \a type. VBox also turns the horizontal bar
     * off and lets the content's height follow its children; HBox turns the
     * vertical bar off and lets the width follow them.
     */
    void setLayoutType(LayoutType type) override;

    QMargins margins() const;
    void setMargins(const QMargins &margins);
    int spacing() const;
    void setSpacing(int spacing);
    int itemSpacing() const;
    void setItemSpacing(int spacing);

protected:
    ZScrollWidget(ZScrollWidgetPrivate &dd, QGraphicsItem *parent);

    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZScrollWidget)
    Q_DISABLE_COPY(ZScrollWidget)
};

#endif // ZSCROLLWIDGET_H

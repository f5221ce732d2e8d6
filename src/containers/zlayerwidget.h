#ifndef ZLAYERWIDGET_H
#define ZLAYERWIDGET_H

#include "zwidget.h"

class ZLayerWidgetPrivate;

/*!
 * \brief Children stacked on each other, each filling the widget.
 *
 * Every child added with addItem() or insertItem() becomes a layer: it is
 * kept at the widget's rectangle less its margins (a change of margins
 * shows at the next resize) and stacked above the
 * layers before it (insertItem() puts it below the layer at the index).
 * Layers that are deleted or given another parent drop out by themselves.
 * The widget has no layout of its own: the layers are its layout, so the
 * layout property stays None.
 *
 * Without explicit size hints the widget is as large as its largest layer
 * wants to be, and at least as large as each layer's minimum.
 */
class ZKIT_EXPORT ZLayerWidget : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(int count READ count)

public:
    Q_INVOKABLE explicit ZLayerWidget(QGraphicsItem *parent = nullptr);
    ~ZLayerWidget() override;

    /*! The number of layers. */
    int count() const;
    /*! The layer at \a index, bottom first; null out of range. */
    Q_INVOKABLE ZWidget *widget(int index) const;
    /*! The index of \a widget among the layers, or -1. */
    Q_INVOKABLE int indexOf(const ZWidget *widget) const;
    /*! The rectangle every layer fills: rect() less margins(). */
    QRectF layerRect() const;

    /*! Adds \a item as the top layer. Null, this widget or one of its ancestors is refused. */
    void addItem(ZWidget *item) override;
    /*!
     * Adds \a item as the layer at \a index (below the layer there); an index
     * out of range appends. A widget that is a layer already stays where it is.
     */
    void insertItem(ZWidget *item, int index) override;
    /*! Takes \a item out of the layers and out of the widget; the caller owns it. */
    void removeItem(ZWidget *item) override;

    LayoutType layoutType() const override;
    /*! Ignored: the layers place their widgets themselves. */
    void setLayoutType(LayoutType type) override;

protected:
    ZLayerWidget(ZLayerWidgetPrivate &dd, QGraphicsItem *parent);

    /*! A layer was added at \a index; it already has its geometry. */
    virtual void layerInserted(int index);
    /*!
     * The layer that was at \a index has gone (it may be in its destructor,
     * so it is not handed over).
     */
    virtual void layerRemoved(int index);
    /*! Gives every layer the layer rectangle; subclasses may place some otherwise. */
    virtual void layoutLayers();

    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    Z_DECLARE_PRIVATE(ZLayerWidget)
    Q_DISABLE_COPY(ZLayerWidget)
};

#endif // ZLAYERWIDGET_H

#ifndef ZTOOLBAR_H
#define ZTOOLBAR_H

#include "zwidget.h"

/*!
 * \brief A bar of controls, side by side.
 *
 * A container that places its children by its layout type: HBox by default,
 * VBox for a vertical bar (orientation() switches between the two), or any
 * other type a document sets. Children are 4 pixels apart by default
 * (spacing) and, unless they carry an alignment of their own, centred across
 * the line on the largest of them. (The line is as deep as that child: a bar
 * made deeper than all of its children keeps them at its top.)
 */
class ZKIT_EXPORT ZToolBar : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)

public:
    Q_INVOKABLE explicit ZToolBar(QGraphicsItem *parent = nullptr);
    ~ZToolBar() override;

    /*! Vertical for a VBox layout, Horizontal for every other. */
    Qt::Orientation orientation() const;
    /*! Installs an HBox or a VBox layout; the children already in the bar stay in it. */
    void setOrientation(Qt::Orientation orientation);

    void addItem(ZWidget *item) override;
    void insertItem(ZWidget *item, int index) override;

private:
    Q_DISABLE_COPY(ZToolBar)
};

#endif // ZTOOLBAR_H

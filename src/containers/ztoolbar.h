#ifndef ZTOOLBAR_H
#define ZTOOLBAR_H

#include "zwidget.h"

class ZFrameItem;
class ZMenu;
class ZToolBarPrivate;
class ZToolBarSeparator;

/*!
 * \brief A bar of controls, side by side.
 *
 * A container that places its children by its layout type: HBox by default,
 * VBox for a vertical bar (orientation() switches between the two), or any
 * other type a document sets. Children are 4 pixels apart by default
 * (spacing) and, unless they carry an alignment of their own, centred across
 * the line on the largest of them. (The line is as deep as that child: a bar
 * made deeper than all of its children keeps them at its top.)
 *
 * Overflow: while overflow is on and a box bar is given less length than
 * its children want (preferred sizes plus spacing), the trailing children
 * that do not fit are hidden and a drop button (dropButton) takes the end
 * of the bar; clicking it opens a ZMenu (overflowMenu) with one entry per
 * hidden child, named by its "text" property, else its tool tip, else its
 * object name (separators become menu separators). Choosing an entry emits
 * the child's clicked() signal, when it has one, and itemTriggered(). A bar
 * that has never been laid out (no length yet) hides nothing.
 */
class ZKIT_EXPORT ZToolBar : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    Q_PROPERTY(bool overflow READ overflow WRITE setOverflow)
    Q_PROPERTY(int overflowCount READ overflowCount)
    Q_PROPERTY(QObject *dropButton READ dropButton)

public:
    Q_INVOKABLE explicit ZToolBar(QGraphicsItem *parent = nullptr);
    ~ZToolBar() override;

    /*! Vertical for a VBox layout, Horizontal for every other. */
    Qt::Orientation orientation() const;
    /*! Installs an HBox or a VBox layout; the children already in the bar stay in it. */
    void setOrientation(Qt::Orientation orientation);

    bool overflow() const;
    void setOverflow(bool on);
    /*! The number of children hidden behind the drop button. */
    int overflowCount() const;
    /*! Whether \a item is hidden behind the drop button. */
    Q_INVOKABLE bool isOverflowed(const ZWidget *item) const;
    ZFrameItem *dropButton() const;
    /*! The menu of the last showOverflowMenu(), or null. */
    ZMenu *overflowMenu() const;
    /*! Builds the menu of the hidden children and pops it up under the drop button. */
    Q_INVOKABLE void showOverflowMenu();

    /*! Appends a separator and answers it. */
    Q_INVOKABLE ZToolBarSeparator *addSeparator();
    /*! The children of the bar in their order, hidden ones included. */
    QList<ZWidget *> items() const;

    void addItem(ZWidget *item) override;
    void insertItem(ZWidget *item, int index) override;
    void removeItem(ZWidget *item) override;
    void setLayoutType(LayoutType type) override;

Q_SIGNALS:
    /*! An entry of the overflow menu was chosen for \a item. */
    void itemTriggered(QObject *item);

protected:
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    Z_DECLARE_PRIVATE(ZToolBar)
    Q_DISABLE_COPY(ZToolBar)
};

#endif // ZTOOLBAR_H

#ifndef ZWIDGET_H
#define ZWIDGET_H

#include "zglobal.h"
#include "qtgradient.h"

#include <QtCore/qmargins.h>
#include <QtGui/qbrush.h>
#include <QtGui/qcursor.h>
#include <QtWidgets/qgraphicswidget.h>

#include <memory>

class QGraphicsLayout;
class QGraphicsView;
class XMLNode;
class ZWidgetPrivate;

/*!
 * \brief The base item of every zkit control.
 *
 * A QGraphicsWidget that adds what documents set by attribute: fixed and
 * content-following sizes, a layout chosen by name, a background, a drag
 * policy for moving frameless windows, a theme policy, rotation about an
 * origin point, graying when disabled and a skin name. Every property is a
 * meta-object property, so every one is also an XML attribute.
 *
 * Children are related to their parent in three separate ways: as QObject
 * child, as graphics child and as member of the parent's layout. The attach
 * operations differ in which of these they establish:
 *
 * | operation            | object parent | graphics parent | layout |
 * |----------------------|---------------|-----------------|--------|
 * | addItem()            | yes, first    | yes, second     | yes    |
 * | insertItem()         | yes, first    | yes, second     | yes, at the index |
 * | addChild()           | yes, second   | yes, first      | no     |
 * | addGraphicsItem()    | no            | yes             | no     |
 * | addObjectItem()      | yes           | no              | no     |
 * | addLayoutItem()      | no            | no              | yes    |
 *
 * Each has a removal counterpart undoing the same relations. A layout can only
 * place graphics children of its own widget, so every removal that drops the
 * graphics parent also takes the child out of the layout.
 */
class ZKIT_EXPORT ZWidget : public QGraphicsWidget
{
    Q_OBJECT
    Q_PROPERTY(qreal width READ width)
    Q_PROPERTY(qreal height READ height)
    Q_PROPERTY(QRectF rect READ rect)
    Q_PROPERTY(qreal fixWidth READ fixWidth WRITE setFixWidth)
    Q_PROPERTY(qreal fixHeight READ fixHeight WRITE setFixHeight)
    Q_PROPERTY(QSizeF fixSize READ fixSize WRITE setFixSize)
    Q_PROPERTY(bool sizeToChild READ sizeToChild WRITE setSizeToChild)
    Q_PROPERTY(bool widthToChild READ widthToChild WRITE setWidthToChild)
    Q_PROPERTY(bool heightToChild READ heightToChild WRITE setHeightToChild)
    Q_PROPERTY(qreal minimumWidth READ minimumWidth WRITE setMinimumWidth)
    Q_PROPERTY(qreal minimumHeight READ minimumHeight WRITE setMinimumHeight)
    Q_PROPERTY(qreal preferredWidth READ preferredWidth WRITE setPreferredWidth)
    Q_PROPERTY(qreal preferredHeight READ preferredHeight WRITE setPreferredHeight)
    Q_PROPERTY(qreal maximumWidth READ maximumWidth WRITE setMaximumWidth)
    Q_PROPERTY(qreal maximumHeight READ maximumHeight WRITE setMaximumHeight)
    Q_PROPERTY(QCursor cursor READ cursor WRITE setCursor RESET unsetCursor)
    Q_PROPERTY(bool focus READ hasFocus)
    Q_PROPERTY(Qt::ContextMenuPolicy contextMenuPolicy READ contextMenuPolicy WRITE setContextMenuPolicy)
    Q_PROPERTY(bool acceptDrops READ acceptDrops WRITE setAcceptDrops)
    Q_PROPERTY(QString toolTip READ toolTip WRITE setToolTip)
    Q_PROPERTY(bool bylayout READ bylayout WRITE setBylayout)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(QtGradient backgroundGradient READ backgroundGradient WRITE setBackgroundGradient)
    Q_PROPERTY(QBrush backgroundBrush READ backgroundBrush WRITE setBackgroundBrush RESET unsetBackgroundBrush)
    Q_PROPERTY(Qt::BrushStyle backgroundStyle READ backgroundStyle WRITE setBackgroundStyle)
    Q_PROPERTY(bool content READ content WRITE setContent)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)
    Q_PROPERTY(DragPolicy dragPolicy READ dragPolicy WRITE setDragPolicy)
    Q_PROPERTY(WidgetFlags widgetFlags READ widgetFlags WRITE setWidgetFlags)
    Q_PROPERTY(bool itemPanel READ itemPanel WRITE setItemPanel)
    Q_PROPERTY(ThemePolicy themePolicy READ themePolicy WRITE setThemePolicy)
    Q_PROPERTY(QString xmlPath READ xmlPath WRITE setXmlPath)
    Q_PROPERTY(bool grayToDisable READ grayToDisable WRITE setGrayToDisable)
    Q_PROPERTY(qreal xRotate READ xRotate WRITE setXRotate)
    Q_PROPERTY(qreal yRotate READ yRotate WRITE setYRotate)
    Q_PROPERTY(qreal zRotate READ zRotate WRITE setZRotate)
    Q_PROPERTY(QPointF originPoint READ originPoint WRITE setOriginPoint)
    Q_PROPERTY(LayoutType layout READ layoutType WRITE setLayoutType)
    Q_PROPERTY(int spacing READ spacing WRITE setSpacing)
    Q_PROPERTY(int itemSpacing READ itemSpacing WRITE setItemSpacing)
    Q_PROPERTY(QMargins margins READ margins WRITE setMargins)
    Q_PROPERTY(QString anchor READ anchor WRITE setAnchor)
    Q_PROPERTY(QString skinName READ skinName WRITE setSkinName)

public:
    // The enums have a fixed underlying type: documents may set any number,
    // and values beyond the keys have a defined meaning.

    /*! What a press and drag on the widget does. */
    enum DragPolicy : int { Nothing = 0, WindowMove = 1, AskParent = 2 };
    Q_ENUM(DragPolicy)

    /*! How the widget arranges its children. */
    enum LayoutType : int { None = 0, VBox = 1, HBox = 2, Flow = 3, Anchor = 4 };
    Q_ENUM(LayoutType)

    /*! Edges named in anchor texts; the values are those of Qt::AnchorPoint. */
    enum AnchorPoint : int { Left = 0, HCenter = 1, Right = 2, Top = 3, VCenter = 4, Bottom = 5 };
    Q_ENUM(AnchorPoint)

    /*! Keys of the gradient text form. */
    enum GradientKey : int { Start = 0, Final = 1, Center = 2, Radius = 3, Angle = 4, Color = 5, Spread = 6 };
    Q_ENUM(GradientKey)

    /*! Words of the gradient text's Spread key. */
    enum SpreadKey : int { Pad = 0, Repeat = 1, Reflect = 2 };
    Q_ENUM(SpreadKey)

    /*! Graphics-item flags reachable from documents (values of QGraphicsItem::GraphicsItemFlag). */
    enum WidgetFlag : int {
        Default = 0,
        Moveable = 1,
        ClipsToShape = 8,
        ClipsChildrenToShape = 16,
        IgnoresParentOpacity = 64,
        HasNoContents = 1024,
        ScenePosition = 65536,
        All = 66649
    };
    Q_DECLARE_FLAGS(WidgetFlags, WidgetFlag)
    Q_FLAG(WidgetFlags)

    /*! Whether the widget follows theme changes. */
    enum ThemePolicy : int { NoTheme = 0, ThemeWithParent = 1, HasTheme = 2 };
    Q_ENUM(ThemePolicy)

    Q_INVOKABLE explicit ZWidget(QGraphicsItem *parent = nullptr);
    ~ZWidget() override;

    // Hooks for subclasses, kept in this order.

    /*! Receives the element's XML node for content attributes cannot express. Does nothing here. */
    Q_INVOKABLE virtual void setData(const XMLNode *node);
    /*! Receives a value from application code. Does nothing here. */
    Q_INVOKABLE virtual void setData(const QVariant &value);
    using QGraphicsItem::setData;
    /*! The widget that children go into; containers return an inner widget. */
    virtual ZWidget *layoutWidget();
    /*! Makes \a item a child (object, then graphics) and adds it to the layout. */
    virtual void addItem(ZWidget *item);
    /*! As addItem(), inserting into the layout before \a index. */
    virtual void insertItem(ZWidget *item, int index);
    /*! Undoes addItem(): layout, graphics parent and object parent. */
    virtual void removeItem(ZWidget *item);
    /*!
     * The drag policy at \a pos (local coordinates). Returns dragPolicy();
     * text controls override it so that a press on text does not drag.
     */
    virtual DragPolicy hitTest(const QPointF &pos) const;
    /*! Called once after the loader has set the attributes and created the children. */
    virtual void construct();
    /*! Re-reads theme-dependent looks; re-applies the background here. */
    virtual void doThemeChange();
    /*! The layout type; containers report that of their inner widget. */
    virtual LayoutType layoutType() const;
    /*!
     * Installs a new layout, replacing (and deleting) the previous one:
     * VBox and HBox a QGraphicsLinearLayout, Anchor a QGraphicsAnchorLayout,
     * every other value a QGraphicsFlowLayout (None too, whose addLayoutItem()
     * adds nothing). Members of the old layout are not carried over. The
     * widget's margins, spacing and itemSpacing are applied to the new layout.
     */
    virtual void setLayoutType(LayoutType type);

    // Child management (see the class description).

    /*! Graphics parent first, then object parent; no layout. */
    void addChild(ZWidget *item);
    /*! Graphics parent only. */
    void addGraphicsItem(ZWidget *item);
    /*! Sets \a receiver as \a item's graphics parent; a null receiver makes it a top-level item. */
    static void addGraphicsItem(ZWidget *receiver, ZWidget *item);
    /*! Object parent only. */
    void addObjectItem(ZWidget *item);
    /*!
     * Adds \a item to the layout: VBox and HBox append it to the linear
     * layout, Flow to the flow layout; None and Anchor add nothing (an
     * anchored child places itself through its anchor). Nothing happens
     * without a layout.
     */
    void addLayoutItem(ZWidget *item);
    /*! As addLayoutItem(), inserting before \a index. */
    void insertLayoutItem(ZWidget *item, int index);
    void removeChild(ZWidget *item);
    void removeGraphicsItem(ZWidget *item);
    void removeObjectItem(ZWidget *item);
    /*! Takes \a item out of this widget's layout, whatever its type. */
    void removeLayoutItem(ZWidget *item);

    // Layout settings.

    int spacing() const;
    /*! Spacing of a box layout; negative values count as 0. */
    void setSpacing(int spacing);
    int itemSpacing() const;
    /*! Spacing between items and lines of a flow layout; negative takes the style's. */
    void setItemSpacing(int spacing);
    QMargins margins() const;
    /*! Contents margins of whichever layout is installed, now or later. */
    void setMargins(const QMargins &margins);
    QString anchor() const;
    /*!
     * Anchors this widget in its parent's anchor layout. \a anchor holds up to
     * four "Point:spacing" items separated by "|", read in the fixed order
     * left, top, right, bottom edge of this widget; Point is an AnchorPoint key
     * naming the parent layout's edge (unknown names count as Left), items
     * without ":" are skipped and unfilled slots mean Left with spacing 0. An
     * anchor joining a horizontal edge to a vertical one is dropped. So
     * "Left:10|Top:10|Right:10|Bottom:10" keeps the widget 10 units inside
     * every edge. Setting it again replaces the previous anchors. Without an
     * anchor layout in the parent only the text is kept.
     */
    void setAnchor(const QString &anchor);
    /*! The layout of the graphics parent, or null. */
    QGraphicsLayout *parentLayout() const;
    /*! The graphics parent's layout type; None when the parent is no ZWidget. */
    LayoutType parentLayoutType() const;
    /*! Lays out the children now instead of on the next event-loop turn. */
    void activateLayout();
    /*! Marks the layout as needing a new pass. */
    void invalidateLayout();

    // Sizes.

    qreal width() const { return size().width(); }
    qreal height() const { return size().height(); }
    qreal fixWidth() const;
    /*! Sets minimum, preferred and maximum width to \a width; a negative value (or NaN) unsets all three. */
    void setFixWidth(qreal width);
    qreal fixHeight() const;
    /*! As setFixWidth() for the height. */
    void setFixHeight(qreal height);
    QSizeF fixSize() const;
    void setFixSize(const QSizeF &size);

    bool sizeToChild() const;
    /*! Width and height follow calcIdealSize(). */
    void setSizeToChild(bool on);
    bool widthToChild() const;
    void setWidthToChild(bool on);
    bool heightToChild() const;
    void setHeightToChild(bool on);
    /*!
     * The size the children need, margins included, by layout type:
     * - VBox, HBox: the box layout's preferred size, i.e. along the axis the
     *   sum of the items' preferred sizes plus spacing, across it the largest,
     *   plus the margins;
     * - Anchor: the anchor layout's preferred size;
     * - Flow: the width of one line holding every item, and the height the
     *   items need at that width (at the current width when only the height
     *   follows the children);
     * - None: from the widget's origin to the right and bottom edges of the
     *   visible children's bounding box, plus the right and bottom margins.
     * The widget's own contents margins, if any, are added to the layout
     * results. The following dimensions use it as minimum, preferred and maximum size
     * hint; explicitly set hints (fixWidth and the like) still win.
     */
    QSizeF calcIdealSize() const;
    /*!
     * Re-evaluates the size hints now: a widget in a layout makes that layout
     * re-query them, a widget outside any layout is resized into its new
     * limits (and so to its ideal size in the dimensions that follow the
     * children). Runs by itself when children of a None or Flow widget move,
     * resize, appear or go.
     */
    void resetSizeHint();
    /*!
     * Forgets every explicitly set size hint (minimum, preferred, maximum and
     * the fixed width and height, which are made of them), so the size comes
     * from the layout and the children again. The to-child flags stay.
     */
    void clearSizeHint();

    // Looks.

    QColor backgroundColor() const;
    /*! Fills the background with \a color; an invalid colour removes the background. */
    void setBackgroundColor(const QColor &color);
    void setBackgroundColor(int r, int g, int b, int a = 255);
    QtGradient backgroundGradient() const;
    /*!
     * Fills the background with \a gradient, laid over rect() by the rules of
     * QtGradient (fractions of the rectangle when every coordinate is within
     * 0..1, logical units otherwise), so a relative gradient follows the
     * size. An invalid gradient removes the background.
     */
    void setBackgroundGradient(const QtGradient &gradient);
    QBrush backgroundBrush() const;
    /*!
     * Fills the background with \a brush. A brush of style Qt::NoBrush is kept
     * but changes nothing on screen: the previous fill stays. A gradient brush
     * is painted as setBackgroundGradient() paints its gradient; the brush's
     * own transform is not used.
     */
    void setBackgroundBrush(const QBrush &brush);
    /*! Removes any background. */
    void unsetBackgroundBrush();
    Qt::BrushStyle backgroundStyle() const;
    /*! Sets the style of the background brush (a colour is a brush of that colour). */
    void setBackgroundStyle(Qt::BrushStyle style);

    bool grayToDisable() const;
    /*!
     * Draws the widget in gray while it is disabled, through a colourise
     * effect that takes the item's graphics-effect slot while this is on.
     */
    void setGrayToDisable(bool on);

    qreal xRotate() const;
    /*! Rotation about the x axis through originPoint(); values that are not finite are ignored. */
    void setXRotate(qreal degrees);
    qreal yRotate() const;
    void setYRotate(qreal degrees);
    qreal zRotate() const;
    void setZRotate(qreal degrees);
    QPointF originPoint() const;
    /*! The point, in local coordinates, the three rotations turn about. */
    void setOriginPoint(const QPointF &origin);

    bool content() const;
    /*! Whether the widget paints content of its own; stored for subclasses that draw. */
    void setContent(bool on);

    // Placement in the parent.

    /*! Whether the widget is a member of its parent's layout. */
    bool bylayout() const;
    /*! Puts the widget into its parent's layout (addLayoutItem) or takes it out. */
    void setBylayout(bool on);
    Qt::Alignment alignment() const;
    /*! Alignment inside the parent's box layout, also applied when added to one later. */
    void setAlignment(Qt::Alignment alignment);

    // Behaviour.

    DragPolicy dragPolicy() const;
    void setDragPolicy(DragPolicy policy);
    /*!
     * The drag policy that applies to a press at \a scenePos on \a item: asks
     * hitTest() of the nearest ZWidget at or above \a item and, while the
     * answer is AskParent, of the next ZWidget above. Nothing when no widget
     * gives another answer.
     */
    static DragPolicy resolveDragPolicy(QGraphicsItem *item, const QPointF &scenePos);

    WidgetFlags widgetFlags() const;
    /*!
     * Sets or clears the item flags HasNoContents, ClipsChildrenToShape,
     * ClipsToShape, IgnoresParentOpacity and ScenePosition as given; other
     * item flags, Moveable included, are left alone.
     */
    void setWidgetFlags(WidgetFlags flags);
    bool itemPanel() const;
    void setItemPanel(bool on);
    Qt::ContextMenuPolicy contextMenuPolicy() const;
    /*!
     * NoContextMenu lets the request through to the items below,
     * PreventContextMenu swallows it, CustomContextMenu emits
     * customContextMenuRequested().
     */
    void setContextMenuPolicy(Qt::ContextMenuPolicy policy);
    /*! Which mouse buttons the widget accepts presses for. */
    Q_INVOKABLE void setAcceptedMouseButtons(Qt::MouseButtons buttons);

    ThemePolicy themePolicy() const;
    void setThemePolicy(ThemePolicy policy);
    /*!
     * Whether the widget takes part in theme changes: NoTheme no, HasTheme yes,
     * ThemeWithParent as the nearest ZWidget ancestor that is not
     * ThemeWithParent (no when there is none). The answer is cached.
     */
    bool hasTheme() const;
    /*! Drops the cached hasTheme() answer of this widget and its descendants. */
    void clearThemeCheckFlag();
    /*! Runs doThemeChange() on this widget and every ZWidget descendant that has a theme. */
    void changeTheme();

    QString xmlPath() const;
    void setXmlPath(const QString &path);
    QString skinName() const;
    /*! Names the skin (a property set defined by documents) applied to the widget. */
    void setSkinName(const QString &name);

    /*!
     * Sets a property from text as a document attribute does: \a name may be
     * a path through QObject* properties ("titlebar.fixHeight"), \a value is
     * converted by the property's type, and an undeclared name becomes a
     * dynamic string property. False only when the path does not resolve.
     * Same as ZXmlUI::setPropertyEx(this, name, value).
     */
    bool setPropertyEx(const char *name, const char *value);

    // Lookup and geometry.

    /*!
     * The nearest descendant named \a name, breadth first over object children
     * and graphics children alike; null when there is none.
     */
    QObject *findObject(const QString &name) const;
    /*! The first view showing the scene, or null. */
    QGraphicsView *view() const;
    /*! That view's viewport, or null. */
    QWidget *viewport() const;
    QRectF rectToScene() const;
    /*! The rectangle in viewport coordinates of view(); null without a view. */
    QRectF rectToView() const;
    /*! The rectangle in screen coordinates; null without a view. */
    QRectF rectToScreen() const;
    QRect geometryToScreen() const;
    /*! Whether the mouse cursor is over the widget in one of the scene's views. */
    bool isUnderMouseEx() const;
    /*! Removes events still queued for the widget when it is deleted. */
    void removeBadEventWhenDelete();

Q_SIGNALS:
    /*! The scene position changed; only with the ScenePosition widget flag. */
    void scenePosition(const QPointF &pos);
    /*! A context menu was asked for at \a pos (local) under CustomContextMenu. */
    void customContextMenuRequested(const QPointF &pos);

protected:
    ZWidget(ZWidgetPrivate &dd, QGraphicsItem *parent);

    /*! Told when the widget becomes visible or hidden. Does nothing here. */
    virtual void visibleEvent(bool visible);
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

    /*! Applies the background brush: palette Window role and autoFillBackground. */
    void updateBackgroundBrush();

    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    bool event(QEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void updateGeometry() override;

    std::unique_ptr<ZWidgetPrivate> d_zptr;

private Q_SLOTS:
    void on_enabledChanged();

private:
    Z_DECLARE_PRIVATE(ZWidget)
    Q_DISABLE_COPY(ZWidget)
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZWidget::WidgetFlags)

#endif // ZWIDGET_H

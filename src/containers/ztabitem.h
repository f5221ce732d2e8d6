#ifndef ZTABITEM_H
#define ZTABITEM_H

#include "zwidget.h"

class ZFrameItem;
class ZTabItemPrivate;

/*!
 * \brief One tab of a ZTabWidget: its header and the page it stands for.
 *
 * The header is drawn by a ZFrameItem (tabFrame) from four images joined by
 * "|": unselected, hover, selected and disabled, by default the embedded
 * "tabframe" images laid out as a nine-part grid. The selected image wins
 * over hover; disabled over both. The text is centred between the paddings,
 * elided when the header is too narrow. With closable on, a close button
 * sits at the right end and reports closeClicked().
 *
 * The tab carries its page (page, a ZWidget with a VBox layout): children a
 * document gives the tab go into the page, which the tab widget shows when
 * the tab is current. A tab deletes its page with itself.
 */
class ZKIT_EXPORT ZTabItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(int padding READ padding WRITE setPadding)
    Q_PROPERTY(bool closable READ closable WRITE setClosable)
    Q_PROPERTY(bool selected READ isSelected)
    Q_PROPERTY(QObject *page READ page)
    Q_PROPERTY(QObject *tabFrame READ tabFrame)
    Q_PROPERTY(QObject *closeButton READ closeButton)

public:
    /*! The default header images. */
    static const char *const DefaultImagePath;

    Q_INVOKABLE explicit ZTabItem(QGraphicsItem *parent = nullptr);
    explicit ZTabItem(const QString &text, QGraphicsItem *parent = nullptr);
    ~ZTabItem() override;

    QString text() const;
    void setText(const QString &text);
    QColor textColor() const;
    /*! An invalid colour is ignored. */
    void setTextColor(const QColor &color);
    QString imagePath() const;
    void setImagePath(const QString &path);
    int padding() const;
    /*! Space left and right of the text; clamped to 0..1000. */
    void setPadding(int padding);
    bool closable() const;
    void setClosable(bool on);

    bool isSelected() const;
    /*! Set by the tab widget as its current tab changes. */
    void setSelected(bool selected);

    /*! The page, or null when it has been deleted. */
    ZWidget *page() const;
    /*!
     * Makes \a page the tab's page; the previous one is deleted. A page
     * without an object parent gets the tab as its parent.
     */
    void setPage(ZWidget *page);
    ZFrameItem *tabFrame() const;
    /*! The close button, shown while closable. */
    ZFrameItem *closeButton() const;

    /*! Children go into the page. */
    ZWidget *layoutWidget() override;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

Q_SIGNALS:
    /*! A left press on the header. */
    void activated();
    void closeClicked();

protected:
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZTabItem)
    Q_DISABLE_COPY(ZTabItem)
};

#endif // ZTABITEM_H

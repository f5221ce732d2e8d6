#ifndef ZCOMBOBOXWIDGET_H
#define ZCOMBOBOXWIDGET_H

#include "zfollowwindow.h"
#include "zwidget.h"

class ZCommonListWidget;
class ZComboBoxWidgetPrivate;
class ZPopupListWindow;

/*!
 * \brief The drop-down selector: a skinned face showing the selected row and
 * a drop button that opens a list below (or above) it.
 *
 * The rows live in the drop list's ZCommonListModel; the face is built by
 * the subclasses through createContent() and friends.
 *
 * Choosing a row in the list selects it, emits indexChanged() and closes the
 * list. A press on a new row makes the list report both the new index and
 * the click, so that one click emits indexChanged() twice; both reactions
 * are wanted and the double signal is kept.
 */
class ZKIT_EXPORT ZComboBoxWidget : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString frameImage READ frameImage WRITE setFrameImage)
    Q_PROPERTY(QString buttonImage READ buttonImage WRITE setButtonImage)
    Q_PROPERTY(QString buttonIcon READ buttonIconPath WRITE setButtonIconPath)
    Q_PROPERTY(int buttonWidth READ buttonWidth WRITE setButtonWidth)
    Q_PROPERTY(int dropListMaxHeight READ dropListMaxHeight WRITE setDropListMaxHeight)
    Q_PROPERTY(int dropListMinWidth READ dropListMinWidth WRITE setDropListMinWidth)
    Q_PROPERTY(bool dropListShowUp READ dropListShowUp WRITE setDropListShowUp)
    Q_PROPERTY(int index READ selectIndex WRITE setSelectIndex NOTIFY indexChanged)
    Q_PROPERTY(QMargins contentMargins READ contentMargins WRITE setContentMargins)
    Q_PROPERTY(QMargins itemMargins READ itemMargins WRITE setItemMargins)
    Q_PROPERTY(QString itemsText READ itemsText WRITE setItemsText)
    Q_PROPERTY(QObject *dropButton READ dropButton)
    Q_PROPERTY(QObject *dropList READ dropList)
    Q_PROPERTY(QObject *dropListView READ dropListView)
    Q_PROPERTY(QObject *dropIcon READ dropIcon)

public:
    Q_INVOKABLE explicit ZComboBoxWidget(QGraphicsItem *parent = nullptr);
    ~ZComboBoxWidget() override;

    QString frameImage() const;
    void setFrameImage(const QString &images);
    QString buttonImage() const;
    void setButtonImage(const QString &images);
    QString buttonIconPath() const;
    void setButtonIconPath(const QString &path);
    int buttonWidth() const;
    /*! Negative values are ignored. */
    void setButtonWidth(int width);

    int dropListMaxHeight() const;
    /*! Negative values count as 0. */
    void setDropListMaxHeight(int height);
    int dropListMinWidth() const;
    /*! Negative values count as 0. */
    void setDropListMinWidth(int width);
    bool dropListShowUp() const;
    /*! Opens the list above the box (TopLeft) instead of below (BottomLeft). */
    void setDropListShowUp(bool up);

    QMargins contentMargins() const;
    void setContentMargins(const QMargins &margins);
    QMargins itemMargins() const;
    void setItemMargins(const QMargins &margins);

    // Rows, forwarded to the list.
    void addItem(const QString &text);
    void addItem(const QString &text, const QVariant &other);
    void addItem(const QString &text, const QString &icon, const QVariant &other);
    void insertItem(int index, const QString &text, const QString &icon, const QVariant &other);
    void removeItem(int index);
    void removeItem(const QString &text);
    void removeAll();
    void setItemsText(const QString &text);
    QString itemsText() const;
    int listCount() const;
    int indexOfText(const QString &text) const;
    QString itemText(int index) const;
    QString itemIcon(int index) const;
    QVariant itemOther(int index) const;

    int selectIndex() const;
    /*! Selects row \a index in the list, which reports it through indexChanged(). */
    void setSelectIndex(int index);
    void clearSelection();

    using ZWidget::addItem;
    using ZWidget::insertItem;
    using ZWidget::removeItem;

    QObject *dropButton() const;
    QObject *dropList() const;
    QObject *dropListView() const;
    QObject *dropIcon() const;
    ZPopupListWindow *dropListWindow() const;
    ZCommonListWidget *listWidget() const;
    /*! The area the face is built in. */
    ZWidget *contentWidget() const;

Q_SIGNALS:
    void indexChanged(int idx);

public Q_SLOTS:
    /*! Opens the list sized to its rows (within the limits); nothing when it has none. */
    virtual void showDropList();
    virtual void hideDropList();
    /*! Shows the drop button pressed while the list is open. */
    void stateChanged();

protected Q_SLOTS:
    void on_dropbutton_clicked();
    void on_aboutToHide(ZFollowWindow::HideFlag flag, bool *pbAborted);

protected:
    ZComboBoxWidget(ZComboBoxWidgetPrivate &dd, QGraphicsItem *parent);

    /*! Builds the face's children in \a content. Nothing here. */
    virtual void createContent(ZWidget *content);
    /*! Shows row \a index on the face. Nothing here. */
    virtual void updateContent(ZWidget *content, int index);
    /*! Shows no selection. Nothing here. */
    virtual void clearContent(ZWidget *content);
    /*! Removes the face's children. Nothing here. */
    virtual void deleteContent(ZWidget *content);
    /*! Runs createContent() on the box's own content area; subclasses call it once set up. */
    void setupContent();
    /*! Runs deleteContent() on it. */
    void cleanupContent();

    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    void on_dropList_indexChanged(int index);
    void on_dropList_itemClicked(int index, Qt::MouseButton button);

private:
    Z_DECLARE_PRIVATE(ZComboBoxWidget)
    Q_DISABLE_COPY(ZComboBoxWidget)
};

#endif // ZCOMBOBOXWIDGET_H

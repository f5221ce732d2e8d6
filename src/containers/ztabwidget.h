#ifndef ZTABWIDGET_H
#define ZTABWIDGET_H

#include "zwidget.h"

class ZStackedWidget;
class ZTabItem;
class ZTabWidgetPrivate;

/*!
 * \brief Pages behind a bar of tabs.
 *
 * A bar of ZTabItem headers (tabBar, tabHeight high, tabSpacing apart, left
 * aligned) above a ZStackedWidget (stack) holding the pages; pressing a
 * header makes its tab current, and the stack slides its page in (the
 * stack's own properties, e.g. stack.animated, steer the slide).
 *
 * In documents every ZTabItem child is a tab, and the tab's own children
 * fill its page:
 *
 *     <ZTabWidget tabsClosable="true">
 *       <ZTabItem text="General"> <ZLabel text="..."/> </ZTabItem>
 *       <ZTabItem text="Advanced"/>
 *     </ZTabWidget>
 *
 * Any other child becomes the page of a new tab without text.
 *
 * With tabsClosable every header shows a close button, which emits
 * tabCloseRequested(); removing the tab is the application's decision.
 * currentChanged() follows the stack's: every change of the current index
 * or page.
 */
class ZKIT_EXPORT ZTabWidget : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentChanged)
    Q_PROPERTY(int count READ count)
    Q_PROPERTY(bool tabsClosable READ tabsClosable WRITE setTabsClosable)
    Q_PROPERTY(int tabHeight READ tabHeight WRITE setTabHeight)
    Q_PROPERTY(int tabSpacing READ tabSpacing WRITE setTabSpacing)
    Q_PROPERTY(QObject *tabBar READ tabBar)
    Q_PROPERTY(QObject *stack READ stack)

public:
    Q_INVOKABLE explicit ZTabWidget(QGraphicsItem *parent = nullptr);
    ~ZTabWidget() override;

    /*! Adds \a tab (with its page) at the end; answers its index, -1 when refused. */
    int addTab(ZTabItem *tab);
    /*! Makes a tab with \a text for \a page and adds it; answers its index, -1 when refused. */
    int addTab(ZWidget *page, const QString &text);
    /*!
     * Inserts \a tab before \a index (out of range: at the end). A tab already
     * in this widget, or null, is refused with -1.
     */
    int insertTab(int index, ZTabItem *tab);
    int insertTab(int index, ZWidget *page, const QString &text);
    /*! Deletes tab \a index and its page; out of range does nothing. */
    Q_INVOKABLE void removeTab(int index);

    int count() const;
    Q_INVOKABLE ZTabItem *tabItem(int index) const;
    /*! The page of tab \a index, or null. */
    Q_INVOKABLE ZWidget *page(int index) const;
    /*! The index of the tab that is, or whose page is, \a widget; -1 if none. */
    Q_INVOKABLE int indexOf(const ZWidget *widget) const;

    /*! -1 without tabs. */
    int currentIndex() const;
    /*!
     * Makes tab \a index current. Out of range changes nothing now; a
     * non-negative index is kept for construct() (documents set it before the
     * tabs exist). A disabled tab can still be made current from code.
     */
    void setCurrentIndex(int index);

    bool tabsClosable() const;
    void setTabsClosable(bool on);
    int tabHeight() const;
    /*! Clamped to 0..10000. */
    void setTabHeight(int height);
    int tabSpacing() const;
    void setTabSpacing(int spacing);

    ZWidget *tabBar() const;
    ZStackedWidget *stack() const;

    /*! A ZTabItem becomes a tab; any other widget the page of a new tab without text. */
    void addItem(ZWidget *item) override;
    void insertItem(ZWidget *item, int index) override;
    /*!
     * Takes the tab that is, or whose page is, \a item out of the widget. The
     * caller owns the tab item afterwards, and the tab its page again.
     */
    void removeItem(ZWidget *item) override;
    void construct() override;
    /*! Ignored: the bar above the pages is the tab widget's arrangement. */
    void setLayoutType(LayoutType type) override;

Q_SIGNALS:
    void currentChanged(int index);
    void tabCloseRequested(int index);

private:
    Z_DECLARE_PRIVATE(ZTabWidget)
    Q_DISABLE_COPY(ZTabWidget)
};

#endif // ZTABWIDGET_H

#include "ztabwidget.h"
#include "ztabwidget_p.h"

#include "zcreator.h"
#include "zstackedwidget.h"
#include "ztabitem.h"

#include <QtWidgets/qgraphicslinearlayout.h>

int ZTabWidgetPrivate::indexOfObject(const QObject *object) const
{
    for (int i = 0; i < tabs.size(); ++i) {
        if (tabs.at(i).object == object)
            return i;
    }
    return -1;
}

void ZTabWidgetPrivate::syncSelection()
{
    const int current = stack->currentIndex();
    for (int i = 0; i < tabs.size(); ++i)
        tabs.at(i).item->setSelected(i == current);
}

// Drops tab \a index from the list and cuts its connections; the caller
// decides what happens to the item and the page.
void ZTabWidgetPrivate::forget(int index)
{
    Z_Q(ZTabWidget);
    const Tab tab = tabs.takeAt(index);
    QObject::disconnect(tab.item, nullptr, q, nullptr);
    if (tab.page)
        QObject::disconnect(tab.page, nullptr, q, nullptr);
    // The stack may have reported its new current page before the tab went.
    syncSelection();
}

void ZTabWidgetPrivate::onStackChanged(int index)
{
    Z_Q(ZTabWidget);
    syncSelection();
    if (index == lastCurrent)
        return;
    lastCurrent = index;
    Q_EMIT q->currentChanged(index);
}

ZTabWidget::ZTabWidget(QGraphicsItem *parent)
    : ZWidget(*new ZTabWidgetPrivate, parent)
{
    Z_D(ZTabWidget);
    ZWidget::setLayoutType(VBox);
    setSpacing(0);

    d->bar = new ZWidget;
    d->bar->setObjectName(QStringLiteral("tabBar"));
    d->bar->setLayoutType(HBox);
    d->bar->setSpacing(2);
    d->bar->setFixHeight(26);
    if (auto *linear = dynamic_cast<QGraphicsLinearLayout *>(d->bar->layout()))
        linear->addStretch(); // keeps the headers at the left
    ZWidget::insertItem(d->bar, -1);

    d->stack = new ZStackedWidget;
    d->stack->setObjectName(QStringLiteral("stack"));
    ZWidget::insertItem(d->stack, -1);
    connect(d->stack, &ZStackedWidget::currentChanged, this, [d](int index) { d->onStackChanged(index); });
}

ZTabWidget::~ZTabWidget()
{
    // The children outlive this part of the object: cut what reaches back.
    Z_D(ZTabWidget);
    d->stack->disconnect(this);
    for (const auto &tab : std::as_const(d->tabs)) {
        tab.item->disconnect(this);
        if (tab.page)
            tab.page->disconnect(this);
    }
}

int ZTabWidget::addTab(ZTabItem *tab)
{
    return insertTab(-1, tab);
}

int ZTabWidget::addTab(ZWidget *page, const QString &text)
{
    return insertTab(-1, page, text);
}

int ZTabWidget::insertTab(int index, ZWidget *page, const QString &text)
{
    Z_D(ZTabWidget);
    if (!page || indexOf(page) >= 0)
        return -1;
    auto *tab = new ZTabItem(text);
    const int at = d->insert(index, tab, page);
    if (at < 0) {
        delete tab;
        return -1;
    }
    // The given page takes the place of the one the tab came with.
    tab->setPage(page);
    return at;
}

int ZTabWidget::insertTab(int index, ZTabItem *tab)
{
    Z_D(ZTabWidget);
    if (!tab || indexOf(tab) >= 0)
        return -1;
    // A tab whose page was deleted gets an empty one, so that tabs and pages pair up.
    if (!tab->page())
        tab->setPage(new ZWidget);
    return d->insert(index, tab, tab->page());
}

int ZTabWidgetPrivate::insert(int index, ZTabItem *tab, ZWidget *page)
{
    Z_Q(ZTabWidget);
    if (index < 0 || index > tabs.size())
        index = int(tabs.size());
    bar->insertItem(tab, index);
    if (tab->parentItem() != bar)
        return -1;
    // Before the stack reports a new current page, the list must hold the tab.
    tabs.insert(index, {tab, tab, page, page});
    stack->insertItem(page, index);
    if (stack->indexOf(page) < 0) {
        // Refused (an ancestor of the tab widget): undo the header.
        tabs.removeAt(index);
        bar->removeItem(tab);
        return -1;
    }
    syncSelection();
    if (closable)
        tab->setClosable(true);
    QObject::connect(tab, &ZTabItem::activated, q, [q, tab] { q->setCurrentIndex(q->indexOf(tab)); });
    QObject::connect(tab, &ZTabItem::closeClicked, q, [q, tab] {
        const int i = q->indexOf(tab);
        if (i >= 0)
            Q_EMIT q->tabCloseRequested(i);
    });
    QObject::connect(tab, &QObject::destroyed, q, [this](QObject *object) {
        const int i = indexOfObject(object);
        if (i < 0)
            return;
        QPointer<ZWidget> orphan = tabs.at(i).page;
        forget(i);
        delete orphan.data();
    });
    QObject::connect(page, &QObject::destroyed, q, [this](QObject *object) {
        for (int i = 0; i < tabs.size(); ++i) {
            if (tabs.at(i).pageObject != object)
                continue;
            ZTabItem *item = tabs.at(i).item;
            forget(i);
            // The tab may be deleting its page in its own destructor: no delete here.
            bar->removeLayoutItem(item);
            item->hide();
            item->deleteLater();
            return;
        }
    });
    return index;
}

void ZTabWidget::removeTab(int index)
{
    Z_D(ZTabWidget);
    if (index < 0 || index >= d->tabs.size())
        return;
    const ZTabWidgetPrivate::Tab tab = d->tabs.at(index);
    d->forget(index);
    delete tab.page.data();
    delete tab.item;
}

int ZTabWidget::count() const
{
    return int(d_func()->tabs.size());
}

ZTabItem *ZTabWidget::tabItem(int index) const
{
    Z_D(const ZTabWidget);
    return index >= 0 && index < d->tabs.size() ? d->tabs.at(index).item : nullptr;
}

ZWidget *ZTabWidget::page(int index) const
{
    Z_D(const ZTabWidget);
    return index >= 0 && index < d->tabs.size() ? d->tabs.at(index).page.data() : nullptr;
}

int ZTabWidget::indexOf(const ZWidget *widget) const
{
    Z_D(const ZTabWidget);
    if (!widget)
        return -1;
    for (int i = 0; i < d->tabs.size(); ++i) {
        if (d->tabs.at(i).item == widget || d->tabs.at(i).page == widget)
            return i;
    }
    return -1;
}

int ZTabWidget::currentIndex() const
{
    return d_func()->stack->currentIndex();
}

void ZTabWidget::setCurrentIndex(int index)
{
    Z_D(ZTabWidget);
    if (index >= count()) {
        d->requested = index;
        return;
    }
    d->requested = -1;
    d->stack->setCurrentIndex(index);
}

bool ZTabWidget::tabsClosable() const
{
    return d_func()->closable;
}

void ZTabWidget::setTabsClosable(bool on)
{
    Z_D(ZTabWidget);
    if (d->closable == on)
        return;
    d->closable = on;
    for (const auto &tab : std::as_const(d->tabs))
        tab.item->setClosable(on);
}

int ZTabWidget::tabHeight() const
{
    return int(d_func()->bar->fixHeight());
}

void ZTabWidget::setTabHeight(int height)
{
    d_func()->bar->setFixHeight(qBound(0, height, 10000));
}

int ZTabWidget::tabSpacing() const
{
    return d_func()->bar->spacing();
}

void ZTabWidget::setTabSpacing(int spacing)
{
    d_func()->bar->setSpacing(spacing);
}

ZWidget *ZTabWidget::tabBar() const
{
    return d_func()->bar;
}

ZStackedWidget *ZTabWidget::stack() const
{
    return d_func()->stack;
}

void ZTabWidget::addItem(ZWidget *item)
{
    insertItem(item, -1);
}

void ZTabWidget::insertItem(ZWidget *item, int index)
{
    if (auto *tab = qobject_cast<ZTabItem *>(item))
        insertTab(index, tab);
    else
        insertTab(index, item, QString());
}

void ZTabWidget::removeItem(ZWidget *item)
{
    Z_D(ZTabWidget);
    const int index = indexOf(item);
    if (index < 0)
        return;
    const ZTabWidgetPrivate::Tab tab = d->tabs.at(index);
    d->forget(index);
    if (tab.page) {
        d->stack->removeItem(tab.page);
        tab.page->setParent(tab.item);
    }
    d->bar->removeItem(tab.item);
    tab.item->setSelected(false);
}

void ZTabWidget::setLayoutType(LayoutType)
{
}

void ZTabWidget::construct()
{
    Z_D(ZTabWidget);
    ZWidget::construct();
    if (d->requested >= 0) {
        const bool animated = d->stack->animated();
        d->stack->setAnimated(false);
        setCurrentIndex(d->requested);
        d->stack->setAnimated(animated);
    }
}

Z_REGISTER_WIDGET(ZTabWidget);

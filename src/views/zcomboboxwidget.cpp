#include "zcomboboxwidget.h"
#include "zcomboboxwidget_p.h"

#include "zcommonlistwidget.h"
#include "zcreator.h"
#include "zframeitem.h"
#include "zicon.h"
#include "zpopuplistwindow.h"
#include "zspacer.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qevent.h>
#include <QtWidgets/qgraphicssceneevent.h>

Z_REGISTER_WIDGET(ZComboBoxWidget);

namespace {

const char FrameImages[] =
    ":/image/theme/roundframe_normal.png|:/image/theme/roundframe_hover.png|:/image/theme/roundframe_down.png";
// Kept as it has always been: no separator between the fourth and fifth paths.
const char ButtonImages[] =
    ":/image/theme/comboboxbutton_normal.png|:/image/theme/comboboxbutton_hover.png|"
    ":/image/theme/comboboxbutton_down.png|:/image/theme/comboboxbutton_normal.png"
    ":/image/theme/comboboxbutton_normal.png|:/image/theme/comboboxbutton_hover.png|"
    ":/image/theme/comboboxbutton_down.png|:/image/theme/comboboxbutton_normal.png";
const char ButtonIcon[] = ":/image/theme/comboboxbutton_icon.png";

} // namespace

void ZComboBoxWidgetPrivate::init()
{
    Z_Q(ZComboBoxWidget);
    q->setFlag(QGraphicsItem::ItemHasNoContents, true);
    q->setLayoutType(ZWidget::HBox);
    q->setMargins(QMargins(1, 1, 1, 1));
    q->setSpacing(0);
    q->setAcceptHoverEvents(true);

    frame = new ZFrameItem(QString::fromLatin1(FrameImages), ZFrameItem::GridFour, q);
    frame->setObjectName(QStringLiteral("frame"));
    frame->setZValue(-1);

    content = new ZSpacer;
    content->setObjectName(QStringLiteral("content"));
    content->setLayoutType(ZWidget::HBox);
    q->ZWidget::addItem(content);

    button = new ZFrameItem;
    button->setObjectName(QStringLiteral("dropbutton"));
    button->setImagePath(QString::fromLatin1(ButtonImages));
    button->setFrameType(ZFrameItem::GridFour);
    button->setFrameSwitch(true);
    button->setAcceptClick(true);
    button->setAcceptHover(true);
    button->setFixWidthByPixmapWidth();
    button->setLayoutType(ZWidget::HBox);
    q->ZWidget::addItem(button);

    buttonIconPath = QString::fromLatin1(ButtonIcon);
    icon = new ZIcon;
    icon->setObjectName(QStringLiteral("dropicon"));
    icon->setIconPath(buttonIconPath);
    icon->setAcceptedMouseButtons(Qt::NoButton);
    button->addItem(icon);

    listWindow = new ZPopupListWindow;
    listWindow->setObjectName(QStringLiteral("dropList"));
    listWindow->setTarget(q);
    listWindow->setDirection(ZFollowWindow::BottomLeft);
    // Every reason to hide except a press on the list itself.
    listWindow->setHideFlags(ZFollowWindow::HideFlags::fromInt(~uint(ZFollowWindow::ClickAtMySelf)));
    listView = listWindow->listWidget();

    QObject::connect(listView.data(), SIGNAL(indexChanged(int)), q, SLOT(on_dropList_indexChanged(int)));
    QObject::connect(listView.data(), SIGNAL(itemClicked(int,Qt::MouseButton)), q,
                     SLOT(on_dropList_itemClicked(int,Qt::MouseButton)));
    QObject::connect(listWindow.data(), SIGNAL(visibleChanged()), q, SLOT(stateChanged()));
    QObject::connect(listWindow.data(), SIGNAL(aboutToHide(ZFollowWindow::HideFlag,bool*)), q,
                     SLOT(on_aboutToHide(ZFollowWindow::HideFlag,bool*)));
    QObject::connect(button.data(), SIGNAL(clicked()), q, SLOT(on_dropbutton_clicked()));
}

void ZComboBoxWidgetPrivate::choose(int index)
{
    Z_Q(ZComboBoxWidget);
    if (index >= 0) {
        if (listView)
            listView->setSelectIndex(index);
        if (content)
            q->updateContent(content, index);
        Q_EMIT q->indexChanged(index);
    }
    q->hideDropList();
}

ZComboBoxWidget::ZComboBoxWidget(QGraphicsItem *parent)
    : ZComboBoxWidget(*new ZComboBoxWidgetPrivate, parent)
{
}

ZComboBoxWidget::ZComboBoxWidget(ZComboBoxWidgetPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZComboBoxWidget::~ZComboBoxWidget()
{
    Z_D(ZComboBoxWidget);
    if (d->filtering)
        qApp->removeEventFilter(this);
    if (d->listWindow) {
        d->listWindow->disconnect(this);
        if (d->listView)
            d->listView->disconnect(this);
        delete d->listWindow.data();
    }
}

QString ZComboBoxWidget::frameImage() const
{
    Z_D(const ZComboBoxWidget);
    return d->frame ? d->frame->imagePath() : QString();
}

void ZComboBoxWidget::setFrameImage(const QString &images)
{
    Z_D(ZComboBoxWidget);
    if (d->frame && d->frame->imagePath() != images)
        d->frame->setImagePath(images);
}

QString ZComboBoxWidget::buttonImage() const
{
    Z_D(const ZComboBoxWidget);
    return d->button ? d->button->imagePath() : QString();
}

void ZComboBoxWidget::setButtonImage(const QString &images)
{
    Z_D(ZComboBoxWidget);
    if (!d->button || d->button->imagePath() == images)
        return;
    d->button->setImagePath(images);
    d->button->setFixWidthByPixmapWidth();
}

QString ZComboBoxWidget::buttonIconPath() const
{
    return d_func()->buttonIconPath;
}

void ZComboBoxWidget::setButtonIconPath(const QString &path)
{
    Z_D(ZComboBoxWidget);
    if (d->buttonIconPath == path)
        return;
    d->buttonIconPath = path;
    if (d->icon)
        d->icon->setIconPath(path);
}

int ZComboBoxWidget::buttonWidth() const
{
    Z_D(const ZComboBoxWidget);
    return d->button ? int(d->button->fixWidth()) : 0;
}

void ZComboBoxWidget::setButtonWidth(int width)
{
    Z_D(ZComboBoxWidget);
    if (width < 0 || !d->button || int(d->button->fixWidth()) == width)
        return;
    d->button->setFixWidth(width);
}

int ZComboBoxWidget::dropListMaxHeight() const
{
    return d_func()->dropListMaxHeight;
}

void ZComboBoxWidget::setDropListMaxHeight(int height)
{
    d_func()->dropListMaxHeight = qMax(0, height);
}

int ZComboBoxWidget::dropListMinWidth() const
{
    return d_func()->dropListMinWidth;
}

void ZComboBoxWidget::setDropListMinWidth(int width)
{
    d_func()->dropListMinWidth = qMax(0, width);
}

bool ZComboBoxWidget::dropListShowUp() const
{
    return d_func()->dropListShowUp;
}

void ZComboBoxWidget::setDropListShowUp(bool up)
{
    Z_D(ZComboBoxWidget);
    if (d->dropListShowUp == up)
        return;
    d->dropListShowUp = up;
    if (d->listWindow)
        d->listWindow->setDirection(up ? ZFollowWindow::TopLeft : ZFollowWindow::BottomLeft);
}

QMargins ZComboBoxWidget::contentMargins() const
{
    return d_func()->contentMargins;
}

void ZComboBoxWidget::setContentMargins(const QMargins &margins)
{
    Z_D(ZComboBoxWidget);
    if (d->contentMargins == margins)
        return;
    d->contentMargins = margins;
    if (d->content)
        d->content->setMargins(margins);
}

QMargins ZComboBoxWidget::itemMargins() const
{
    Z_D(const ZComboBoxWidget);
    return d->listView ? d->listView->itemMargins() : QMargins();
}

void ZComboBoxWidget::setItemMargins(const QMargins &margins)
{
    Z_D(ZComboBoxWidget);
    if (d->listView)
        d->listView->setItemMargins(margins);
}

void ZComboBoxWidget::addItem(const QString &text)
{
    if (ZCommonListWidget *list = listWidget())
        list->addItem(text);
}

void ZComboBoxWidget::addItem(const QString &text, const QVariant &other)
{
    if (ZCommonListWidget *list = listWidget())
        list->addItem(text, other);
}

void ZComboBoxWidget::addItem(const QString &text, const QString &icon, const QVariant &other)
{
    if (ZCommonListWidget *list = listWidget())
        list->addItem(text, icon, other);
}

void ZComboBoxWidget::insertItem(int index, const QString &text, const QString &icon, const QVariant &other)
{
    if (ZCommonListWidget *list = listWidget())
        list->insertItem(index, text, icon, other);
}

void ZComboBoxWidget::removeItem(int index)
{
    if (ZCommonListWidget *list = listWidget())
        list->removeItem(index);
}

void ZComboBoxWidget::removeItem(const QString &text)
{
    if (ZCommonListWidget *list = listWidget())
        list->removeItem(text);
}

void ZComboBoxWidget::removeAll()
{
    Z_D(ZComboBoxWidget);
    if (d->listView)
        d->listView->removeAll();
    if (d->content)
        clearContent(d->content);
}

void ZComboBoxWidget::setItemsText(const QString &text)
{
    Z_D(ZComboBoxWidget);
    if (d->listView)
        d->listView->setItemsText(text);
    if (d->content)
        clearContent(d->content);
}

QString ZComboBoxWidget::itemsText() const
{
    ZCommonListWidget *list = listWidget();
    return list ? list->itemsText() : QString();
}

int ZComboBoxWidget::listCount() const
{
    ZCommonListWidget *list = listWidget();
    return list ? list->count() : 0;
}

int ZComboBoxWidget::indexOfText(const QString &text) const
{
    ZCommonListWidget *list = listWidget();
    return list ? list->indexOfText(text) : -1;
}

QString ZComboBoxWidget::itemText(int index) const
{
    ZCommonListWidget *list = listWidget();
    return list ? list->itemData(index).value(Qt::DisplayRole).toString() : QString();
}

QString ZComboBoxWidget::itemIcon(int index) const
{
    ZCommonListWidget *list = listWidget();
    return list ? list->itemData(index).value(Qt::DecorationRole).toString() : QString();
}

QVariant ZComboBoxWidget::itemOther(int index) const
{
    ZCommonListWidget *list = listWidget();
    return list ? list->itemData(index).value(Qt::ItemDataRole(33)) : QVariant();
}

int ZComboBoxWidget::selectIndex() const
{
    ZCommonListWidget *list = listWidget();
    return list ? list->selectIndex() : -1;
}

void ZComboBoxWidget::setSelectIndex(int index)
{
    if (ZCommonListWidget *list = listWidget())
        list->setSelectIndex(index);
}

void ZComboBoxWidget::clearSelection()
{
    Z_D(ZComboBoxWidget);
    if (d->listView)
        d->listView->clearSelected();
    if (d->content)
        clearContent(d->content);
}

QObject *ZComboBoxWidget::dropButton() const
{
    return d_func()->button.data();
}

QObject *ZComboBoxWidget::dropList() const
{
    return d_func()->listWindow.data();
}

QObject *ZComboBoxWidget::dropListView() const
{
    return d_func()->listView.data();
}

QObject *ZComboBoxWidget::dropIcon() const
{
    return d_func()->icon.data();
}

ZPopupListWindow *ZComboBoxWidget::dropListWindow() const
{
    return d_func()->listWindow.data();
}

ZCommonListWidget *ZComboBoxWidget::listWidget() const
{
    return d_func()->listView.data();
}

ZWidget *ZComboBoxWidget::contentWidget() const
{
    return d_func()->content.data();
}

void ZComboBoxWidget::showDropList()
{
    Z_D(ZComboBoxWidget);
    if (!d->listView || !d->listWindow || d->listView->count() <= 0)
        return;
    int h = d->listView->itemsHeight() + 2;
    if (h <= 0 || h > d->dropListMaxHeight)
        h = d->dropListMaxHeight;
    const int boxWidth = int(width());
    const int w = boxWidth > d->dropListMinWidth ? boxWidth : d->dropListMinWidth;
    d->listWindow->setWindowSize(w, h);
    d->listWindow->resetGeometry();
    d->listWindow->show();
}

void ZComboBoxWidget::hideDropList()
{
    Z_D(ZComboBoxWidget);
    if (d->listWindow && d->listWindow->isVisible())
        d->listWindow->hide();
}

void ZComboBoxWidget::stateChanged()
{
    Z_D(ZComboBoxWidget);
    const bool open = d->listWindow && d->listWindow->isVisible();
    if (d->button) {
        if (open)
            d->button->setDown();
        else
            d->button->setNormal();
    }
    // Presses in other windows close the list; watch only while it is open.
    if (open != d->filtering) {
        d->filtering = open;
        if (open)
            qApp->installEventFilter(this);
        else
            qApp->removeEventFilter(this);
    }
}

void ZComboBoxWidget::on_dropbutton_clicked()
{
    Z_D(ZComboBoxWidget);
    if (d->listWindow && d->listWindow->isVisible())
        hideDropList();
    else
        showDropList();
}

void ZComboBoxWidget::on_aboutToHide(ZFollowWindow::HideFlag flag, bool *pbAborted)
{
    Z_D(ZComboBoxWidget);
    if (pbAborted && flag == ZFollowWindow::TargetWindowInactive && d->listView && d->listView->isUnderMouseEx())
        *pbAborted = true;
}

void ZComboBoxWidget::on_dropList_indexChanged(int index)
{
    d_func()->choose(index);
}

void ZComboBoxWidget::on_dropList_itemClicked(int index, Qt::MouseButton button)
{
    Q_UNUSED(button);
    d_func()->choose(index);
}

void ZComboBoxWidget::createContent(ZWidget *content)
{
    Q_UNUSED(content);
}

void ZComboBoxWidget::updateContent(ZWidget *content, int index)
{
    Q_UNUSED(content);
    Q_UNUSED(index);
}

void ZComboBoxWidget::clearContent(ZWidget *content)
{
    Q_UNUSED(content);
}

void ZComboBoxWidget::deleteContent(ZWidget *content)
{
    Q_UNUSED(content);
}

void ZComboBoxWidget::setupContent()
{
    Z_D(ZComboBoxWidget);
    if (d->content)
        createContent(d->content);
}

void ZComboBoxWidget::cleanupContent()
{
    Z_D(ZComboBoxWidget);
    if (d->content)
        deleteContent(d->content);
}

void ZComboBoxWidget::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    Z_D(ZComboBoxWidget);
    if (d->frame)
        d->frame->setGeometry(QRectF(QPointF(0, 0), event->newSize()));
}

void ZComboBoxWidget::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverEnterEvent(event);
    if (ZFrameItem *frame = d_func()->frame)
        frame->setHover();
}

void ZComboBoxWidget::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverLeaveEvent(event);
    if (ZFrameItem *frame = d_func()->frame)
        frame->setNormal();
}

bool ZComboBoxWidget::eventFilter(QObject *watched, QEvent *event)
{
    Z_D(ZComboBoxWidget);
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType() && d->listWindow
        && d->listWindow->isVisible()) {
        const QPoint global = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
        // The list's own presses choose a row, which closes it anyway.
        if (!geometryToScreen().contains(global) && !d->listWindow->frameGeometry().contains(global))
            QMetaObject::invokeMethod(this, "hideDropList", Qt::QueuedConnection);
    }
    return ZWidget::eventFilter(watched, event);
}

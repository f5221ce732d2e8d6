#include "ztitlebar_p.h"

#include "zcreator.h"
#include "zframeitem.h"
#include "zimageitem.h"
#include "zlabel.h"
#include "zpopupwindow.h"

#include <QGraphicsLinearLayout>
#include <QGraphicsSceneMouseEvent>
#include <QMetaObject>

#include <algorithm>

namespace {

QString stateImages(const char *name)
{
    const QString base = QStringLiteral(":/image/theme/") + QLatin1String(name);
    return base + QStringLiteral("_normal.png|") + base + QStringLiteral("_hover.png|") + base
           + QStringLiteral("_down.png");
}

} // namespace

ZTitlebar *zInstallTitlebar(ZWindow *window)
{
    auto *bar = new ZTitlebar;
    bar->setObjectName(QStringLiteral("titlebar"));
    window->rootWidget()->insertItem(bar, 0);
    return bar;
}

// --- private ---------------------------------------------------------------

void ZTitlebarPrivate::init()
{
    Z_Q(ZTitlebar);
    iconPath = QStringLiteral(":/image/theme/titleicon.png");
    maximumPath = stateImages("framemax");
    restorePath = stateImages("framerestore");
    minimumPath = stateImages("framemin");
    closePath = stateImages("frameclose");

    q->setLayoutType(ZWidget::HBox);
    q->setSpacing(2);
    q->setMargins(QMargins(6, 0, 4, 0));
    q->setFixHeight(ZTitlebar::DefaultHeight);
    q->setDragPolicy(ZWidget::WindowMove);
    // Presses are taken so that the double click comes to the bar.
    q->setAcceptedMouseButtons(Qt::LeftButton);

    auto *image = new ZImageItem;
    image->setObjectName(QStringLiteral("titlebarIcon"));
    image->setImagePath(iconPath);
    image->setFixSize(image->pixmapSize());
    image->setAlignment(Qt::AlignVCenter);
    q->addItem(image);
    QObject::connect(image, &ZImageItem::clicked, q, &ZTitlebar::buttonClicked);
    icon = image;

    auto *label = new ZLabel;
    label->setObjectName(QStringLiteral("titlebarTitle"));
    label->setTextElidedMode(Qt::ElideRight);
    label->setTextMargins(QMargins(4, 0, 4, 0));
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    q->addItem(label);
    titleLabel = label;

    minButton = makeButton(QStringLiteral("minButton"), minimumPath);
    maxButton = makeButton(QStringLiteral("maxButton"), maximumPath);
    closeButton = makeButton(QStringLiteral("closeButton"), closePath);
    applyButtonVisibility();
}

ZFrameItem *ZTitlebarPrivate::makeButton(const QString &name, const QString &images)
{
    Z_Q(ZTitlebar);
    auto *button = new ZFrameItem;
    button->setObjectName(name);
    button->setFrameType(ZFrameItem::OneHVCenter);
    button->setAcceptClick(true);
    button->setAcceptHover(true);
    // A press on a window button must not drag the window.
    button->setDragPolicy(ZWidget::Nothing);
    button->setAlignment(Qt::AlignVCenter);
    button->setImagePath(images);
    button->setFixSizeByPixmapSize();
    q->addItem(button);
    QObject::connect(button, &ZFrameItem::clicked, q, &ZTitlebar::buttonClicked);
    return button;
}

ZWindow *ZTitlebarPrivate::window() const
{
    return qobject_cast<ZWindow *>(q_func()->view());
}

void ZTitlebarPrivate::applyButtonImages(ZFrameItem *button, const QString &path)
{
    if (!button || path.isEmpty() || button->imagePath() == path)
        return;
    button->setImagePath(path);
    button->setFixSizeByPixmapSize();
}

void ZTitlebarPrivate::applyButtonVisibility()
{
    // Hidden items take no room in the row.
    if (icon)
        icon->setVisible(!iconPath.isEmpty() && !icon->pixmap().isNull());
    if (minButton)
        minButton->setVisible(offersMinimum && !minimumPath.isEmpty());
    if (maxButton)
        maxButton->setVisible(offersMaximum && !(showsRestore ? restorePath : maximumPath).isEmpty());
    if (closeButton)
        closeButton->setVisible(offersClose && !closePath.isEmpty());
}

void ZTitlebarPrivate::applyTitleFont()
{
    if (titleLabel)
        titleLabel->setBold(titleBold);
}

// --- ZTitlebar -------------------------------------------------------------

ZTitlebar::ZTitlebar(QGraphicsItem *parent)
    : ZTitlebar(*new ZTitlebarPrivate, parent)
{
}

ZTitlebar::ZTitlebar(ZTitlebarPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZTitlebar::~ZTitlebar() = default;

bool ZTitlebar::iconClickExit() const
{
    return d_func()->iconClickExit;
}

void ZTitlebar::setIconClickExit(bool on)
{
    Z_D(ZTitlebar);
    if (d->iconClickExit == on)
        return;
    d->iconClickExit = on;
    if (d->icon) {
        d->icon->setAcceptClick(on);
        // Without the click the icon is part of the caption and drags.
        d->icon->setDragPolicy(on ? ZWidget::Nothing : ZWidget::AskParent);
    }
}

QString ZTitlebar::iconPath() const
{
    return d_func()->iconPath;
}

void ZTitlebar::setIconPath(const QString &path)
{
    Z_D(ZTitlebar);
    if (d->iconPath == path)
        return;
    d->iconPath = path;
    if (d->icon) {
        if (path.isEmpty()) {
            d->icon->setPixmap(QPixmap());
        } else {
            d->icon->setImagePath(path);
        }
        d->icon->setFixSize(d->icon->pixmapSize());
    }
    d->applyButtonVisibility();
}

QString ZTitlebar::maximumPath() const
{
    return d_func()->maximumPath;
}

void ZTitlebar::setMaximumPath(const QString &path)
{
    Z_D(ZTitlebar);
    if (d->maximumPath == path)
        return;
    d->maximumPath = path;
    if (!d->showsRestore)
        d->applyButtonImages(d->maxButton, path);
    d->applyButtonVisibility();
}

QString ZTitlebar::restorePath() const
{
    return d_func()->restorePath;
}

void ZTitlebar::setRestorePath(const QString &path)
{
    Z_D(ZTitlebar);
    if (d->restorePath == path)
        return;
    d->restorePath = path;
    if (d->showsRestore)
        d->applyButtonImages(d->maxButton, path);
    d->applyButtonVisibility();
}

QString ZTitlebar::minimumPath() const
{
    return d_func()->minimumPath;
}

void ZTitlebar::setMinimumPath(const QString &path)
{
    Z_D(ZTitlebar);
    if (d->minimumPath == path)
        return;
    d->minimumPath = path;
    d->applyButtonImages(d->minButton, path);
    d->applyButtonVisibility();
}

QString ZTitlebar::closePath() const
{
    return d_func()->closePath;
}

void ZTitlebar::setClosePath(const QString &path)
{
    Z_D(ZTitlebar);
    if (d->closePath == path)
        return;
    d->closePath = path;
    d->applyButtonImages(d->closeButton, path);
    d->applyButtonVisibility();
}

int ZTitlebar::titlebarHeight() const
{
    const qreal fixed = fixHeight();
    return qRound(fixed >= 0 ? fixed : size().height());
}

void ZTitlebar::setTitlebarHeight(int height)
{
    if (height < 0)
        return;
    height = std::min(height, int(MaximumHeight));
    if (height != titlebarHeight())
        setFixHeight(height);
}

QString ZTitlebar::title() const
{
    return d_func()->title;
}

void ZTitlebar::setTitle(const QString &title)
{
    Z_D(ZTitlebar);
    if (d->title == title)
        return;
    d->title = title;
    if (d->titleLabel)
        d->titleLabel->setText(title);
    if (ZWindow *w = d->window())
        w->setWindowTitle(title);
}

QColor ZTitlebar::titleColor() const
{
    return d_func()->titleColor;
}

void ZTitlebar::setTitleColor(const QColor &color)
{
    Z_D(ZTitlebar);
    if (d->titleColor == color)
        return;
    d->titleColor = color;
    if (d->titleLabel)
        d->titleLabel->setTextColor(color);
}

bool ZTitlebar::titleBold() const
{
    return d_func()->titleBold;
}

void ZTitlebar::setTitleBold(bool bold)
{
    Z_D(ZTitlebar);
    if (d->titleBold == bold)
        return;
    d->titleBold = bold;
    d->applyTitleFont();
}

bool ZTitlebar::doubleClick() const
{
    const auto *popup = qobject_cast<ZPopupWindow *>(d_func()->window());
    return popup && popup->maximumButton();
}

ZImageItem *ZTitlebar::iconItem() const
{
    return d_func()->icon;
}

ZLabel *ZTitlebar::titleText() const
{
    return d_func()->titleLabel;
}

ZFrameItem *ZTitlebar::minButton() const
{
    return d_func()->minButton;
}

ZFrameItem *ZTitlebar::maxButton() const
{
    return d_func()->maxButton;
}

ZFrameItem *ZTitlebar::closeButton() const
{
    return d_func()->closeButton;
}

void ZTitlebar::appendButton(ZWidget *button)
{
    Z_D(ZTitlebar);
    d->appended.removeAll(nullptr);
    if (!button || button == this || d->appended.contains(button) || button->parentItem() == this)
        return;
    // Before the first window button that is still there, hidden or not.
    auto *row = dynamic_cast<QGraphicsLinearLayout *>(layout());
    int index = row ? row->count() : 0;
    if (row) {
        for (int i = 0; i < row->count(); ++i) {
            QGraphicsLayoutItem *item = row->itemAt(i);
            if (item == d->minButton.data() || item == d->maxButton.data() || item == d->closeButton.data()) {
                index = i;
                break;
            }
        }
    }
    // A button taken from another layout must leave it, or that layout
    // would go on placing it.
    if (auto *previous = dynamic_cast<QGraphicsLayout *>(button->parentLayoutItem())) {
        for (int i = previous->count() - 1; i >= 0; --i) {
            if (previous->itemAt(i) == button)
                previous->removeAt(i);
        }
    }
    if (!button->alignment())
        button->setAlignment(Qt::AlignVCenter);
    insertItem(button, index);
    d->appended.append(button);
}

void ZTitlebar::updateTitelbar()
{
    Z_D(ZTitlebar);
    ZWindow *w = d->window();
    const auto *popup = qobject_cast<ZPopupWindow *>(w);
    d->offersMinimum = popup && popup->minimumButton();
    d->offersMaximum = popup && popup->maximumButton();
    d->offersClose = !popup || popup->windowStyle().testFlag(ZPopupWindow::CloseButton);
    d->showsRestore = popup ? popup->isWindowMaximized() : (w && w->isMaximized());
    d->applyButtonImages(d->maxButton, d->showsRestore ? d->restorePath : d->maximumPath);
    d->applyButtonVisibility();
}

void ZTitlebar::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        event->accept();
    else
        ZWidget::mousePressEvent(event);
}

void ZTitlebar::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZTitlebar);
    ZWindow *w = d->window();
    if (event->button() != Qt::LeftButton || !w || !doubleClick()) {
        ZWidget::mouseDoubleClickEvent(event);
        return;
    }
    event->accept();
    w->showMaximizeOrRestore();
    updateTitelbar();
}

void ZTitlebar::buttonClicked()
{
    Z_D(ZTitlebar);
    ZWindow *w = d->window();
    QObject *from = sender();
    if (!w || !from)
        return;
    if (from == d->minButton) {
        w->showMinimized();
    } else if (from == d->maxButton) {
        w->showMaximizeOrRestore();
        updateTitelbar();
    } else if (from == d->closeButton || (from == d->icon && d->iconClickExit)) {
        // The window decides what its close button means (a message box
        // answers 2); other windows simply close.
        if (qobject_cast<ZPopupWindow *>(w))
            QMetaObject::invokeMethod(w, "onCloseClick");
        else
            w->close();
    }
}

Z_REGISTER_WIDGET(ZTitlebar);

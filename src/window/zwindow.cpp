#include "zwindow_p.h"
#include "zcreator.h"
#include "zspacer.h"
#include "ztheme.h"
#include "zthemechangeevent.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGraphicsScene>
#include <QMetaObject>

ZWindowPrivate::ZWindowPrivate(ZWindow *q)
    : q_zptr(q)
{
}

ZWindowPrivate::~ZWindowPrivate() = default;

ZWindow::ZWindow(QWidget *parent)
    : QGraphicsView(parent)
    , d_zptr(new ZWindowPrivate(this))
{
    init();
}

ZWindow::ZWindow(ZWindowPrivate &dd, QWidget *parent)
    : QGraphicsView(parent)
    , d_zptr(&dd)
{
    init();
}

ZWindow::~ZWindow()
{
    QCoreApplication::removePostedEvents(this);
    // The scene (a child of the view) deletes the root widget with it.
}

void ZWindow::init()
{
    Z_D(ZWindow);
    QCoreApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAttribute(Qt::WA_NativeWindow, false);
    setWindowFlags(windowFlags() & ~Qt::Window);
    setStyleSheet(QStringLiteral("QGraphicsView { border-style: none}"));

    d->scene = new QGraphicsScene(this);
    // A window's items are few and move with their layouts: the BSP index
    // only costs here (items added before it is built are kept in a list
    // that every removal searches, which makes tearing a large window down
    // quadratic).
    d->scene->setItemIndexMethod(QGraphicsScene::NoIndex);
    setScene(d->scene);

    d->root = new ZSpacer;
    d->root->setLayoutType(ZWidget::VBox);
    d->root->setDragPolicy(ZWidget::WindowMove);
    d->root->setFlag(QGraphicsItem::ItemClipsChildrenToShape, true);
    d->root->setParent(d->scene);
    d->scene->addItem(d->root);

    d->viewportTimer = new QTimer(this);
    connect(d->viewportTimer, &QTimer::timeout, this, &ZWindow::on_viewport_update_bugfix);
    setViewportUpdateMode(QGraphicsView::BoundingRectViewportUpdate);

    if (parentWidget())
        d->scene->setFont(parentWidget()->font());
}

ZWidget *ZWindow::rootWidget()
{
    return d_func()->root;
}

void ZWindow::construct()
{
    doThemeChange();
}

QMargins ZWindow::sceneMargins() const
{
    return d_func()->sceneMargins;
}

void ZWindow::setSceneMargins(const QMargins &margins)
{
    Z_D(ZWindow);
    d->sceneMargins = margins;
    layoutRoot();
}

void ZWindow::layoutRoot()
{
    Z_D(ZWindow);
    const QRect viewRect = rect();
    setSceneRect(viewRect);
    const QRectF inner = QRectF(viewRect).adjusted(d->sceneMargins.left(), d->sceneMargins.top(),
                                                   -d->sceneMargins.right(), -d->sceneMargins.bottom());
    // Margins larger than the view leave an empty root, never a negative one.
    const QSizeF size(qMax<qreal>(0, inner.width()), qMax<qreal>(0, inner.height()));
    d->root->setFixSize(size);
    d->root->setGeometry(QRectF(inner.topLeft(), size));
}

int ZWindow::fontSize() const
{
    return font().pixelSize();
}

namespace {
// Changes one attribute of the window's font and hands it to the scene.
template<typename Change>
void changeFont(ZWindow *window, Change change)
{
    QFont font = window->font();
    change(font);
    window->setFont(font);
}
} // namespace

void ZWindow::setFontSize(int pixelSize)
{
    changeFont(this, [pixelSize](QFont &f) { f.setPixelSize(pixelSize); });
}

QString ZWindow::fontName() const
{
    return font().family();
}

void ZWindow::setFontName(const QString &family)
{
    changeFont(this, [&family](QFont &f) { f.setFamily(family); });
}

bool ZWindow::bold() const
{
    return font().bold();
}

void ZWindow::setBold(bool bold)
{
    changeFont(this, [bold](QFont &f) { f.setBold(bold); });
}

void ZWindow::setFont(const QFont &font)
{
    QGraphicsView::setFont(font);
    d_func()->scene->setFont(font);
}

QString ZWindow::skinName() const
{
    return d_func()->skinName;
}

void ZWindow::setSkinName(const QString &name)
{
    d_func()->skinName = name;
    ZTheme::setSkinName(this, name);
}

QSizeF ZWindow::calcWindowPreferSize()
{
    Z_D(ZWindow);
    // The root is fixed to the view; measure what its children need, then
    // fix it to the view again.
    d->root->clearSizeHint();
    d->root->setSizeToChild(true);
    d->root->invalidateLayout();
    const QSizeF size = d->root->minimumSize();
    layoutRoot();
    const QMargins &m = d->sceneMargins;
    return QSizeF(size.width() + m.left() + m.right(), size.height() + m.top() + m.bottom());
}

void ZWindow::setRealWindow(bool on)
{
    setAttribute(Qt::WA_NativeWindow, on);
    setWindowFlags(windowFlags() & ~Qt::Window);
}

void ZWindow::setAutoDeleteWhenAppQuit(bool on)
{
    if (!QCoreApplication::instance())
        return;
    if (on)
        connect(qApp, &QCoreApplication::aboutToQuit, this, &ZWindow::on_aboutToQuit, Qt::UniqueConnection);
    else
        disconnect(qApp, &QCoreApplication::aboutToQuit, this, &ZWindow::on_aboutToQuit);
}

void ZWindow::abortCloseWindow()
{
    d_func()->abortClose = true;
}

void ZWindow::skipMyCloseExecution()
{
    d_func()->skipOwnClose = true;
}

bool ZWindow::close()
{
    Z_D(ZWindow);
    if (d->skipOwnClose)
        return QWidget::close();
    if (d->closing)
        return false;
    d->closing = true;
    d->abortClose = false;
    const bool deleteOnClose = testAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_DeleteOnClose, false);
    const bool closed = QWidget::close();
    if (deleteOnClose) {
        if (!d->abortClose) {
            // Destroyed once the current event has been handled.
            QMetaObject::invokeMethod(this, &QObject::deleteLater, Qt::QueuedConnection);
            d->closing = false;
            return closed;
        }
        setAttribute(Qt::WA_DeleteOnClose, true);
    }
    d->closing = false;
    return closed;
}

void ZWindow::showNormal()
{
    QWidget::showNormal();
}

void ZWindow::showMaximized()
{
    QWidget::showMaximized();
}

void ZWindow::showMinimized()
{
    QWidget::showMinimized();
}

void ZWindow::showMaximizeOrRestore()
{
    if (isMaximized())
        showNormal();
    else
        showMaximized();
}

void ZWindow::doThemeChange()
{
    const QList<QGraphicsItem *> items = d_func()->scene->items();
    for (QGraphicsItem *item : items) {
        if (!item->isWidget())
            continue;
        ZWidget *widget = qobject_cast<ZWidget *>(static_cast<QGraphicsWidget *>(item));
        if (widget && widget->hasTheme())
            widget->doThemeChange();
    }
    viewport()->update();
}

void ZWindow::themeChange(ZThemeChangeEvent *)
{
    doThemeChange();
}

bool ZWindow::event(QEvent *event)
{
    if (event->type() == ZThemeChangeEvent::eventType()) {
        themeChange(static_cast<ZThemeChangeEvent *>(event));
        return true;
    }
    if (event->type() == QEvent::Move) {
        emit posChanged();
        return true;
    }
    const bool done = QGraphicsView::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange) {
        // Without a frame the viewport covers the whole view (scroll bars are
        // off) and fills the background itself: the view's own fill beneath
        // it would paint every pixel of the window twice. The style sheet's
        // polish clears the attribute, hence after it; a translucent window
        // must let its view clear the background.
        setAttribute(Qt::WA_OpaquePaintEvent, frameWidth() == 0 && !testAttribute(Qt::WA_TranslucentBackground));
    }
    return done;
}

void ZWindow::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    layoutRoot();
    emit resized();
}

void ZWindow::showEvent(QShowEvent *event)
{
    QGraphicsView::showEvent(event);
    d_func()->viewportTimer->start(512);
    emit visibleChanged();
}

void ZWindow::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    d_func()->viewportTimer->stop();
    emit visibleChanged();
}

void ZWindow::closeEvent(QCloseEvent *event)
{
    Z_D(ZWindow);
    d->abortClose = false;
    emit aboutToClose();
    if (d->abortClose)
        event->ignore();
    else
        event->accept();
}

void ZWindow::on_aboutToQuit()
{
    delete this;
}

void ZWindow::on_viewport_update_bugfix()
{
    // Areas the scene failed to repaint are flushed at the latest half a
    // second later.
    QCoreApplication::postEvent(this, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
}

Z_REGISTER_WINDOW(ZWindow);

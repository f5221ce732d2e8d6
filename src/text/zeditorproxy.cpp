#include "zeditorproxy_p.h"

#include "zframeitem.h"
#include "zwidget_p.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qevent.h>
#include <QtWidgets/qgraphicssceneevent.h>
#include <QtWidgets/qstyleoption.h>
#include <QtWidgets/qwidget.h>

ZEditorProxy::ZEditorProxy(QGraphicsItem *parent)
    : QGraphicsProxyWidget(parent)
{
}

ZEditorProxy::~ZEditorProxy()
{
    // As a ZWidget does: leave the parent while still this class, so that
    // itemChange() can pass over the parent change.
    dying = true;
    setParentItem(nullptr);
}

void ZEditorProxy::setDormantWidget(QWidget *editor)
{
    // Hidden on purpose, so that the proxy does not show it; the proxy copies
    // that state, and is made visible again without passing it on.
    editor->hide();
    setWidget(editor);
    dormant = editor != nullptr;
    setVisible(true);
}

void ZEditorProxy::wake()
{
    if (!dormant)
        return;
    dormant = false;
    if (isVisible())
        widget()->show();
}

void ZEditorProxy::sendPendingResizes()
{
    QWidget *editor = widget();
    if (!dormant || !editor)
        return;
    // Parents before children, as showing the editor would.
    QList<QWidget *> widgets = editor->findChildren<QWidget *>();
    widgets.prepend(editor);
    for (QWidget *w : std::as_const(widgets)) {
        if (!w->testAttribute(Qt::WA_PendingResizeEvent))
            continue;
        w->setAttribute(Qt::WA_PendingResizeEvent, false);
        QResizeEvent event(w->size(), QSize());
        QCoreApplication::sendEvent(w, &event);
    }
}

void ZEditorProxy::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    if (!dormant) {
        QGraphicsProxyWidget::paint(painter, option, widget);
        return;
    }
    // What the proxy does for a shown widget.
    const QRect exposed = (option->exposedRect & rect()).toAlignedRect();
    if (!exposed.isEmpty())
        this->widget()->render(painter, exposed.topLeft(), exposed);
}

QVariant ZEditorProxy::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (ZWidgetPrivate::showVisibleAllAlong(this, change, value))
        return value;
    if (ZWidgetPrivate::leavingOnTheWayOut(dying, change))
        return value;
    // A dormant editor stays hidden whatever becomes of the proxy.
    if (dormant && (change == ItemVisibleChange || change == ItemVisibleHasChanged))
        return QGraphicsWidget::itemChange(change, value);
    return QGraphicsProxyWidget::itemChange(change, value);
}

bool ZEditorProxy::sceneEvent(QEvent *event)
{
    // What reaches the editor: it must be shown before it handles the event.
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::GraphicsSceneHoverEnter:
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseDoubleClick:
    case QEvent::GraphicsSceneDragEnter:
        wake();
        break;
    default:
        break;
    }
    return QGraphicsProxyWidget::sceneEvent(event);
}

void ZEditorProxy::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    event->ignore();
}

namespace ZEditorHost {

void showFrame(ZWidget *field, ZFrameItem *&frame, bool &frameShown, QGraphicsItem *editor, bool on)
{
    QString path = frame ? frame->imagePath() : QString();
    if (path.isEmpty())
        path = QStringLiteral(":/image/theme/lineedit.png");
    setFrameImage(field, frame, frameShown, editor, path);
    frameShown = on;
    frame->setVisible(on);
}

void setFrameImage(ZWidget *field, ZFrameItem *&frame, bool &frameShown, QGraphicsItem *editor,
                   const QString &path)
{
    if (path.isEmpty())
        return;
    if (!frame) {
        frame = new ZFrameItem(field);
        frame->setObjectName(QStringLiteral("frame"));
        frame->setFrameType(ZFrameItem::GridFour);
        frame->setFrameSwitch(false);
        frame->setAcceptedMouseButtons(Qt::NoButton);
        frame->stackBefore(editor);
        frameShown = true;
    }
    if (frame->imagePath() != path)
        frame->setImagePath(path);
}

void setInteractive(ZWidget *field, QGraphicsProxyWidget *proxy, bool on)
{
    proxy->setAcceptedMouseButtons(on ? Qt::LeftButton | Qt::RightButton : Qt::NoButton);
    proxy->setAcceptHoverEvents(on);
    if (!on)
        proxy->unsetCursor();
    field->setDragPolicy(on ? ZWidget::Nothing : ZWidget::AskParent);
    field->setBackgroundColor(on ? QColor(255, 255, 255, 255) : QColor(0, 0, 0, 0));
}

QColor textColor(const QWidget *editor)
{
    return editor->palette().color(QPalette::Text);
}

bool setTextColor(QWidget *editor, const QColor &color)
{
    if (!color.isValid() || textColor(editor) == color)
        return false;
    QPalette palette = editor->palette();
    palette.setColor(QPalette::Text, color);
    editor->setPalette(palette);
    return true;
}

int fontSize(const QWidget *editor)
{
    return editor->font().pixelSize();
}

bool setFontSize(QWidget *editor, int pixels)
{
    if (pixels < 1 || fontSize(editor) == pixels)
        return false;
    QFont font = editor->font();
    font.setPixelSize(pixels);
    editor->setFont(font);
    return true;
}

} // namespace ZEditorHost

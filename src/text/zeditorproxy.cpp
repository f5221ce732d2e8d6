#include "zeditorproxy_p.h"

#include <QtWidgets/qgraphicssceneevent.h>

ZEditorProxy::ZEditorProxy(QGraphicsItem *parent)
    : QGraphicsProxyWidget(parent)
{
}

ZEditorProxy::~ZEditorProxy() = default;

void ZEditorProxy::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    event->ignore();
}

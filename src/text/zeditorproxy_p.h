#ifndef ZEDITORPROXY_P_H
#define ZEDITORPROXY_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include <QtWidgets/qgraphicsproxywidget.h>

/*
 * The proxy hosting a text editor inside a field. A plain proxy keeps a
 * context-menu request to itself while it has no focus; this one lets every
 * request through to the field beneath, whose menu it is.
 */
class ZEditorProxy : public QGraphicsProxyWidget
{
public:
    explicit ZEditorProxy(QGraphicsItem *parent = nullptr);
    ~ZEditorProxy() override;

protected:
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
};

#endif // ZEDITORPROXY_P_H

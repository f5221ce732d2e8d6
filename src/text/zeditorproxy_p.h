#ifndef ZEDITORPROXY_P_H
#define ZEDITORPROXY_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include <QtGui/qcolor.h>
#include <QtWidgets/qgraphicsproxywidget.h>

class ZFrameItem;
class ZWidget;

/*
 * The proxy hosting a text editor inside a field. A plain proxy keeps a
 * context-menu request to itself while it has no focus; this one lets every
 * request through to the field beneath, whose menu it is.
 *
 * A proxy shows its widget, and a shown top-level widget gets a native window
 * of its own. Most fields of a form are only looked at, so an editor given
 * with setDormantWidget() stays hidden and is drawn by the proxy until the
 * user first reaches it: the pointer entering it, a press, a drag, or focus.
 */
class ZEditorProxy : public QGraphicsProxyWidget
{
public:
    explicit ZEditorProxy(QGraphicsItem *parent = nullptr);
    ~ZEditorProxy() override;

    /* Hosts \a editor without showing it (see above). */
    void setDormantWidget(QWidget *editor);
    /* Shows the hosted editor, if it is still dormant. */
    void wake();
    /*
     * A hidden widget keeps its resizes pending until it is shown: a dormant
     * editor gets them now (itself first, then its children), so that it
     * lays out at the size the proxy gave it - an editor whose scroll bars
     * its field follows needs that before it is drawn.
     */
    void sendPendingResizes();

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    bool sceneEvent(QEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;

private:
    bool dormant = false;
    bool dying = false; // in the destructor: leaving the parent announces nothing
};

/*
 * What the line edit and the text edit share as fields hosting an editor
 * widget in a proxy over a skinned frame.
 */
namespace ZEditorHost {

/* Shows or hides the field's frame, creating it with the default skin first. */
void showFrame(ZWidget *field, ZFrameItem *&frame, bool &frameShown, QGraphicsItem *editor, bool on);
/*
 * Sets the frame image, creating the frame on first use: a picture only
 * (presses go to the field) lying under the editor. Empty paths are ignored.
 */
void setFrameImage(ZWidget *field, ZFrameItem *&frame, bool &frameShown, QGraphicsItem *editor,
                   const QString &path);
/* Edit mode (takes input, white, framed) or label mode (text only, passes drags up). */
void setInteractive(ZWidget *field, QGraphicsProxyWidget *proxy, bool on);

QColor textColor(const QWidget *editor);
/* False, and nothing changed, for an invalid or the current colour. */
bool setTextColor(QWidget *editor, const QColor &color);
int fontSize(const QWidget *editor);
/* False, and nothing changed, for sizes below 1 or the current size. */
bool setFontSize(QWidget *editor, int pixels);

} // namespace ZEditorHost

#endif // ZEDITORPROXY_P_H

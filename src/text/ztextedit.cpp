#include "ztextedit.h"
#include "ztextedit_p.h"

#include "zcreator.h"
#include "zeditorproxy_p.h"
#include "zeditmenu_p.h"
#include "zframeitem.h"
#include "zscrollbar.h"

#include <QtCore/qmath.h>
#include <QtGui/qevent.h>
#include <QtGui/qtextcursor.h>
#include <QtGui/qtextdocument.h>
#include <QtWidgets/qgraphicsproxywidget.h>
#include <QtWidgets/qgraphicssceneevent.h>
#include <QtWidgets/qscrollbar.h>
#include <QtWidgets/qtextedit.h>

#include <functional>

Z_REGISTER_WIDGET(ZTextEdit);

namespace {

// What one wheel notch on a skinned bar scrolls, as in scroll areas.
constexpr qreal kWheelStep = 40;

// Leaves context-menu requests to the item hosting the editor.
class HostedTextEdit : public QTextEdit
{
public:
    using QTextEdit::QTextEdit;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override { event->ignore(); }
};

// Reports every change of range, steps or value; QScrollBar has no signal
// for the page step, which the thumb of the skinned bar needs.
class WatchedScrollBar : public QScrollBar
{
public:
    WatchedScrollBar(Qt::Orientation orientation, std::function<void()> changed)
        : QScrollBar(orientation)
        , m_changed(std::move(changed))
    {
    }
    void detach() { m_changed = nullptr; }

protected:
    void sliderChange(SliderChange change) override
    {
        QScrollBar::sliderChange(change);
        if (m_changed)
            m_changed();
    }

private:
    std::function<void()> m_changed;
};

} // namespace

// ---------------------------------------------------------------------------
// ZTextEditPrivate

void ZTextEditPrivate::init()
{
    Z_Q(ZTextEdit);
    q->setDragPolicy(ZWidget::Nothing);

    edit = new HostedTextEdit;
    edit->setFrameShape(QFrame::NoFrame);
    edit->setAttribute(Qt::WA_TranslucentBackground);
    edit->viewport()->setAutoFillBackground(false);
    QPalette palette = edit->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    edit->setPalette(palette);
    edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    for (Qt::Orientation o : {Qt::Vertical, Qt::Horizontal}) {
        auto *bar = new ZScrollBar(o, q);
        bar->setObjectName(o == Qt::Vertical ? QStringLiteral("vscroll") : QStringLiteral("hscroll"));
        bar->setZValue(1);
        bar->setFrameThickness(barThickness);
        bar->setDeltaFactor(kWheelStep);
        bar->setRange(0, 0);
        bar->hide();
        (o == Qt::Vertical ? vbar : hbar) = bar;
        // The editor's hidden bar stays the one that scrolls; the skinned
        // one shows it and moves it.
        auto *native = new WatchedScrollBar(o, [this, o] { syncBar(o); });
        if (o == Qt::Vertical)
            edit->setVerticalScrollBar(native);
        else
            edit->setHorizontalScrollBar(native);
        QObject::connect(bar, &ZScrollBar::valueChanged, native, [native](qreal value) {
            native->setValue(qRound(qBound<qreal>(native->minimum(), value, native->maximum())));
        });
    }

    proxy = new ZEditorProxy(q);
    proxy->setDormantWidget(edit);
    proxy->setMinimumSize(0, 0);

    QObject::connect(edit, &QTextEdit::textChanged, q, &ZTextEdit::textChanged);
    QObject::connect(edit, &QTextEdit::selectionChanged, q, &ZTextEdit::selectionChanged);
    QObject::connect(edit, &QTextEdit::cursorPositionChanged, q, &ZTextEdit::cursorPositionChanged);
    syncBar(Qt::Vertical);
    syncBar(Qt::Horizontal);
}

QScrollBar *ZTextEditPrivate::nativeBar(Qt::Orientation orientation) const
{
    if (!edit)
        return nullptr;
    return orientation == Qt::Vertical ? edit->verticalScrollBar() : edit->horizontalScrollBar();
}

void ZTextEditPrivate::syncBar(Qt::Orientation orientation)
{
    QScrollBar *native = nativeBar(orientation);
    ZScrollBar *skinned = bar(orientation);
    if (!native || !skinned)
        return;
    skinned->setSingleStep(native->singleStep());
    skinned->setPageStep(native->pageStep());
    skinned->setRange(native->minimum(), native->maximum());
    skinned->setValue(native->value());

    // Showing a bar narrows the text, which only adds to what there is to
    // scroll, and hiding one widens it: the decision settles at once.
    const bool show = native->maximum() > native->minimum();
    bool &shown = orientation == Qt::Vertical ? vShown : hShown;
    if (show == shown)
        return;
    shown = show;
    skinned->setVisible(show);
    layoutChildren();
}

void ZTextEditPrivate::layoutChildren()
{
    Z_Q(ZTextEdit);
    if (!proxy)
        return;
    // Placing the editor changes its bars, which can ask for another pass.
    if (laying) {
        relayout = true;
        return;
    }
    laying = true;
    for (int round = 0; round < 4; ++round) {
        relayout = false;
        const QRectF r = q->rect();
        if (frame)
            frame->setGeometry(r);
        // Bars sit inside the frame's one-pixel border.
        const QRectF inner = (frame && frameShown) ? r.adjusted(1, 1, -1, -1) : r;
        const qreal t = barThickness;
        const qreal right = vShown ? t : 0;
        const qreal bottom = hShown ? t : 0;
        // The text runs up to the bars.
        const qreal textRight = vShown ? inner.right() - t : r.right();
        const qreal textBottom = hShown ? inner.bottom() - t : r.bottom();
        proxy->setGeometry(QRectF(r.left(), r.top(), qMax<qreal>(0, textRight - r.left()),
                                  qMax<qreal>(0, textBottom - r.top())));
        // The bars follow the editor's own, which follow its size.
        proxy->sendPendingResizes();
        if (vShown)
            vbar->setGeometry(QRectF(inner.right() - t, inner.top(), t, qMax<qreal>(0, inner.height() - bottom)));
        if (hShown)
            hbar->setGeometry(QRectF(inner.left(), inner.bottom() - t, qMax<qreal>(0, inner.width() - right), t));
        if (!relayout)
            break;
    }
    laying = false;
}

// ---------------------------------------------------------------------------
// ZTextEdit

ZTextEdit::ZTextEdit(QGraphicsItem *parent)
    : ZTextEdit(*new ZTextEditPrivate, parent)
{
}

ZTextEdit::ZTextEdit(ZTextEditPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZTextEdit::~ZTextEdit()
{
    // Editor and bars go after this object, with the graphics children.
    Z_D(ZTextEdit);
    for (Qt::Orientation o : {Qt::Vertical, Qt::Horizontal}) {
        // dynamic: an application may have put a bar of its own on the editor.
        if (auto *native = dynamic_cast<WatchedScrollBar *>(d->nativeBar(o)))
            native->detach();
    }
    QObject::disconnect(d->edit, nullptr, this, nullptr);
}

QObject *ZTextEdit::realTextEdit() const
{
    return d_func()->edit;
}

QObject *ZTextEdit::frame() const
{
    return d_func()->frame;
}

ZScrollBar *ZTextEdit::verticalScrollBar() const
{
    return d_func()->vbar;
}

ZScrollBar *ZTextEdit::horizontalScrollBar() const
{
    return d_func()->hbar;
}

bool ZTextEdit::isReadOnly() const
{
    return d_func()->edit->isReadOnly();
}

void ZTextEdit::setReadOnly(bool on)
{
    Z_D(ZTextEdit);
    d->edit->setReadOnly(on);
    // Read-only text can still be selected and copied.
    if (on)
        d->edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

QString ZTextEdit::plainText() const
{
    return d_func()->edit->toPlainText();
}

void ZTextEdit::setPlainText(const QString &text)
{
    d_func()->edit->setPlainText(text);
}

QString ZTextEdit::html() const
{
    return d_func()->edit->toHtml();
}

void ZTextEdit::setHtml(const QString &html)
{
    d_func()->edit->setHtml(html);
}

QString ZTextEdit::placeholderText() const
{
    return d_func()->edit->placeholderText();
}

void ZTextEdit::setPlaceholderText(const QString &text)
{
    d_func()->edit->setPlaceholderText(text);
}

void ZTextEdit::append(const QString &text)
{
    d_func()->edit->append(text);
}

bool ZTextEdit::acceptRichText() const
{
    return d_func()->edit->acceptRichText();
}

void ZTextEdit::setAcceptRichText(bool on)
{
    d_func()->edit->setAcceptRichText(on);
}

bool ZTextEdit::lineWrap() const
{
    return d_func()->edit->lineWrapMode() != QTextEdit::NoWrap;
}

void ZTextEdit::setLineWrap(bool on)
{
    d_func()->edit->setLineWrapMode(on ? QTextEdit::WidgetWidth : QTextEdit::NoWrap);
}

QColor ZTextEdit::textColor() const
{
    return ZEditorHost::textColor(d_func()->edit);
}

void ZTextEdit::setTextColor(const QColor &color)
{
    ZEditorHost::setTextColor(d_func()->edit, color);
}

int ZTextEdit::fontSize() const
{
    return ZEditorHost::fontSize(d_func()->edit);
}

void ZTextEdit::setFontSize(int pixels)
{
    ZEditorHost::setFontSize(d_func()->edit, pixels);
}

qreal ZTextEdit::documentMargin() const
{
    return d_func()->edit->document()->documentMargin();
}

void ZTextEdit::setDocumentMargin(qreal margin)
{
    Z_D(ZTextEdit);
    if (!qIsFinite(margin) || margin < 0 || margin == documentMargin())
        return;
    d->edit->document()->setDocumentMargin(margin);
}

bool ZTextEdit::hasFrame() const
{
    Z_D(const ZTextEdit);
    return d->frame && d->frameShown;
}

void ZTextEdit::setFrame(bool on)
{
    Z_D(ZTextEdit);
    ZEditorHost::showFrame(this, d->frame, d->frameShown, d->proxy, on);
    d->layoutChildren();
}

QString ZTextEdit::frameImage() const
{
    Z_D(const ZTextEdit);
    return d->frame ? d->frame->imagePath() : QString();
}

void ZTextEdit::setFrameImage(const QString &path)
{
    Z_D(ZTextEdit);
    if (path.isEmpty())
        return;
    ZEditorHost::setFrameImage(this, d->frame, d->frameShown, d->proxy, path);
    d->layoutChildren();
}

bool ZTextEdit::hasContextMenu() const
{
    return d_func()->contextMenu;
}

void ZTextEdit::setContextMenu(bool on)
{
    d_func()->contextMenu = on;
}

bool ZTextEdit::chineseContextMenu() const
{
    return d_func()->chineseContextMenu;
}

void ZTextEdit::setChineseContextMenu(bool on)
{
    d_func()->chineseContextMenu = on;
}

int ZTextEdit::barThickness() const
{
    return d_func()->barThickness;
}

void ZTextEdit::setBarThickness(int thickness)
{
    Z_D(ZTextEdit);
    if (thickness < 0 || thickness == d->barThickness)
        return;
    d->barThickness = thickness;
    d->vbar->setFrameThickness(thickness);
    d->hbar->setFrameThickness(thickness);
    d->layoutChildren();
}

void ZTextEdit::setEdit()
{
    Z_D(ZTextEdit);
    d->edit->setReadOnly(false);
    d->edit->setTextInteractionFlags(Qt::TextEditorInteraction);
    ZEditorHost::setInteractive(this, d->proxy, true);
    setFrame(true);
    d->edit->setFocus(Qt::OtherFocusReason);
}

void ZTextEdit::setLabel()
{
    Z_D(ZTextEdit);
    setReadOnly(true);
    ZEditorHost::setInteractive(this, d->proxy, false);
    setFrame(false);
}

void ZTextEdit::clear()
{
    d_func()->edit->clear();
}

void ZTextEdit::showContextMenu()
{
    Z_D(ZTextEdit);
    QTextEdit *edit = d->edit;
    const QTextCursor cursor = edit->textCursor();
    const QTextDocument *doc = edit->document();
    ZEditMenu::State state;
    state.readOnly = edit->isReadOnly();
    state.undoAvailable = doc->isUndoAvailable();
    state.redoAvailable = doc->isRedoAvailable();
    state.hasSelection = cursor.hasSelection();
    state.hasText = !doc->isEmpty();
    // The last position is the end of the document, after its last character.
    state.wholeTextSelected = cursor.selectionStart() == 0 && cursor.selectionEnd() == doc->characterCount() - 1;

    const QPointer<QTextEdit> guard(edit);
    const ZEditMenu::Entry entry = ZEditMenu::exec(state, d->chineseContextMenu, "QWidgetTextControl");
    if (!guard)
        return;
    switch (entry) {
    case ZEditMenu::Undo:
        edit->undo();
        break;
    case ZEditMenu::Redo:
        edit->redo();
        break;
    case ZEditMenu::Cut:
        edit->cut();
        break;
    case ZEditMenu::Copy:
        edit->copy();
        break;
    case ZEditMenu::Paste:
        edit->paste();
        break;
    case ZEditMenu::Delete:
        edit->clear();
        break;
    case ZEditMenu::SelectAll:
        edit->selectAll();
        break;
    case ZEditMenu::None:
        break;
    }
}

void ZTextEdit::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->layoutChildren();
}

void ZTextEdit::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    const QPointer<ZTextEdit> guard(this);
    if (d_func()->contextMenu)
        showContextMenu();
    if (!guard) {
        event->accept();
        return;
    }
    event->ignore();
}

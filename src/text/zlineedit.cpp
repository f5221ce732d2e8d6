#include "zlineedit.h"
#include "zlineedit_p.h"

#include "qlineeditex.h"
#include "zcreator.h"
#include "zeditorproxy_p.h"
#include "zframeitem.h"
#include "zmessagebox.h"

#include <QtCore/qmath.h>
#include <QtCore/qmetaobject.h>
#include <QtCore/qpointer.h>
#include <QtGui/qfontmetrics.h>
#include <QtGui/qvalidator.h>
#include <QtWidgets/qgraphicsproxywidget.h>
#include <QtWidgets/qgraphicssceneevent.h>

Z_REGISTER_WIDGET(ZLineEdit);

// ---------------------------------------------------------------------------
// ZLineEditPrivate

void ZLineEditPrivate::init()
{
    Z_Q(ZLineEdit);
    q->setDragPolicy(ZWidget::Nothing);

    edit = new QLineEditEx;
    edit->setFrame(false);
    edit->setAttribute(Qt::WA_TranslucentBackground);
    // The field's colour is the widget's background and frame: the editor
    // itself paints only text, cursor and selection.
    QPalette palette = edit->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    edit->setPalette(palette);

    proxy = new ZEditorProxy(q);
    proxy->setDormantWidget(edit);
    // The widget decides the size; the editor's own minimum would make the
    // proxy stick out of small fields.
    proxy->setMinimumSize(0, 0);

    // The editor's other signals are passed on once somebody listens (forward()).
    // Queued: the check may run a modal message box, which must not happen
    // inside the scene's focus change (the field could be deleted under it).
    QObject::connect(edit, &QLineEditEx::focusOut, q, &ZLineEdit::on_edit_focusOut, Qt::QueuedConnection);
}

void ZLineEditPrivate::forward(const QMetaMethod &signal)
{
    // Most fields of a form are never listened to, and a connection costs
    // more than the rest of what a field sets up: each of the editor's
    // signals is connected the first time the field's namesake is.
    Z_Q(ZLineEdit);
    int bit = 0;
    const auto pass = [&](auto fieldSignal, auto editorSignal) {
        const unsigned mask = 1u << bit++;
        if (!(forwarded & mask) && signal == QMetaMethod::fromSignal(fieldSignal)) {
            forwarded |= mask;
            QObject::connect(edit, editorSignal, q, fieldSignal);
        }
    };
    pass(&ZLineEdit::clicked, &QLineEditEx::clicked);
    pass(&ZLineEdit::textChanged, &QLineEdit::textChanged);
    pass(&ZLineEdit::textEdited, &QLineEdit::textEdited);
    pass(&ZLineEdit::cursorPositionChanged, &QLineEdit::cursorPositionChanged);
    pass(&ZLineEdit::returnPressed, &QLineEdit::returnPressed);
    pass(&ZLineEdit::editingFinished, &QLineEdit::editingFinished);
    pass(&ZLineEdit::selectionChanged, &QLineEdit::selectionChanged);
}

void ZLineEditPrivate::layoutChildren()
{
    Z_Q(ZLineEdit);
    const QRectF r = q->rect();
    if (frame)
        frame->setGeometry(r);
    proxy->setGeometry(r);
}

void ZLineEditPrivate::replaceValidator(QValidator *validator)
{
    const QValidator *old = edit->validator();
    edit->setValidator(validator);
    // A validator the application installed on the editor is not ours to delete.
    if (old && old != validator && old->parent() == edit)
        delete old;
}

QString ZLineEditPrivate::rejectionMessage(const QValidator *validator) const
{
    if (!validatorTip.isEmpty())
        return validatorTip;
    if (auto *v = qobject_cast<const QIntValidator *>(validator))
        return QStringLiteral("输入[%1-%2]区间的整数").arg(v->bottom()).arg(v->top());
    if (auto *v = qobject_cast<const QDoubleValidator *>(validator)) {
        return QStringLiteral("输入[%1-%2]区间的浮点数")
            .arg(QString::number(v->bottom(), 'g', 6), QString::number(v->top(), 'g', 6));
    }
    if (auto *v = qobject_cast<const QRegularExpressionValidator *>(validator))
        return QStringLiteral("输入的合法的格式：%1").arg(v->regularExpression().pattern());
    return QStringLiteral("输入的字符不符合要求，请检查。");
}

// ---------------------------------------------------------------------------
// ZLineEdit

ZLineEdit::ZLineEdit(QGraphicsItem *parent)
    : ZLineEdit(*new ZLineEditPrivate, parent)
{
}

ZLineEdit::ZLineEdit(ZLineEditPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZLineEdit::~ZLineEdit()
{
    // The editor outlives this object by a little (it goes with the graphics
    // children); a focus change on its way out must not reach us any more.
    Z_D(ZLineEdit);
    if (d->edit)
        QObject::disconnect(d->edit, nullptr, this, nullptr);
}

QObject *ZLineEdit::realLineEdit() const
{
    return d_func()->edit;
}

QObject *ZLineEdit::frame() const
{
    return d_func()->frame;
}

bool ZLineEdit::isReadOnly() const
{
    return d_func()->edit->isReadOnly();
}

void ZLineEdit::setReadOnly(bool on)
{
    d_func()->edit->setReadOnly(on);
}

bool ZLineEdit::focus() const
{
    return d_func()->edit->hasFocus();
}

void ZLineEdit::setFocus(bool on)
{
    Z_D(ZLineEdit);
    if (on) {
        d->proxy->wake();
        d->edit->setFocus(Qt::OtherFocusReason);
    } else {
        d->edit->clearFocus();
        if (d->proxy->hasFocus())
            d->proxy->clearFocus();
    }
}

QString ZLineEdit::styleSheet() const
{
    return d_func()->edit->styleSheet();
}

void ZLineEdit::setStyleSheet(const QString &sheet)
{
    Z_D(ZLineEdit);
    if (d->edit->styleSheet() != sheet)
        d->edit->setStyleSheet(sheet);
}

QString ZLineEdit::text() const
{
    return d_func()->edit->text();
}

void ZLineEdit::setText(const QString &text)
{
    Z_D(ZLineEdit);
    if (d->edit->text() != text)
        d->edit->setText(text);
}

void ZLineEdit::insert(const QString &text)
{
    d_func()->edit->insert(text);
}

bool ZLineEdit::modified() const
{
    return d_func()->edit->isModified();
}

void ZLineEdit::setAdjustText(const QString &text)
{
    d_func()->edit->setText(text);
    setFixWidth(contentSize().width());
}

QSize ZLineEdit::contentSize() const
{
    Z_D(const ZLineEdit);
    const QFontMetrics fm(d->edit->font());
    return QSize(fm.horizontalAdvance(d->edit->text()) + 2 * fm.leading(), fm.height());
}

QColor ZLineEdit::textColor() const
{
    return ZEditorHost::textColor(d_func()->edit);
}

void ZLineEdit::setTextColor(const QColor &color)
{
    ZEditorHost::setTextColor(d_func()->edit, color);
}

int ZLineEdit::fontSize() const
{
    return ZEditorHost::fontSize(d_func()->edit);
}

void ZLineEdit::setFontSize(int pixels)
{
    if (ZEditorHost::setFontSize(d_func()->edit, pixels))
        updateGeometry();
}

QFont ZLineEdit::font() const
{
    return d_func()->edit->font();
}

void ZLineEdit::setFont(const QFont &font)
{
    Z_D(ZLineEdit);
    if (d->edit->font() == font)
        return;
    d->edit->setFont(font);
    updateGeometry();
}

int ZLineEdit::maxLength() const
{
    return d_func()->edit->maxLength();
}

void ZLineEdit::setMaxLength(int length)
{
    if (length >= 0)
        d_func()->edit->setMaxLength(length);
}

QLineEdit::EchoMode ZLineEdit::mode() const
{
    return d_func()->edit->echoMode();
}

void ZLineEdit::setMode(QLineEdit::EchoMode mode)
{
    // Compared as numbers: the enumeration has no fixed type, and a value
    // beyond its keys must not be loaded as one.
    const int m = static_cast<int>(mode);
    if (m < QLineEdit::Normal || m > QLineEdit::PasswordEchoOnEdit)
        return;
    d_func()->edit->setEchoMode(mode);
}

Qt::Alignment ZLineEdit::textAlignment() const
{
    return d_func()->edit->alignment();
}

void ZLineEdit::setTextAlignment(Qt::Alignment alignment)
{
    d_func()->edit->setAlignment(alignment);
}

QMargins ZLineEdit::textMargins() const
{
    return d_func()->edit->textMargins();
}

void ZLineEdit::setTextMargins(const QMargins &margins)
{
    d_func()->edit->setTextMargins(margins);
}

QString ZLineEdit::inputMask() const
{
    return d_func()->edit->inputMask();
}

void ZLineEdit::setInputMask(const QString &mask)
{
    Z_D(ZLineEdit);
    if (d->edit->inputMask() != mask)
        d->edit->setInputMask(mask);
}

bool ZLineEdit::hasFrame() const
{
    Z_D(const ZLineEdit);
    return d->frame && d->frameShown;
}

void ZLineEdit::setFrame(bool on)
{
    Z_D(ZLineEdit);
    ZEditorHost::showFrame(this, d->frame, d->frameShown, d->proxy, on);
    d->layoutChildren();
}

QString ZLineEdit::frameImage() const
{
    Z_D(const ZLineEdit);
    return d->frame ? d->frame->imagePath() : QString();
}

void ZLineEdit::setFrameImage(const QString &path)
{
    Z_D(ZLineEdit);
    if (path.isEmpty())
        return;
    ZEditorHost::setFrameImage(this, d->frame, d->frameShown, d->proxy, path);
    d->layoutChildren();
}

QSize ZLineEdit::intValidator() const
{
    if (auto *v = qobject_cast<const QIntValidator *>(d_func()->edit->validator()))
        return QSize(v->bottom(), v->top());
    return QSize(-1, -1);
}

void ZLineEdit::setIntValidator(const QSize &range)
{
    Z_D(ZLineEdit);
    if (auto *v = qobject_cast<QIntValidator *>(const_cast<QValidator *>(d->edit->validator()))) {
        v->setRange(range.width(), range.height());
        return;
    }
    d->replaceValidator(new QIntValidator(range.width(), range.height(), d->edit));
}

QSizeF ZLineEdit::doubleValidator() const
{
    if (auto *v = qobject_cast<const QDoubleValidator *>(d_func()->edit->validator()))
        return QSizeF(v->bottom(), v->top());
    return QSizeF(-1, -1);
}

void ZLineEdit::setDoubleValidator(const QSizeF &range)
{
    Z_D(ZLineEdit);
    if (!qIsFinite(range.width()) || !qIsFinite(range.height()))
        return;
    if (auto *v = qobject_cast<QDoubleValidator *>(const_cast<QValidator *>(d->edit->validator()))) {
        v->setRange(range.width(), range.height(), 0);
        return;
    }
    d->replaceValidator(new QDoubleValidator(range.width(), range.height(), 5, d->edit));
}

QString ZLineEdit::regExpValidator() const
{
    if (auto *v = qobject_cast<const QRegularExpressionValidator *>(d_func()->edit->validator()))
        return v->regularExpression().pattern();
    return QString();
}

void ZLineEdit::setRegExpValidator(const QString &pattern)
{
    Z_D(ZLineEdit);
    const QRegularExpression expression(pattern);
    if (auto *v = qobject_cast<QRegularExpressionValidator *>(const_cast<QValidator *>(d->edit->validator()))) {
        v->setRegularExpression(expression);
        return;
    }
    d->replaceValidator(new QRegularExpressionValidator(expression, d->edit));
}

QString ZLineEdit::validatorTip() const
{
    return d_func()->validatorTip;
}

void ZLineEdit::setValidatorTip(const QString &tip)
{
    d_func()->validatorTip = tip;
}

bool ZLineEdit::hasContextMenu() const
{
    return d_func()->contextMenu;
}

void ZLineEdit::setContextMenu(bool on)
{
    d_func()->contextMenu = on;
}

void ZLineEdit::setEdit()
{
    Z_D(ZLineEdit);
    setReadOnly(false);
    ZEditorHost::setInteractive(this, d->proxy, true);
    setFrame(true);
    setFocus(true);
}

void ZLineEdit::setLabel()
{
    Z_D(ZLineEdit);
    setReadOnly(true);
    ZEditorHost::setInteractive(this, d->proxy, false);
    setFrame(false);
}

QSizeF ZLineEdit::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    QSizeF hint = ZWidget::sizeHint(which, constraint);
    // Without an explicit size the field asks for what its editor needs.
    if (which == Qt::PreferredSize)
        hint = hint.expandedTo(QSizeF(d_func()->edit->sizeHint()));
    return hint;
}

void ZLineEdit::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->layoutChildren();
}

void ZLineEdit::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    Z_D(ZLineEdit);
    const QPointer<ZLineEdit> guard(this);
    if (d->contextMenu)
        d->edit->showContextMenu();
    // Gone during the menu, perhaps with items beneath: the scene must not
    // offer the request to them.
    if (!guard) {
        event->accept();
        return;
    }
    // Left for whoever else wants it, as the editor does.
    event->ignore();
}

void ZLineEdit::connectNotify(const QMetaMethod &signal)
{
    ZWidget::connectNotify(signal);
    d_func()->forward(signal);
}

void ZLineEdit::on_edit_focusOut()
{
    Z_D(ZLineEdit);
    const QString text = d->edit->text();
    if (text == d->lastCheckedText)
        return;
    // Stored before checking: leaving again with the same text stays quiet.
    d->lastCheckedText = text;

    const QValidator *validator = d->edit->validator();
    if (!validator)
        return;
    QString input = text;
    int pos = 0;
    if (validator->validate(input, pos) == QValidator::Acceptable)
        return;
    ZMessageBox::information(this, QStringLiteral("提示"), d->rejectionMessage(validator),
                             QStringLiteral("确认"));
}

#include "zmessagebox_p.h"

#include "zcreator.h"
#include "zframeitem.h"
#include "zpushbutton.h"
#include "ztextitem.h"
#include "zxmlui.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <cmath>

namespace {

const char kLayout[] = ":/xml/theme/xml/msgbox.xml";

// Wider texts wrap; a box should never need more than this for its text.
constexpr int kMaximumTextWidth = 480;
constexpr int kSymbolSpacing = 8;

struct MessageBoxSkin
{
    QString maskImage;
    bool hasMaskMargins = false;
    QMargins maskMargins;
    QString frameImage;
    QColor backgroundColor;
    QString buttonImage;
    QString closeButtonImage;
    QString symbols[4];
};

// Process-wide, GUI thread only, like every other skin setting.
MessageBoxSkin &skin()
{
    static MessageBoxSkin s;
    return s;
}

QString defaultSymbol(ZMessageBox::Kind kind)
{
    switch (kind) {
    case ZMessageBox::Question: return QStringLiteral(":/image/theme/messagebox_question.png");
    case ZMessageBox::Warning: return QStringLiteral(":/image/theme/messagebox_warning.png");
    case ZMessageBox::Critical: return QStringLiteral(":/image/theme/messagbox_error.png");
    case ZMessageBox::Information: break;
    }
    return QStringLiteral(":/image/theme/messagebox_infomation.png");
}

ZMessageBox::Kind validKind(ZMessageBox::Kind kind)
{
    const int k = int(kind);
    return k >= ZMessageBox::Information && k <= ZMessageBox::Critical ? kind : ZMessageBox::Information;
}

} // namespace

// --- private ---------------------------------------------------------------

void ZMessageBoxPrivate::locateParts()
{
    Z_Q(ZMessageBox);
    if (partsLocated)
        return;
    partsLocated = true;
    ZWidget *root = q->rootWidget();
    iconShower = qobject_cast<ZFrameItem *>(root->findObject(QStringLiteral("iconShower")));
    textShower = qobject_cast<ZTextItem *>(root->findObject(QStringLiteral("textShower")));
    // The buttons are looked for inside the tool bar, where the layout puts them.
    auto *toolbar = qobject_cast<ZWidget *>(root->findObject(QStringLiteral("buttonToolbar")));
    // The layout fixes the height of the buttons' row; buttons taller than
    // it would stick out below the box.
    const auto *row = toolbar ? qobject_cast<const ZWidget *>(toolbar->parentWidget()) : nullptr;
    const qreal rowHeight = row ? row->fixHeight() : -1;
    for (int i = 0; i < 3; ++i) {
        ZPushButton *button =
            toolbar ? qobject_cast<ZPushButton *>(toolbar->findObject(QStringLiteral("button%1").arg(i))) : nullptr;
        buttons[i] = button;
        if (!button)
            continue;
        layoutWidth[i] = std::max<qreal>(0, button->fixWidth());
        if (rowHeight > 0 && button->fixHeight() < 0)
            button->setFixHeight(rowHeight);
        buttonText[i] = button->text();
    }
}

void ZMessageBoxPrivate::sizeButton(int index)
{
    ZPushButton *button = buttons[index];
    if (!button)
        return;
    const int m = ZMessageBox::ButtonTextMargin;
    button->setSizeToContent(QMargins(m, 0, m, 0));
    // A short text ("OK") would make a button too small to hit.
    if (button->fixWidth() < layoutWidth[index])
        button->setFixWidth(layoutWidth[index]);
}

void ZMessageBoxPrivate::showCountdown()
{
    ZPushButton *button = buttons[countdownButton];
    if (!button)
        return;
    button->setText(QStringLiteral("%1(%2)").arg(buttonText[countdownButton]).arg(remaining));
    sizeButton(countdownButton);
}

void ZMessageBoxPrivate::stopCountdown()
{
    if (timer)
        timer->stop();
}

void ZMessageBoxPrivate::fitToText()
{
    Z_Q(ZMessageBox);
    if (textShower) {
        // Lines as written while they fit; wider ones wrap.
        QSizeF ideal = textShower->hitTextSize(-1);
        if (ideal.width() > kMaximumTextWidth)
            ideal = textShower->hitTextSize(kMaximumTextWidth);
        textShower->setMinimumWidth(std::ceil(ideal.width()));
        textShower->setFixHeight(std::ceil(ideal.height()));
    }
    QSize size = q->calcWindowPreferSize().toSize();
    // A text of many lines must not push the buttons off the screen.
    QScreen *screen = q->screen() ? q->screen() : QGuiApplication::primaryScreen();
    if (screen)
        size = size.boundedTo(screen->availableGeometry().size().grownBy(q->frameMargins()));
    q->resize(size);
}

// --- ZMessageBox -------------------------------------------------------------

ZMessageBox::ZMessageBox(QWidget *parent)
    : ZDialog(*new ZMessageBoxPrivate(this), parent)
{
}

ZMessageBox::~ZMessageBox() = default;

int ZMessageBox::information(ZWidget *parent, const QString &title, const QString &text, const QString &button0,
                             const QString &button1, const QString &button2, int countdown)
{
    return run(parent, Information, title, text, button0, button1, button2, countdown);
}

int ZMessageBox::question(ZWidget *parent, const QString &title, const QString &text, const QString &button0,
                          const QString &button1, const QString &button2, int countdown)
{
    return run(parent, Question, title, text, button0, button1, button2, countdown);
}

int ZMessageBox::warning(ZWidget *parent, const QString &title, const QString &text, const QString &button0,
                         const QString &button1, const QString &button2, int countdown)
{
    return run(parent, Warning, title, text, button0, button1, button2, countdown);
}

int ZMessageBox::critical(ZWidget *parent, const QString &title, const QString &text, const QString &button0,
                          const QString &button1, const QString &button2, int countdown)
{
    return run(parent, Critical, title, text, button0, button1, button2, countdown);
}

int ZMessageBox::run(ZWidget *parent, Kind kind, const QString &title, const QString &text,
                     const QString &button0, const QString &button1, const QString &button2, int countdown)
{
    ZMessageBox *box = create(parent, kind, title, text, button0, button1, button2, countdown);
    if (!box)
        return Rejected;
    box->moveCenter(parent, false);
    // Placed already: doModal() leaves a moved dialog where it is.
    return box->doModal(nullptr, true, true);
}

ZMessageBox *ZMessageBox::create(ZWidget *parent, Kind kind, const QString &title, const QString &text,
                                 const QString &button0, const QString &button1, const QString &button2,
                                 int countdown)
{
    QWidget *owner = parent ? parent->view() : nullptr;
    ZWindow *window = ZXmlUI::windowFromFile(QString::fromLatin1(kLayout), owner);
    auto *box = qobject_cast<ZMessageBox *>(window);
    if (!box) {
        delete window;
        return nullptr;
    }
    box->d_func()->kind = validKind(kind);
    box->initSkin();
    box->initMessageBox(title, text, button0, button1, button2, countdown);
    return box;
}

void ZMessageBox::initSkin()
{
    Z_D(ZMessageBox);
    d->locateParts();
    const MessageBoxSkin &s = skin();
    if (s.backgroundColor.isValid())
        ZPopupWindow::setBackgroundColor(s.backgroundColor);
    if (!s.maskImage.isEmpty())
        ZPopupWindow::setMaskImage(s.maskImage);
    if (s.hasMaskMargins)
        ZPopupWindow::setMaskMargins(s.maskMargins);
    if (!s.frameImage.isEmpty())
        ZPopupWindow::setFrameImage(s.frameImage);
    if (!s.buttonImage.isEmpty()) {
        for (ZPushButton *button : d->buttons) {
            if (button)
                button->setImagePath(s.buttonImage);
        }
    }
    if (!s.closeButtonImage.isEmpty() && titlebar())
        titlebar()->setClosePath(s.closeButtonImage);
    if (d->iconShower) {
        const QString &custom = s.symbols[d->kind];
        d->iconShower->setImagePath(custom.isEmpty() ? defaultSymbol(d->kind) : custom);
        d->iconShower->setFixSizeByPixmapSize();
    }
    resetFrame();
}

void ZMessageBox::initMessageBox(const QString &title, const QString &text, const QString &button0,
                                 const QString &button1, const QString &button2, int countdown)
{
    Z_D(ZMessageBox);
    d->locateParts();
    if (titlebar())
        titlebar()->setTitle(title);
    const QString texts[3] = {button0, button1, button2};
    for (int i = 0; i < 3; ++i) {
        ZPushButton *button = d->buttons[i];
        if (!button)
            continue;
        if (!texts[i].isEmpty()) {
            button->setText(texts[i]);
            d->buttonText[i] = button->text();
            d->sizeButton(i);
        } else if (i > 0) {
            button->hide();
        }
    }
    if (d->textShower) {
        d->textShower->setText(text);
        // One line sits level with the symbol; more lines hang from its top.
        d->textShower->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (d->iconShower) {
        d->iconShower->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        // Some air between the symbol and the text.
        if (auto *row = qobject_cast<ZWidget *>(d->iconShower->parentWidget()))
            row->setSpacing(kSymbolSpacing);
    }
    if (countdown > 0) {
        d->remaining = countdown;
        d->countdownButton = 0;
        d->showCountdown();
        if (!d->timer) {
            d->timer = new QTimer(this);
            d->timer->setInterval(1000);
            connect(d->timer, &QTimer::timeout, this, &ZMessageBox::on_elapse_timeout);
        }
    }
    d->fitToText();
}

void ZMessageBox::setMaskImage(const QString &path)
{
    skin().maskImage = path;
}

void ZMessageBox::setMaskMargins(const QMargins &margins)
{
    skin().hasMaskMargins = true;
    skin().maskMargins = margins;
}

void ZMessageBox::setFrameImage(const QString &path)
{
    skin().frameImage = path;
}

void ZMessageBox::setBackgroundColor(const QColor &color)
{
    skin().backgroundColor = color;
}

void ZMessageBox::setButtonImage(const QString &path)
{
    skin().buttonImage = path;
}

void ZMessageBox::setCloseButtonImage(const QString &path)
{
    skin().closeButtonImage = path;
}

void ZMessageBox::setInfomationSymbol(const QString &path)
{
    skin().symbols[Information] = path;
}

void ZMessageBox::setQuestionSymbol(const QString &path)
{
    skin().symbols[Question] = path;
}

void ZMessageBox::setWarningSymbol(const QString &path)
{
    skin().symbols[Warning] = path;
}

void ZMessageBox::setCriticalSymbol(const QString &path)
{
    skin().symbols[Critical] = path;
}

void ZMessageBox::resetSkin()
{
    skin() = MessageBoxSkin();
}

ZMessageBox::Kind ZMessageBox::kind() const
{
    return d_func()->kind;
}

QString ZMessageBox::title() const
{
    const ZTitlebar *bar = titlebar();
    return bar ? bar->title() : QString();
}

QString ZMessageBox::text() const
{
    Z_D(const ZMessageBox);
    return d->textShower ? d->textShower->toText() : QString();
}

ZPushButton *ZMessageBox::button(int index) const
{
    Z_D(const ZMessageBox);
    return index >= 0 && index < 3 ? d->buttons[index].data() : nullptr;
}

int ZMessageBox::countdown() const
{
    return d_func()->remaining;
}

void ZMessageBox::construct()
{
    Z_D(ZMessageBox);
    ZDialog::construct();
    d->locateParts();
    void (ZMessageBox::*const handlers[3])() = {&ZMessageBox::button0Clicked, &ZMessageBox::button1Clicked,
                                             &ZMessageBox::button2Clicked};
    for (int i = 0; i < 3; ++i) {
        if (d->buttons[i])
            connect(d->buttons[i], &ZAbstractButton::clicked, this, handlers[i], Qt::UniqueConnection);
    }
}

void ZMessageBox::onEscPressed(Qt::KeyboardModifiers)
{
    if (closeOnEscape()) {
        d_func()->stopCountdown();
        done(2);
    }
}

void ZMessageBox::onEnterPressed(Qt::KeyboardModifiers modifiers)
{
    ZDialog::onEnterPressed(modifiers);
    d_func()->stopCountdown();
    done(Accepted);
}

void ZMessageBox::onCloseClick()
{
    d_func()->stopCountdown();
    done(2);
}

void ZMessageBox::themeChange(ZThemeChangeEvent *event)
{
    ZDialog::themeChange(event);
    // The window takes the theme colour; a box skin colour stays.
    if (skin().backgroundColor.isValid())
        ZPopupWindow::setBackgroundColor(skin().backgroundColor);
}

void ZMessageBox::showEvent(QShowEvent *event)
{
    Z_D(ZMessageBox);
    ZDialog::showEvent(event);
    if (d->timer && d->remaining > 0 && !d->countdownStarted) {
        d->countdownStarted = true;
        d->timer->start();
    }
}

void ZMessageBox::closeEvent(QCloseEvent *event)
{
    ZDialog::closeEvent(event);
    if (event->isAccepted())
        d_func()->stopCountdown();
}

void ZMessageBox::on_elapse_timeout()
{
    Z_D(ZMessageBox);
    if (d->remaining > 0)
        --d->remaining;
    d->showCountdown();
    if (d->remaining <= 0) {
        d->stopCountdown();
        done(Accepted);
    }
}

void ZMessageBox::button0Clicked()
{
    d_func()->stopCountdown();
    done(1);
}

void ZMessageBox::button1Clicked()
{
    d_func()->stopCountdown();
    done(2);
}

void ZMessageBox::button2Clicked()
{
    d_func()->stopCountdown();
    done(3);
}

Z_REGISTER_WINDOW(ZMessageBox);

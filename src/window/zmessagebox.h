#ifndef ZMESSAGEBOX_H
#define ZMESSAGEBOX_H

#include "zdialog.h"

class ZPushButton;
class ZMessageBoxPrivate;

/*!
 * \brief A ready dialog with an icon, a text, up to three buttons and an
 * optional countdown.
 *
 * The box is loaded from the embedded layout ":/xml/theme/xml/msgbox.xml"
 * (a ZMessageBox element whose parts are named "iconShower", "textShower",
 * "buttonToolbar" and "button0" to "button2"). The four statics build one,
 * show it modally and return its answer:
 *
 * \code
 * int answer = ZMessageBox::question(widget, tr("Save"), tr("Save the changes?"),
 *                                    tr("Save"), tr("Discard"), tr("Cancel"));
 * \endcode
 *
 * The five strings are, in order: the title, the text, and the texts of the
 * first, second and third button. An empty text hides the second or third
 * button; the first button always shows and keeps its text "OK" when given
 * an empty one. Answers:
 *
 * | what ends the box                          | result |
 * |--------------------------------------------|--------|
 * | first button, Enter, the countdown running out | 1   |
 * | second button, Escape, the title bar's close   | 2   |
 * | third button                               | 3      |
 *
 * A countdown of n > 0 seconds shows on the first button as "OK(n)" (its
 * text and the seconds left), counts down once a second from the moment the
 * box is shown and answers 1 at 0. Anything else that ends the box stops it.
 *
 * The box is centred on the window of the widget given as parent (on the
 * screen without one), is owned by that window (no owner without one), and
 * is deleted after its run.
 *
 * Observing boxes (tests, automation): a running box is a visible top-level
 * widget, so a timer started before the call finds it among
 * QApplication::topLevelWidgets(), reads text(), title(), kind() and
 * button(i), and ends it with done(), a key or a click.
 *
 * The static skin setters change every box built afterwards; an empty path
 * or an invalid colour returns to the default, and resetSkin() returns all.
 */
class ZKIT_EXPORT ZMessageBox : public ZDialog
{
    Q_OBJECT
    Q_PROPERTY(Kind kind READ kind)
    Q_PROPERTY(QString title READ title)
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(int countdown READ countdown)

public:
    /*! Which symbol the box shows. */
    enum Kind : int { Information = 0, Question = 1, Warning = 2, Critical = 3 };
    Q_ENUM(Kind)

    /*! Room left and right of a button's text when the box sizes the button to it. */
    static constexpr int ButtonTextMargin = 10;

    Q_INVOKABLE explicit ZMessageBox(QWidget *parent = nullptr);
    ~ZMessageBox() override;

    static int information(ZWidget *parent, const QString &title, const QString &text,
                           const QString &button0 = QString(), const QString &button1 = QString(),
                           const QString &button2 = QString(), int countdown = 0);
    static int question(ZWidget *parent, const QString &title, const QString &text,
                        const QString &button0 = QString(), const QString &button1 = QString(),
                        const QString &button2 = QString(), int countdown = 0);
    static int warning(ZWidget *parent, const QString &title, const QString &text,
                       const QString &button0 = QString(), const QString &button1 = QString(),
                       const QString &button2 = QString(), int countdown = 0);
    static int critical(ZWidget *parent, const QString &title, const QString &text,
                        const QString &button0 = QString(), const QString &button1 = QString(),
                        const QString &button2 = QString(), int countdown = 0);

    /*!
     * Builds a box as the statics do, filled and sized but hidden and not
     * placed; show it with doModal() or show(). Null when the layout cannot
     * be loaded. An unknown \a kind shows the information symbol.
     */
    static ZMessageBox *create(ZWidget *parent, Kind kind, const QString &title, const QString &text,
                               const QString &button0 = QString(), const QString &button1 = QString(),
                               const QString &button2 = QString(), int countdown = 0);

    // Skin of all boxes built from now on. These hide the window's own
    // setters of the same names: call those through ZPopupWindow::.
    static void setMaskImage(const QString &path);
    static void setMaskMargins(const QMargins &margins);
    static void setFrameImage(const QString &path);
    static void setBackgroundColor(const QColor &color);
    /*! State images of the three buttons (multi-state string). */
    static void setButtonImage(const QString &path);
    /*! State images of the title bar's close button. */
    static void setCloseButtonImage(const QString &path);
    static void setInfomationSymbol(const QString &path);
    static void setQuestionSymbol(const QString &path);
    static void setWarningSymbol(const QString &path);
    static void setCriticalSymbol(const QString &path);
    /*! Every skin setting back to its default. */
    static void resetSkin();

    Kind kind() const;
    /*! The title bar's title. */
    QString title() const;
    /*! The text shown, without markup. */
    QString text() const;
    /*! "button0" to "button2" for \a index 0 to 2, hidden ones included; else null. */
    ZPushButton *button(int index) const;
    /*! Seconds left on the countdown; 0 without one. */
    int countdown() const;

    /*! Finds the layout's parts and connects the buttons. */
    void construct() override;

protected:
    void onEscPressed(Qt::KeyboardModifiers modifiers) override;
    void onEnterPressed(Qt::KeyboardModifiers modifiers) override;
    void onCloseClick() override;
    void themeChange(ZThemeChangeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private Q_SLOTS:
    void on_elapse_timeout();
    void button0Clicked();
    void button1Clicked();
    void button2Clicked();

private:
    Z_DECLARE_PRIVATE(ZMessageBox)
    static int run(ZWidget *parent, Kind kind, const QString &title, const QString &text,
                   const QString &button0, const QString &button1, const QString &button2, int countdown);
    void initSkin();
    void initMessageBox(const QString &title, const QString &text, const QString &button0,
                        const QString &button1, const QString &button2, int countdown);
};

#endif // ZMESSAGEBOX_H

#ifndef ZTEXTBUBBLETIP_H
#define ZTEXTBUBBLETIP_H

#include "zbubbletip.h"

class ZLabel;
class ZTextItem;
class ZTextBubbleTipPrivate;

/*!
 * \brief A bubble tip showing a text.
 *
 * With textWidth 0 (the default) the text is one line in a ZLabel
 * (labelObject()); with a positive textWidth it wraps at that width in a
 * ZTextItem (textObject()), which also shows rich text. The tip sizes itself
 * to the text plus the root widget's margins (10, 6, 10, 6 by default).
 *
 * Orientation chooses the side: Qt::Vertical puts the tip below the target
 * (BottomCenter, above where there is no room), Qt::Horizontal to its right
 * (RightCenter, left where there is no room). It sets the direction, which
 * can still be set on its own afterwards.
 *
 * With a positive elapseTime the tip hides by itself that many milliseconds
 * after it was shown; while the mouse is over the tip the countdown waits,
 * and it starts afresh when the mouse leaves. A left press on the tip emits
 * clicked().
 */
class ZKIT_EXPORT ZTextBubbleTip : public ZBubbleTip
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(int textWidth READ textWidth WRITE setTextWidth)
    Q_PROPERTY(int elapseTime READ elapseTime WRITE setElapseTime)
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)

public:
    Q_INVOKABLE explicit ZTextBubbleTip(QWidget *parent = nullptr);
    ~ZTextBubbleTip() override;

    QString text() const;
    void setText(const QString &text);
    int textWidth() const;
    /*! Wrapping width; 0 or less shows one line. */
    void setTextWidth(int width);
    int elapseTime() const;
    /*! Milliseconds until the tip hides itself; 0 or less: never. */
    void setElapseTime(int msec);
    Qt::Orientation orientation() const;
    void setOrientation(Qt::Orientation orientation);

    ZTextItem *textObject() const;
    ZLabel *labelObject() const;

    /*! Sizes the tip to its text. */
    void adjustToText();
    void setVisible(bool visible) override;

Q_SIGNALS:
    void clicked();

public Q_SLOTS:
    void on_clicked();
    void on_elapse_timeout();

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZTextBubbleTip)
};

#endif // ZTEXTBUBBLETIP_H

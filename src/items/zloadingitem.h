#ifndef ZLOADINGITEM_H
#define ZLOADINGITEM_H

#include "zwidget.h"

class ZLoadingItemPrivate;

/*!
 * \brief A spinning busy indicator.
 *
 * Turns its image (by default the embedded "anijuhua.png") about the item's
 * centre, one full turn every period milliseconds, clockwise. With steps
 * above 0 the image turns in that many jumps per turn (a spoked wheel looks
 * right turning spoke by spoke); with 0 it turns smoothly.
 *
 * It spins while active and visible in a scene, on Qt's animation framework; hidden, it
 * is paused and costs nothing.
 */
class ZKIT_EXPORT ZLoadingItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(int period READ period WRITE setPeriod)
    Q_PROPERTY(int steps READ steps WRITE setSteps)
    Q_PROPERTY(bool active READ isActive WRITE setActive)
    Q_PROPERTY(bool running READ isRunning)
    Q_PROPERTY(qreal angle READ angle)

public:
    static const char *const DefaultImagePath;

    Q_INVOKABLE explicit ZLoadingItem(QGraphicsItem *parent = nullptr);
    ~ZLoadingItem() override;

    QString imagePath() const;
    void setImagePath(const QString &path);
    int period() const;
    /*! Milliseconds per turn; clamped to 10..600000. */
    void setPeriod(int ms);
    int steps() const;
    /*! Jumps per turn, 0 for a smooth turn; clamped to 0..360. */
    void setSteps(int steps);
    bool isActive() const;
    /*! Whether the indicator spins (while visible). On by default. */
    void setActive(bool on);
    /*! Whether it is spinning now. */
    bool isRunning() const;
    /*! The angle shown, in degrees clockwise, 0 <= angle < 360. */
    qreal angle() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;
    void doThemeChange() override;

public Q_SLOTS:
    void start();
    void stop();

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    Z_DECLARE_PRIVATE(ZLoadingItem)
    Q_DISABLE_COPY(ZLoadingItem)
};

#endif // ZLOADINGITEM_H

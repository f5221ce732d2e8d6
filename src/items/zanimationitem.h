#ifndef ZANIMATIONITEM_H
#define ZANIMATIONITEM_H

#include "zwidget.h"

class QMovie;
class ZAnimationItemPrivate;

/*!
 * \brief Plays an animated image file (GIF and whatever else QMovie reads).
 *
 * imagePath names the file by the toolkit's path rules (resource and
 * search-path names as they stand, relative names in the application's
 * directory); frames once read are kept. The movie plays while
 * playing is on (autoStart turns it on when a file loads) and the item is
 * visible in a scene; hidden, the movie is paused and its timer stopped, and
 * it goes on from the same frame when shown. speed is a percentage of the
 * file's own pace. Frames are drawn centred at their size or, with
 * autoAdjust, fitted into the item keeping their aspect ratio.
 */
class ZKIT_EXPORT ZAnimationItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(bool playing READ isPlaying WRITE setPlaying)
    Q_PROPERTY(bool autoStart READ autoStart WRITE setAutoStart)
    Q_PROPERTY(bool autoAdjust READ autoAdjust WRITE setAutoAdjust)
    Q_PROPERTY(int speed READ speed WRITE setSpeed)
    Q_PROPERTY(int currentFrame READ currentFrame WRITE setCurrentFrame NOTIFY frameChanged)
    Q_PROPERTY(int frameCount READ frameCount)
    Q_PROPERTY(bool running READ isRunning)
    Q_PROPERTY(bool valid READ isValid)

public:
    Q_INVOKABLE explicit ZAnimationItem(QGraphicsItem *parent = nullptr);
    ~ZAnimationItem() override;

    QString imagePath() const;
    /*! Loads the file at \a path and shows its first frame; a file that does not read leaves the item empty. */
    void setImagePath(const QString &path);
    /*! Whether the file was read. */
    bool isValid() const;

    bool isPlaying() const;
    /*! Whether the movie should play (it runs while the item is visible). */
    void setPlaying(bool on);
    bool autoStart() const;
    /*!
     * Sets playing as a file loads. On by default; turning it off stops a
     * play that it began (documents may set it after the file).
     */
    void setAutoStart(bool on);
    bool autoAdjust() const;
    void setAutoAdjust(bool on);
    int speed() const;
    /*! Percent of the file's pace; clamped to 1..10000. */
    void setSpeed(int percent);

    /*! The frame shown; -1 without a movie. */
    int currentFrame() const;
    /*! Jumps to frame \a index; answers of a frame the file does not have leave the frame as it was. */
    void setCurrentFrame(int index);
    /*! The number of frames, 0 when unknown. */
    int frameCount() const;
    /*! Whether the movie is running now (playing and visible). */
    bool isRunning() const;
    /*! The movie itself, for what the item does not expose. */
    QMovie *movie() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

public Q_SLOTS:
    void start();
    void stop();

Q_SIGNALS:
    void frameChanged(int frame);
    /*! The movie ran out of loops. */
    void finished();

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    Z_DECLARE_PRIVATE(ZAnimationItem)
    Q_DISABLE_COPY(ZAnimationItem)
};

#endif // ZANIMATIONITEM_H

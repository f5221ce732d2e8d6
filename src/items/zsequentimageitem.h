#ifndef ZSEQUENTIMAGEITEM_H
#define ZSEQUENTIMAGEITEM_H

#include "zwidget.h"

class ZSequentImageItemPrivate;

/*!
 * \brief Plays a sequence of images, frame after frame.
 *
 * The frames come from imagePath: several paths joined by "|" are one frame
 * each (paths that load nothing are left out); a single path is a
 * horizontal strip cut into stripCount frames of equal width, or, with
 * stripCount 0, into square frames as high as the strip. The frames play at
 * fps frames per second, loopCount times (-1: for ever); the last frame
 * stays when the play ends.
 *
 * The item runs on Qt's animation framework, so the application's (or a
 * test's) animation driver steers it. It plays while it is wanted (start(),
 * or autoStart when frames arrive) and visible in a scene: hidden, it is paused and
 * costs nothing, and it goes on where it stopped when shown again.
 *
 * A frame is drawn centred at its own size or, with autoAdjust, fitted into
 * the item keeping its aspect ratio.
 */
class ZKIT_EXPORT ZSequentImageItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(int stripCount READ stripCount WRITE setStripCount)
    Q_PROPERTY(qreal fps READ fps WRITE setFps)
    Q_PROPERTY(int loopCount READ loopCount WRITE setLoopCount)
    Q_PROPERTY(bool autoStart READ autoStart WRITE setAutoStart)
    Q_PROPERTY(bool autoAdjust READ autoAdjust WRITE setAutoAdjust)
    Q_PROPERTY(int currentFrame READ currentFrame WRITE setCurrentFrame NOTIFY frameChanged)
    Q_PROPERTY(int frameCount READ frameCount)
    Q_PROPERTY(bool running READ isRunning)

public:
    Q_INVOKABLE explicit ZSequentImageItem(QGraphicsItem *parent = nullptr);
    ~ZSequentImageItem() override;

    QString imagePath() const;
    /*! Loads the frames (see the class description) and shows the first; an empty path clears them. */
    void setImagePath(const QString &path);
    /*! Replaces the frames by \a frames (null ones left out) and forgets the image path. */
    void setFrames(const QList<QPixmap> &frames);
    int stripCount() const;
    /*! Frames in a single strip image; 0 (and negative values) cut square frames. */
    void setStripCount(int count);
    qreal fps() const;
    /*! Frames per second; values that are not finite or not above 0 are ignored, large ones clamped to 1000. */
    void setFps(qreal fps);
    int loopCount() const;
    /*! Plays \a count times; -1 for ever; 0 and values below -1 count as 1. */
    void setLoopCount(int count);
    bool autoStart() const;
    /*!
     * Starts playing as soon as there are frames. On by default; turning it
     * off stops a play that it began (documents may set it after the images).
     */
    void setAutoStart(bool on);
    bool autoAdjust() const;
    void setAutoAdjust(bool on);

    int frameCount() const;
    /*! The frame shown; -1 without frames. */
    int currentFrame() const;
    /*! Shows frame \a index (out of range: nothing happens); a running play goes on from there. */
    void setCurrentFrame(int index);
    QPixmap currentPixmap() const;
    /*! Whether the play is running now (wanted and visible). */
    bool isRunning() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;
    void doThemeChange() override;

public Q_SLOTS:
    /*! Plays from the current frame, or from the first after a play has ended. */
    void start();
    /*! Stops; the current frame stays. */
    void stop();

Q_SIGNALS:
    void frameChanged(int frame);
    /*! The last loop has ended. */
    void finished();

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    Z_DECLARE_PRIVATE(ZSequentImageItem)
    Q_DISABLE_COPY(ZSequentImageItem)
};

#endif // ZSEQUENTIMAGEITEM_H

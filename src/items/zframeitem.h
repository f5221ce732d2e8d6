#ifndef ZFRAMEITEM_H
#define ZFRAMEITEM_H

#include "zwidget.h"

#include <QtGui/qpixmap.h>

class ZFrameItemPrivate;

/*!
 * \brief Paints one of several state images, or state colours, by a fixed rule.
 *
 * The skin item behind buttons and other controls: imagePath holds up to
 * eight images joined by "|" (normal, hover, down, disabled, then the same
 * four when checked), frameColor the same for colours ("r,g,b[,a]" parts),
 * and index picks the one shown. frameType is the drawing rule (see
 * ZUtility for each). An index beyond the images or colours present shows
 * the first one.
 *
 * On its own it is a clickable, hoverable picture: while frameSwitch is on,
 * hover, press and enable changes move the index; the signals come either way.
 *
 * Images are looked up through the theme's pixmap cache, tinted when the item
 * has a theme; colours are tinted then too. A theme change reloads both.
 */
class ZKIT_EXPORT ZFrameItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(DefaultFrame defaultFrame READ defaultFrame WRITE setDefaultFrame)
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(FrameType frameType READ frameType WRITE setFrameType)
    Q_PROPERTY(QString frameColor READ frameColor WRITE setFrameColor)
    Q_PROPERTY(int framePixel READ framePixel WRITE setFramePixel)
    Q_PROPERTY(FrameState frameState READ frameState WRITE setFrameState)
    Q_PROPERTY(bool acceptClick READ acceptClick WRITE setAcceptClick)
    Q_PROPERTY(bool frameSwitch READ frameSwitch WRITE setFrameSwitch)
    Q_PROPERTY(bool acceptHover READ acceptHover WRITE setAcceptHover)
    Q_PROPERTY(int index READ frameIndex WRITE setFrameIndex)
    Q_PROPERTY(bool smooth READ smooth WRITE setSmooth)
    Q_PROPERTY(int count READ frameCount)
    // Re-declared so that documents setting "enabled" get the state change too.
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged)

public:
    /*!
     * The drawing rule. Below BitmapEnd the rules draw the current image,
     * between BitmapEnd and ColorFrameEnd the current colour; the two
     * markers themselves, and any other value, draw nothing.
     */
    enum FrameType : int {
        OneTopLeft = 0,
        OneTopRight = 1,
        OneBotLeft = 2,
        OneBotRight = 3,
        OneHCenter = 4,
        OneVCenter = 5,
        OneHVCenter = 6,
        TileH = 7,
        TileV = 8,
        TileHV = 9,
        StretchH = 10,
        StretchV = 11,
        StretchVTwoSize = 12,
        StretchVMiddle = 13,
        StretchHV = 14,
        StretchHTwoSize = 15,
        StretchHMiddle = 16,
        GridFour = 17,
        GridFrameFour = 18,
        GridNine = 19,
        BitmapEnd = 20,
        Rectangle = 21,
        RoundRect = 22,
        RoundRect4Pixel = 23,
        RoundRect5Pixel = 24,
        RoundRect6Pixel = 25,
        RoundRect7Pixel = 26,
        ColorFrameEnd = 27
    };
    Q_ENUM(FrameType)

    /*! Image presets of the embedded skin (the names are vocabulary, misspellings included). */
    enum DefaultFrame : int {
        BadDefalut = 0,
        RoundWhite = 1,
        RoundTranparent = 2,
        RoundFlatTranslucent = 3,
        RoundRaiseTranslucent = 4,
        RoundSunkenTranslucent = 5,
        RectWhite = 6
    };
    Q_ENUM(DefaultFrame)

    /*! State indices; Selected and CheckSelected share the image of Down and CheckDown. */
    enum FrameState : int {
        Normal = 0,
        Hover = 1,
        Down = 2,
        Selected = 2,
        Disable = 3,
        CheckNormal = 4,
        CheckHover = 5,
        CheckDown = 6,
        CheckSelected = 6,
        CheckDisable = 7,
        StateMax = 8
    };
    Q_ENUM(FrameState)

    Q_INVOKABLE explicit ZFrameItem(QGraphicsItem *parent = nullptr);
    /*! Loads \a imagePath, then sets \a type. */
    ZFrameItem(const QString &imagePath, FrameType type, QGraphicsItem *parent = nullptr);
    ~ZFrameItem() override;

    /*! Always BadDefalut: a preset is applied, not kept. */
    DefaultFrame defaultFrame() const;
    /*!
     * Sets imagePath to the normal|hover|down images of a preset of the
     * embedded skin; BadDefalut, RectWhite and unknown values change nothing.
     * The frame type is left alone (GridNine suits the presets).
     */
    void setDefaultFrame(DefaultFrame frame);

    QString imagePath() const;
    /*!
     * Replaces the state images by those named in \a path ("|"-separated,
     * empty parts kept). A part that loads nothing still takes its index,
     * with a null pixmap. An empty path loads nothing and keeps the images
     * there are; it loads frameColor instead.
     */
    void setImagePath(const QString &path);

    QString frameColor() const;
    /*!
     * Loads state colours from \a colors: "|"-separated parts of
     * "r,g,b" or "r,g,b,a" (decimal, alpha 255 when missing). Parts with
     * fewer than three fields are skipped, fields that are no number read 0,
     * values are clamped to 0..255. The colours are appended to those already
     * loaded, not put in their place. Colours are only loaded while imagePath
     * is empty.
     */
    void setFrameColor(const QString &colors);

    FrameType frameType() const;
    void setFrameType(FrameType type);

    int framePixel() const;
    /*! Pen width of the colour frames; takes effect at the next repaint. */
    void setFramePixel(int pixel);

    bool smooth() const;
    /*! Smooth scaling for StretchH, StretchV and StretchHV. */
    void setSmooth(bool smooth);

    bool frameSwitch() const;
    /*! Whether hover, mouse and enable changes move the index. */
    void setFrameSwitch(bool on);

    bool acceptClick() const;
    /*! Accepts the left mouse button (\a on) or no button. */
    void setAcceptClick(bool on);
    bool acceptHover() const;
    void setAcceptHover(bool on);

    int frameIndex() const;
    /*!
     * Shows state \a index. Out of range (of the images for image types, of
     * the colours for the others) it shows state 0.
     */
    void setFrameIndex(int index);
    /*! The number of state images (also for colour frame types). */
    int frameCount() const;

    /*! Adds one state image after the others. */
    void appendPixmap(const QPixmap &pixmap);
    /*! The image of the current state, or a null pixmap when there is none. */
    QPixmap currentPixmap() const;
    /*! Size of currentPixmap() in logical pixels. */
    QSizeF pixmapSize() const;
    void setFixSizeByPixmapSize();
    void setFixWidthByPixmapWidth();
    void setFixHeightByPixmapHeight();

    // State shortcuts; while checked they pick the checked images (index + 4).
    void setNormal();
    void setHover();
    void setDown();
    void setSelected();
    void setDisable();

    /*!
     * Marks the item checked or not and moves a plain index to its checked
     * form (+4) or back (-4). The flag is kept per instance.
     */
    void setChecked(bool checked);
    bool hasChecked() const;
    /*! Sets the checked flag (for states from CheckNormal on) and the index. */
    void setFrameState(FrameState state);
    FrameState frameState() const;

    /*! Enables or disables the item and, while frameSwitch is on, shows Normal or Disable. */
    void setEnabled(bool enabled);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

Q_SIGNALS:
    void enter();
    void leave();
    void pressed();
    void released();
    /*! Follows every release, also one outside the item. */
    void clicked();

protected:
    ZFrameItem(ZFrameItemPrivate &dd, QGraphicsItem *parent);

    void doThemeChange() override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZFrameItem)
    Q_DISABLE_COPY(ZFrameItem)
};

#endif // ZFRAMEITEM_H

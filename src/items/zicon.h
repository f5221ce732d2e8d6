#ifndef ZICON_H
#define ZICON_H

#include "zwidget.h"

#include <QtGui/qicon.h>

class ZIconPrivate;

/*!
 * \brief Draws a QIcon in one of its modes and states, aligned in the item.
 */
class ZKIT_EXPORT ZIcon : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString iconPath READ iconPath WRITE setIconPath)
    Q_PROPERTY(QIcon icon READ icon WRITE setIcon)
    Q_PROPERTY(Mode mode READ mode WRITE setMode)
    Q_PROPERTY(State state READ state WRITE setState)
    Q_PROPERTY(Qt::Alignment iconAlignment READ iconAlignment WRITE setIconAlignment)

public:
    /*! The numbers of QIcon::Mode. */
    enum Mode : int { Normal = 0, Disabled = 1, Active = 2, Selected = 3 };
    Q_ENUM(Mode)
    /*! The numbers of QIcon::State. */
    enum State : int { On = 0, Off = 1 };
    Q_ENUM(State)

    Q_INVOKABLE explicit ZIcon(QGraphicsItem *parent = nullptr);
    ~ZIcon() override;

    /*! The icon's own name (QIcon::name()), not a file path: empty for icons made from files. */
    QString iconPath() const;
    /*!
     * The icon becomes the file \a path (relative names are taken relative
     * to the application directory); "name@2x" files beside it serve dense
     * screens.
     */
    void setIconPath(const QString &path);

    QIcon icon() const;
    void setIcon(const QIcon &icon);
    Mode mode() const;
    /*! Values other than Disabled, Active and Selected draw the Normal mode. */
    void setMode(Mode mode);
    State state() const;
    /*! Off draws the Off state, every other value On. */
    void setState(State state);
    Qt::Alignment iconAlignment() const;
    void setIconAlignment(Qt::Alignment alignment);

    /*! QIcon::actualSize() of the icon. */
    QSize actualSize(const QSize &size, Mode mode = Normal, State state = Off) const;

protected:
    ZIcon(ZIconPrivate &dd, QGraphicsItem *parent);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    Z_DECLARE_PRIVATE(ZIcon)
    Q_DISABLE_COPY(ZIcon)
};

#endif // ZICON_H

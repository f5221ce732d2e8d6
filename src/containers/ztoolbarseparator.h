#ifndef ZTOOLBARSEPARATOR_H
#define ZTOOLBARSEPARATOR_H

#include "zwidget.h"

class ZToolBarSeparatorPrivate;

/*!
 * \brief A thin line between groups of tool-bar controls.
 *
 * Draws a one-pixel line of color across the bar, in the middle of its
 * extent along the bar, leaving margin at both ends; or, with an
 * imagePath, that image stretched over the same line's place (rotated a
 * quarter turn in a horizontal bar, the skin's separator image being
 * horizontal). The separator is exactly extent long along the bar.
 */
class ZKIT_EXPORT ZToolBarSeparator : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor color READ color WRITE setColor)
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(int extent READ extent WRITE setExtent)
    Q_PROPERTY(int lineMargin READ lineMargin WRITE setLineMargin)

public:
    Q_INVOKABLE explicit ZToolBarSeparator(QGraphicsItem *parent = nullptr);
    ~ZToolBarSeparator() override;

    QColor color() const;
    /*! An invalid colour draws nothing (unless there is an image). */
    void setColor(const QColor &color);
    QString imagePath() const;
    void setImagePath(const QString &path);
    int extent() const;
    /*! Clamped to 1..1000. */
    void setExtent(int extent);
    int lineMargin() const;
    /*! Clamped to 0..1000. */
    void setLineMargin(int margin);

    /*! Vertical (a line from top to bottom) unless the parent is a vertical tool bar. */
    Qt::Orientation lineOrientation() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;
    void doThemeChange() override;

protected:
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    Z_DECLARE_PRIVATE(ZToolBarSeparator)
    Q_DISABLE_COPY(ZToolBarSeparator)
};

#endif // ZTOOLBARSEPARATOR_H

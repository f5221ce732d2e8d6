#ifndef ZSTACKEDWIDGET_H
#define ZSTACKEDWIDGET_H

#include "zlayerwidget.h"

#include <QtCore/qeasingcurve.h>

class ZStackedWidgetPrivate;

/*!
 * \brief Pages stacked in one place, one of them shown.
 *
 * Every child is a page filling the widget (see ZLayerWidget); only the
 * current page is visible. The first page added becomes the current one.
 *
 * setCurrentIndex() slides the new page in over duration milliseconds with
 * the easing curve easing: a page of a higher index comes in from the right
 * (from below when slideOrientation is Vertical) and pushes the old page
 * out, a page of a lower index from the other side. There is no slide when
 * animated is off, the duration is not positive, or the widget is disabled
 * or hidden (also when it is in no scene);
 * hiding the widget or changing the page again ends a running slide at once.
 *
 * currentChanged() follows every change of currentIndex() or of the page
 * shown, also those that adding the first page or removing pages cause
 * (removing the current page shows the one after it, or the new last one).
 */
class ZKIT_EXPORT ZStackedWidget : public ZLayerWidget
{
    Q_OBJECT
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentChanged)
    Q_PROPERTY(bool animated READ animated WRITE setAnimated)
    Q_PROPERTY(int duration READ duration WRITE setDuration)
    Q_PROPERTY(QEasingCurve::Type easing READ easing WRITE setEasing)
    Q_PROPERTY(Qt::Orientation slideOrientation READ slideOrientation WRITE setSlideOrientation)
    Q_PROPERTY(bool sliding READ isSliding)

public:
    /*! The default slide duration in milliseconds. */
    static constexpr int DefaultDuration = 250;

    Q_INVOKABLE explicit ZStackedWidget(QGraphicsItem *parent = nullptr);
    ~ZStackedWidget() override;

    /*! The index of the shown page; -1 without pages. */
    int currentIndex() const;
    /*!
     * Shows page \a index (sliding it in, see the class description). An
     * index out of range changes nothing now; a non-negative one is kept for
     * construct(), since documents set the attribute before the pages exist.
     */
    void setCurrentIndex(int index);
    ZWidget *currentWidget() const;
    /*! Shows \a page when it is one of the pages. */
    Q_INVOKABLE void setCurrentWidget(ZWidget *page);

    bool animated() const;
    void setAnimated(bool on);
    int duration() const;
    /*! Negative values count as 0 (no slide). */
    void setDuration(int ms);
    QEasingCurve::Type easing() const;
    /*! Values beyond QEasingCurve's own curves are ignored. */
    void setEasing(QEasingCurve::Type type);
    Qt::Orientation slideOrientation() const;
    void setSlideOrientation(Qt::Orientation orientation);

    /*! Shows the page a document asked for, now that the pages exist. */
    void construct() override;

    /*! Whether a slide is running. */
    bool isSliding() const;
    /*! Ends a running slide: the new page in place, the old one hidden. */
    Q_INVOKABLE void finishSlide();

Q_SIGNALS:
    void currentChanged(int index);
    /*! A slide ended, whether it ran to its end or was cut short. */
    void slideFinished();

protected:
    void layerInserted(int index) override;
    void layerRemoved(int index) override;
    void layoutLayers() override;
    void visibleEvent(bool visible) override;

private:
    Z_DECLARE_PRIVATE(ZStackedWidget)
    Q_DISABLE_COPY(ZStackedWidget)
};

#endif // ZSTACKEDWIDGET_H

#ifndef ZMENUSTYLE_H
#define ZMENUSTYLE_H

#include "zglobal.h"

#include <QProxyStyle>

/*!
 * \brief The style ZMenu draws with: the menu skin images over a plain panel.
 *
 * Entries are 24 pixels high (more for large fonts) with a 28-pixel column
 * on the left for the check mark or icon. The entry under the mouse is backed
 * by ":/image/theme/menuhover.png" (nine parts, 4-pixel margins); separators
 * are ":/image/theme/menusperator.png" stretched across; checked entries show
 * "menucheck.png", or "menucheckdisable.png" when disabled; entries with a
 * submenu end in "menuarrow.png". The text after a tab in an entry's text
 * (the shortcut text) is drawn right-aligned. Everything else goes to the
 * base style.
 */
class ZKIT_EXPORT ZMenuStyle : public QProxyStyle
{
    Q_OBJECT
public:
    ZMenuStyle();
    ~ZMenuStyle() override;

    static constexpr int ItemHeight = 24;
    static constexpr int CheckColumn = 28;
    static constexpr int ArrowColumn = 24;
    static constexpr int ShortcutGap = 24;
    static constexpr int SeparatorHeight = 7;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
};

#endif // ZMENUSTYLE_H

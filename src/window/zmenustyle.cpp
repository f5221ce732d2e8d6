#include "zmenustyle.h"
#include "zpopupwindow_p.h"
#include "zresource.h"

#include <QPainter>
#include <QStyleOptionMenuItem>

namespace {

QPixmap skin(const char *name)
{
    return ZResource::loadPixmap(QStringLiteral(":/image/theme/") + QLatin1String(name));
}

// The entry's text and the shortcut text after its tab.
std::pair<QString, QString> splitText(const QString &text)
{
    const qsizetype tab = text.indexOf(QLatin1Char('\t'));
    if (tab < 0)
        return {text, QString()};
    return {text.left(tab), text.mid(tab + 1)};
}

void drawCentered(QPainter *painter, const QRect &box, const QPixmap &pm)
{
    if (pm.isNull())
        return;
    const QSize s = pm.deviceIndependentSize().toSize();
    painter->drawPixmap(QRect(QPoint(box.x() + (box.width() - s.width()) / 2,
                                     box.y() + (box.height() - s.height()) / 2),
                              s),
                        pm);
}

} // namespace

ZMenuStyle::ZMenuStyle() = default;

ZMenuStyle::~ZMenuStyle() = default;

void ZMenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    switch (element) {
    case PE_PanelMenu:
        painter->fillRect(option->rect, QColor(255, 255, 255));
        painter->setPen(QColor(200, 200, 200));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        return;
    case PE_FrameMenu:
        painter->setPen(QColor(200, 200, 200));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ZMenuStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                             const QWidget *widget) const
{
    // The panel already filled the area around the entries.
    if (element == CE_MenuEmptyArea)
        return;
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (element != CE_MenuItem || !item) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    painter->save();
    const QRect r = item->rect;
    if (item->menuItemType == QStyleOptionMenuItem::Separator) {
        const QPixmap line = skin("menusperator.png");
        const int h = line.isNull() ? 0 : int(line.deviceIndependentSize().height());
        painter->drawPixmap(QRect(r.left() + 4, r.top() + (r.height() - h) / 2, r.width() - 8, h), line);
        painter->restore();
        return;
    }

    const bool enabled = item->state & State_Enabled;
    if ((item->state & State_Selected) && enabled)
        zDrawNinePart(painter, r.adjusted(2, 0, -2, 0), skin("menuhover.png"), QMargins(4, 4, 4, 4));

    const QRect checkBox(r.left(), r.top(), CheckColumn, r.height());
    if (item->checkType != QStyleOptionMenuItem::NotCheckable && item->checked) {
        drawCentered(painter, checkBox, skin(enabled ? "menucheck.png" : "menucheckdisable.png"));
    } else if (!item->icon.isNull()) {
        const int extent = pixelMetric(PM_SmallIconSize, option, widget);
        const QPixmap icon = item->icon.pixmap(QSize(extent, extent), painter->device()->devicePixelRatioF(),
                                               enabled ? QIcon::Normal : QIcon::Disabled);
        drawCentered(painter, checkBox, icon);
    }

    const auto [label, shortcut] = splitText(item->text);
    const QRect textRect = r.adjusted(CheckColumn, 0, -ArrowColumn, 0);
    int flags = Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextDontClip | Qt::TextSingleLine;
    if (!proxy()->styleHint(SH_UnderlineShortcut, option, widget))
        flags |= Qt::TextHideMnemonic;
    painter->setFont(item->font);
    painter->setPen(enabled ? item->palette.color(QPalette::Active, QPalette::Text) : QColor(160, 160, 160));
    painter->drawText(textRect, flags | Qt::AlignLeft, label);
    if (!shortcut.isEmpty())
        painter->drawText(textRect, flags | Qt::AlignRight, shortcut);

    if (item->menuItemType == QStyleOptionMenuItem::SubMenu)
        drawCentered(painter, QRect(r.right() + 1 - ArrowColumn, r.top(), ArrowColumn, r.height()),
                     skin("menuarrow.png"));
    painter->restore();
}

QSize ZMenuStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                   const QWidget *widget) const
{
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (type != CT_MenuItem || !item)
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return QSize(size.width(), SeparatorHeight + 2);
    const QFontMetrics fm(item->font);
    const auto [label, shortcut] = splitText(item->text);
    int width = CheckColumn + fm.size(Qt::TextSingleLine | Qt::TextShowMnemonic, label).width() + ArrowColumn;
    if (!shortcut.isEmpty())
        width += ShortcutGap + fm.horizontalAdvance(shortcut);
    return QSize(width, std::max(ItemHeight, fm.height() + 8));
}

int ZMenuStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuHMargin:
        return 2;
    case PM_MenuVMargin:
        return 4;
    case PM_MenuDesktopFrameWidth:
        return 0;
    case PM_SubMenuOverlap:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ZMenuStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_Menu_MouseTracking:
        return 1;
    case SH_Menu_SubMenuPopupDelay:
        return 200;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

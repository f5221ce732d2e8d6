#include "sheet.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

const QColor LightBg(0xF7, 0xF8, 0xFA);
const QColor DarkBg(0x24, 0x28, 0x30);
const QColor PageBg(0xFF, 0xFF, 0xFF);
const QColor Ink(0x2B, 0x31, 0x3A);
const QColor InkSoft(0x7A, 0x83, 0x90);

// The four-corner cut as the frame item draws it: corners at natural size,
// the centre row and column stretched over the edges and the middle.
void drawGridFour(QPainter &p, const QRect &t, const QImage &img)
{
    const int pw = img.width(), ph = img.height();
    const int hw = pw / 2, hh = ph / 2, rw = pw - hw, rh = ph - hh;
    const int midW = t.width() - pw, midH = t.height() - ph;
    const int right = t.left() + t.width(), bottom = t.top() + t.height();
    const auto piece = [&](QRect src, QRect dst) {
        if (dst.width() > 0 && dst.height() > 0)
            p.drawImage(dst, img, src);
    };
    piece(QRect(0, 0, hw, hh), QRect(t.left(), t.top(), hw, hh));
    piece(QRect(hw, 0, 1, hh), QRect(t.left() + hw, t.top(), midW, hh));
    piece(QRect(hw, 0, rw, hh), QRect(right - rw, t.top(), rw, hh));
    piece(QRect(0, hh, hw, 1), QRect(t.left(), t.top() + hh, hw, midH));
    piece(QRect(hw, hh, 1, 1), QRect(t.left() + hw, t.top() + hh, midW, midH));
    piece(QRect(hw, hh, rw, 1), QRect(right - rw, t.top() + hh, rw, midH));
    piece(QRect(0, hh, hw, rh), QRect(t.left(), bottom - rh, hw, rh));
    piece(QRect(hw, hh, 1, rh), QRect(t.left() + hw, bottom - rh, midW, rh));
    piece(QRect(hw, hh, rw, rh), QRect(right - rw, bottom - rh, rw, rh));
}

// Nine-part cut by fixed margins (device pixels), edges and middle stretched.
void drawNinePart(QPainter &p, const QRect &t, const QImage &img, const QMargins &m)
{
    const int xs[] = {0, m.left(), img.width() - m.right(), img.width()};
    const int ys[] = {0, m.top(), img.height() - m.bottom(), img.height()};
    const int xd[] = {t.left(), t.left() + m.left(), t.right() + 1 - m.right(), t.right() + 1};
    const int yd[] = {t.top(), t.top() + m.top(), t.bottom() + 1 - m.bottom(), t.bottom() + 1};
    for (int j = 0; j < 3; ++j) {
        for (int i = 0; i < 3; ++i) {
            const QRect src(QPoint(xs[i], ys[j]), QPoint(xs[i + 1] - 1, ys[j + 1] - 1));
            const QRect dst(QPoint(xd[i], yd[j]), QPoint(xd[i + 1] - 1, yd[j + 1] - 1));
            if (src.isValid() && dst.isValid())
                p.drawImage(dst, img, src);
        }
    }
}

QFont labelFont(int pixelSize, bool bold = false)
{
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(pixelSize);
    f.setBold(bold);
    f.setHintingPreference(QFont::PreferFullHinting);
    return f;
}

// Mock-ups of the controls at one scale: every coordinate below is logical
// and multiplied by `s`; the images are the files made for that scale.
class MockUp
{
public:
    MockUp(QPainter &p, const QHash<QString, QImage> &images, int s) : p(p), images(images), s(s) {}

    QImage img(const QString &name) const { return images.value(name); }
    QRect r(int x, int y, int w, int h) const { return QRect(x * s, y * s, w * s, h * s); }

    void four(const QString &name, int x, int y, int w, int h) { drawGridFour(p, r(x, y, w, h), img(name)); }
    void natural(const QString &name, int x, int y) { p.drawImage(QPoint(x * s, y * s), img(name)); }
    // Centred in the logical rectangle, on whole device pixels.
    void centred(const QString &name, int x, int y, int w, int h)
    {
        const QImage i = img(name);
        p.drawImage(QPoint(x * s + (w * s - i.width()) / 2, y * s + (h * s - i.height()) / 2), i);
    }
    void text(const QString &t, int x, int y, int w, int h, const QColor &c = Ink,
              Qt::Alignment a = Qt::AlignVCenter | Qt::AlignLeft, bool bold = false)
    {
        p.setFont(labelFont(12 * s, bold));
        p.setPen(c);
        p.drawText(r(x, y, w, h), int(a), t);
        p.setPen(Qt::NoPen);
    }

    void window(int x, int y, int w, int h);
    void controls(int x, int y);

private:
    QPainter &p;
    const QHash<QString, QImage> &images;
    int s;
};

void MockUp::window(int x, int y, int w, int h)
{
    const QMargins m(WindowNinePartMargin * s, WindowNinePartMargin * s, WindowNinePartMargin * s,
                     WindowNinePartMargin * s);
    // Window background through the mask, then the frame over it.
    QImage body(w * s, h * s, QImage::Format_ARGB32_Premultiplied);
    body.fill(Qt::transparent);
    {
        QPainter bp(&body);
        drawNinePart(bp, body.rect(), img(QStringLiteral("maskimage.png")), m);
        bp.setCompositionMode(QPainter::CompositionMode_SourceIn);
        bp.fillRect(body.rect(), QColor(0xFF, 0xFF, 0xFF));
    }
    p.drawImage(QPoint(x * s, y * s), body);
    drawNinePart(p, r(x, y, w, h), img(QStringLiteral("frameimage.png")), m);

    const int band = WindowShadowBand;
    const int wx = x + band, wy = y + band, ww = w - 2 * band;
    natural(QStringLiteral("titleicon.png"), wx + 6, wy + 3);
    text(QStringLiteral("Message"), wx + 28, wy, 120, 22, Ink, Qt::AlignVCenter | Qt::AlignLeft, true);
    int bx = wx + ww - 3 - 24;
    natural(QStringLiteral("frameclose_hover.png"), bx, wy + 2);
    bx -= 24;
    natural(QStringLiteral("framemax_normal.png"), bx, wy + 2);
    bx -= 24;
    natural(QStringLiteral("framemin_hover.png"), bx, wy + 2);

    natural(QStringLiteral("messagebox_question.png"), wx + 14, wy + 34);
    text(QStringLiteral("Save the changes to the layout?"), wx + 64, wy + 34, ww - 70, 40);
    const int by = y + h - band - 10 - 25;
    four(QStringLiteral("pushbutton_hover.png"), wx + ww - 10 - 140, by, 64, 25);
    text(QStringLiteral("Save"), wx + ww - 10 - 140, by, 64, 25, Ink, Qt::AlignCenter);
    four(QStringLiteral("pushbutton_normal.png"), wx + ww - 10 - 70, by, 70, 25);
    text(QStringLiteral("Cancel"), wx + ww - 10 - 70, by, 70, 25, Ink, Qt::AlignCenter);
}

void MockUp::controls(int x, int y)
{
    // Push buttons in their four states.
    const char *pb[] = {"normal", "hover", "pressdown", "disable"};
    for (int i = 0; i < 4; ++i) {
        four(QStringLiteral("pushbutton_%1.png").arg(QLatin1String(pb[i])), x + i * 84, y, 78, 26);
        text(QLatin1String(pb[i]), x + i * 84, y, 78, 26, i == 3 ? InkSoft : Ink, Qt::AlignCenter);
    }
    // Check and radio boxes: unchecked then checked, four states each.
    const char *cs[] = {"default_normal", "default_hover", "default_pressdown", "default_disable",
                        "selected_normal", "selected_hover", "selected_pressdown", "selected_disable"};
    for (int i = 0; i < 8; ++i) {
        natural(QStringLiteral("checkbox_%1.png").arg(QLatin1String(cs[i])), x + i * 22, y + 36);
        natural(QStringLiteral("radiobox_%1.png").arg(QLatin1String(cs[i])), x + i * 22, y + 58);
    }
    text(QStringLiteral("Remember me"), x + 180, y + 34, 140, 20);
    text(QStringLiteral("Option"), x + 180, y + 56, 140, 20);

    // Combo boxes, normal and hovered.
    for (int i = 0; i < 2; ++i) {
        const int cx = x + i * 170, cy = y + 84, cw = 160, ch = 24;
        four(i ? QStringLiteral("roundframe_hover.png") : QStringLiteral("roundframe_normal.png"), cx, cy, cw, ch);
        text(QStringLiteral("Medium"), cx + 8, cy, 100, ch);
        const QImage b =
            img(i ? QStringLiteral("comboboxbutton_hover.png") : QStringLiteral("comboboxbutton_normal.png"));
        const int bw = b.width() / s;
        drawGridFour(p, r(cx + cw - bw, cy, bw, ch), b);
        centred(QStringLiteral("comboboxbutton_icon.png"), cx + cw - bw, cy, bw, ch);
    }
    // Line edits, plain and focused.
    four(QStringLiteral("lineedit.png"), x, y + 118, 160, 24);
    text(QStringLiteral("Plain text"), x + 7, y + 118, 150, 24);
    four(QStringLiteral("lineeditframe.png"), x + 170, y + 118, 160, 24);
    text(QStringLiteral("Focused|"), x + 177, y + 118, 150, 24);

    // Tabs.
    const char *tabs[] = {"select", "unselect", "hover", "disable"};
    const char *tabText[] = {"General", "Layout", "Theme", "Disabled"};
    for (int i = 0; i < 4; ++i) {
        four(QStringLiteral("tabframe_%1.png").arg(QLatin1String(tabs[i])), x + i * 80, y + 152, 80, 28);
        text(QLatin1String(tabText[i]), x + i * 80, y + 152, 80, 28, i == 3 ? InkSoft : Ink, Qt::AlignCenter);
    }

    // Slider with its filled part, and a progress-like groove.
    four(QStringLiteral("hslider_bkg.png"), x, y + 201, 200, 5);
    four(QStringLiteral("slider_select.png"), x, y + 201, 120, 5);
    natural(QStringLiteral("hsliderthumb_normal.png"), x + 112, y + 195);
    four(QStringLiteral("hslider_bkg.png"), x + 220, y + 201, 110, 5);
    four(QStringLiteral("slider_select.png"), x + 220, y + 201, 40, 5);
    natural(QStringLiteral("hsliderthumb_hover.png"), x + 252, y + 195);
    four(QStringLiteral("vslider_bkg.png"), x + 352, y, 5, 90);
    four(QStringLiteral("slider_select.png"), x + 352, y + 40, 5, 50);
    natural(QStringLiteral("vsliderthumb_down.png"), x + 346, y + 32);

    // Scroll bars: vertical and horizontal, one with the thumb hovered.
    const auto vbar = [&](int bx, int by, int len, int pos, int thumbLen, const QString &thumbState) {
        four(QStringLiteral("vscrollbar_bkg.png"), bx, by, 14, len);
        natural(QStringLiteral("vscrollbar_linesub_normal.png"), bx, by);
        natural(QStringLiteral("vscrollbar_lineadd_hover.png"), bx, by + len - 14);
        four(QStringLiteral("vscrollbar_thumb_%1.png").arg(thumbState), bx, by + pos, 14, thumbLen);
        centred(QStringLiteral("vscrollbar_thumbico.png"), bx, by + pos, 14, thumbLen);
    };
    vbar(x + 380, y, 180, 30, 60, QStringLiteral("normal"));
    vbar(x + 400, y, 180, 90, 40, QStringLiteral("hover"));
    vbar(x + 420, y, 180, 120, 24, QStringLiteral("down"));
    const int hy = y + 224;
    four(QStringLiteral("hscrollbar_bkg.png"), x, hy, 330, 14);
    natural(QStringLiteral("hscrollbar_linesub_down.png"), x, hy);
    natural(QStringLiteral("hscrollbar_lineadd_normal.png"), x + 330 - 14, hy);
    four(QStringLiteral("hscrollbar_thumb_normal.png"), x + 60, hy, 90, 14);
    centred(QStringLiteral("hscrollbar_thumbico.png"), x + 60, hy, 90, 14);

    // A menu on the list background.
    const int mx = x + 450, my = y;
    four(QStringLiteral("listbox_bk.png"), mx, my, 170, 132);
    text(QStringLiteral("Open"), mx + 30, my + 4, 120, 24);
    four(QStringLiteral("menuhover.png"), mx + 4, my + 28, 162, 24);
    natural(QStringLiteral("menucheck.png"), mx + 10, my + 34);
    text(QStringLiteral("Show grid"), mx + 30, my + 28, 120, 24);
    natural(QStringLiteral("menuarrow.png"), mx + 152, my + 36);
    four(QStringLiteral("menusperator.png"), mx + 8, my + 53, 154, 7);
    natural(QStringLiteral("menucheckdisable.png"), mx + 10, my + 66);
    text(QStringLiteral("Snap"), mx + 30, my + 60, 120, 24, InkSoft);
    text(QStringLiteral("Recent"), mx + 30, my + 84, 120, 24);
    natural(QStringLiteral("menuarrow.png"), mx + 152, my + 92);
    text(QStringLiteral("Quit"), mx + 30, my + 106, 120, 24);

    // Frames side by side, stretched.
    const char *frames[] = {"roundframe_normal", "roundframe_hover", "roundframe_down", "roundframe2_normal",
                            "roundframe2_hover", "roundframe3_normal", "roundframe3_hover", "roundframe4_normal",
                            "roundframe4_hover", "roundframe5_normal", "roundframe5_hover", "rectframe_normal",
                            "rectframe_hover", "rectframe_down", "frameborder_normal", "frameborder_hover"};
    for (int i = 0; i < 16; ++i)
        four(QStringLiteral("%1.png").arg(QLatin1String(frames[i])), mx + (i % 4) * 46, my + 146 + (i / 4) * 26, 40, 20);

    // Spinner, colour marker, small notices and the window icon.
    const int oy = y + 252;
    natural(QStringLiteral("anijuhua.png"), x, oy);
    p.fillRect(r(x + 44, oy + 4, 24, 24), QColor(0xE0, 0x6C, 0x3C));
    centred(QStringLiteral("colorselect.png"), x + 44, oy + 4, 24, 24);
    natural(QStringLiteral("icon_message_notice.png"), x + 80, oy + 8);
    natural(QStringLiteral("icon_message_warning.png"), x + 100, oy + 8);
    natural(QStringLiteral("icon_message_wrong.png"), x + 120, oy + 8);
    natural(QStringLiteral("titleicon.png"), x + 140, oy + 8);
}

// One cell of the image grid: name and size, then the 1x and 2x files on a
// light and on a dark panel.
struct Cell {
    const SkinImage *image;
    QImage x1, x2;
};

constexpr int CellW = 300;
constexpr int Pad = 8;

int cellHeight(const Cell &c)
{
    return 18 + std::max(c.x2.height(), 16) + 2 * Pad;
}

void drawCell(QPainter &p, const Cell &c, int x, int y)
{
    p.setFont(labelFont(11));
    p.setPen(Ink);
    p.drawText(QRect(x, y, CellW - 4, 16), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("%1  %2x%3").arg(c.image->name).arg(c.image->size.width()).arg(c.image->size.height()));
    const int panelW = (CellW - 12) / 2;
    const int panelH = cellHeight(c) - 18;
    for (int i = 0; i < 2; ++i) {
        const QRect panel(x + i * (panelW + 4), y + 18, panelW, panelH);
        p.fillRect(panel, i ? DarkBg : LightBg);
        const int iy = panel.top() + Pad;
        p.drawImage(QPoint(panel.left() + Pad, iy), c.x1);
        p.drawImage(QPoint(panel.left() + 2 * Pad + c.x1.width(), iy), c.x2);
    }
}

} // namespace

QImage renderContactSheet(const QList<SkinImage> &images, const QHash<QString, QImage> &x1,
                          const QHash<QString, QImage> &x2)
{
    const int cols = 4;
    const int margin = 16;
    const int width = margin * 2 + cols * CellW + (cols - 1) * 8;
    const int mockH1 = 420, mockH2 = 2 * 420;

    QList<Cell> cells;
    for (const SkinImage &img : images)
        cells.append({&img, x1.value(img.name), x2.value(img.name)});
    QList<int> rowHeights;
    for (int i = 0; i < cells.size(); i += cols) {
        int h = 0;
        for (int j = i; j < std::min<int>(i + cols, cells.size()); ++j)
            h = std::max(h, cellHeight(cells[j]));
        rowHeights.append(h + 10);
    }
    int gridH = 0;
    for (int h : rowHeights)
        gridH += h;

    const int mockW = 2 * 1100;
    const int sheetW = std::max(width, mockW + 2 * margin);
    const int height = margin + 30 + mockH1 + 30 + mockH2 + 30 + gridH + margin;
    QImage sheet(sheetW, height, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(PageBg);
    QPainter p(&sheet);
    p.setRenderHint(QPainter::TextAntialiasing);

    int y = margin;
    const auto heading = [&](const QString &t) {
        p.setFont(labelFont(16, true));
        p.setPen(Ink);
        p.drawText(QRect(margin, y, sheetW - 2 * margin, 24), Qt::AlignLeft | Qt::AlignVCenter, t);
        y += 30;
    };

    for (int s : {1, 2}) {
        heading(s == 1 ? QStringLiteral("In use, 1x") : QStringLiteral("In use, 2x (@2x files)"));
        p.fillRect(QRect(margin, y, 1100 * s, (mockH1 - 10) * s), LightBg);
        p.save();
        p.translate(margin, y);
        MockUp m(p, s == 1 ? x1 : x2, s);
        m.window(10, 10, 340, 180);
        m.controls(380, 16);
        m.window(10, 200, 200, 200);
        p.restore();
        y += (s == 1 ? mockH1 : mockH2);
    }

    heading(QStringLiteral("Images: 1x and 2x on light and dark"));
    int row = 0;
    for (int i = 0; i < cells.size(); ++i) {
        if (i > 0 && i % cols == 0)
            y += rowHeights[row++];
        drawCell(p, cells[i], margin + (i % cols) * (CellW + 8), y);
    }
    p.end();
    return sheet.convertToFormat(QImage::Format_RGB32);
}

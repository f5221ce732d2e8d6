// The default skin embedded in the library: every image the controls name is
// there at both scales, loads, has the size its control expects, and
// stretches without seams where a control stretches it.

#include <QtTest/QtTest>

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include <iterator>

namespace {

const QString Root = QStringLiteral(":/image/theme/");

// The names are part of the interface: layout documents and the controls'
// defaults refer to them, misspellings included.
const char *const SkinFiles[] = {
    "anijuhua.png", "colorselect.png", "comboboxbutton_down.png", "comboboxbutton_hover.png",
    "comboboxbutton_icon.png", "comboboxbutton_normal.png", "checkbox_default_disable.png",
    "checkbox_default_hover.png", "checkbox_default_normal.png", "checkbox_default_pressdown.png",
    "checkbox_selected_disable.png", "checkbox_selected_hover.png", "checkbox_selected_normal.png",
    "checkbox_selected_pressdown.png", "frameborder_hover.png", "frameborder_normal.png", "frameclose_down.png",
    "frameclose_hover.png", "frameclose_normal.png", "frameimage.png", "framemax_down.png", "framemax_hover.png",
    "framemax_normal.png", "framemin_down.png", "framemin_hover.png", "framemin_normal.png",
    "framerestore_down.png", "framerestore_hover.png", "framerestore_normal.png", "hscrollbar_bkg.png",
    "hscrollbar_lineadd_down.png", "hscrollbar_lineadd_hover.png", "hscrollbar_lineadd_normal.png",
    "hscrollbar_linesub_down.png", "hscrollbar_linesub_hover.png", "hscrollbar_linesub_normal.png",
    "hscrollbar_thumb_down.png", "hscrollbar_thumb_hover.png", "hscrollbar_thumb_normal.png",
    "hscrollbar_thumbico.png", "hslider_bkg.png", "hsliderthumb_down.png", "hsliderthumb_hover.png",
    "hsliderthumb_normal.png", "icon_message_notice.png", "icon_message_warning.png", "icon_message_wrong.png",
    "lineedit.png", "lineeditframe.png", "listbox_bk.png", "maskimage.png", "menuarrow.png", "menucheck.png",
    "menucheckdisable.png", "menuhover.png", "menusperator.png", "messagbox_error.png",
    "messagebox_infomation.png", "messagebox_question.png", "messagebox_warning.png", "pushbutton_disable.png",
    "pushbutton_hover.png", "pushbutton_normal.png", "pushbutton_pressdown.png", "radiobox_default_disable.png",
    "radiobox_default_hover.png", "radiobox_default_normal.png", "radiobox_default_pressdown.png",
    "radiobox_selected_disable.png", "radiobox_selected_hover.png", "radiobox_selected_normal.png",
    "radiobox_selected_pressdown.png", "rectframe_down.png", "rectframe_hover.png", "rectframe_normal.png",
    "roundframe_down.png", "roundframe_hover.png", "roundframe_normal.png", "roundframe2_hover.png",
    "roundframe2_normal.png", "roundframe3_hover.png", "roundframe3_normal.png", "roundframe4_hover.png",
    "roundframe4_normal.png", "roundframe5_hover.png", "roundframe5_normal.png", "slider_select.png",
    "tabframe_disable.png", "tabframe_hover.png", "tabframe_select.png", "tabframe_unselect.png",
    "titleicon.png", "vscrollbar_bkg.png", "vscrollbar_lineadd_down.png", "vscrollbar_lineadd_hover.png",
    "vscrollbar_lineadd_normal.png", "vscrollbar_linesub_down.png", "vscrollbar_linesub_hover.png",
    "vscrollbar_linesub_normal.png", "vscrollbar_thumb_down.png", "vscrollbar_thumb_hover.png",
    "vscrollbar_thumb_normal.png", "vscrollbar_thumbico.png", "vslider_bkg.png", "vsliderthumb_down.png",
    "vsliderthumb_hover.png", "vsliderthumb_normal.png",
};

QString at2x(const QString &name)
{
    return QString(name).replace(QLatin1String(".png"), QLatin1String("@2x.png"));
}

QImage load(const QString &name)
{
    return QImage(Root + name).convertToFormat(QImage::Format_ARGB32);
}

bool sameColumn(const QImage &img, int a, int b)
{
    for (int y = 0; y < img.height(); ++y)
        if (img.pixel(a, y) != img.pixel(b, y))
            return false;
    return true;
}

bool sameRow(const QImage &img, int a, int b)
{
    for (int x = 0; x < img.width(); ++x)
        if (img.pixel(x, a) != img.pixel(x, b))
            return false;
    return true;
}

// Size rules the controls rely on. 0 in a field means "any".
struct SizeRule {
    const char *pattern; // regular expression over the whole file name
    int width, height;   // exact size, when not 0
    int maxSide;         // upper bound of both sides, when not 0
};

const SizeRule SizeRules[] = {
    {"(checkbox|radiobox)_.*", 16, 16, 0},
    {"messag(e)?box_.*", 0, 0, 45}, // the message box's icon cell is 45 x 45
    {"icon_message_.*", 0, 0, 24},
    {"vscrollbar_(bkg|thumb_.*)\\.png", 14, 0, 0}, // 14 across the bar
    {"hscrollbar_(bkg|thumb_.*)\\.png", 0, 14, 0},
    {"[hv]scrollbar_line.*", 14, 14, 0},
    {"[hv]scrollbar_thumbico\\.png", 0, 0, 14},
    {"titleicon\\.png", 0, 0, 20},
    {"frame(min|max|restore|close)_.*", 0, 0, 30},
    {"[hv]sliderthumb_.*", 0, 0, 24},
};

} // namespace

class tst_SkinResources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void image_data();
    void image();

    void noStrayFiles();

    void sizeRules_data();
    void sizeRules();

    void statesDiffer_data();
    void statesDiffer();

    void fourCornerCut_data();
    void fourCornerCut();
    void sliderSelect();

    void windowImages();
    void closeHoverIsRed();

    void messageBoxLayout();
};

void tst_SkinResources::initTestCase()
{
    // The library registers its resource tree when it is loaded.
    QVERIFY2(QFile::exists(Root + QLatin1String("titleicon.png")), "library resources are not registered");
}

void tst_SkinResources::image_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : SkinFiles)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_SkinResources::image()
{
    QFETCH(QString, name);
    const QImage x1 = load(name);
    const QImage x2 = load(at2x(name));
    QVERIFY2(!x1.isNull(), qPrintable(Root + name));
    QVERIFY2(!x2.isNull(), qPrintable(Root + at2x(name)));
    // Loading by the plain name gives the 1x file, not the @2x one.
    QCOMPARE(x2.size(), x1.size() * 2);
    QCOMPARE(x1.devicePixelRatio(), 1.0);

    // Something is drawn.
    QSet<int> alphas;
    for (int y = 0; y < x1.height(); ++y)
        for (int x = 0; x < x1.width(); ++x)
            alphas.insert(qAlpha(x1.pixel(x, y)));
    QVERIFY2(alphas != QSet<int>{0}, "image is fully transparent");

    // The @2x file is drawn at twice the size, not a pixel-doubled copy:
    // where the 1x file has antialiased edges, the 2x edges must differ.
    if (alphas.size() > 2) {
        const QImage doubled = x1.scaled(x2.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
        QVERIFY2(doubled != x2, "@2x file is the 1x file scaled up");
    }
}

void tst_SkinResources::noStrayFiles()
{
    // Every file in the tree is a listed image or its @2x twin: a misspelled
    // name would otherwise sit there unused while the control finds nothing.
    QSet<QString> expected;
    for (const char *name : SkinFiles) {
        expected.insert(QString::fromLatin1(name));
        expected.insert(at2x(QString::fromLatin1(name)));
    }
    QSet<QString> found;
    QDirIterator it(Root, QDir::Files);
    while (it.hasNext()) {
        it.next();
        found.insert(it.fileName());
    }
    QCOMPARE(found.size(), 2 * int(std::size(SkinFiles)));
    QCOMPARE(found, expected);
}

void tst_SkinResources::sizeRules_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("maxSide");
    int matched = 0;
    for (const SizeRule &rule : SizeRules) {
        const QRegularExpression rx(QRegularExpression::anchoredPattern(QLatin1String(rule.pattern)));
        QVERIFY2(rx.isValid(), rule.pattern);
        int hits = 0;
        for (const char *name : SkinFiles) {
            if (!rx.match(QLatin1String(name)).hasMatch())
                continue;
            ++hits;
            QTest::addRow("%s", name) << QString::fromLatin1(name) << rule.width << rule.height << rule.maxSide;
        }
        QVERIFY2(hits > 0, rule.pattern); // a rule that matches nothing tests nothing
        matched += hits;
    }
    QVERIFY(matched > 50);
}

void tst_SkinResources::sizeRules()
{
    QFETCH(QString, name);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, maxSide);
    const QImage img = load(name);
    QVERIFY(!img.isNull());
    if (width)
        QCOMPARE(img.width(), width);
    if (height)
        QCOMPARE(img.height(), height);
    if (maxSide) {
        QVERIFY2(img.width() <= maxSide && img.height() <= maxSide,
                 qPrintable(QStringLiteral("%1x%2").arg(img.width()).arg(img.height())));
    }
}

void tst_SkinResources::statesDiffer_data()
{
    // Each state of a control must look different from the others, or the
    // control gives no feedback (a copied state is an easy slip).
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char *prefix, const QStringList &states) {
        QStringList names;
        for (const QString &s : states)
            names << QString::fromLatin1(prefix) + s + QLatin1String(".png");
        QTest::newRow(prefix) << names;
    };
    const QStringList three = {QStringLiteral("normal"), QStringLiteral("hover"), QStringLiteral("down")};
    const QStringList four = {QStringLiteral("normal"), QStringLiteral("hover"), QStringLiteral("pressdown"),
                              QStringLiteral("disable")};
    row("pushbutton_", four);
    row("checkbox_default_", four);
    row("checkbox_selected_", four);
    row("radiobox_default_", four);
    row("radiobox_selected_", four);
    row("roundframe_", three);
    row("rectframe_", three);
    row("comboboxbutton_", three);
    row("framemin_", three);
    row("framemax_", three);
    row("framerestore_", three);
    row("frameclose_", three);
    row("hsliderthumb_", three);
    row("vsliderthumb_", three);
    for (const char *bar : {"hscrollbar_", "vscrollbar_"}) {
        for (const char *part : {"lineadd_", "linesub_", "thumb_"})
            row(qPrintable(QLatin1String(bar) + QLatin1String(part)), three);
    }
    for (const char *frame : {"roundframe2_", "roundframe3_", "roundframe4_", "roundframe5_", "frameborder_"})
        row(frame, {QStringLiteral("normal"), QStringLiteral("hover")});
    row("tabframe_", {QStringLiteral("unselect"), QStringLiteral("hover"), QStringLiteral("select"),
                      QStringLiteral("disable")});
    row("menucheck", {QString(), QStringLiteral("disable")});
    // Checked and unchecked boxes differ state by state.
    QTest::newRow("checkbox checked vs not")
        << QStringList{QStringLiteral("checkbox_default_normal.png"), QStringLiteral("checkbox_selected_normal.png")};
    QTest::newRow("radiobox checked vs not")
        << QStringList{QStringLiteral("radiobox_default_normal.png"), QStringLiteral("radiobox_selected_normal.png")};
    QTest::newRow("check vs radio")
        << QStringList{QStringLiteral("checkbox_selected_normal.png"), QStringLiteral("radiobox_selected_normal.png")};
}

void tst_SkinResources::statesDiffer()
{
    QFETCH(QStringList, names);
    QList<QImage> images;
    for (const QString &n : names) {
        images << load(n);
        QVERIFY2(!images.last().isNull(), qPrintable(n));
    }
    for (int i = 0; i < images.size(); ++i) {
        for (int j = i + 1; j < images.size(); ++j) {
            QCOMPARE(images[j].size(), images[i].size());
            QVERIFY2(images[i] != images[j], qPrintable(names[i] + QLatin1String(" == ") + names[j]));
        }
    }
}

void tst_SkinResources::fourCornerCut_data()
{
    // Images that controls stretch by the four-corner cut: the centre row and
    // column are repeated over the middle, so they must match their
    // neighbours, or a seam or smear shows when the control grows. Checked at
    // both scales.
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    const auto add = [](const char *name, bool h, bool v) {
        QTest::addRow("%s", name) << QString::fromLatin1(name) << h << v;
        QTest::addRow("%s@2x", name) << at2x(QString::fromLatin1(name)) << h << v;
    };
    for (const char *n : {"pushbutton_normal.png", "pushbutton_hover.png", "pushbutton_pressdown.png",
                          "pushbutton_disable.png", "roundframe_normal.png", "roundframe_hover.png",
                          "roundframe_down.png", "roundframe2_normal.png", "roundframe2_hover.png",
                          "roundframe3_normal.png", "roundframe3_hover.png", "roundframe4_normal.png",
                          "roundframe4_hover.png", "roundframe5_normal.png", "roundframe5_hover.png",
                          "rectframe_normal.png", "rectframe_hover.png", "rectframe_down.png",
                          "frameborder_normal.png", "frameborder_hover.png", "lineedit.png", "lineeditframe.png",
                          "listbox_bk.png", "menuhover.png", "tabframe_unselect.png", "tabframe_hover.png",
                          "tabframe_select.png", "tabframe_disable.png", "vscrollbar_bkg.png",
                          "hscrollbar_bkg.png"})
        add(n, true, true);
    // Stretched along their length only.
    for (const char *n : {"vscrollbar_thumb_normal.png", "vscrollbar_thumb_hover.png", "vscrollbar_thumb_down.png",
                          "vslider_bkg.png", "comboboxbutton_normal.png", "comboboxbutton_hover.png",
                          "comboboxbutton_down.png"})
        add(n, false, true);
    for (const char *n : {"hscrollbar_thumb_normal.png", "hscrollbar_thumb_hover.png", "hscrollbar_thumb_down.png",
                          "hslider_bkg.png", "menusperator.png"})
        add(n, true, false);
}

void tst_SkinResources::fourCornerCut()
{
    QFETCH(QString, name);
    QFETCH(bool, horizontal);
    QFETCH(bool, vertical);
    const QImage img = load(name);
    QVERIFY(!img.isNull());
    const int hw = img.width() / 2, hh = img.height() / 2;
    // The left corners end at hw - 1 and the right ones start at hw: the
    // repeated column hw must continue both.
    if (horizontal) {
        QVERIFY2(img.width() >= 3, "too narrow to stretch");
        QVERIFY2(sameColumn(img, hw - 1, hw), "column left of the centre differs");
        QVERIFY2(sameColumn(img, hw, hw + 1), "column right of the centre differs");
    }
    if (vertical) {
        QVERIFY2(img.height() >= 3, "too short to stretch");
        QVERIFY2(sameRow(img, hh - 1, hh), "row above the centre differs");
        QVERIFY2(sameRow(img, hh, hh + 1), "row below the centre differs");
    }
}

void tst_SkinResources::sliderSelect()
{
    // The filled part of a slider serves both orientations: round at both
    // ends and solid along its centre lines, so the stretched centre column
    // or row makes a clean bar either way.
    for (const QString &name : {QStringLiteral("slider_select.png"), QStringLiteral("slider_select@2x.png")}) {
        const QImage img = load(name);
        QVERIFY(!img.isNull());
        QCOMPARE(img.width(), img.height());
        const int c = img.width() / 2;
        for (int i = 1; i < img.width() - 1; ++i) {
            QCOMPARE(qAlpha(img.pixel(c, i)), 255);
            QCOMPARE(qAlpha(img.pixel(i, c)), 255);
        }
        QVERIFY(qAlpha(img.pixel(0, 0)) < 64); // rounded, not square
        for (int y = 0; y < img.height(); ++y) // the same shape across and along
            for (int x = 0; x < img.width(); ++x)
                QVERIFY(qAbs(qAlpha(img.pixel(x, y)) - qAlpha(img.pixel(y, x))) <= 8);
    }
}

void tst_SkinResources::windowImages()
{
    // The pop-up window cuts its frame and mask images in nine parts: the
    // rows and columns between the margins must all be equal, the mask must
    // be one bit deep (it becomes a bitmap) and opaque in the middle, and the
    // band outside the window must be transparent in the mask and carry the
    // shadow in the frame.
    for (int scale : {1, 2}) {
        const QString suffix = scale == 1 ? QString() : QStringLiteral("@2x");
        const QImage frame = load(QStringLiteral("frameimage%1.png").arg(suffix));
        const QImage mask = load(QStringLiteral("maskimage%1.png").arg(suffix));
        QVERIFY(!frame.isNull() && !mask.isNull());
        QCOMPARE(mask.size(), frame.size());
        QCOMPARE(frame.width(), frame.height());

        const int margin = 16 * scale;
        QVERIFY(frame.width() > 2 * margin);
        for (const QImage *img : {&frame, &mask}) {
            for (int i = margin; i < img->width() - margin; ++i) {
                QVERIFY2(sameRow(*img, margin, i), qPrintable(QStringLiteral("row %1 at %2x").arg(i).arg(scale)));
                QVERIFY2(sameColumn(*img, margin, i), qPrintable(QStringLiteral("column %1 at %2x").arg(i).arg(scale)));
            }
        }

        int band = -1; // the mask's transparent band along the middle row
        for (int x = 0; x < mask.width(); ++x) {
            if (qAlpha(mask.pixel(x, mask.height() / 2)) == 255) {
                band = x;
                break;
            }
        }
        QVERIFY2(band > 0 && band < margin, qPrintable(QString::number(band)));
        for (int y = 0; y < mask.height(); ++y) {
            for (int x = 0; x < mask.width(); ++x) {
                const int a = qAlpha(mask.pixel(x, y));
                QVERIFY2(a == 0 || a == 255, "mask alpha must be 0 or 255");
            }
        }
        // Rounded: the corner of the window is cut off in the mask.
        QCOMPARE(qAlpha(mask.pixel(band, band)), 0);
        QCOMPARE(qAlpha(mask.pixel(mask.width() / 2, mask.height() / 2)), 255);

        // The frame leaves the window's inside to the background ...
        QCOMPARE(qAlpha(frame.pixel(frame.width() / 2, frame.height() / 2)), 0);
        // ... has a border on the outline, and a shadow that fades outwards.
        const int mid = frame.height() / 2;
        QVERIFY(qAlpha(frame.pixel(band, mid)) > 40);
        QVERIFY(qAlpha(frame.pixel(band - 1, mid)) > qAlpha(frame.pixel(band / 2, mid)));
        QVERIFY(qAlpha(frame.pixel(band / 2, mid)) > qAlpha(frame.pixel(0, mid)));
        QVERIFY(qAlpha(frame.pixel(0, mid)) < 8);
    }
}

void tst_SkinResources::closeHoverIsRed()
{
    // The close button warns on hover; the other title buttons use the accent.
    const auto dominantHue = [](const QImage &img) {
        int best = -1, bestAlpha = 0;
        for (int y = 0; y < img.height(); ++y) {
            for (int x = 0; x < img.width(); ++x) {
                const QColor c = QColor::fromRgba(img.pixel(x, y));
                if (c.alpha() > bestAlpha && c.hsvSaturation() > 100) {
                    bestAlpha = c.alpha();
                    best = c.hsvHue();
                }
            }
        }
        return best;
    };
    const int close = dominantHue(load(QStringLiteral("frameclose_hover.png")));
    QVERIFY2(close >= 0 && (close < 20 || close > 340), qPrintable(QString::number(close)));
    const int max = dominantHue(load(QStringLiteral("framemax_hover.png")));
    QVERIFY2(max > 180 && max < 250, qPrintable(QString::number(max)));
}

void tst_SkinResources::messageBoxLayout()
{
    QFile f(QStringLiteral(":/xml/theme/xml/msgbox.xml"));
    QVERIFY(f.open(QIODevice::ReadOnly));
    const QByteArray xml = f.readAll();
    QVERIFY(xml.startsWith("<?xml version=\"1.0\" ?>\n<uitree>"));
    QVERIFY(xml.trimmed().endsWith("</uitree>"));
    // The names the message box looks up after loading it.
    for (const char *needle : {"objectName=\"topLevelWindow\"", "objectName=\"iconShower\" fixSize=\"45,45\"",
                               "objectName=\"textShower\"", "objectName=\"buttonToolbar\"",
                               "objectName=\"button0\"", "objectName=\"button1\"", "objectName=\"button2\"",
                               "windowStyle=\"Dialog\""})
        QVERIFY2(xml.contains(needle), needle);
}

QTEST_GUILESS_MAIN(tst_SkinResources)
#include "tst_skinresources.moc"

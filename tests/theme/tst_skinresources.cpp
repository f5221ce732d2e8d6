// The default skin embedded in the library: every image the controls name is
// there at both scales, has the size its control expects, looks different in
// each state, and stretches without seams where a control stretches it.

#include <QtTest/QtTest>

#include <QDirIterator>
#include <QImage>
#include <QRegularExpression>

namespace {

const QString Root = QStringLiteral(":/image/theme/");

// Images named prefix + state. The names are part of the interface (layout
// documents and the controls' defaults use them, misspellings included); the
// states of a distinct family must differ, or the control gives no feedback.
struct Family
{
    const char *prefix, *states;
    bool distinct;
};

const char Four[] = "normal|hover|pressdown|disable", Three[] = "normal|hover|down", Two[] = "normal|hover";

const Family Families[] = {
    {"pushbutton_", Four, true}, {"checkbox_default_", Four, true}, {"checkbox_selected_", Four, true},
    {"radiobox_default_", Four, true}, {"radiobox_selected_", Four, true}, {"roundframe_", Three, true},
    {"rectframe_", Three, true}, {"comboboxbutton_", Three, true}, {"framemin_", Three, true},
    {"framemax_", Three, true}, {"framerestore_", Three, true}, {"frameclose_", Three, true},
    {"hsliderthumb_", Three, true}, {"vsliderthumb_", Three, true}, {"hscrollbar_lineadd_", Three, true},
    {"hscrollbar_linesub_", Three, true}, {"hscrollbar_thumb_", Three, true}, {"vscrollbar_lineadd_", Three, true},
    {"vscrollbar_linesub_", Three, true}, {"vscrollbar_thumb_", Three, true}, {"roundframe2_", Two, true},
    {"roundframe3_", Two, true}, {"roundframe4_", Two, true}, {"roundframe5_", Two, true},
    {"frameborder_", Two, true}, {"tabframe_", "unselect|hover|select|disable", true},
    {"menucheck", "|disable", true}, {"checkbox_", "default_normal|selected_normal", true},
    {"radiobox_", "default_normal|selected_normal", true}, {"", "checkbox_selected_normal|radiobox_selected_normal", true},
    {"", "anijuhua|colorselect|comboboxbutton_icon|frameimage|hscrollbar_bkg|hscrollbar_thumbico|hslider_bkg|"
         "icon_message_notice|icon_message_warning|icon_message_wrong|lineedit|lineeditframe|listbox_bk|maskimage|"
         "menuarrow|menuhover|menusperator|messagbox_error|messagebox_infomation|messagebox_question|"
         "messagebox_warning|slider_select|titleicon|vscrollbar_bkg|vscrollbar_thumbico|vslider_bkg",
     false},
};

QStringList names(const Family &family)
{
    QStringList out;
    for (const QString &state : QString::fromLatin1(family.states).split(QLatin1Char('|')))
        out << QLatin1String(family.prefix) + state + QLatin1String(".png");
    return out;
}

QStringList allNames()
{
    QStringList out;
    for (const Family &family : Families)
        out += names(family);
    out.removeDuplicates();
    return out;
}

QString at2x(const QString &name)
{
    return QString(name).replace(QLatin1String(".png"), QLatin1String("@2x.png"));
}

QImage load(const QString &name)
{
    return QImage(Root + name).convertToFormat(QImage::Format_ARGB32);
}

// Whether row (or column) a equals row (column) b.
bool sameLine(const QImage &img, int a, int b, bool column)
{
    for (int i = 0; i < (column ? img.height() : img.width()); ++i)
        if (column ? img.pixel(a, i) != img.pixel(b, i) : img.pixel(i, a) != img.pixel(i, b))
            return false;
    return true;
}

enum Stretch { NoStretch = 0, AcrossH = 1, AcrossV = 2 };

// What the controls rely on, by file name. 0 in a size field means "any";
// stretched images repeat their centre row / column when the control grows.
struct Rule
{
    const char *pattern;
    int width, height, maxSide, stretch;
};

const Rule Rules[] = {
    {"(checkbox|radiobox)_.*", 16, 16, 0, NoStretch},
    {"messag(e)?box_.*", 0, 0, 45, NoStretch}, // the message box's icon cell is 45 x 45
    {"icon_message_.*", 0, 0, 24, NoStretch},
    {"vscrollbar_(bkg|thumb_.*)\\.png", 14, 0, 0, NoStretch},
    {"hscrollbar_(bkg|thumb_.*)\\.png", 0, 14, 0, NoStretch},
    {"[hv]scrollbar_line.*", 14, 14, 0, NoStretch},
    {"[hv]scrollbar_thumbico\\.png", 0, 0, 14, NoStretch},
    {"titleicon\\.png", 0, 0, 20, NoStretch},
    {"frame(min|max|restore|close)_.*", 0, 0, 30, NoStretch},
    {"[hv]sliderthumb_.*", 0, 0, 24, NoStretch},
    {"pushbutton_.*|roundframe\\d?_.*|rectframe_.*|frameborder_.*|lineedit(frame)?\\.png|listbox_bk\\.png|"
     "menuhover\\.png|tabframe_.*|[hv]scrollbar_bkg\\.png", 0, 0, 0, AcrossH | AcrossV},
    {"vscrollbar_thumb_.*|vslider_bkg\\.png|comboboxbutton_(normal|hover|down)\\.png", 0, 0, 0, AcrossV},
    {"hscrollbar_thumb_.*|hslider_bkg\\.png|menusperator\\.png", 0, 0, 0, AcrossH},
};

} // namespace

class tst_SkinResources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The library registers its resource tree when it is loaded.
        QVERIFY2(QFile::exists(Root + QLatin1String("titleicon.png")), "library resources are not registered");
    }

    void image_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : allNames())
            QTest::newRow(qPrintable(name)) << name;
    }
    void image()
    {
        QFETCH(QString, name);
        const QImage x1 = load(name), x2 = load(at2x(name));
        QVERIFY2(!x1.isNull() && !x2.isNull(), qPrintable(name));
        // Loading by the plain name gives the 1x file, not the @2x one.
        QCOMPARE(x2.size(), x1.size() * 2);
        QCOMPARE(x1.devicePixelRatio(), 1.0);
        QSet<int> alphas;
        for (int y = 0; y < x1.height(); ++y)
            for (int x = 0; x < x1.width(); ++x)
                alphas.insert(qAlpha(x1.pixel(x, y)));
        QVERIFY2(alphas != QSet<int>{0}, "image is fully transparent");
        // Antialiased edges at 1x: the @2x file must be drawn anew, not pixel-doubled.
        if (alphas.size() > 2)
            QVERIFY2(x1.scaled(x2.size()) != x2, "@2x file is the 1x file scaled up");
    }

    // A misspelled file would sit there unused while its control finds nothing.
    void noStrayFiles()
    {
        QSet<QString> expected, found;
        for (const QString &name : allNames())
            expected << name << at2x(name);
        for (QDirIterator it(Root, QDir::Files); it.hasNext();)
            found.insert(QFileInfo(it.next()).fileName());
        QCOMPARE(found, expected);
    }

    void statesDiffer_data()
    {
        QTest::addColumn<QStringList>("names");
        for (const Family &family : Families) {
            if (family.distinct)
                QTest::addRow("%s%s", family.prefix, family.states) << names(family);
        }
    }
    void statesDiffer()
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

    void rules_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("rule");
        for (int r = 0; r < int(std::size(Rules)); ++r) {
            const QRegularExpression rx(QRegularExpression::anchoredPattern(QLatin1String(Rules[r].pattern)));
            int hits = 0;
            for (const QString &name : allNames()) {
                if (!rx.match(name).hasMatch())
                    continue;
                ++hits;
                QTest::addRow("%s, rule %d", qPrintable(name), r) << name << r;
                if (Rules[r].stretch) // stretched at both scales
                    QTest::addRow("%s, rule %d", qPrintable(at2x(name)), r) << at2x(name) << r;
            }
            QVERIFY2(hits > 0, Rules[r].pattern); // a rule that matches nothing tests nothing
        }
    }
    void rules()
    {
        QFETCH(QString, name);
        QFETCH(int, rule);
        const Rule &r = Rules[rule];
        const QImage img = load(name);
        QVERIFY(!img.isNull());
        if (r.width)
            QCOMPARE(img.width(), r.width);
        if (r.height)
            QCOMPARE(img.height(), r.height);
        if (r.maxSide)
            QVERIFY2(img.width() <= r.maxSide && img.height() <= r.maxSide,
                     qPrintable(QStringLiteral("%1x%2").arg(img.width()).arg(img.height())));
        // The four-corner cut ends the left corners at w/2 - 1 and starts the
        // right ones at w/2: the repeated centre must continue both.
        for (bool column : {true, false}) {
            if (!(r.stretch & (column ? AcrossH : AcrossV)))
                continue;
            const int length = column ? img.width() : img.height(), half = length / 2;
            QVERIFY2(length >= 3, "too small to stretch");
            QVERIFY2(sameLine(img, half - 1, half, column) && sameLine(img, half, half + 1, column), "seam at the centre");
        }
    }

    // The filled part of a slider serves both orientations: round at the
    // ends, solid along its centre lines, the same shape across and along.
    void sliderSelect()
    {
        for (const QString &name : {QStringLiteral("slider_select.png"), QStringLiteral("slider_select@2x.png")}) {
            const QImage img = load(name);
            QVERIFY(!img.isNull());
            QCOMPARE(img.width(), img.height());
            QVERIFY(qAlpha(img.pixel(0, 0)) < 64);
            const int c = img.width() / 2, last = img.width() - 1;
            for (int y = 0; y < img.height(); ++y) {
                for (int x = 0; x < img.width(); ++x) {
                    QVERIFY(qAbs(qAlpha(img.pixel(x, y)) - qAlpha(img.pixel(y, x))) <= 8);
                    if ((y == c && x > 0 && x < last) || (x == c && y > 0 && y < last))
                        QCOMPARE(qAlpha(img.pixel(x, y)), 255);
                }
            }
        }
    }

    // The pop-up window cuts its frame and mask images in nine parts: rows and
    // columns between the margins must be equal; the mask is one bit deep (it
    // becomes a bitmap) with rounded corners; the band outside the window is
    // transparent in the mask and carries a fading shadow in the frame.
    void windowImages()
    {
        for (int scale : {1, 2}) {
            const QString suffix = scale == 1 ? QString() : QStringLiteral("@2x");
            const QImage frame = load(QStringLiteral("frameimage%1.png").arg(suffix));
            const QImage mask = load(QStringLiteral("maskimage%1.png").arg(suffix));
            QVERIFY(!frame.isNull());
            QCOMPARE(mask.size(), frame.size());
            QCOMPARE(frame.width(), frame.height());
            const int margin = 16 * scale, mid = frame.height() / 2;
            QVERIFY(frame.width() > 2 * margin);
            for (const QImage *img : {&frame, &mask}) {
                for (int i = margin; i < img->width() - margin; ++i)
                    QVERIFY2(sameLine(*img, margin, i, false) && sameLine(*img, margin, i, true), qPrintable(QString::number(i)));
            }
            int band = 0; // the mask's transparent band along the middle row
            while (band < mask.width() && qAlpha(mask.pixel(band, mid)) != 255)
                ++band;
            QVERIFY2(band > 0 && band < margin, qPrintable(QString::number(band)));
            for (int y = 0; y < mask.height(); ++y)
                for (int x = 0; x < mask.width(); ++x)
                    QVERIFY2(qAlpha(mask.pixel(x, y)) % 255 == 0, "mask alpha must be 0 or 255");
            QCOMPARE(qAlpha(mask.pixel(band, band)), 0);
            QCOMPARE(qAlpha(mask.pixel(mid, mid)), 255);
            QCOMPARE(qAlpha(frame.pixel(mid, mid)), 0); // the inside is left to the background
            QVERIFY(qAlpha(frame.pixel(band, mid)) > 40);
            QVERIFY(qAlpha(frame.pixel(band - 1, mid)) > qAlpha(frame.pixel(band / 2, mid)));
            QVERIFY(qAlpha(frame.pixel(band / 2, mid)) > qAlpha(frame.pixel(0, mid)));
            QVERIFY(qAlpha(frame.pixel(0, mid)) < 8);
        }
    }
};

QTEST_GUILESS_MAIN(tst_SkinResources)
#include "tst_skinresources.moc"

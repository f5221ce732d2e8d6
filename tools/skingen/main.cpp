// zkit-skingen: draws the library's default skin.
//
//   zkit-skingen [OUTDIR] [--sheet FILE] [--qrc FILE]
//
// Writes every skin image as NAME.png and, drawn at twice the size, as
// NAME@2x.png into OUTDIR. The output depends on nothing but this code (no
// clock, no randomness, no fonts), so a rerun gives the same bytes.

#include "sheet.h"
#include "skin.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHash>
#include <QImageWriter>
#include <QSaveFile>
#include <QTextStream>

#include <algorithm>
#include <cstdio>

namespace {

bool writePng(const QImage &image, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QImageWriter writer(&file, "png");
    if (!writer.write(image))
        return false;
    return file.commit();
}

// The resource file of the library: every image at both scales under
// :/image/theme/, and the message box layout, which lives in
// ../../xml/msgbox.xml beside the image folder. Paths are relative to the
// folder of the .qrc file.
QString qrcText(const QStringList &names, const QString &imageDir, const QString &xmlFile)
{
    QString out;
    QTextStream ts(&out);
    ts << "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n";
    ts << "  <qresource prefix=\"/image/theme\">\n";
    for (const QString &name : names) {
        const QString at2x = QString(name).replace(QLatin1String(".png"), QLatin1String("@2x.png"));
        for (const QString &n : {name, at2x})
            ts << "    <file alias=\"" << n << "\">" << imageDir << '/' << n << "</file>\n";
    }
    ts << "  </qresource>\n";
    ts << "  <qresource prefix=\"/xml/theme/xml\">\n";
    ts << "    <file alias=\"msgbox.xml\">" << xmlFile << "</file>\n";
    ts << "  </qresource>\n</RCC>\n";
    return out;
}

} // namespace

int main(int argc, char **argv)
{
    // Only the contact sheet needs fonts; no window is ever shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zkit-skingen"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Draws the default skin images of zkit."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("outdir"),
                                 QStringLiteral("Output folder (default: %1).").arg(QStringLiteral(ZKIT_SKIN_DIR)));
    const QCommandLineOption sheetOpt(QStringLiteral("sheet"), QStringLiteral("Also write a contact sheet PNG."),
                                      QStringLiteral("file"));
    const QCommandLineOption qrcOpt(QStringLiteral("qrc"),
                                    QStringLiteral("Also write the resource file listing the images."),
                                    QStringLiteral("file"));
    const QCommandLineOption listOpt(QStringLiteral("list"), QStringLiteral("Print name and size of every image."));
    parser.addOptions({sheetOpt, qrcOpt, listOpt});
    parser.process(app);

    const QList<SkinImage> images = skinImages();

    if (parser.isSet(listOpt)) {
        for (const SkinImage &img : images)
            std::printf("%s %dx%d\n", qPrintable(img.name), img.size.width(), img.size.height());
        return 0;
    }

    const QStringList args = parser.positionalArguments();
    if (args.size() > 1) {
        std::fprintf(stderr, "zkit-skingen: one output folder at most\n");
        return 2;
    }
    const QString outDir = QDir::cleanPath(args.isEmpty() ? QStringLiteral(ZKIT_SKIN_DIR) : args.first());
    if (!QDir().mkpath(outDir)) {
        std::fprintf(stderr, "zkit-skingen: cannot create %s\n", qPrintable(outDir));
        return 1;
    }

    QHash<QString, QImage> x1, x2;
    QStringList names;
    for (const SkinImage &img : images) {
        if (x1.contains(img.name)) {
            std::fprintf(stderr, "zkit-skingen: %s listed twice\n", qPrintable(img.name));
            return 1;
        }
        x1.insert(img.name, renderSkinImage(img, 1));
        x2.insert(img.name, renderSkinImage(img, 2));
        names.append(img.name);
        const QString base = QDir(outDir).filePath(img.name);
        const QString at2x = QString(base).replace(QLatin1String(".png"), QLatin1String("@2x.png"));
        if (!writePng(x1.value(img.name), base) || !writePng(x2.value(img.name), at2x)) {
            std::fprintf(stderr, "zkit-skingen: cannot write %s\n", qPrintable(base));
            return 1;
        }
    }
    std::printf("zkit-skingen: %lld images (1x and 2x) in %s\n", qlonglong(images.size()), qPrintable(outDir));

    if (parser.isSet(qrcOpt)) {
        const QString qrcPath = parser.value(qrcOpt);
        // Image paths are written relative to the .qrc's folder.
        const QString rel = QFileInfo(qrcPath).absoluteDir().relativeFilePath(QFileInfo(outDir).absoluteFilePath());
        QStringList sorted = names;
        std::sort(sorted.begin(), sorted.end());
        const QString xml = QDir::cleanPath(rel + QLatin1String("/../../xml/msgbox.xml"));
        QSaveFile f(qrcPath);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Text) || f.write(qrcText(sorted, rel, xml).toUtf8()) < 0
            || !f.commit()) {
            std::fprintf(stderr, "zkit-skingen: cannot write %s\n", qPrintable(qrcPath));
            return 1;
        }
    }

    if (parser.isSet(sheetOpt)) {
        const QString sheetPath = parser.value(sheetOpt);
        if (!writePng(renderContactSheet(images, x1, x2), sheetPath)) {
            std::fprintf(stderr, "zkit-skingen: cannot write %s\n", qPrintable(sheetPath));
            return 1;
        }
        std::printf("zkit-skingen: contact sheet %s\n", qPrintable(sheetPath));
    }
    return 0;
}

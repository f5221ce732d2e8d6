// Tint throughput: a full-HD ARGB32 image tinted towards the theme colour,
// against a plain copy of the same image, in the same run.

#include "benchutil.h"
#include "ztheme.h"

#include <QGuiApplication>
#include <QImage>
#include <QRandomGenerator>

#include <cstdio>

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const int w = 1920, h = 1080;
    QImage image(w, h, QImage::Format_ARGB32);
    QRandomGenerator rng(42);
    for (int y = 0; y < h; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < w; ++x)
            line[x] = rng.generate();
    }
    ZTheme::setThemeColor(QColor(0xff, 0x88, 0x11));

    const int runs = 31;
    qint64 sink = 0;
    const double tint = medianSeconds(runs, [&] { sink += ZTheme::convertToThemeImage(image).constBits()[7]; });
    const double copy = medianSeconds(runs, [&] { sink += image.copy().constBits()[7]; });

    const double mpix = double(w) * h / 1e6;
    std::printf("tint zkit: %.1f Mpix/s\n", mpix / tint);
    std::printf("tint copy: %.1f Mpix/s\n", mpix / copy);
    std::printf("tint ratio zkit/copy: %.3f\n", copy / tint);
    return sink == 42 ? 1 : 0;
}

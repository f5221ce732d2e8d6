#ifndef SKINGEN_SHEET_H
#define SKINGEN_SHEET_H

#include "skin.h"

#include <QHash>
#include <QImage>

// The contact sheet: mock-ups of the controls assembled from the images (at
// 1x and 2x), then every image at 1x and 2x on a light and a dark background
// with its name and size.
QImage renderContactSheet(const QList<SkinImage> &images, const QHash<QString, QImage> &x1,
                          const QHash<QString, QImage> &x2);

#endif // SKINGEN_SHEET_H

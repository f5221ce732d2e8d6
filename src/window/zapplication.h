#ifndef ZAPPLICATION_H
#define ZAPPLICATION_H

#include "zglobal.h"

#include <QApplication>

/*!
 * The application object of a zkit program. Process-wide defaults (font,
 * environment, parser options) are already in place when the library is
 * loaded, before this object exists.
 */
class ZKIT_EXPORT ZApplication : public QApplication
{
    Q_OBJECT
public:
    ZApplication(int &argc, char **argv);
    ~ZApplication() override;
};

#endif // ZAPPLICATION_H

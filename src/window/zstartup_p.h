#ifndef ZSTARTUP_P_H
#define ZSTARTUP_P_H

#include "zglobal.h"

#include <QString>

/*
 * Process-wide defaults, set once when the library is loaded, before the
 * application object exists: the default font, the XML parser's options and
 * the environment the loader and the layouts rely on.
 */
class ZKIT_EXPORT ZStartup
{
public:
    /// Runs the start-up steps; called by the library's static initialiser.
    static void run();

    /// The directory of the running executable, known before any
    /// QCoreApplication exists. Empty when the platform cannot tell.
    static QString executableDir();
};

#endif // ZSTARTUP_P_H

#include "zstartup_p.h"
#include "xmlnode.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFont>

const char *zkitBuildDate()
{
    return "2015-05-01";
}

QString ZStartup::executableDir()
{
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    // No application object yet: ask the process file system.
    const QFileInfo exe(QStringLiteral("/proc/self/exe"));
    const QString target = exe.symLinkTarget();
    return target.isEmpty() ? QString() : QFileInfo(target).absolutePath();
}

void ZStartup::run()
{
    QFont font(QStringLiteral("SimSun"));
    font.setPixelSize(12);
    QApplication::setFont(font);

    // Documents are UTF-8 wherever the process's 8-bit code page is; Linux
    // always, elsewhere the historic default of the skins is GB2312.
#if defined(Q_OS_WIN)
    const XMLCharEncoding encoding = char_encoding_GB2312;
#else
    const XMLCharEncoding encoding = char_encoding_UTF8;
#endif
    XMLNode::setGlobalOptions(encoding, 1, 1, 1);

    // Anchor layouts must keep every anchor the documents state, even ones
    // the layout's simplification would fold away.
    qputenv("QT_ANCHORLAYOUT_NO_SIMPLIFICATION", "1");
    qputenv("appdir", executableDir().toLocal8Bit());
}

namespace {
// Runs when the shared library is loaded into the process.
const struct StartupRunner {
    StartupRunner() { ZStartup::run(); }
} startupRunner;
} // namespace

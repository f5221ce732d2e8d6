#include "previewer.h"

#include <algorithm>

#include "xmlnode.h"
#include "zcreator.h"
#include "zresource.h"
#include "ztheme.h"
#include "zwidget.h"
#include "zwindow.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QPainter>

namespace {

// Editors save in bursts (truncate, write, rename): load once they are done.
constexpr int DebounceMs = 150;
// How long render() lets zero-interval layout passes and posted events run.
constexpr int SettleMs = 100;

// The name of the first element inside uitree, which says whether the
// document describes a window or widgets; empty when there is none.
QByteArray firstElementName(QByteArray text)
{
    XMLResults results;
    XMLNode top = XMLNode::parseString(text.constData(), "uitree", &results);
    if (results.error != eXMLErrorNone && results.error != eXMLErrorMissingEndTag)
        return QByteArray();
    const XMLNode first = top.getChildNode(0);
    return first.isEmpty() ? QByteArray() : QByteArray(first.getName());
}

// Every attribute value of the document, each "|"-separated piece apart.
void collectNames(const QString &path, QStringList &names)
{
    XMLNode top = XMLNode::parseFile(QFile::encodeName(path).constData());
    QList<XMLNode> stack{top};
    while (!stack.isEmpty()) {
        const XMLNode node = stack.takeLast();
        for (int i = 0; i < node.nAttribute(); ++i) {
            const QString value = QString::fromUtf8(node.getAttributeValue(i));
            for (const QString &piece : value.split(QLatin1Char('|'), Qt::SkipEmptyParts))
                names << piece.trimmed();
        }
        for (int i = 0; i < node.nChildNode(); ++i)
            stack << node.getChildNode(i);
    }
}

} // namespace

Previewer::Previewer(const Options &options, QObject *parent)
    : QObject(parent)
    , m_options(options)
{
    m_debounce.setSingleShot(true);
    m_debounce.setInterval(DebounceMs);
    connect(&m_debounce, &QTimer::timeout, this, &Previewer::reloadFromWatch);

    const QString folder = QFileInfo(options.document).absolutePath();
    ZResource::addSearchPath(QStringLiteral("appdir"), folder);
}

Previewer::~Previewer()
{
    delete m_window;
}

ZWindow *Previewer::window() const
{
    return m_window;
}

QString Previewer::format(const ZXmlUI::Diagnostic &diagnostic)
{
    const QString file = diagnostic.file.isEmpty() ? QStringLiteral("<memory>") : diagnostic.file;
    if (diagnostic.line <= 0)
        return QStringLiteral("%1: %2").arg(file, diagnostic.message);
    return QStringLiteral("%1:%2:%3: %4")
        .arg(file)
        .arg(diagnostic.line)
        .arg(diagnostic.column)
        .arg(diagnostic.message);
}

bool Previewer::load()
{
    m_diagnostics.clear();
    // Documents are read here and loaded from memory: the loader's own file
    // names are resource names, which refuse absolute paths.
    QString current;
    ZXmlUI::setDiagnosticsSink([this, &current](const ZXmlUI::Diagnostic &d) {
        m_diagnostics << d;
        if (m_diagnostics.last().file.isEmpty())
            m_diagnostics.last().file = current;
    });
    const auto report = [this](ZXmlUI::Diagnostic::Kind kind, const QString &file, const QString &message) {
        ZXmlUI::Diagnostic d;
        d.kind = kind;
        d.file = file;
        d.message = message;
        m_diagnostics << d;
    };
    const auto read = [&](const QString &path, QByteArray *text) {
        current = path;
        QFile file(path);
        if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
            report(ZXmlUI::Diagnostic::FileNotFound, path, QStringLiteral("cannot read the file"));
            return false;
        }
        *text = file.readAll();
        return true;
    };

    ZWindow *window = nullptr;
    QByteArray text;
    bool ok = true;
    if (!m_options.skin.isEmpty()) {
        const int before = m_diagnostics.size();
        ok = read(m_options.skin, &text) && ZXmlUI::initSkin(text);
        if (!ok && m_diagnostics.size() == before)
            report(ZXmlUI::Diagnostic::MissingRoot, m_options.skin, QStringLiteral("no uiskin element"));
    }
    if (ok && read(m_options.document, &text)) {
        if (m_options.themeIndex >= 0)
            ZTheme::setThemeIndex(m_options.themeIndex);
        else if (m_options.themeColor.isValid())
            ZTheme::setThemeColor(m_options.themeColor);

        if (ZWindowCreatorBase::find(firstElementName(text))) {
            window = ZXmlUI::windowFromMemory(text);
        } else {
            window = new ZWindow;
            const bool parsed = ZXmlUI::widgetFromMemory(text, window->rootWidget());
            if (!parsed || std::any_of(m_diagnostics.cbegin(), m_diagnostics.cend(), [](const auto &d) {
                    return d.kind == ZXmlUI::Diagnostic::ParseError;
                })) {
                delete window;
                window = nullptr;
            }
        }
        if (!window && m_diagnostics.isEmpty())
            report(ZXmlUI::Diagnostic::MissingRoot, m_options.document, QStringLiteral("no window was built"));
    }
    ZXmlUI::setDiagnosticsSink({});
    if (!window)
        return false;

    window->setWindowTitle(QFileInfo(m_options.document).fileName() + QLatin1String(" - zkit-preview"));
    if (m_window) {
        // A reload takes the old window's place and size.
        window->resize(m_window->size());
        window->move(m_window->pos());
        if (m_window->isVisible())
            window->show();
        delete m_window;
    } else if (m_options.size.isValid() && !m_options.size.isEmpty()) {
        window->resize(m_options.size);
    } else {
        const QSize preferred = window->calcWindowPreferSize().toSize();
        window->resize(preferred.expandedTo(QSize(160, 80)));
    }
    m_window = window;
    return true;
}

void Previewer::setWatching(bool on)
{
    if (on == (m_watcher != nullptr))
        return;
    if (!on) {
        delete m_watcher;
        m_watcher = nullptr;
        return;
    }
    m_watcher = new QFileSystemWatcher(this);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, &m_debounce, qOverload<>(&QTimer::start));
    updateWatchList();
}

QStringList Previewer::watchedFiles() const
{
    return m_watcher ? m_watcher->files() : QStringList();
}

void Previewer::reloadFromWatch()
{
    const bool ok = load();
    // Files replaced by a rename drop out of the watcher: watch them again.
    updateWatchList();
    Q_EMIT reloaded(ok);
}

void Previewer::updateWatchList()
{
    if (!m_watcher)
        return;
    const QStringList old = m_watcher->files();
    if (!old.isEmpty())
        m_watcher->removePaths(old);
    const QStringList files = referencedFiles();
    if (!files.isEmpty())
        m_watcher->addPaths(files);
}

QStringList Previewer::referencedFiles() const
{
    QStringList files;
    const auto add = [&files](const QString &file) {
        const QFileInfo info(file);
        if (info.isFile() && !file.startsWith(QLatin1Char(':')))
            files << info.canonicalFilePath();
    };
    add(m_options.document);
    QStringList names;
    collectNames(m_options.document, names);
    if (!m_options.skin.isEmpty()) {
        add(m_options.skin);
        collectNames(m_options.skin, names);
    }
    for (const QString &name : std::as_const(names)) {
        if (name.startsWith(QLatin1Char(':')) || !name.contains(QLatin1Char('.')))
            continue;
        const QString file = ZResource::absoluteFileName(name);
        add(file);
        const int dot = file.lastIndexOf(QLatin1Char('.'));
        add(file.left(dot) + QLatin1String("@2x") + file.mid(dot));
    }
    files.removeDuplicates();
    return files;
}

QImage Previewer::render()
{
    if (!m_window)
        return QImage();
    if (!m_window->isVisible())
        m_window->show();
    QElapsedTimer clock;
    clock.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        m_window->rootWidget()->activateLayout();
    } while (clock.elapsed() < SettleMs);

    QImage image(m_window->size() * m_window->devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_window->devicePixelRatioF());
    image.fill(Qt::transparent);
    QPainter painter(&image);
    m_window->render(&painter);
    return image;
}

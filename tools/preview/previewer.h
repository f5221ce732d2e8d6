#ifndef ZKIT_PREVIEW_PREVIEWER_H
#define ZKIT_PREVIEW_PREVIEWER_H

#include "zxmlui.h"

#include <QColor>
#include <QFileSystemWatcher>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSize>
#include <QStringList>
#include <QTimer>

class ZWindow;

/*!
 * Loads one uitree document into a window, the way an application would, and
 * keeps it loaded: a window document becomes its window, a widget document
 * is created into a plain ZWindow. While watching, every save of the
 * document, of the skin document or of a skin image they name loads the
 * window afresh at the same place; a document that no longer loads leaves
 * the last good window standing.
 *
 * The document's folder joins the "appdir" search path, so that names such
 * as "appdir:images/logo.png" find the images beside the document.
 */
class Previewer : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        QString document;
        QString skin;       // a uiskin document, or empty
        int themeIndex = -1; // -1: leave the theme alone
        QColor themeColor;  // used when valid and themeIndex is -1
        QSize size;         // empty: the window's preferred size
    };

    explicit Previewer(const Options &options, QObject *parent = nullptr);
    ~Previewer() override;

    /*! Loads the document (replacing the current window on success). */
    bool load();
    ZWindow *window() const;

    /*! What the last load reported, in document order. */
    const QList<ZXmlUI::Diagnostic> &diagnostics() const { return m_diagnostics; }
    /*! "file:line:column: message", the form compilers use. */
    static QString format(const ZXmlUI::Diagnostic &diagnostic);

    /*! Reloads on every save of the files the window was built from. */
    void setWatching(bool on);
    /*! The files a reload is triggered by: document, skin, skin images. */
    QStringList watchedFiles() const;

    /*! Lets pending layouts and timers run, then renders the window. */
    QImage render();

Q_SIGNALS:
    /*! After every reload caused by a save; \a ok false when it failed. */
    void reloaded(bool ok);

private:
    void reloadFromWatch();
    void updateWatchList();
    QStringList referencedFiles() const;

    Options m_options;
    QPointer<ZWindow> m_window;
    QList<ZXmlUI::Diagnostic> m_diagnostics;
    QFileSystemWatcher *m_watcher = nullptr;
    QTimer m_debounce;
};

#endif

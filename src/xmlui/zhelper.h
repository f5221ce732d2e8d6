#ifndef ZHELPER_H
#define ZHELPER_H

#include "zglobal.h"

#include <QtCore/qobject.h>
#include <QtCore/qstring.h>

#include <memory>

class ZHelperPrivate;

/*!
 * \brief An object of a document's uihelper section: a small job run after
 * the document's tree exists.
 *
 * The loader creates the helper, sets its attributes, gives it the window or
 * widget being loaded as root object and calls execute(). The base class
 * finds its target: targetPath is a "/"-separated path of object names, each
 * step naming a direct child of the object before it (object children and,
 * for graphics objects, child items; a window's root widget is passed through,
 * so its children are the window's). An empty path is the root itself.
 * Subclasses do their job in doExecute().
 *
 * Helper elements nested in a helper element run only when it succeeded, with
 * its target as their root object:
 * \code
 * <uihelper>
 *   <ZFindChild targetPath="toolbar">
 *     <ZSignalConnector targetPath="ok" signal="clicked()" receiver="" slot="accept()"/>
 *   </ZFindChild>
 * </uihelper>
 * \endcode
 */
class ZKIT_EXPORT ZHelper : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString targetPath READ targetPath WRITE setTargetPath)

public:
    Q_INVOKABLE explicit ZHelper(QObject *parent = nullptr);
    ~ZHelper() override;

    QString targetPath() const;
    void setTargetPath(const QString &path);

    /*! The object paths start from. */
    QObject *rootObject() const;
    void setRootObject(QObject *root);

    /*! The object targetPath reached in the last execute(); null before or on failure. */
    QObject *target() const;

    /*! Runs doExecute(); true when the helper did its job. */
    bool execute();

    /*! Why the last execute() failed; empty after a success. */
    QString errorString() const;

protected:
    ZHelper(ZHelperPrivate &dd, QObject *parent);

    /*! Resolves targetPath into target(); true when it names an object. */
    virtual bool doExecute();
    /*! The object \a path names, starting from the root object; null when none. */
    virtual QObject *resolve(const QString &path) const;
    /*! Sets the text errorString() reports. */
    void setErrorString(const QString &text);

    /*! The objects one step below \a object (see the class description). */
    static QObjectList childObjects(QObject *object);

    std::unique_ptr<ZHelperPrivate> d_zptr;

private:
    Z_DECLARE_PRIVATE(ZHelper)
    Q_DISABLE_COPY(ZHelper)
};

#endif // ZHELPER_H

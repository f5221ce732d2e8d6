#include "zhelper.h"
#include "zhelper_p.h"

#include "zcreator.h"
#include "zwidget.h"
#include "zwindow.h"

#include <QtWidgets/qgraphicsitem.h>

ZHelper::ZHelper(QObject *parent)
    : ZHelper(*new ZHelperPrivate, parent)
{
}

ZHelper::ZHelper(ZHelperPrivate &dd, QObject *parent)
    : QObject(parent)
    , d_zptr(&dd)
{
    d_zptr->q_zptr = this;
}

ZHelper::~ZHelper() = default;

QString ZHelper::targetPath() const
{
    return d_func()->targetPath;
}

void ZHelper::setTargetPath(const QString &path)
{
    d_func()->targetPath = path;
}

QObject *ZHelper::rootObject() const
{
    return d_func()->root;
}

void ZHelper::setRootObject(QObject *root)
{
    d_func()->root = root;
}

QObject *ZHelper::target() const
{
    return d_func()->target;
}

bool ZHelper::execute()
{
    Z_D(ZHelper);
    d->target = nullptr;
    d->errorString.clear();
    const bool ok = doExecute();
    if (ok)
        d->errorString.clear();
    else if (d->errorString.isEmpty())
        d->errorString = QStringLiteral("%1 failed").arg(QLatin1String(metaObject()->className()));
    return ok;
}

QString ZHelper::errorString() const
{
    return d_func()->errorString;
}

void ZHelper::setErrorString(const QString &text)
{
    d_func()->errorString = text;
}

bool ZHelper::doExecute()
{
    Z_D(ZHelper);
    if (!d->root) {
        setErrorString(QStringLiteral("no root object"));
        return false;
    }
    d->target = resolve(d->targetPath);
    if (!d->target) {
        setErrorString(QStringLiteral("targetPath \"%1\" names no object").arg(d->targetPath));
        return false;
    }
    return true;
}

QObject *ZHelper::resolve(const QString &path) const
{
    QObject *current = d_func()->root;
    const QStringList steps = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString &step : steps) {
        if (!current)
            return nullptr;
        QObject *next = nullptr;
        for (QObject *child : childObjects(current)) {
            if (child->objectName() == step) {
                next = child;
                break;
            }
        }
        current = next;
    }
    return current;
}

QObjectList ZHelper::childObjects(QObject *object)
{
    if (!object)
        return {};
    QObject *holder = object;
    QObjectList own;
    if (auto *window = qobject_cast<ZWindow *>(object)) {
        // The root widget is the window's inside: its children count as the window's.
        if (ZWidget *root = window->rootWidget()) {
            holder = root;
            own = window->children();
        }
    }
    QObjectList result = holder->children();
    if (auto *graphics = qobject_cast<QGraphicsObject *>(holder)) {
        for (QGraphicsItem *item : graphics->childItems()) {
            QGraphicsObject *child = item->toGraphicsObject();
            if (child && child->parent() != holder)
                result.append(child);
        }
    }
    return result + own;
}

Z_REGISTER_HELPER(ZHelper);

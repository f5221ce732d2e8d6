#include "zfindchild.h"

#include "zcreator.h"

#include <QtCore/qset.h>

#include <deque>

ZFindChild::ZFindChild(QObject *parent)
    : ZHelper(parent)
{
}

ZFindChild::~ZFindChild() = default;

QObject *ZFindChild::resolve(const QString &path) const
{
    QObject *current = rootObject();
    const QStringList steps = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString &step : steps) {
        if (!current)
            return nullptr;
        // Breadth first, so the nearest match wins; an object reachable both
        // as object child and as graphics child is visited once.
        std::deque<QObject *> queue(1, current);
        QSet<QObject *> seen{current};
        QObject *found = nullptr;
        while (!queue.empty() && !found) {
            QObject *o = queue.front();
            queue.pop_front();
            for (QObject *child : childObjects(o)) {
                if (seen.contains(child))
                    continue;
                seen.insert(child);
                if (child->objectName() == step) {
                    found = child;
                    break;
                }
                queue.push_back(child);
            }
        }
        current = found;
    }
    return current;
}

Z_REGISTER_HELPER(ZFindChild);

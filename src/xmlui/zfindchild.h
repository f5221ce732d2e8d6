#ifndef ZFINDCHILD_H
#define ZFINDCHILD_H

#include "zhelper.h"

/*!
 * \brief A helper that finds an object anywhere below the root.
 *
 * Unlike ZHelper, each step of targetPath names the nearest descendant with
 * that object name, searched breadth first, not only a direct child: "ok"
 * finds a button however deep it sits, "dialog/ok" the "ok" inside "dialog".
 * It succeeds when the object is found; its nested helpers then work from it.
 */
class ZKIT_EXPORT ZFindChild : public ZHelper
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZFindChild(QObject *parent = nullptr);
    ~ZFindChild() override;

protected:
    QObject *resolve(const QString &path) const override;
};

#endif // ZFINDCHILD_H

#ifndef ZABSTRACTLISTMODEL_H
#define ZABSTRACTLISTMODEL_H

#include "zglobal.h"

#include <QtCore/qlist.h>
#include <QtCore/qmap.h>
#include <QtCore/qnamespace.h>
#include <QtCore/qobject.h>
#include <QtCore/qvariant.h>

/*!
 * \brief The interface between a list of rows and the views showing it.
 *
 * A row is a map from role to value: Qt::DisplayRole holds the text,
 * Qt::DecorationRole the icon path and role 33 (Qt::UserRole + 1) the user
 * value; other roles pass through untouched. Views never copy the model: they
 * ask for a row's data when they bind it, and learn about changes through the
 * signals, which subclasses emit.
 */
class ZKIT_EXPORT ZAbstractListModel : public QObject
{
    Q_OBJECT

public:
    /*! The role of a row's user value: 33, one past the first user role of the toolkit's first Qt. */
    static constexpr Qt::ItemDataRole UserValueRole = Qt::ItemDataRole(33);

    explicit ZAbstractListModel(QObject *parent = nullptr);
    ~ZAbstractListModel() override;

    /*! The number of rows. */
    virtual int count() const = 0;
    /*! The data of row \a index. */
    virtual QMap<Qt::ItemDataRole, QVariant> data(int index) const = 0;
    /*! Replaces the data of row \a index; false (and no change) here. */
    virtual bool setData(int index, const QMap<Qt::ItemDataRole, QVariant> &data);
    /*! Lets an item ask the model to act on row \a index; false here, \a result untouched. */
    virtual bool setAction(int index, const QVariant &action, QVariant &result);

    bool isEmpty() const { return count() == 0; }

Q_SIGNALS:
    /*! \a n rows now stand at \a index .. index + n - 1; the rows behind moved down by n. */
    void itemsInserted(int index, int n);
    /*! The \a n rows that stood at \a index .. index + n - 1 are gone. */
    void itemsRemoved(int index, int n);
    /*! \a n rows moved from \a from to \a to. */
    void itemsMoved(int from, int to, int n);
    /*! The data of \a n rows from \a index changed in \a roles. */
    void itemsChanged(int index, int n, QList<Qt::ItemDataRole> roles);
    /*! Anything may have changed. */
    void modelReset();

private:
    Q_DISABLE_COPY(ZAbstractListModel)
};

Q_DECLARE_METATYPE(QList<Qt::ItemDataRole>)

#endif // ZABSTRACTLISTMODEL_H

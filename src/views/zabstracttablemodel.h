#ifndef ZABSTRACTTABLEMODEL_H
#define ZABSTRACTTABLEMODEL_H

#include "zglobal.h"

#include <QtCore/qlist.h>
#include <QtCore/qmap.h>
#include <QtCore/qnamespace.h>
#include <QtCore/qobject.h>
#include <QtCore/qvariant.h>

/*!
 * \brief The interface between a grid of cells and the views showing it.
 *
 * A cell holds the same role map as a list row (Qt::DisplayRole text,
 * Qt::DecorationRole icon path, role 33 user value); a column's header is
 * such a map too. Views ask for the cells they show and learn about changes
 * through the signals, which subclasses emit.
 */
class ZKIT_EXPORT ZAbstractTableModel : public QObject
{
    Q_OBJECT

public:
    using CellData = QMap<Qt::ItemDataRole, QVariant>;

    explicit ZAbstractTableModel(QObject *parent = nullptr);
    ~ZAbstractTableModel() override;

    virtual int rowCount() const = 0;
    virtual int columnCount() const = 0;
    /*! The data of a cell; an empty map outside the table. */
    virtual CellData data(int row, int column) const = 0;
    /*! The header of \a column; empty here. */
    virtual CellData headerData(int column) const;
    /*! Replaces a cell's data; false (and no change) here. */
    virtual bool setData(int row, int column, const CellData &data);

    bool isEmpty() const { return rowCount() == 0; }

Q_SIGNALS:
    /*! \a n rows now stand at \a row .. row + n - 1; the rows behind moved down. */
    void rowsInserted(int row, int n);
    /*! The \a n rows that stood at \a row .. row + n - 1 are gone. */
    void rowsRemoved(int row, int n);
    void columnsInserted(int column, int n);
    void columnsRemoved(int column, int n);
    /*! The cells of \a rows x \a columns from (\a row, \a column) changed. */
    void cellsChanged(int row, int column, int rows, int columns);
    void headerChanged();
    /*! Anything may have changed. */
    void modelReset();

private:
    Q_DISABLE_COPY(ZAbstractTableModel)
};

#endif // ZABSTRACTTABLEMODEL_H

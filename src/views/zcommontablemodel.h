#ifndef ZCOMMONTABLEMODEL_H
#define ZCOMMONTABLEMODEL_H

#include "zabstracttablemodel.h"

#include <QtCore/qstringlist.h>

/*!
 * \brief A ready-made table of text cells with header labels.
 *
 * The column count follows the header labels, and grows when a row brings
 * more cells than there are columns; shorter rows are padded with empty
 * cells. Insertions report at once, or as one range at batchCommit() (the
 * range starts at the first inserted row and counts the insertions, as the
 * list model's batches do).
 */
class ZKIT_EXPORT ZCommonTableModel : public ZAbstractTableModel
{
    Q_OBJECT
    Q_PROPERTY(QString headerText READ headerText WRITE setHeaderText)
    Q_PROPERTY(int columnCount READ columnCount WRITE setColumnCount)
    Q_PROPERTY(int rowCount READ rowCount)

public:
    explicit ZCommonTableModel(QObject *parent = nullptr);
    ~ZCommonTableModel() override;

    int rowCount() const override;
    int columnCount() const override;
    CellData data(int row, int column) const override;
    CellData headerData(int column) const override;
    bool setData(int row, int column, const CellData &data) override;

    /*! Sets the column count (negative counts as 0), dropping or adding empty cells. */
    void setColumnCount(int count);
    void setHeaderLabels(const QStringList &labels);
    QStringList headerLabels() const;
    /*! The header labels joined by "|"; setting it splits at "|" and sets the labels. */
    QString headerText() const;
    void setHeaderText(const QString &text);

    /*! Appends a row of texts; returns its index. */
    int addRow(const QStringList &texts);
    /*! Inserts a row before \a row (clamped into 0 .. rowCount()); returns its index. */
    int insertRow(int row, const QStringList &texts);
    /*! Removes \a row; false when there is no such row. */
    bool removeRow(int row);
    /*! Empties the table (the header stays) and emits modelReset(). */
    void removeAll();
    bool setCellText(int row, int column, const QString &text);
    QString cellText(int row, int column) const;

    void batchInsert();
    int batchCommit();

private:
    void widen(int columns);

    QList<QList<CellData>> m_rows;
    QStringList m_header;
    int m_columns = 0;
    int m_batchStart = -1;
    int m_batchCount = 0;
    bool m_batch = false;
};

#endif // ZCOMMONTABLEMODEL_H

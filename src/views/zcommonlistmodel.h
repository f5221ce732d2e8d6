#ifndef ZCOMMONLISTMODEL_H
#define ZCOMMONLISTMODEL_H

#include "zabstractlistmodel.h"

#include <memory>

class ZCommonListModelPrivate;

/*!
 * \brief A ready-made list of text rows with an optional icon and user value.
 *
 * Insertions report themselves at once, or, between batchInsert() and
 * batchCommit(), as one range: it starts at the first inserted index and is
 * as long as the number of insertions, whatever indexes the later ones used.
 * Removals always report at once.
 *
 * The three-argument addItem() and insertItem() store the icon under
 * Qt::DecorationRole only when it is empty: a non-empty icon is dropped and
 * an empty one is stored as an empty string. Callers that want icons set
 * them through a model of their own.
 */
class ZKIT_EXPORT ZCommonListModel : public ZAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QString itemsText READ itemsText WRITE setItemsText)
    Q_PROPERTY(int count READ count)

public:
    explicit ZCommonListModel(QObject *parent = nullptr);
    ~ZCommonListModel() override;

    int count() const override;
    /*! The row's map; empty for an index outside 0 .. count() - 1. */
    QMap<Qt::ItemDataRole, QVariant> data(int index) const override;

    void addItem(const QString &text);
    /*! Appends a row; \a data goes under role 33 when it is valid. */
    void addItem(const QString &text, const QVariant &data);
    void addItem(const QString &text, const QString &icon, const QVariant &data);
    /*! As the three-argument addItem(), at \a index (kept within 0 .. count() by the caller; clamped here). */
    void insertItem(int index, const QString &text, const QString &icon, const QVariant &data);
    /*! Removes row \a index and emits itemsRemoved(index, 1); nothing when out of range. */
    void removeItem(int index);
    /*! Removes the first row whose text equals \a text exactly. */
    void removeItem(const QString &text);
    /*! Empties the model and emits modelReset(). */
    void removeAll();

    /*! Starts a batch; an open batch restarts, losing its notice. */
    void batchInsert();
    /*! Ends the batch, emits itemsInserted() for it when it inserted anything, and returns the count. */
    int batchCommit();
    bool inBatch() const;

    /*! Replaces all rows by the parts of \a text split at "|" (empty parts kept) and emits modelReset(). */
    void setItemsText(const QString &text);
    /*! The rows' texts joined by "|". */
    QString itemsText() const;

private:
    void insertRow(int index, const QString &text, QMap<Qt::ItemDataRole, QVariant> &&extra);

    std::unique_ptr<ZCommonListModelPrivate> d;
    Q_DISABLE_COPY(ZCommonListModel)
};

#endif // ZCOMMONLISTMODEL_H

#ifndef ZBUTTONGROUP_H
#define ZBUTTONGROUP_H

#include "zwidget.h"

class ZButtonGroupPrivate;
class ZRadioButton;

/*!
 * \brief A container whose radio buttons exclude each other.
 *
 * The group collects the ZRadioButton items placed in it, also those nested
 * in inner containers: children added with addItem() and, once a document
 * has created them, every descendant found by construct(). A click on a
 * member checks it, clears the other members and emits radioSelected(), even
 * when the member was checked already, so a member cannot be cleared by
 * clicking it. Radio buttons outside any group toggle like check boxes.
 */
class ZKIT_EXPORT ZButtonGroup : public ZWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit ZButtonGroup(QGraphicsItem *parent = nullptr);
    ~ZButtonGroup() override;

    /*! The members, in the order they joined; deleted ones are left out. */
    QList<ZRadioButton *> buttons() const;
    /*! The first checked member, or null. */
    ZRadioButton *checkedButton() const;

    /*! Collects the radio buttons among the descendants. */
    void construct() override;
    /*! Adds \a item as ZWidget does and collects the radio buttons in it. */
    void addItem(ZWidget *item) override;

Q_SIGNALS:
    /*! A member was clicked and is now the only checked one. */
    void radioSelected(QObject *button);

protected:
    void childEvent(QChildEvent *event) override;

private Q_SLOTS:
    void on_button_state_changed();

private:
    Z_DECLARE_PRIVATE(ZButtonGroup)
    Q_DISABLE_COPY(ZButtonGroup)
};

#endif // ZBUTTONGROUP_H

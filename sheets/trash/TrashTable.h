#pragma once

#include "platform/TrashCan.h"
#include "widgets/RowTable.h"

class TrashModel;

// The table of what lies in the Trash. What is selected stays so while the rows change. Main
// thread.
class TrashTable final : public RowTable {
    Q_OBJECT

public:
    explicit TrashTable(TrashModel &rows, QWidget *parent);

    QList<TrashedItem> selectedItems() const; // in the order of their rows
    void setItems(const QList<TrashedItem> &items);

Q_SIGNALS:
    void selectionAltered();
    void removeAsked();
    void reloadAsked();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;

private:
    TrashModel &_rows;
};

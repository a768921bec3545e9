#pragma once

#include "platform/TrashCan.h"

#include <QTableView>

class TrashModel;

// The table of what lies in the Trash. What is selected stays so while the rows change. Main
// thread.
class TrashTable final : public QTableView {
    Q_OBJECT

public:
    explicit TrashTable(TrashModel &rows, QWidget *parent);

    QList<TrashedItem> selectedItems() const; // in the order of their rows
    void setItems(const QList<TrashedItem> &items);
    void setPlaceholder(const QString &text); // while there is no row

Q_SIGNALS:
    void selectionAltered();
    void removeAsked();
    void reloadAsked();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    void paintEvent(QPaintEvent *event) override;

private:
    TrashModel &_rows;
    QString _placeholder;
};

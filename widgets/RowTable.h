#pragma once

#include <QTableView>

// A table to be looked at, in which rows are chosen as a whole. They are of one height: only those
// that are seen are ever asked for. Main thread.
class RowTable : public QTableView {
public:
    explicit RowTable(QAbstractItemModel &model, QWidget *parent = nullptr);

    void setPlaceholder(const QString &text); // what stands there while there is no row

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString _placeholder;
};

#pragma once

#include <QTreeView>

class RecordTableModel;

// The table of a list of paths. A person brings a row to another place by dragging it or with Alt
// and the arrows, and takes it out with Del. What then happens to the list is its owner's to say.
class RecordTable final : public QTreeView {
    Q_OBJECT

public:
    explicit RecordTable(RecordTableModel &model, QWidget *parent = nullptr);

    int selectedRow() const; // -1: none
    void selectRow(int row); // the nearest that is there

    // The row before which a drop there would bring another; behind the last row: their number.
    int rowBefore(const QPoint &position) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void deleteAsked();
    void moveAsked(int row, int before); // behind the last row: their number
    void selectedRowChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void shareWidth();

    RecordTableModel &records;
};

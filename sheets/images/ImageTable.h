#pragma once

#include <QTimer>
#include <QTreeView>

class ImageRows;

// The table of small pictures and names. It tells which rows are seen, and hands the keys that lead
// through the pictures to whoever shows them large.
class ImageTable final : public QTreeView {
    Q_OBJECT

public:
    explicit ImageTable(ImageRows &rows, QWidget *parent = nullptr);

    int selectedRow() const; // -1: none
    void selectRow(int row);
    // The rows that can be seen, and then those near to them.
    QList<int> rowsNearby() const;
    QSize thumbnailBound() const; // points

    QSize sizeHint() const override;

Q_SIGNALS:
    void seenRowsChanged();
    void selectionDidChange();
    void openAsked(int row);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    ImageRows &rows;
    QTimer _seenChanged; // once for all changes of one turn of the event loop
};

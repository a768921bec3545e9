#pragma once

#include "platform/MetadataIndex.h"
#include "widgets/RowTable.h"

class SearchResultModel;

// The table of the results. When they change it keeps the selected one, and what it shows of them
// keeps its place. Main thread.
class SearchResultTable final : public RowTable {
    Q_OBJECT

public:
    explicit SearchResultTable(SearchResultModel &results, QWidget *parent = nullptr);

    int selectedRow() const; // -1: none
    QString selectedPath() const { return _selected.path; } // "": none
    void reload(); // the results have changed
    void reset() override; // other rows altogether: nothing is kept

Q_SIGNALS:
    void openAsked(); // the selected one
    void folderAsked(); // the folder it lies in
    void leftUpwards(); // by the arrow key

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyboardSearch(const QString &) override { } // through all rows; the field is there for it
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    int topRow() const;

    SearchResultModel &results;
    MetadataQuery::Result _selected;
    MetadataQuery::Result _top; // the first row that is seen
    bool _reloading = false;
};

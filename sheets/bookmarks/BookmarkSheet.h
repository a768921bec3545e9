#pragma once

#include "widgets/Sheet.h"

class DiskQuestions;
class PathField;
class RecordTable;
class RecordTableModel;

// The list of the bookmarks, with a field for the path of a new one.
class BookmarkSheet final : public Sheet {
    Q_OBJECT

public:
    BookmarkSheet(RecordTableModel &bookmarks, DiskQuestions &questions, QWidget *mainWindow);

    PathField *pathField; // outlets
    RecordTable *table;

Q_SIGNALS:
    void addAsked();
    void chooseAsked(); // in a panel
    void deleteAsked();
    void moveAsked(int row, int before);
    void doneAsked();
};

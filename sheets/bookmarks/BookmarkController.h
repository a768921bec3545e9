#pragma once

#include "settings/BookmarkStore.h"
#include "widgets/RecordTableModel.h"

#include <QObject>
#include <QPointer>

class Alerts;
class BookmarkSheet;
class DiskQuestions;
class FileQueries;
class OpenDialogs;
class OpenPanel;
class PathIcons;

// The bookmark manager: what its sheet shows and does. Main thread.
class BookmarkController final : public QObject {
    Q_OBJECT

public:
    struct Services {
        Alerts &alerts;
        OpenPanel &openPanel;
        OpenDialogs &openDialogs;
    };
    BookmarkController(BookmarkStore &store, const FileQueries &queries, PathIcons &icons,
                       DiskQuestions &questions, const Services &services, QWidget *mainWindow);
    ~BookmarkController() override;

    void showBookmarkSheet();
    void addEntry(); // the path in the field
    void deleteEntry(); // the selected one
    void endBookmarkSheet();

Q_SIGNALS:
    void bookmarksMenuToSet(); // when the sheet has ended

private:
    void reload();
    void chooseFolder();
    void moveEntry(int row, int before);
    bool add(const QString &path); // false, told, when nothing is there

    BookmarkStore &store;
    const FileQueries &queries;
    DiskQuestions &questions;
    const Services _services;
    QWidget *mainWindow; // not owned
    PathIcons &icons;
    RecordTableModel _model;
    QPointer<BookmarkSheet> bookmarkSheet; // while it is open
};

#include "sheets/bookmarks/BookmarkController.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "platform/Alerts.h"
#include "platform/OpenDialogs.h"
#include "platform/OpenPanel.h"
#include "sheets/bookmarks/BookmarkSheet.h"
#include "widgets/PathField.h"
#include "widgets/PathIcons.h"
#include "widgets/RecordTable.h"

BookmarkController::BookmarkController(BookmarkStore &bookmarks, const FileQueries &fileQueries,
                                       PathIcons &pathIcons, DiskQuestions &diskQuestions,
                                       const Services &services, QWidget *window)
    : store(bookmarks)
    , queries(fileQueries)
    , questions(diskQuestions)
    , _services(services)
    , mainWindow(window)
    , icons(pathIcons)
    , _model({ localized("Icon"), localized("Path"), localized("Real path") }, pathIcons)
{
}

BookmarkController::~BookmarkController() = default;

void BookmarkController::showBookmarkSheet()
{
    const OpenDialogs::Guard guard(_services.openDialogs);
    icons.forget(); // what stands there may have changed since
    BookmarkSheet sheet(_model, questions, mainWindow);
    bookmarkSheet = &sheet;
    connect(&sheet, &BookmarkSheet::addAsked, this, &BookmarkController::addEntry);
    connect(&sheet, &BookmarkSheet::chooseAsked, this, &BookmarkController::chooseFolder);
    connect(&sheet, &BookmarkSheet::deleteAsked, this, &BookmarkController::deleteEntry);
    connect(&sheet, &BookmarkSheet::moveAsked, this, &BookmarkController::moveEntry);
    connect(&sheet, &BookmarkSheet::doneAsked, this, &BookmarkController::endBookmarkSheet);
    reload();
    sheet.table->selectRow(0);
    sheet.run(); // by whatever it is closed: each change is stored already
    bookmarkSheet.clear();
    Q_EMIT bookmarksMenuToSet();
}

void BookmarkController::endBookmarkSheet()
{
    if (bookmarkSheet)
        bookmarkSheet->accept();
}

void BookmarkController::reload()
{
    QList<RecordTableModel::Record> records;
    const auto bookmarks = store.getBookmarksFromUserDefaults();
    for (const Bookmark &bookmark : bookmarks)
        records.append({ bookmark.realPath, { bookmark.localizedPath, bookmark.realPath } });
    _model.setRecords(records);
}

void BookmarkController::addEntry()
{
    if (!bookmarkSheet)
        return;
    // A blank at the end is a slip, unless something is there that is named so.
    QString path = bookmarkSheet->pathField->path();
    if (const QString trimmed = path.trimmed(); trimmed != path && queries.whyNotThere(path))
        path = PathText::fromTyped(trimmed);
    if (!bookmarkSheet || !add(path))
        return;
    if (bookmarkSheet) // it may have gone while the disk was asked
        bookmarkSheet->pathField->clear();
}

bool BookmarkController::add(const QString &path)
{
    // Kept: only that something is there is looked at, so a file can be bookmarked, too.
    const auto error = path.isEmpty() ? std::make_error_code(std::errc::no_such_file_or_directory)
                                      : queries.whyNotThere(path);
    if (error) {
        const QString asked = path.isEmpty() ? bookmarkSheet->pathField->text() : path;
        _services.alerts.ask(
            Alert::failure(localized("Folder doesn't exists or it's not a folder!"),
                           FileName::shown(asked) + u'\n' + QString::fromStdString(error.message()),
                           localized("Ok")));
        return false;
    }
    store.addBookmarkEntry(queries.getLocalizedPath(path), path);
    reload();
    return true;
}

void BookmarkController::chooseFolder()
{
    if (!bookmarkSheet)
        return;
    // The panel looks at where it starts before it shows itself: that must be there to answer.
    const QString typed = bookmarkSheet->pathField->path();
    const bool isThere = !typed.isEmpty() && queries.isDirectory(typed);
    const auto chosen = _services.openPanel.chooseFolder(isThere ? typed : PathText::homeFolder());
    if (chosen && bookmarkSheet)
        add(*chosen);
}

void BookmarkController::deleteEntry()
{
    const int row = bookmarkSheet ? bookmarkSheet->table->selectedRow() : -1;
    if (row < 0)
        return;
    const RecordTableModel::Record record = _model.records()[row];
    store.deleteBookmarkEntry({ record.texts.first(), record.path });
    reload();
    bookmarkSheet->table->selectRow(row); // the next one
}

void BookmarkController::moveEntry(int row, int before)
{
    const auto bookmarkOf = [this](int place) {
        const RecordTableModel::Record &record = _model.records()[place];
        return Bookmark { record.texts.first(), record.path };
    };
    const Bookmark moved = bookmarkOf(row);
    store.moveBookmarkEntry(
        moved, before < _model.rowCount() ? std::optional(bookmarkOf(before)) : std::nullopt);
    reload();
    bookmarkSheet->table->selectRow(before > row ? before - 1 : before);
}

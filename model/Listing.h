#pragma once

#include "files/Waiting.h"
#include "model/Entry.h"
#include "model/ListingOptions.h"

#include <memory>
#include <system_error>

class FileKinds;
class FolderWatch;
struct ListingData;

// The columns of a pane; "Icon" cannot be sorted by.
enum class Column { Icon, Name, Size, Date, Type };
inline constexpr int ColumnCount = 5;
QString columnIdentifier(Column column); // "Name", ...
std::optional<Column> columnFromIdentifier(const QString &identifier);

enum class SortDirection { Ascending, Descending };
struct SortOrder {
    Column column;
    SortDirection direction;
};

// The rows of one folder: "..", then the folders, then the files. A shared value that never
// changes; a new reading or another order makes a new one, on any thread.
class Listing final {
public:
    Listing(); // no rows, no folder

    // Reads a folder: one pass, each entry looked at through the folder's descriptor, but for those
    // that another machine or program would have to answer for. A folder that cannot be read gives
    // only the row "..". The watch, where there is one, tells what changes from then on.
    static Listing read(const QString &folder, const ListingOptions &options,
                        const FileKinds &kinds, WaitingProgress *progress = nullptr,
                        FolderWatch *watch = nullptr);
    explicit Listing(std::shared_ptr<const ListingData> data); // not null

    Listing sorted(Column column, SortDirection direction) const;

    QString folder() const;
    qsizetype size() const;
    bool isEmpty() const { return size() == 0; }
    Entry at(qsizetype row) const; // 0 <= row < size()
    Entry operator[](qsizetype row) const { return at(row); }
    bool holds(qsizetype row) const { return row >= 0 && row < size(); }
    // The row of the entry whose path equals it, or -1.
    qsizetype rowOfPath(const QString &path) const;
    // The row of the entry with the name, or -1.
    qsizetype rowOfName(const QString &name) const;
    // Another number for each reading and each sorting: rows counted against one hold only for it.
    quint64 generation() const;
    std::error_code error() const; // why it could not be read
    std::optional<SortOrder> order() const; // that sorted() put it in

    // The storage, for what goes over all records.
    const ListingData &data() const { return *_data; }

private:
    std::shared_ptr<const ListingData> _data;
};

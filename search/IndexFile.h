#pragma once

#include "files/FileStatus.h"
#include "search/Database.h"

// The file of the index: where it lies, what stands in it, and what is one. Any thread.
//
//   state(key, value)    what is known of the whole: see Key
//   folder(id, parent, name, inode, pending, newest)
//                        a folder that is walked. The home folder is Home, its parent 0, its name
//                        empty. `pending`: its documents have to be gone through once more, see
//                        Pending; `newest` (nanoseconds since 1970) tells which folder is first.
//   names(folder, generation, items)
//                        what lies in a folder, also what is not walked and not read: PackedItems.
//                        All of it in one row, in the folder's own order, as it is compared with
//                        the disk and gone through for a name.
//   document(id, folder, name, size, modified, changed, inode, outcome, generation, attributes,
//   text)
//                        what the reader found in an item that had these four at that time
//                        (nanoseconds since 1970). An id is never given again. `attributes`:
//                        StoredAttributes, or NULL; `text`: the text word by word as it is, in
//                        UTF-8, compressed by zstd (StoredText), or NULL. An item that has no row
//                        was not read yet, or there is nothing to read in its kind.
//   property_words(words), content_words(words)
//                        full-text indexes without content (FTS5, detail=none), the row is the id
//                        of the document: each word of its attributes, of its text, once, folded by
//                        Folding::All and cut by Folding::indexedWord. No positions: whether words
//                        stand in order, in this case or with these accents, only the text tells.
//
// `generation` is that of the commit that wrote the row: who remembers the state's finds what
// changed since. What is gone has no row that tells.
namespace IndexFile {

constexpr qint64 Home = 1; // the id of the home folder
constexpr qint64 Nowhere = -1; // in place of a parent's id

namespace Key { // of the table "state"
inline constexpr char HomePath[] = "home"; // BLOB: the folder that this is an index of
inline constexpr char Names[] =
    "names"; // 1: every folder is in it, as it is; 0 until an indexer saw them
inline constexpr char Generation[] = "generation";
} // namespace Key

// Stored.
enum class Pending : quint8 {
    No = 0,
    Changed = 1, // just now, and what it had before is known: the index counts as whole
    Unknown = 2,
};

// What became of an item that was offered to the reader. Stored.
enum class Outcome : quint8 {
    Read = 0,
    Nothing = 1, // there is nothing to read in it, but maybe a person's tags
    Failed = 2, // broken, too large, or it ended the reader: not again until it changes
    Cut = 3, // read, and there is more text than is kept
};

QString folder(); // the program's own in cacheFolder()
QString path();
QString homePath(); // as it stands in the paths of all results; may lead through a link

enum class State {
    Good,
    None, // nothing is there
    Damaged, // not a database, or not a whole one; or no file at all
    Foreign, // of another version or another home folder, or something else altogether
    Blocked, // another's, or no rights: nothing that is ours to take away
};

// Read-only. What is damaged in its depth is told only by the faults of what is read later.
State openForReading(const QString &path, Database &database);
// Makes the folder (0700) and the file (0600) when there is none; never removes anything. Blocked:
// the database's fault text says why.
State openForWriting(const QString &path, Database &database);
// Takes a damaged or foreign index away, its companions too; a folder in its place gets another
// name. False when it cannot.
bool remove(const QString &path);

// Which file it is; nothing when there is none. It changes when the index is made anew.
std::optional<FileIdentity> identity(const QString &path);

qint64 state(Database &database, const char *key); // 0 when there is none

} // namespace IndexFile

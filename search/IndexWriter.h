#pragma once

#include "search/Database.h"
#include "search/IndexFile.h"
#include "search/PackedItems.h"

#include <QList>

#include <optional>

// Writes the folders and the names of the index. All that is written since the last commit() is one
// transaction, which begins by itself; after a fault nothing of it stays, and the writer is of no
// more use. One thread; one writer at a time.
class IndexWriter final {
public:
    explicit IndexWriter(const QString &path);
    ~IndexWriter();
    IndexWriter(const IndexWriter &) = delete;
    IndexWriter &operator=(const IndexWriter &) = delete;

    // Makes it when there is none. Not good: the database's fault text may say why.
    IndexFile::State open();
    Database &database() { return _database; }
    // The file at the path is still the one that was opened.
    bool isInPlace() const;

    bool commit(); // true also when there is nothing to write
    bool hasChanges() const { return _changed; }
    // What the rows of this transaction are written with. Begins one.
    qint64 generation();

    bool namesAreWhole() const { return _namesAreWhole; }
    // Not whole any more: nor is what is known of the documents.
    void setNamesWhole(bool whole);

    struct Folder {
        qint64 id = 0;
        QByteArray name;
        quint64 inode = 0;
    };
    struct Place {
        qint64 parent = 0; // 0: it is the home folder
        QByteArray name;
    };
    // Those that are walked in a folder.
    QList<Folder> foldersIn(qint64 parent);
    std::optional<qint64> firstFolderIn(qint64 parent);
    std::optional<qint64> folderWithInode(quint64 inode);
    std::optional<Place> placeOf(qint64 folder); // nothing: there is no such folder
    // Home gets its fixed id.
    qint64 addFolder(qint64 parent, QByteArrayView name, quint64 inode);
    void moveFolder(qint64 folder, qint64 parent, QByteArrayView name);
    void setInode(qint64 folder, quint64 inode);
    // Of the folder alone; its documents are the caller's to remove first.
    void removeFolder(qint64 folder);

    // Null when they were not read yet.
    QByteArray itemsIn(qint64 folder);
    // Its documents are to be gone through after that.
    void setItems(qint64 folder, QByteArrayView items, qint64 newest, IndexFile::Pending pending);

    // Folders whose documents are to be gone through, those with the newest items first.
    QList<qint64> pendingFolders(int limit);
    void endPending(qint64 folder);
    // What a pending folder had before is no longer what a person may take it for.
    void setUnknown(qint64 folder);

private:
    QString _path;
    std::optional<FileIdentity> _identity; // of the open file
    Database _database;
    bool _changed = false;
    bool _namesAreWhole = false;
    qint64 _generation = 0; // of the last commit
    struct Statements;
    std::unique_ptr<Statements> _statements; // before the database goes
};

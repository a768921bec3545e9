#pragma once

#include "files/FileStatus.h"
#include "model/OperationRequest.h"

// What the pane model and the commands ask of the file operations. Main thread; each call returns
// when the work has begun.
class OperationDesk {
public:
    virtual ~OperationDesk() = default;

    virtual void copyItems(const OperationRequest &request) = 0;
    virtual void moveItems(const OperationRequest &request) = 0;
    virtual void deleteItems(const OperationRequest &request) = 0;
    // Removes items for good; `seen`: what each of them was when the person agreed to that.
    virtual void deletePermanently(const OperationRequest &request,
                                   const QList<FileIdentity> &seen) = 0;
    virtual void newFolder(const OperationRequest &request) = 0;
    virtual void newFile(const OperationRequest &request) = 0; // an empty one, as a new folder
    virtual void renameItem(const OperationRequest &request) = 0;
    virtual void createAlias(const OperationRequest &request) = 0;
    virtual void duplicateItem(const QString &source, const QString &destination) = 0;
    // Each of the items beside itself, under a name that is free; there is no destination.
    virtual void duplicateItems(const OperationRequest &request) = 0;
    // Packs the items, all of one folder, into a zip archive in the destination folder. `replaced`:
    // what stands there already, as it was when the person agreed to lose it; anything else is
    // asked about.
    virtual void archiveItems(const QStringList &paths, const QString &destination,
                              const QString &archiveName,
                              const std::optional<FileStatus> &replaced = {}) = 0;
    virtual void unpackArchive(const QString &archive, const QString &destination) = 0;
};

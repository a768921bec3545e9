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
    virtual void newFolder(const OperationRequest &request) = 0;
    virtual void renameItem(const OperationRequest &request) = 0;
    virtual void createAlias(const OperationRequest &request) = 0;
    virtual void duplicateItem(const QString &source, const QString &destination) = 0;
    // Packs the items, all of one folder, into a zip archive in the destination folder. `replaced`:
    // what stands there already, as it was when the person agreed to lose it; anything else is
    // asked about.
    virtual void archiveItems(const QStringList &paths, const QString &destination,
                              const QString &archiveName,
                              const std::optional<FileStatus> &replaced = {}) = 0;
    virtual void unpackArchive(const QString &archive, const QString &destination) = 0;
};

#pragma once

#include "files/PathText.h"
#include "model/OperationDesk.h"

// Keeps what the operations were asked for, and does none of it.
class RecordedDesk final : public OperationDesk {
public:
    void copyItems(const OperationRequest &request) override { keep("copy", request); }
    void moveItems(const OperationRequest &request) override { keep("move", request); }
    void deleteItems(const OperationRequest &request) override { keep("delete", request); }
    void deletePermanently(const OperationRequest &request, const QList<FileIdentity> &) override
    {
        keep("delete permanently", request);
    }
    void newFolder(const OperationRequest &request) override { keep("new folder", request); }
    void newFile(const OperationRequest &request) override { keep("new file", request); }
    void renameItem(const OperationRequest &request) override { keep("rename", request); }
    void createAlias(const OperationRequest &request) override { keep("alias", request); }
    void duplicateItem(const QString &source, const QString &destination) override
    {
        keep("duplicate", { .source = source, .destination = destination });
    }
    void duplicateItems(const OperationRequest &request) override { keep("duplicates", request); }
    void archiveItems(const QStringList &paths, const QString &destination,
                      const QString &archiveName, const std::optional<FileStatus> &) override
    {
        keep("archive",
             { .destination = PathText::joined(destination, archiveName), .items = paths });
    }
    void unpackArchive(const QString &archive, const QString &destination) override
    {
        keep("unpack", { .source = archive, .destination = destination });
    }

    QStringList verbs;
    QList<OperationRequest> requests;

private:
    void keep(const char *verb, const OperationRequest &request)
    {
        verbs.append(QString::fromLatin1(verb));
        requests.append(request);
    }
};

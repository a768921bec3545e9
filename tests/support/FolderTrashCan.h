#pragma once

#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "tests/support/RecordedServices.h"

// Sees the folder that stands for the Trash, and puts back by what an item is.
struct FolderTrashCan final : TrashCan {
    explicit FolderTrashCan(const RecordedWorkspace &workspaceInUse)
        : workspace(workspaceInUse)
    {
    }

    QList<TrashedItem> items(QStringList *) override { return {}; }
    TrashEnd putBack(const TrashedItem &, Folders) override { return { TrashEnd::Failed }; }
    QList<TrashEnd> putBack(const QList<Gone> &items, Folders) override
    {
        QList<TrashEnd> ends;
        for (const Gone &gone : items)
            ends.append(putBackOne(gone));
        return ends;
    }
    TrashEnd remove(const TrashedItem &) override { return { TrashEnd::Failed }; }

private:
    TrashEnd putBackOne(const Gone &gone) const
    {
        DirectoryReader reader;
        std::optional<QByteArray> name;
        if (!reader.open(workspace.trashFolder))
            reader.read([&](const DirectoryItem &item) {
                const auto status = reader.status(item.name.data(), Links::NoFollow);
                if (status && status->identity == gone.trace.identity)
                    name = item.name.toByteArray();
                return !name;
            });
        if (!name)
            return { TrashEnd::Failed, u"It does not lie in the Trash any more."_s };
        const auto failed = FileSystem::renameNoReplace(
            PathText::joined(workspace.trashFolder, FileName::fromBytes(*name)), gone.origin);
        return failed ? TrashEnd { TrashEnd::Failed, QString::fromStdString(failed.message()) }
                      : TrashEnd();
    }

    const RecordedWorkspace &workspace;
};

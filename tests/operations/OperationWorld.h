#pragma once

#include "files/PathText.h"
#include "files/Waiting.h"
#include "model/FileQueries.h"
#include "operations/CopyMove.h"
#include "operations/SingleSteps.h"
#include "operations/Workers.h"
#include "platform/OpenDialogs.h"
#include "settings/DateText.h"
#include "settings/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/FoundContents.h"
#include "tests/support/ProgressSheetStub.h"
#include "tests/support/RecordedPrograms.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/TestTree.h"
#include "widgets/FileKinds.h"

enum class Verb { Copy, Move, Delete, NewFolder, NewFile, Rename, Alias, Duplicate };

// Where the destination lies.
enum class Device { Same, Other };

// Two folders, the operations over the real programs, and a person who answers by script.
struct World {
    TestFolder folder;
    TestFolder far { "/dev/shm" }; // another file system
    QString source = folder.path(u"from"_s);
    QString destination = folder.path(u"to"_s);
    QString trash = folder.path(u"trash"_s);
    AlertScript alerts;
    RecordedPrograms programs;
    RecordedWorkspace workspace;
    FileKinds kinds;
    Waiting waiting;
    FileQueries queries { workspace, kinds, waiting };
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
    DateText dates { defaults };
    ProgressSheetStub sheet;
    OpenDialogs openDialogs;
    CopyMove engine { alerts, programs, workspace, queries, dates };
    SingleSteps steps { alerts, programs, workspace, engine };
    OperationRecord record;
    Workers workers { openDialogs };

    explicit World(const QString &words = {}, Device device = Device::Same)
    {
        makeTree(folder, u"from/, trash/"_s);
        if (device == Device::Other)
            folder.link(far.path(), u"to"_s);
        makeTree(folder, u"to/, "_s + words);
        workspace.trashFolder = trash;
        engine.setProgressSheet(&sheet);
    }

    void start(Operation operation, const QStringList &items)
    {
        const AcceptedRequest run = request(items);
        const auto ticket = engine.queue().enqueue(items.join(u", "_s));
        workers.detach(operation, {}, [this, run, operation, ticket](OperationRecord &) {
            engine.performCopyMoveProgress(run, operation, ticket);
        });
    }
    void run(Operation operation, const QStringList &items)
    {
        start(operation, items);
        workers.drain();
    }
    // Without a thread.
    DoneItems runHere(Operation operation, const QStringList &items)
    {
        return engine.performCopyMoveProgress(request(items), operation,
                                              engine.queue().enqueue({}));
    }
    // An item of the source, and another name beside it where one is taken.
    void perform(Verb verb, const QString &name, const QString &newName = {})
    {
        const QString item = PathText::joined(source, name);
        const QString beside = PathText::joined(source, newName);
        switch (verb) {
        case Verb::Copy:
        case Verb::Move:
            return run(verb == Verb::Copy ? Operation::Copy : Operation::Move, { name });
        case Verb::Delete:
            record.done = steps.deleteItems(request({ name }));
            return;
        case Verb::NewFolder:
            return steps.newFolder(request({ name }), record);
        case Verb::NewFile:
            return steps.newFile(request({ name }), record);
        case Verb::Rename:
            return steps.renameItem({ item, beside, {}, Side::Left, UpdateBoth::No }, record);
        case Verb::Alias:
            record.done = steps.createAlias(request({ name }));
            return;
        case Verb::Duplicate:
            record.done = steps.duplicateItem(item, beside);
            return;
        }
    }
    AcceptedRequest request(const QStringList &items) const
    {
        return { source, destination, items, Side::Left, UpdateBoth::Yes };
    }
    QByteArray from(const QString &name) { return folder.read(u"from/"_s + name); }
    QByteArray to(const QString &name) { return folder.read(u"to/"_s + name); }
    // What lies in the two folders and in the Trash, and what was left hidden there too.
    QString tree() const { return treeOf(folder, { u"from"_s, u"to"_s, u"trash"_s }); }
    // Every byte string in any of its folders, where it can be seen.
    QSet<QByteArray> contents() const
    {
        QSet<QByteArray> seen;
        const auto found = FoundContents::placesBelow({ folder.path(), far.path() });
        for (const auto &[content, place] : found.asKeyValueRange())
            if (FoundContents::hiddenFolder(place).isEmpty())
                seen += content;
        return seen;
    }
    // Hidden siblings that were left behind.
    int leftovers() { return int(folder.names(u"to"_s).filter(u".twinleaf-"_s).size()); }
};

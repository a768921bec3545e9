#pragma once

#include "model/Launching.h"
#include "model/MainModel.h"
#include "operations/FileOperations.h"
#include "tests/operations/OperationWorld.h"
#include "tests/support/ArchiveSheetStub.h"
#include "tests/support/PaneWindowStub.h"

// The operations between two panes, and what was listed again.
struct Desk : World {
    explicit Desk(const QString &words = {})
        : World(words)
    {
        model.setWindowController(&window);
        model.setTwinleaf(&operations);
        window.paths = { source, destination };
        operations.setMainModel(&model);
        operations.setWindowController(&window, &sheet);
        operations.setArchiveSheet(&archiveSheet);
        bus.subscribe(DirectoryChanged, this, &Desk::note);
    }
    ~Desk() { bus.unsubscribe(this); }
    void note(Side side, const FolderChange &change)
    {
        window.tables[side].rows = int(model.rows(side).size());
        listed.append((side == Side::Left ? u"left "_s : u"right "_s)
                      + PathText::lastComponent(change.path));
    }

    MessageBus bus;
    Launching launching { workspace, alerts };
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    PaneWindowStub window;
    ArchiveSheetStub archiveSheet;
    FileOperations operations { bus, alerts, programs, workspace, queries, dates, openDialogs };
    QStringList listed;
};

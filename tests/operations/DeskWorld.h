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
        operations.setMainModel(&model);
        operations.setWindowController(&window, &sheet);
        operations.setArchiveSheet(&archiveSheet);
        bus.subscribe(DirectoryChanged, this, &Desk::note);
        show(source, destination);
    }
    ~Desk() { bus.unsubscribe(this); }
    void show(const QString &left, const QString &right)
    {
        window.paths = { left, right };
        for (const Side side : { Side::Left, Side::Right })
            bus.post(DirectoryChanged[side], { window.paths[side] });
        listed.clear();
    }
    void note(Side side, const FolderChange &change)
    {
        window.tables[side].rows = int(model.rows(side).size());
        listed.append((side == Side::Left ? u"left "_s : u"right "_s)
                      + PathText::lastComponent(change.path));
    }

    QStringList listed;
    MessageBus bus;
    Launching launching { workspace, alerts, waiting };
    MainModel model { bus, defaults, alerts, queries, launching, kinds, waiting };
    PaneWindowStub window;
    ArchiveSheetStub archiveSheet;
    FileOperations operations { bus, alerts, programs, workspace, queries, dates, openDialogs };
};

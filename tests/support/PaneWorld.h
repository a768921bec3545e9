#pragma once

#include "model/FileQueries.h"
#include "model/Launching.h"
#include "model/MainModel.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/PaneWindowStub.h"
#include "tests/support/RecordedDesk.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "widgets/FileKinds.h"

// The pane model over real folders, with a person and a desktop by script.
struct ModelWorld {
    TestFolder folder;
    TestFolder settings;
    UserDefaults defaults { settings.path(QStringLiteral("settings.plist")) };
    MessageBus bus;
    AlertScript alerts;
    RecordedWorkspace workspace;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    Launching launching { workspace, alerts };
    MainModel model { bus, defaults, alerts, queries, launching, kinds };

    int row(const QString &name, Side side = Side::Left) const
    {
        return int(model.rows(side).rowOfName(name));
    }
    QString name(int row, Side side = Side::Left) const { return model.rows(side)[row].name(); }
    QStringList names(Side side = Side::Left) const
    {
        QStringList names;
        for (int row = 0; row < model.rows(side).size(); ++row)
            names.append(name(row, side));
        return names;
    }
    QString shown(Side side = Side::Left) const { return model.rows(side).folder(); }
};

// In a window without widgets, whose tables follow the model.
struct PaneWorld : ModelWorld {
    PaneWindowStub window;
    RecordedDesk desk;

    PaneWorld()
    {
        model.setWindowController(&window);
        model.setTwinleaf(&desk);
        QObject::connect(&model, &MainModel::rowsChanged, &model, [this](Side side) {
            window.tables[side].rows = int(model.rows(side).size());
        });
    }
    // A folder of the test's, or the one they all lie in.
    void show(Side side, const QString &name = {}, const std::optional<QString> &item = {})
    {
        window.paths[side] = name.isEmpty() ? folder.path() : folder.path(name);
        bus.post(DirectoryChanged[side], { .path = window.paths[side], .item = item });
    }
};

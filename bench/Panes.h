#pragma once

#include "bench/OwnHome.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "operations/Twinleaf.h"
#include "platform/Alerts.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/OpenDialogs.h"
#include "settings/UserDefaults.h"
#include "sheets/ArchiveSheet.h"
#include "sheets/WorkingSheet.h"
#include "views/TableViewDataSources.h"
#include "widgets/FileKinds.h"

#include <QCoreApplication>
#include <QHBoxLayout>

#include <cstdio>
#include <cstdlib>

// Nobody is there: a question means that something went wrong, and the figure with it.
class NoAlerts final : public Alerts {
public:
    Alert::Answer ask(const Alert &alert) override
    {
        std::fprintf(stderr, "%s\n", qUtf8Printable(alert.text));
        std::_Exit(1);
    }
};

// Both real panes side by side over the real pane model and the real operations.
class Panes final : public QWidget, public PaneWindow {
public:
    explicit Panes(const OwnHome &home)
        : defaults(home.path(QStringLiteral("settings.plist")))
    {
        auto *layout = new QHBoxLayout(this);
        layout->addWidget(&left);
        layout->addWidget(&right);
        resize(1120, 700);
        model.setWindowController(this);
        model.setTwinleaf(&twinleaf);
        twinleaf.setMainModel(&model);
        twinleaf.setWindowController(this, &workingSheet);
        twinleaf.setArchiveSheet(&archiveSheet);
        model.awakeFromNib();
        leftSource.awakeFromNib();
        rightSource.awakeFromNib();
        left.setFocus();
        show();
        QCoreApplication::processEvents();
    }

    void open(const QString &folder) { bus.post(DirectoryChanged.left, { .path = folder }); }
    void paint() { left.viewport()->repaint(); }

    PaneTable &getTableView(Side side) override
    {
        return side == Side::Left ? static_cast<PaneTable &>(left) : right;
    }
    PaneTable *getFirstResponderTableView() override { return &left; }
    PaneTable *getOtherResponderTableView() override { return &right; }
    QString getCurrentPathFromSegmentedControl(Side side) const override
    {
        return model.rows(side).folder();
    }
    int getSelectedSegmentFromSegmentedControl(Side) const override { return 0; }
    QString completeNavigatorPath(Side side) const override { return model.rows(side).folder(); }
    bool isItemInNavigatorPath(const QString &, Side) const override { return false; }
    void setMenuItemShowHiddenItems(const QString &) override { }
    QString getStringFromInputSheet(const QString &, const QString &) override { return {}; }
    void setProgressIndicator(bool) override { }
    void updateMainWindow() override { }

    UserDefaults defaults;
    MessageBus bus;
    OpenDialogs openDialogs;
    NoAlerts alerts;
    DesktopPrograms programs;
    DesktopWorkspace workspace;
    FileKinds kinds;
    Twinleaf twinleaf { bus, defaults, alerts, programs, workspace, kinds, openDialogs };
    MainModel model { bus, defaults, alerts, twinleaf, twinleaf, kinds };
    TableViewLeft left { bus, model, defaults };
    TableViewRight right { bus, model, defaults };
    TableViewDataSourceLeft leftSource { left, model, bus, defaults };
    TableViewDataSourceRight rightSource { right, model, bus, defaults };
    WorkingSheet workingSheet { bus, this };
    ArchiveSheet archiveSheet { bus, this };
};

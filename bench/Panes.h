#pragma once

#include "app/Application.h"
#include "bench/OwnHome.h"
#include "platform/Alerts.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/PolkitAuthorization.h"
#include "platform/OpenDialogs.h"
#include "platform/OpenPanel.h"
#include "platform/VersionServer.h"
#include "search/LocalMetadataIndex.h"
#include "settings/UserDefaults.h"
#include "views/TableViews.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

// Nobody is there: an alert means that something went wrong, and the figure with it.
class NoAlerts final : public Alerts {
public:
    bool agrees = false; // to overwriting: "All"

    Alert::Answer ask(const Alert &alert) override
    {
        if (agrees && alert.buttons.size() == 3)
            return Alert::All;
        std::fprintf(stderr, "%s\n", qUtf8Printable(alert.text));
        std::_Exit(1);
    }

private:
    void setSilent(bool) override { }
};

class NoOpenPanel final : public OpenPanel {
public:
    std::optional<QString> chooseApplication() override { return {}; }
    std::optional<QString> chooseFolder(const QString &) override { return {}; }
};

class NoVersionServer final : public VersionServer {
public:
    bool fetch(const QString &, const std::function<void(std::optional<QByteArray>)> &) override
    {
        return false;
    }
};

// The whole program over real folders, on the real machine but for the person and the network.
class Panes final {
public:
    explicit Panes(const OwnHome &home)
        : defaults(home.path(QStringLiteral("settings.plist")))
    {
        application.start();
        QCoreApplication::processEvents();
    }

    void open(const QString &folder) { bus.post(DirectoryChanged.left, { .path = folder }); }
    void paint() { left.viewport()->repaint(); }

    UserDefaults defaults;
    OpenDialogs openDialogs;
    NoAlerts alerts;
    NoOpenPanel openPanel;
    DesktopPrograms programs;
    DesktopWorkspace workspace;
    NoVersionServer versionServer;
    PolkitAuthorization authorization { openDialogs };
    LocalMetadataIndex metadataIndex { defaults, nullptr };
    Application application { { defaults, openDialogs, alerts, openPanel, programs, workspace,
                                versionServer, authorization, metadataIndex } };
    MessageBus &bus = application.bus();
    Twinleaf &twinleaf = application.twinleaf();
    MainModel &model = application.mainModel();
    PaneTableView &left = application.fileList(Side::Left);
    PaneTableView &right = application.fileList(Side::Right);
};

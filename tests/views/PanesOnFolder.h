#pragma once

#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "platform/Alerts.h"
#include "platform/FileKinds.h"
#include "platform/UserDefaults.h"
#include "tests/support/RecordedWorkspace.h"
#include "util/FileQueries.h"
#include "util/Launching.h"
#include "views/TableViewDataSources.h"

#include <QFile>
#include <QHBoxLayout>
#include <QTemporaryDir>
#include <QtTest>

// Answers "No" to every question, so that a request ends in the pane model.
class RefusingAlerts final : public Alerts {
public:
    Alert::Answer ask(const Alert &) override { return Alert::No; }
};

// Both real panes side by side over the real pane model, on one folder of files of growing size.
class PanesOnFolder final : public QWidget, public PaneWindow {
public:
    explicit PanesOnFolder(const QStringList &names)
    {
        auto *layout = new QHBoxLayout(this);
        layout->addWidget(&left);
        layout->addWidget(&right);
        resize(900, 400);
        qsizetype size = 1;
        for (const QString &name : names) {
            QFile file(folder.filePath(name));
            if (file.open(QIODevice::WriteOnly))
                file.write(QByteArray(size++, 'x'));
        }
    }

    void start()
    {
        model.setWindowController(this);
        for (const Side side : { Side::Left, Side::Right })
            model.setStartFolder(side, { .path = folder.path() });
        model.awakeFromNib();
        leftSource.awakeFromNib();
        rightSource.awakeFromNib();
        show();
        left.setFocus();
        QVERIFY(QTest::qWaitForWindowExposed(this));
    }

    PaneTableView &table(Side side)
    {
        return side == Side::Left ? static_cast<PaneTableView &>(left) : right;
    }
    QString name(Side side, int row) const { return model.rows(side)[row].name(); }
    QStringList names(Side side) const
    {
        QStringList all;
        for (qsizetype row = 0; row < model.rows(side).size(); ++row)
            all.append(model.rows(side)[row].name());
        return all;
    }

    PaneTable &getTableView(Side side) override { return table(side); }
    PaneTable *getFirstResponderTableView() override
    {
        return right.hasFocus() ? &table(Side::Right) : &table(Side::Left);
    }
    PaneTable *getOtherResponderTableView() override
    {
        return right.hasFocus() ? &table(Side::Left) : &table(Side::Right);
    }
    QString getCurrentPathFromSegmentedControl(Side) const override { return folder.path(); }
    int getSelectedSegmentFromSegmentedControl(Side) const override { return 0; }
    QString completeNavigatorPath(Side) const override { return folder.path(); }
    bool isItemInNavigatorPath(const QString &, Side) const override { return false; }
    void setMenuItemShowHiddenItems(const QString &) override { }
    QString getStringFromInputSheet(const QString &, const QString &) override { return {}; }
    void setProgressIndicator(bool) override { }
    void updateMainWindow() override { }

    QTemporaryDir folder;
    QTemporaryDir settings;
    UserDefaults defaults { settings.filePath(QStringLiteral("settings.plist")) };
    MessageBus bus;
    RefusingAlerts alerts;
    RecordedWorkspace workspace;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    Launching launching { workspace, alerts };
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    TableViewLeft left { bus, model, defaults };
    TableViewRight right { bus, model, defaults };
    TableViewDataSourceLeft leftSource { left, model, bus, defaults };
    TableViewDataSourceRight rightSource { right, model, bus, defaults };
};

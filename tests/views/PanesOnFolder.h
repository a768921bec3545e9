#pragma once

#include "tests/support/PaneWorld.h"
#include "views/TableViewDataSources.h"

#include <QHBoxLayout>
#include <QtTest>

// Both real panes side by side over the real pane model, on one folder of files of growing size.
// The person says "No" to everything, so that a request ends in the pane model.
class PanesOnFolder : public QWidget, public PaneWindowStub, public ModelWorld {
public:
    explicit PanesOnFolder(const QStringList &names)
    {
        auto *layout = new QHBoxLayout(this);
        layout->addWidget(&left);
        layout->addWidget(&right);
        resize(900, 400);
        paths = { folder.path(), folder.path() };
        qsizetype size = 1;
        for (const QString &name : names)
            folder.write(name, QByteArray(size++, 'x'));
        alerts.decide = [](const Alert &) { return Alert::No; };
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
    PaneTable &getTableView(Side side) override { return table(side); }
    PaneTable *getFirstResponderTableView() override
    {
        return right.hasFocus() ? &table(Side::Right) : &table(Side::Left);
    }
    PaneTable *getOtherResponderTableView() override
    {
        return right.hasFocus() ? &table(Side::Left) : &table(Side::Right);
    }

    TableViewLeft left { bus, model, defaults };
    TableViewRight right { bus, model, defaults };
    TableViewDataSourceLeft leftSource { left, model, bus, defaults };
    TableViewDataSourceRight rightSource { right, model, bus, defaults };
};

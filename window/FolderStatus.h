#pragma once

#include "files/VolumeSpace.h"
#include "model/ListingTotals.h"
#include "model/Side.h"

#include <QObject>
#include <QSet>
#include <QTimer>

class DiskQuestions;
class ElidedLabel;
class MainModel;

// The fields of one pane's status line.
struct FolderStatusFields {
    ElidedLabel *contents = nullptr;
    ElidedLabel *space = nullptr;
};

// What a folder holds: "12 folders, 340 files, 1.2 GB".
QString textOf(const ListingTotals &totals);
// While a filter leaves some of them out: "12 of 340 items".
QString textOfFiltered(qsizetype shown, qsizetype items);
// The room on a volume: "53.1 GB free of 233 GB".
QString textOf(const VolumeSpace &space);

// The line below each pane: what its folder holds, and how much room its volume has. The room is
// asked for again while the window is the one that is worked in. Main thread.
class FolderStatus final : public QObject {
    Q_OBJECT

public:
    FolderStatus(const PerSide<FolderStatusFields> &fields, const MainModel &mainModel,
                 DiskQuestions &questions, QWidget &window);

protected:
    bool eventFilter(QObject *window, QEvent *event) override;

private:
    void rowsChanged(Side side);
    void askForSpace(const QString &folder);
    void askForBoth();
    void show(const QString &folder, const std::optional<VolumeSpace> &space);

    const PerSide<FolderStatusFields> _fields;
    const MainModel &mainModel;
    DiskQuestions &questions;
    QWidget &window;
    PerSide<QString> _folders; // that the lines tell of
    PerSide<quint64> _generations {}; // of the listings they were last asked for
    PerSide<QTimer> _outdated; // the room on the volume before
    QSet<QString> _asked; // folders for whose volume nobody has answered yet
    QSet<QString> _toAskAgain; // of those: something changed meanwhile
    QTimer _next;
};

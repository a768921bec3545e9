#pragma once

#include "files/Readings.h"
#include "model/Messages.h"

#include <QObject>
#include <QSet>

#include <atomic>
#include <memory>

class FileQueries;
class InfoBars;
class MainModel;

// A folder's total size in the info bar, on request. Main thread.
class FolderSize final : public QObject {
    Q_OBJECT

public:
    FolderSize(MessageBus &bus, const MainModel &mainModel, const FileQueries &queries,
               InfoBars &infoBars);
    ~FolderSize() override;

    // Gives up what is still being counted; false when a thread does not come back from a server
    // that is gone.
    bool end(QDeadlineTimer deadline = QDeadlineTimer(Readings::Patience));

    void showFolderSize(Side side, const RowsOfPane &rows);

private:
    MessageBus &bus;
    const MainModel &mainModel;
    const FileQueries &queries;
    InfoBars &infoBars;
    PerSide<QSet<QString>> _counting; // the folders
    Readings _readings;
    // Set by the main thread, read by the counting threads, of which one may outlive this.
    const std::shared_ptr<std::atomic<bool>> _stop = std::make_shared<std::atomic<bool>>(false);
};

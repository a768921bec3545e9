#pragma once

#include "sheets/trash/TrashModel.h"
#include "sheets/trash/TrashWork.h"

#include <memory>

class Alerts;
class OpenDialogs;
class QWidget;
class TrashSheet;

// Go > Trash: lists what lies in the Trash, puts it back and removes it for good. Main thread.
class TrashController final : public QObject {
    Q_OBJECT

public:
    TrashController(TrashCan &trash, const DateText &dates, const FileKinds &kinds, Alerts &alerts,
                    OpenDialogs &openDialogs, QWidget *mainWindow);
    ~TrashController() override;

    void showTrashSheet();
    bool end(QDeadlineTimer deadline); // false when a thread does not come back

Q_SIGNALS:
    // Items came back while the sheet was open: the panes may lack them.
    void itemsPutBack();

private:
    void reload();
    void putBack();
    void putBack(const QList<TrashedItem> &items, TrashCan::Folders folders);
    void afterPutBack(const TrashWork::End &end);
    void remove();
    void empty();
    void remove(const QList<TrashedItem> &items);
    bool isAgreedTo(const QString &question, const QString &details);

    Alerts &alerts;
    OpenDialogs &openDialogs;
    QWidget *mainWindow; // not owned
    TrashModel _rows;
    std::unique_ptr<TrashSheet> sheet; // while it is open
    TrashWork _work;
    bool _havePutBack = false; // since the sheet was opened
};

#pragma once

#include "model/OperationRequest.h"
#include "views/DropDecision.h"

struct Alert;
class Alerts;
class FileQueries;
class MainModel;
class OperationDesk;

// Files that come from anywhere into a folder, dropped or pasted: the questions about them, and one
// request for each folder that they lie in. Main thread.
class IncomingItems final {
public:
    IncomingItems(const MainModel &mainModel, const FileQueries &queries, OperationDesk &twinleaf,
                  Alerts &alerts);

    // Those that lie in the destination already, under whatever name of it, and the others. Nothing
    // when the question was given up, or when they lie in more folders than can be worked on.
    struct Parted {
        QList<DroppedItems> own {};
        QList<DroppedItems> others {};
    };
    std::optional<Parted> parted(const QList<DroppedItems> &folders,
                                 const QString &destination) const;
    // Asks where the person wants it so.
    bool isAgreed(DropDecision::Work work, const QList<DroppedItems> &folders,
                  const QString &destination) const;
    // `cut`: as a request has it.
    void carryOut(DropDecision::Work work, const QList<DroppedItems> &folders,
                  const QString &destination, Side side, UpdateBoth update, unsigned cut = 0) const;

private:
    Alert confirmation(DropDecision::Work work, const QList<DroppedItems> &folders,
                       const QString &destination) const;

    const MainModel &mainModel;
    const FileQueries &queries;
    OperationDesk &twinleaf;
    Alerts &alerts;
};

#pragma once

#include "files/FileStatus.h"
#include "model/OperationRequest.h"

#include <QList>

#include <functional>

class Alerts;
class Journal;
class Staging;
class Workspace;

// Takes items away for good, after the person has agreed to it. A folder leaves its name first, in
// one step: then nobody comes upon the half of it, and what a crash leaves of it is settled by the
// next start. Worker threads.
class PermanentRemoval final {
public:
    PermanentRemoval(Alerts &alerts, Workspace &workspace, const Journal &journal);

    // `seen`: what each item was when the person was asked; any other one at its name stays.
    // Nothing goes when one of them must not. What failed is told by one alert.
    void removeItems(const OperationRequest &request, const QList<FileIdentity> &seen,
                     const std::function<bool()> &isCancelled);

private:
    QStringList refusals(const OperationRequest &request) const;
    // Why it was not removed, as a sentence for a person; "" when it was.
    QString remove(int folder, Staging &staging, const QByteArray &name,
                   const FileIdentity &seen) const;
    QString removeFolder(int folder, Staging &staging, const QByteArray &name,
                         const FileIdentity &seen) const;

    Alerts &alerts;
    Workspace &workspace;
    const Journal &journal;
};

#pragma once

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "operations/CopyMove.h"

#include <QElapsedTimer>

// One run of the engine, from its turn to its end.
struct CopyMove::Run {
    const AcceptedRequest &request;
    Operation operation;
    QString first; // decides for every item whether the sheet comes up at once
    Transfer &transfer;
    QElapsedTimer since {};
    QElapsedTimer sinceTold {}; // the sheet
    int counter = 1;
    bool allOverride = false; // "All" was answered
    std::optional<bool> firstIsLong {};
    QStringList staying {}; // lines about what was left behind
    DoneItems done {}; // into folders at the destination

    bool copies() const { return operation == Operation::Copy; }
    QString source(const QString &name) const { return PathText::joined(request.source, name); }
    QString target(const QString &name) const
    {
        return PathText::joined(request.destination, name);
    }
    QString progressLine(const QString &name) const
    {
        return filled(copies() ? localized("Copying '%@'") : localized("Moving '%@'"),
                      FileName::shown(name));
    }
    QString failureLine(const QString &name) const
    {
        return filled(copies() ? localized("Copy progress of '%@' failed!")
                               : localized("Move progress of '%@' failed!"),
                      FileName::shown(name));
    }
    QString endLine() const
    {
        return copies() ? localized("Copy progress finished.")
                        : localized("Move progress finished.");
    }
};

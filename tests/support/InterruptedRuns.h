#pragma once

#include "operations/InterruptedRuns.h"

// As the next start of the program does.
inline QStringList settleInterruptedRuns(const Journal &journal, Workspace &workspace)
{
    QStringList told;
    for (const auto &note : journal.abandoned())
        settleInterruptedRun(*note, workspace, [&told](const QString &line) { told += line; });
    return told;
}

#pragma once

#include "operations/InterruptedRuns.h"

// As the next start of the program does.
inline QStringList settleInterruptedRuns(const Journal &journal, Workspace &workspace)
{
    QStringList told;
    for (const auto &note : journal.abandoned())
        told += settleInterruptedRun(*note, workspace);
    return told;
}

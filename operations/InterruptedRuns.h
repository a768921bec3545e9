#pragma once

#include "files/Journal.h"

#include <functional>

class Workspace;

// The folders that settling the run of a note has to look into; the one with its targets first.
QStringList foldersOfRun(const Journal::Note &note);

// Settles what the run of a note, of an earlier program ended by force, has left beside its
// targets, and tells a line about each item when it is done: what was taken back, what is in the
// Trash, what stands where. A note of folders that are not there now, as with another volume in
// their place, waits for a later start. Any thread.
void settleInterruptedRun(Journal::Note &note, Workspace &workspace,
                          const std::function<void(const QString &line)> &tell);

#pragma once

#include <QStringList>

class Journal;
class Workspace;

// Settles what runs of an earlier program, ended by force, have left beside their targets, and
// answers a line about each item: what was taken back, what is in the Trash, what stands where.
// Notes of folders that are not there now, as with another volume in their place, wait for a later
// start. Any thread.
QStringList settleInterruptedRuns(const Journal &journal, Workspace &workspace);

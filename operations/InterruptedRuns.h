#pragma once

#include "files/Journal.h"

class Workspace;

// The folders that settling the run of a note has to look into; the one with its targets first.
QStringList foldersOfRun(const Journal::Note &note);

// Settles one of the runs below.
QStringList settleInterruptedRun(Journal::Note &note, Workspace &workspace);

// Settles what runs of an earlier program, ended by force, have left beside their targets, and
// answers a line about each item: what was taken back, what is in the Trash, what stands where.
// Notes of folders that are not there now, as with another volume in their place, wait for a later
// start. Any thread.
QStringList settleInterruptedRuns(const Journal &journal, Workspace &workspace);

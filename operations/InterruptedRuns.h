#pragma once

#include "files/Journal.h"

class Workspace;

// The folders that settling the run of a note has to look into; the one with its targets first.
QStringList foldersOfRun(const Journal::Note &note);

// Settles what a run of an earlier program, ended by force, has left beside its targets, and
// answers a line about each item: what was taken back, what is in the Trash, what stands where. A
// note of a folder that is not there now, as with another volume in its place, waits for a later
// start. Any thread.
QStringList settleInterruptedRun(Journal::Note &note, Workspace &workspace);

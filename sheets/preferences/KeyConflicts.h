#pragma once

#include "views/ClassicKeys.h"

// What stands against the key chosen for an action, as a short sentence: another action or a menu
// has it, or it never reaches the lists. "" when nothing does.
QString keyConflict(ClassicAction action, const ClassicKeys &keys);

QString nameOfAction(ClassicAction action);

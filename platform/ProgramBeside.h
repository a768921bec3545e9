#pragma once

#include <QByteArray>

// A helper program of ours, which no person starts: its path in the folder of helpers that belongs
// to this program's place (as it is installed), else beside this program (as it is built, and a
// helper's own neighbours), else the name alone, for where programs lie.
QByteArray programBeside(const QByteArray &name);

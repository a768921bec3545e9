#pragma once

#include "model/MainModel.h"
#include "model/Side.h"

#include <optional>

// What the program was started with.
struct CommandLine {
    enum class Task { Run, SelfTest, Help, Version, Wrong };

    Task task = Task::Run;
    QString complaint {}; // of a wrong command line, without a line end
    PerSide<std::optional<MainModel::StartFolder>> folders {};
};

// Reads [LEFT [RIGHT]] and the options. A folder that cannot be shown is told on standard error and
// becomes the home folder; a file becomes its folder with the file selected.
CommandLine readCommandLine(int count, const char *const *arguments);

// The text of --help.
QString usageText();

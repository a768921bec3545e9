#pragma once

#include "model/MainModel.h"
#include "model/Side.h"

#include <optional>

// What the program was started with.
struct CommandLine {
    enum class Task { Run, SelfTest, Help, Version, Wrong };

    Task task = Task::Run;
    QString complaint {}; // of a wrong command line, or of what is left out; without a line end
    PerSide<std::optional<QString>> folders {}; // absolute paths
};

// Reads [LEFT [RIGHT]] and the options; asks no disk.
CommandLine readCommandLine(int count, const char *const *arguments);

// A line on standard error.
void complain(const QString &text);

// What a pane shows for a path of the command line. One that cannot be shown is told on standard
// error and becomes the home folder; a file becomes its folder with the file selected. Any thread.
MainModel::StartFolder startFolder(const QString &path);

// The text of --help.
QString usageText();

#pragma once

#include "files/FileStatus.h"

#include <QStringList>

// The words by which the program with root's rights is asked for what a command would do; nothing
// for any other command, and none about a file that is not known (see rights/Request.h).
std::optional<QStringList> helperWords(const QString &command, const QStringList &arguments,
                                       const std::optional<FileIdentity> &item);

#pragma once

#include "platform/AuthorizationServices.h"

// The words by which the program with root's rights is asked for what a command would do; nothing
// for any other command, and none about a file or process that is not known (see rights/Request.h).
std::optional<QStringList> helperWords(const QString &command, const QStringList &arguments,
                                       const CommandSubject &subject);

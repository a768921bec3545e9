#pragma once

#include "files/FileStatus.h"
#include "model/OperationRecord.h"

#include <functional>

// Why an item may not be put at a target at all: onto itself, into itself, over what holds it, over
// what is locked; a null text when it may. `given` is what is there to be put, `standing` what
// stands at the target. Any worker thread.
QString refusalOf(const QString &source, const std::optional<FileStatus> &given,
                  const QString &target, const std::optional<FileStatus> &standing,
                  Operation operation);

// Why the items of a request may not be taken away at all, a line each; `byTrash` is what the Trash
// has against a name, "" for nothing. Any worker thread.
QStringList removalRefusals(const OperationRequest &request,
                            const std::function<QString(const QString &name)> &byTrash);

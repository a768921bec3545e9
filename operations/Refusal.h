#pragma once

#include "files/FileStatus.h"
#include "model/OperationRecord.h"

// Why an item may not be put at a target at all: onto itself, into itself, over what holds it, over
// what is locked; a null text when it may. `given` is what is there to be put, `standing` what
// stands at the target. Any worker thread.
QString refusalOf(const QString &source, const std::optional<FileStatus> &given,
                  const QString &target, const std::optional<FileStatus> &standing,
                  Operation operation);

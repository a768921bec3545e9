#pragma once

#include <QByteArray>
#include <QString>

// The first bytes of a regular file, links followed; empty for anything else. Never waits for a
// FIFO. Any thread.
QByteArray startOfFile(const QString &path, qint64 limit);

#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

// Paths as file: URLs with every byte kept, which QUrl does not (RFC 8089, RFC 3986). Any thread.
namespace FileUrls {

// The normalized path of one URL; nothing for what is no file of this machine.
std::optional<QString> pathOf(const QByteArray &url);

// A "text/uri-list" (RFC 2483): one URL a line.
QByteArray uriList(const QStringList &paths);

// What such a list holds, line by line.
struct Sorted {
    QStringList paths {}; // of files of this machine
    QList<QByteArray> others {}; // URLs that are none, as they stand
};
Sorted sorted(const QByteArray &uriList);

// The paths of such a list; nothing when it holds none, or anything that is no file of this
// machine.
std::optional<QStringList> pathsOf(const QByteArray &uriList);

} // namespace FileUrls

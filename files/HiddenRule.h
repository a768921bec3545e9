#pragma once

#include "files/FileFlags.h"

#include <optional>

// Which items of one folder are hidden: those with a dot in front, "Temporary Items", those that
// the folder's ".hidden" file names, and those marked invisible. One thread.
class HiddenRule final {
public:
    explicit HiddenRule(QString folder);

    bool hidesName(QByteArrayView name); // reads the file when a name first needs it
    // The names that such a file lists, one a line.
    static QSet<QByteArray> listedIn(const QByteArray &hiddenFile);
    static bool hides(const FileFlags::Marks &marks) { return marks.invisible; }

private:
    QString _folder;
    std::optional<QSet<QByteArray>> _listed; // at most 1 MiB is read
};

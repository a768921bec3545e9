#pragma once

#include "files/Descriptor.h"
#include "files/FileStatus.h"

#include <QString>

#include <memory>
#include <system_error>

// An item that is kept hold of: it stays this one, whatever its name leads to by now. Neither read
// nor written by that, so anything can be held. Any thread; all of it may wait for the disk.
class HeldItem final {
public:
    // What the path leads to; nothing where that cannot be looked at, `why` then says so.
    static std::shared_ptr<const HeldItem> at(const QString &path, Links links,
                                              std::error_code &why);

    const FileStatus &status() const { return _status; } // when it was taken hold of
    std::optional<FileStatus> statusNow() const;
    bool isOnReadOnlyDisk() const;
    bool isLocked() const; // now; see FileFlags

    int number() const { return _descriptor.number(); }
    // Leads to the item under any name, in this process alone.
    QString ownPath() const;
    // Where it lies now; "" when its name there was removed.
    QString presentPath() const;

private:
    HeldItem(Descriptor descriptor, const FileStatus &status)
        : _descriptor(std::move(descriptor))
        , _status(status)
    {
    }

    Descriptor _descriptor;
    FileStatus _status;
};

#pragma once

#include "files/Descriptor.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <memory>
#include <system_error>

// The bytes of a regular file of any size. It is held open: whatever its name leads to by now,
// these are read, and only read. The file may grow or be cut meanwhile; what is not there any more
// is just not read. Any thread but the main one: all of it may wait for the disk.
class FileBytes final {
public:
    enum class Refusal { None, Folder, Pipe, Socket, Device, Error };
    struct Opened {
        std::shared_ptr<const FileBytes> file; // none when refused
        Refusal refusal = Refusal::None;
        std::error_code error {}; // of Refusal::Error
    };
    // Links are followed. What is no regular file is not even opened: that alone can do something.
    static Opened open(const QString &path);

    qint64 size() const; // now, as far as there are bytes
    // Fewer than `length` at the end of the file, and where the disk cannot read it, which `error`
    // then tells.
    QByteArray read(qint64 offset, qint64 length, std::error_code *error = nullptr) const;
    // The same into memory of the caller's; answers how many there were.
    qint64 readInto(char *bytes, qint64 offset, qint64 length,
                    std::error_code *error = nullptr) const;
    // The next bytes that were ever written, from `offset` on: around them stand zeros that take no
    // room. Empty, at the end of the file, when there are none.
    struct Range {
        qint64 start = 0;
        qint64 end = 0;
    };
    Range nextWritten(qint64 offset) const;

    // Leads to this file under any name, in this process alone, as long as it is held.
    QString ownPath() const;

private:
    explicit FileBytes(Descriptor descriptor)
        : _descriptor(std::move(descriptor))
    {
    }
    void takeUnsized();

    Descriptor _descriptor;
    QByteArray _unsized; // of one that the system makes up when it is read, and gives no size
    // Some of those give one that is too large: that size, and where the bytes really ended.
    mutable std::atomic<qint64> _claimed { -1 };
    mutable std::atomic<qint64> _realEnd { 0 };
};

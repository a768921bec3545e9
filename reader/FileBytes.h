#pragma once

#include "files/Descriptor.h"

#include <QByteArray>

// The bytes of a file that was handed over, open. What it holds may change while one reads; who
// maps it dies of a file that becomes shorter, which costs that file.
class FileBytes final {
public:
    static constexpr qint64 MapLimit = qint64(1) << 30;

    explicit FileBytes(Descriptor file);
    ~FileBytes();
    FileBytes(const FileBytes &) = delete;
    FileBytes &operator=(const FileBytes &) = delete;

    bool isRegular() const { return _isRegular; }
    qint64 size() const { return _size; }
    // At most that many bytes from there on; less at the end, none after a failure.
    QByteArray read(qint64 at, qint64 count) const;
    // All of it, as long as this lives; empty when it is empty, larger than MapLimit or cannot be
    // mapped.
    QByteArrayView mapped();

private:
    Descriptor _file;
    bool _isRegular = false;
    qint64 _size = 0;
    void *_map = nullptr;
};

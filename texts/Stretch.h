#pragma once

#include "texts/TextLines.h"

#include <memory>
#include <system_error>
#include <vector>

class FileBytes;

// How a file is shown.
struct TextForm {
    TextEncoding encoding {};
    TextLines::End end = TextLines::End::LineFeed;
    bool asBytes = false; // rows of digits, whatever the text
    friend bool operator==(const TextForm &, const TextForm &) = default;
};

// A few lines of a file, with the bytes that they are made of. A value.
class Stretch final {
public:
    Stretch() = default;

    // Reads the line at `offset`, and at least so many before and behind it as there are.
    // Worker thread.
    static Stretch read(const FileBytes &file, const TextForm &form, qint64 offset, int before,
                        int behind);

    qint64 fileSize() const { return _fileSize; } // when it was read
    std::error_code error() const { return _error; } // why there is less than the file says
    int lineCount() const { return std::max(int(_starts.size()) - 1, 0); }
    qint64 start(int line) const { return _starts[std::size_t(line)]; }
    qint64 end(int line) const { return start(line + 1); }
    QByteArrayView bytes(int line) const;
    bool isAtStart() const { return _starts.empty() || _starts.front() == 0; }
    bool isAtEnd() const { return _starts.empty() || _error || _starts.back() >= _fileSize; }
    // The line that the byte is in; at the end of the file, the last one. -1 when it is not here.
    int lineOf(qint64 offset) const;

private:
    void readRows(const FileBytes &file, qint64 offset, int before, int behind);
    void readLines(const FileBytes &file, const TextForm &form, qint64 offset, int before,
                   int behind);

    QByteArray _bytes;
    qint64 _offset = 0; // of these
    std::vector<qint64> _starts; // of the lines, and the end of the last
    qint64 _fileSize = 0;
    std::error_code _error;
};

#pragma once

#include "texts/TextEncoding.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

// What is searched for, and how it is found in a block of bytes: by its own bytes where those say
// all, else by folded bytes, else character by character. Any thread, one at a time.
class SearchPattern final {
public:
    // Nothing for no text, and where the encoding cannot say it.
    static std::optional<SearchPattern> ofText(const QString &text, const TextEncoding &encoding,
                                               Qt::CaseSensitivity sensitivity);
    // Two digits for each byte, "0d 0a" or "0d0a"; nothing for anything else.
    static std::optional<SearchPattern> ofBytes(const QString &digits);

    struct Place {
        qint64 offset; // in the block
        qint64 length; // bytes
    };
    // Of those that begin in the first `starts` bytes of the block, which stands at `offset` in its
    // file; what is behind them is for their ends.
    std::optional<Place> firstIn(QByteArrayView block, qint64 starts, qint64 offset) const;
    std::optional<Place> lastIn(QByteArrayView block, qint64 starts, qint64 offset) const;

    qint64 longest() const { return _longest; } // bytes, of a hit
    bool isOfZeros() const { return _isOfZeros; } // so that it stands in what was never written

private:
    enum class How { Bytes, FoldedBytes, Characters };
    using Folding = std::array<char, 256>;

    SearchPattern(How how, QByteArray bytes, const TextEncoding &encoding);
    void foldBytes();
    QByteArray folded(QByteArrayView bytes) const;
    std::optional<Place> next(QByteArrayView block, qint64 from, qint64 starts,
                              qint64 offset) const;
    qint64 nextBytes(QByteArrayView block, qint64 from, qint64 starts) const; // -1: none
    qint64 matchAt(QByteArrayView bytes) const; // its length; 0: none

    How _how;
    QByteArray _bytes;
    TextEncoding _encoding;
    Folding _folding {}; // of each byte
    std::vector<char32_t> _characters; // folded
    qsizetype _rarest = 0; // of the bytes, where they count
    qint64 _longest;
    bool _isOfZeros = false;
};

#pragma once

#include "model/NamePattern.h"

#include <optional>

// Which names a person means who types a text to see fewer: those that have it as a part, whatever
// the case and the accents, or that follow it where it is a pattern. Any thread, one at a time:
// copies have memory of their own.
class NameFilter final {
public:
    NameFilter() = default; // every name
    explicit NameFilter(const QString &text); // "": every name

    const QString &text() const { return _text; } // line ends at its ends do not count
    bool isOn() const { return !_text.isEmpty(); }
    // Whether each name that this lets through is sure to pass the other.
    bool narrows(const NameFilter &other) const;

    bool matches(QByteArrayView name); // its bytes on the disk

private:
    QString _text;
    QByteArray _part; // folded
    std::optional<NamePattern> _pattern;
    bool _likeShown = false; // the text may be of what stands for bytes that cannot be shown
    QByteArray _folded; // the name
};

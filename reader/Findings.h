#pragma once

#include "platform/ForeignFiles.h"

#include <ctime>

// Collects what a file says of itself, within the limits of what is told: what is longer is cut,
// what says nothing is left out.
class Findings final {
public:
    explicit Findings(std::clock_t begun = std::clock())
        : _begun(begun)
    {
    }
    // For what is read on the way and told otherwise, or not at all; in the same time.
    Findings another() const { return Findings(_begun); }

    // The first value of a name stands.
    void add(const QString &name, const QString &text);
    void add(const QString &name, qint64 number);
    void add(const QString &name, double number);
    void add(const QString &name, const QDateTime &date);
    void addToList(const QString &name, const QString &text); // each once

    void addText(QStringView text);
    void addBreak(); // what follows is another paragraph
    void setText(QString text); // all there is
    void cut() { _contents.textWasCut = true; }
    // No more text is taken, or so much of the processor went into it that the rest is not worth
    // more: what was found is told, as cut, while who goes on is ended before long. Costs little:
    // for each loop over what a file holds.
    bool isOver();

    bool isEmpty() const { return _contents.attributes.isEmpty() && _contents.text.isEmpty(); }
    const ForeignContents &contents() const { return _contents; }

private:
    bool has(const QString &name) const;
    bool isLate();

    ForeignContents _contents;
    std::clock_t _begun;
    timespec _seen {}; // when the processor's clock was last read
    bool _isLate = false;
};

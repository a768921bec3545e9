#pragma once

#include <QStringList>

// The addresses by which other programs name what is to be shown. Any thread.
struct ShowAddresses {
    // More are never meant: nobody looks through them, and each costs memory.
    static constexpr qsizetype Most = 10'000;

    QStringList paths {}; // of files of this machine, each once, in their order
    QStringList refusals {}; // lines: what was refused, and why
};

// Takes file: addresses alone. Others are of another machine, or no addresses at all,
// and are named in the log.
ShowAddresses readShowAddresses(const QStringList &addresses);

#pragma once

#include <QByteArray>
#include <QList>

// Looks whether the session's and the system's bus answer at all. One that takes a connection and
// says nothing would hold up the window for many seconds each time the toolkit or the program asks
// it; this run then has none. Costs less than a millisecond where they answer. Before the
// application is made, while there are no threads.
void leaveSilentBusesAlone();

// The variables of the environment that say so to this process, and what they are for everybody
// else: a bus that was slow once may serve the applications that a person starts later. Programs
// that work for this one (cp, zip, the unpacker) do without as it does.
struct SilentBus {
    const char *variable;
    QByteArray address; // null: not set
};
const QList<SilentBus> &silentBuses();

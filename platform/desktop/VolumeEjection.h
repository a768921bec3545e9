#pragma once

#include <QString>

// Unmounts the volume at a mount point and ejects its medium or switches its drive off where it
// can. Answers whether it is unmounted; `reason` gets why not, "" where nobody says. Waits as long
// as the data still takes: not for the main thread.
bool ejectVolume(const QString &point, QString *reason); // worker thread

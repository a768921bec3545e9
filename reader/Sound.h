#pragma once

#include "reader/FileBytes.h"
#include "reader/Findings.h"

// Tags and sound of music and video. False when it cannot be made out at all.
bool readSound(const FileBytes &file, const QByteArray &name, Findings &findings);

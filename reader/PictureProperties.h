#pragma once

#include "reader/Findings.h"

// Size, camera, place and words of a picture; the size is that of the pixels as they are stored.
// False when it is none that can be made out.
bool readPicture(QByteArrayView bytes, Findings &findings);
bool readHeifPicture(QByteArrayView bytes, Findings &findings);

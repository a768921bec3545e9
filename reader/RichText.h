#pragma once

#include "reader/Findings.h"

// The words of an RTF file, and what it says of its author and title.
void readRichText(const QByteArray &bytes, Findings &findings);

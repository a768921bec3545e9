#pragma once

#include "reader/FileBytes.h"
#include "reader/Findings.h"

// What the file says of itself, by the reader of its kind. May throw what the libraries throw.
ForeignFiles::Outcome extract(FileBytes &file, const QByteArray &name, Findings &findings);

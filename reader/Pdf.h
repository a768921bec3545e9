#pragma once

#include "reader/Findings.h"

// Pages, properties and text. One that wants a password says nothing.
ForeignFiles::Outcome readPdf(QByteArrayView bytes, Findings &findings);

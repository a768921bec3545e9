#pragma once

#include "reader/Findings.h"

// Documents that are zip archives: of OpenDocument, of Office Open XML, of EPUB. What of one can be
// read is told, though the rest is damaged. Nothing when there is no such part in the archive,
// Failed when it is none.
ForeignFiles::Outcome readZippedDocument(QByteArrayView bytes, Findings &findings);

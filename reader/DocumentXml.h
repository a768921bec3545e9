#pragma once

#include "reader/Findings.h"

class QIODevice;

// The XML parts of documents. Each reads until the end, the first fault or until the findings are
// full; entities are replaced up to a small size only.

void readOpenDocumentText(QIODevice &part, Findings &findings);
void readOfficeText(QIODevice &part, Findings &findings); // words and slides
void readSheet(QIODevice &part, Findings &findings); // and the texts that its cells share
// Title, authors and so on, by the names that the formats have in common.
void readDocumentProperties(QIODevice &part, Findings &findings);

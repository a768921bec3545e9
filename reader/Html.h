#pragma once

#include "reader/Findings.h"

// The words of a page in reading order; paragraphs, rows and the like on lines of their own,
// blanks as one. What <title> and <meta> say goes to the findings. Nothing of what the page refers
// to is looked at. Takes time as long as the text is, whatever its tags are: the toolkit's own
// document lays out what it reads, takes minutes for tables in tables, and asks for what a page
// refers to. A page that is a drawing tells its size, too.
QString htmlText(const QString &html, Findings &findings);

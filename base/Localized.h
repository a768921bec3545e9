#pragma once

#include <QString>

// The user's text for an English one, which is also the key of the translation. Placeholders ("%@",
// "%i") stay in the key; fill them afterwards with filled(). Any thread.
QString localized(const char *english);

// Replaces the first placeholder of the argument's sort, "%@" or "%i". What is filled in is not
// searched again.
QString filled(const QString &format, const QString &argument);
QString filled(const QString &format, int argument);
// Both at once: after the first of two calls, a "%@" in what it filled in would look like a place.
QString filled(const QString &format, const QString &first, const QString &second);

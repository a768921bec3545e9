#pragma once

#include <QString>

// The user's text for an English one, which is also the key of the translation. Placeholders ("%@",
// "%i") stay in the key; fill them afterwards with filled(). Any thread.
QString localized(const char *english);

// Replaces the placeholders "%@" and "%i" in order. What is filled in is not searched again.
QString filled(const QString &format, const QString &argument);
QString filled(const QString &format, int argument);

#pragma once

#include <QString>

class UserDefaults;

// Some settings are words of the language that the program spoke when they were stored ("Klein").
// Makes them words of the present one, before anything reads them; what is no word of a shipped
// language stays. `folder` holds the translations. Main thread.
void adoptStoredWords(UserDefaults &defaults,
                      const QString &folder = QString::fromLatin1(":/i18n"));

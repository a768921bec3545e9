#include "settings/StoredWords.h"

#include "base/Localized.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

#include <QDirIterator>
#include <QTranslator>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace {

struct Word {
    Settings::Key key;
    const char *english;
};

constexpr Word words[] = {
    { Settings::PathNavigatorsSize, QT_TRANSLATE_NOOP("Twinleaf", "Small") },
    { Settings::PathNavigatorsSize, QT_TRANSLATE_NOOP("Twinleaf", "Mini") },
    { Settings::PathNavigatorsFontStyle, QT_TRANSLATE_NOOP("Twinleaf", "Normal") },
    { Settings::PathNavigatorsFontStyle, QT_TRANSLATE_NOOP("Twinleaf", "Bold") },
};

using Translators = std::vector<std::unique_ptr<QTranslator>>;

Translators translatorsIn(const QString &folder)
{
    Translators translators;
    // Files of the program's own, with names of its own: no person's path comes here.
    for (QDirIterator files(folder, QDir::Files); files.hasNext();) {
        auto translator = std::make_unique<QTranslator>();
        if (translator->load(files.next()))
            translators.push_back(std::move(translator));
    }
    return translators;
}

bool isWordOf(const Translators &translators, const char *english, const QString &text)
{
    if (text == QLatin1StringView(english))
        return true;
    return std::ranges::any_of(translators, [&](const auto &translator) {
        return translator->translate("Twinleaf", english) == text;
    });
}

// A word of the present language is taken for itself, whatever it means in another.
bool isUnderstood(Settings::Key key, const QString &text)
{
    return std::ranges::any_of(words, [&](const Word &word) {
        return word.key == key && localized(word.english) == text;
    });
}

} // namespace

void adoptStoredWords(UserDefaults &defaults, const QString &folder)
{
    std::optional<Translators> translators; // read only where a word is not understood
    for (const Word &word : words) {
        const auto stored = defaults.string(word.key);
        if (!stored || stored->isEmpty() || isUnderstood(word.key, *stored))
            continue;
        if (!translators)
            translators = translatorsIn(folder);
        if (isWordOf(*translators, word.english, *stored))
            defaults.setValue(word.key, localized(word.english));
    }
}

#include "model/ListingOptions.h"

#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

ListingOptions ListingOptions::fromDefaults(const UserDefaults &defaults)
{
    const auto stored = [&](Settings::Key key, bool absent) {
        return defaults.boolean(key).value_or(absent);
    };
    return {
        .showSpecifiedIcons = stored(Settings::ShowSpecifiedIcons, true),
        .showToolTips = stored(Settings::ShowToolTips, true),
        .traverseLinks = stored(Settings::TraverseLinks, true),
        .showHiddenFiles = stored(Settings::ShowHiddenFiles, false),
        .confirmationForFileOperations = stored(Settings::ConfirmationForFileOperations, true),
        .useLongDateFormat = stored(Settings::UseLongDateFormat, false),
        .dateRightAlignment = stored(Settings::DateRightAlignment, false),
    };
}

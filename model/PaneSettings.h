#pragma once

#include "model/Listing.h"
#include "model/Side.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

// The settings that each pane has for itself.
struct PaneSettings {
    Settings::Key selectedItems;
    Settings::Key lastPath;
    Settings::Key sortedColumn;
    Settings::Key sortingDirection;
    Settings::Key columnWidths;
};

inline constexpr PaneSettings paneSettings(Side side)
{
    if (side == Side::Left)
        return { Settings::SelectedItemsLeft, Settings::LeftFileListLastPath,
                 Settings::LeftFileListSortedColumn, Settings::LeftFileListSortingDirection,
                 Settings::LeftFileListColumnWidths };
    return { Settings::SelectedItemsRight, Settings::RightFileListLastPath,
             Settings::RightFileListSortedColumn, Settings::RightFileListSortingDirection,
             Settings::RightFileListColumnWidths };
}

// As a pane was left. A new one is sorted by name, upwards; a column stored without its direction
// downwards.
inline SortOrder storedSortOrder(const UserDefaults &defaults, Side side)
{
    const PaneSettings keys = paneSettings(side);
    const auto stored = defaults.string(keys.sortedColumn);
    const Column column = columnFromIdentifier(stored.value_or(QString())).value_or(Column::Name);
    const bool ascending = defaults.boolean(keys.sortingDirection).value_or(!stored);
    return { column == Column::Icon ? Column::Name : column, // nothing is sorted by icons
             ascending ? SortDirection::Ascending : SortDirection::Descending };
}

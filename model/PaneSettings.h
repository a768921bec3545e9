#pragma once

#include "model/Side.h"
#include "settings/SettingsKeys.h"

// The settings that each pane has for itself.
struct PaneSettings {
    Settings::Key selectedItems;
    Settings::Key lastPath;
    Settings::Key sortedColumn;
    Settings::Key sortingDirection;
};

inline constexpr PaneSettings paneSettings(Side side)
{
    if (side == Side::Left)
        return { Settings::SelectedItemsLeft, Settings::LeftFileListLastPath,
                 Settings::LeftFileListSortedColumn, Settings::LeftFileListSortingDirection };
    return { Settings::SelectedItemsRight, Settings::RightFileListLastPath,
             Settings::RightFileListSortedColumn, Settings::RightFileListSortingDirection };
}

#pragma once

#include <QLatin1StringView>

// Every key of the settings. No defaults are registered: each reader states its own for an absent
// key.
namespace Settings {

using Key = QLatin1StringView;

// boolean, absent: true. Show each item's own icon in the lists.
inline constexpr Key ShowSpecifiedIcons { "TWShowSpecifiedIcons" };
// boolean, absent: true. Tool tips on list rows.
inline constexpr Key ShowToolTips { "TWShowToolTips" };
// boolean, absent: true. Follow symbolic links when reading attributes.
inline constexpr Key TraverseLinks { "TWTraverseLinks" };
// boolean, absent: false. List hidden (system) files.
inline constexpr Key ShowHiddenFiles { "TWShowHiddenFiles" };
// boolean, absent: true. Ask before file operations.
inline constexpr Key ConfirmationForFileOperations { "TWConfirmationForFileOperations" };
// boolean, absent: false. Long date format in the lists.
inline constexpr Key UseLongDateFormat { "TWUseLongDateFormat" };
// boolean, absent: false (left). Align the column "Date" right.
inline constexpr Key DateRightAlignment { "TWDateRightAlignment" };
// boolean, absent: false. Allow core dumps; nothing in the program writes it.
inline constexpr Key EnableCoreDumps { "TWEnableCoreDumps" };
// boolean, absent: false. Draw the main window flat.
inline constexpr Key UseFlatUnifiedLook { "TWUseFlatUnifiedLook" };
// boolean, absent: true. Show the button row at the bottom.
inline constexpr Key ShowClassicButtons { "TWShowClassicButtons" };
// string, absent: small. The localized "Small" or "Mini"; any other value is small.
inline constexpr Key PathNavigatorsSize { "TWPathNavigatorsSize" };
// string or number read as integer, absent: 10. Point size of the navigators' font.
inline constexpr Key PathNavigatorsFontSize { "TWPathNavigatorsFontSize" };
// string, absent: bold 10 whatever the size says. The localized "Normal" or "Bold".
inline constexpr Key PathNavigatorsFontStyle { "TWPathNavigatorsFontStyle" };
// colour dictionary. Frame of the info bars; absent: none is drawn, and the preferences offer the
// grey 120/255.
inline constexpr Key InfoBarFrameColor { "TWInfoBarFrameColor" };
// colour dictionary, absent: black. Text of the info bars.
inline constexpr Key InfoBarFontColor { "TWInfoBarFontColor" };
// key-binding dictionary, absent: F5 to F10.
inline constexpr Key ClassicKeys { "TWClassicKeys" };
// boolean, absent: true. Store the panes' paths at quit as the next start's.
inline constexpr Key SaveLastPaths { "TWSaveLastPaths" };
// string (path), absent: the home folder.
inline constexpr Key LeftFileListLastPath { "TWLeftFileListLastPath" };
inline constexpr Key RightFileListLastPath { "TWRightFileListLastPath" };
// string: "Name", "Size", "Date" or "Type"; absent: "Name", ascending.
inline constexpr Key LeftFileListSortedColumn { "TWLeftFileListSortedColumn" };
inline constexpr Key RightFileListSortedColumn { "TWRightFileListSortedColumn" };
// boolean, true is ascending; absent: false where the column is stored.
inline constexpr Key LeftFileListSortingDirection { "TWLeftFileListSortingDirection" };
inline constexpr Key RightFileListSortingDirection { "TWRightFileListSortingDirection" };
// dictionary from folder path to row number, absent: empty. The remembered selections.
inline constexpr Key SelectedItemsLeft { "TWSelectedItemsLeft" };
inline constexpr Key SelectedItemsRight { "TWSelectedItemsRight" };
// dictionary "X", "Y", "Width", "Height", "Maximized", "FullScreen", and "ActivePane", a side's
// word; absent: as the desktop places it, with the left pane active.
inline constexpr Key MainWindowFrame { "TWMainWindowFrame" };
// array of the two panes' widths, absent: equal.
inline constexpr Key PaneWidths { "TWPaneWidths" };
// array of a width for each column, absent: as their texts need.
inline constexpr Key LeftFileListColumnWidths { "TWLeftFileListColumnWidths" };
inline constexpr Key RightFileListColumnWidths { "TWRightFileListColumnWidths" };
// array of bookmark records, absent: empty.
inline constexpr Key Bookmarks { "TWBookmarks" };
// array of application records, absent: empty.
inline constexpr Key OpenWithFavoriteApplications { "TWOpenWithFavoriteApplications" };
// array of strings, absent: empty. Folders that no search goes into: paths, or names of folders
// anywhere (search/WalkRules).
inline constexpr Key SearchLeftOutFolders { "TWSearchLeftOutFolders" };
// dictionary: "TB Item Identifiers" (array of strings), absent: the default items;
// "TB Display Mode" (integer, 1: icon and label, 2: icon only), absent: 1;
// "TB Is Shown" (boolean), absent: true. Where the platform keeps a toolbar of this name.
inline constexpr Key Toolbar { "NSToolbar Configuration Twinleaf Toolbar Identifier" };

// Keys of the global domain (settings/LocaleDefaults).
inline constexpr Key ShortTimeDateFormat { "NSShortTimeDateFormatString" };
inline constexpr Key DateFormat { "NSDateFormatString" };
inline constexpr Key TimeFormat { "NSTimeFormatString" };
inline constexpr Key TimeDateFormat { "NSTimeDateFormatString" };
inline constexpr Key AmPmDesignation { "NSAMPMDesignation" };
inline constexpr Key MonthNames { "NSMonthNameArray" };
inline constexpr Key ShortMonthNames { "NSShortMonthNameArray" };
inline constexpr Key WeekDayNames { "NSWeekDayNameArray" };
inline constexpr Key ShortWeekDayNames { "NSShortWeekDayNameArray" };
// The name of the person's language, in English.
inline constexpr Key LanguageName { "NSLanguageName" };

} // namespace Settings

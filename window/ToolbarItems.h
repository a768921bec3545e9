#pragma once

#include "commands/Command.h"

#include <QStringList>

#include <span>

// An item that the toolbar can show beside the favourite applications. The texts are English and
// shown localized; identifiers stand in the settings, so they keep their spelling.
struct ToolbarItem {
    const char *identifier;
    const char *label;
    const char *toolTip;
    const char *image; // in widgets/icons/toolbar/
    Command command;
};

std::span<const ToolbarItem> toolbarItems(); // in the order in which they are offered
const ToolbarItem *toolbarItemOf(const QString &identifier); // null for any other

// What stands between items. Any number of each may stand in the bar. The identifiers are those of
// the platform that the settings come from.
struct ToolbarGap {
    const char *identifier;
    const char *label;
    const char *image;
};
inline constexpr ToolbarGap ToolbarSeparator { "NSToolbarSeparatorItem",
                                               QT_TRANSLATE_NOOP("Twinleaf", "Separator"),
                                               "separator" };
inline constexpr ToolbarGap ToolbarSpace { "NSToolbarSpaceItem",
                                           QT_TRANSLATE_NOOP("Twinleaf", "Space"), "space" };
inline constexpr ToolbarGap ToolbarFlexibleSpace { "NSToolbarFlexibleSpaceItem",
                                                   QT_TRANSLATE_NOOP("Twinleaf", "Flexible space"),
                                                   "flexible-space" };
std::span<const ToolbarGap *const> toolbarGaps();
const ToolbarGap *toolbarGapOf(const QString &identifier); // null for any other

QStringList toolbarDefaultItemIdentifiers();

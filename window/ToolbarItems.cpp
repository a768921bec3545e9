#include "window/ToolbarItems.h"

#include <algorithm>

namespace {

// Kept: the odd spellings. What a person arranged is stored by them, and a corrected one would be
// gone from the bar.
constexpr ToolbarItem items[] = {
    { "Copy Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Copy"),
      QT_TRANSLATE_NOOP("Twinleaf", "Copy items"), "copy", Command::Copy },
    { "Move Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Move"),
      QT_TRANSLATE_NOOP("Twinleaf", "Move items"), "move", Command::Move },
    { "New Folder Identifier", QT_TRANSLATE_NOOP("Twinleaf", "New folder"),
      QT_TRANSLATE_NOOP("Twinleaf", "Create new folder"), "new", Command::NewFolder },
    { "Delete Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Delete"),
      QT_TRANSLATE_NOOP("Twinleaf", "Delete items"), "delete", Command::Delete },
    { "Rename Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Rename"),
      QT_TRANSLATE_NOOP("Twinleaf", "Rename item"), "rename", Command::Rename },
    { "Image browser Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Image browser"),
      QT_TRANSLATE_NOOP("Twinleaf", "Twinleaf image browser"), "ImageBrowser",
      Command::ImageBrowser },
    { "Intern terminal Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Internal terminal"),
      QT_TRANSLATE_NOOP("Twinleaf", "Twinleaf internal terminal"), "InternalTerminal",
      Command::InternalTerminal },
    { "Terminal Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Terminal"),
      QT_TRANSLATE_NOOP("Twinleaf",
                        "You access the UNIX operating system (Darwin) by entering commands"),
      "Terminal", Command::Terminal },
    { "Console Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Console"),
      QT_TRANSLATE_NOOP("Twinleaf",
                        "You can examine the messages logged by your system and software"),
      "Console", Command::Console },
    { "ActivityMonitorItemIdentifier", QT_TRANSLATE_NOOP("Twinleaf", "Activity Monitor"),
      QT_TRANSLATE_NOOP("Twinleaf",
                        "See what's happening within your computer's processor, hard disk, "
                        "memory, and network"),
      "ActivityMonitor", Command::ActivityMonitor },
    { "Disk Utility Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Disk Utility"),
      QT_TRANSLATE_NOOP("Twinleaf", "Configure and manage disks"), "DiskFirstAid",
      Command::DiskUtility },
    { "Keychain accesss Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Keychain accesss"),
      QT_TRANSLATE_NOOP("Twinleaf",
                        "Manage your passwords and securely store notes, account numbers, and "
                        "other confidential information"),
      "Keychain", Command::Keychain },
    { "Network Utility Identifier", QT_TRANSLATE_NOOP("Twinleaf", "Network Utility"),
      QT_TRANSLATE_NOOP("Twinleaf",
                        "Information and troubleshooting tools to help you with your network"),
      "NetworkUtility", Command::NetworkUtility },
    { "NetInfo Manager Identifier", QT_TRANSLATE_NOOP("Twinleaf", "NetInfo Manager"),
      QT_TRANSLATE_NOOP("Twinleaf", "Easy editing of unix releated system files"), "NetInfoManager",
      Command::NetInfoManager },
    { "System Profiler Identifier", QT_TRANSLATE_NOOP("Twinleaf", "System Profiler"),
      QT_TRANSLATE_NOOP("Twinleaf",
                        "Get detailed information about your computer hardware, software, and "
                        "network"),
      "SystemProfiler", Command::SystemProfiler },
};

constexpr const ToolbarGap *gaps[] = { &ToolbarSeparator, &ToolbarSpace, &ToolbarFlexibleSpace };

} // namespace

std::span<const ToolbarItem> toolbarItems()
{
    return items;
}

const ToolbarItem *toolbarItemOf(const QString &identifier)
{
    const auto *item = std::ranges::find_if(items, [&](const ToolbarItem &each) {
        return identifier == QLatin1StringView(each.identifier);
    });
    return item == std::end(items) ? nullptr : item;
}

std::span<const ToolbarGap *const> toolbarGaps()
{
    return gaps;
}

const ToolbarGap *toolbarGapOf(const QString &identifier)
{
    const auto *gap = std::ranges::find_if(gaps, [&](const ToolbarGap *each) {
        return identifier == QLatin1StringView(each->identifier);
    });
    return gap == std::end(gaps) ? nullptr : *gap;
}

QStringList toolbarDefaultItemIdentifiers()
{
    constexpr const char *identifiers[] = {
        "Copy Identifier",          "Move Identifier",
        "New Folder Identifier",    "Delete Identifier",
        "Rename Identifier",        ToolbarSeparator.identifier,
        "Image browser Identifier", "Intern terminal Identifier",
    };
    QStringList result;
    for (const char *identifier : identifiers)
        result.append(QString::fromLatin1(identifier));
    return result;
}

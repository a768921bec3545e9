#include "window/ToolbarSettings.h"

#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "window/ToolbarItems.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

const QString ItemIdentifiers = u"TB Item Identifiers"_s;
const QString DisplayMode = u"TB Display Mode"_s;
const QString IsShown = u"TB Is Shown"_s;

QVariant stored(const UserDefaults &defaults, const QString &entry)
{
    return defaults.dictionary(Settings::Toolbar).value_or(QVariantMap()).value(entry);
}

// The stored dictionary with these entries, and all others as they are; an invalid value removes.
UserDefaults::Edit setting(const QVariantMap &entries)
{
    return [entries](const QVariant &before) {
        QVariantMap dictionary = before.toMap();
        for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
            if (entry->isValid())
                dictionary.insert(entry.key(), *entry);
            else
                dictionary.remove(entry.key());
        }
        return dictionary;
    };
}

} // namespace

QStringList ToolbarSettings::identifiers() const
{
    const QVariant list = stored(defaults, ItemIdentifiers);
    if (list.typeId() != QMetaType::QVariantList)
        return toolbarDefaultItemIdentifiers();
    QStringList identifiers;
    QSet<QString> seen;
    const QVariantList elements = list.toList();
    for (const QVariant &each : elements) {
        if (each.typeId() != QMetaType::QString)
            continue;
        const QString identifier = each.toString();
        if (!toolbarGapOf(identifier) && seen.contains(identifier))
            continue;
        seen.insert(identifier);
        identifiers.append(identifier);
    }
    return identifiers;
}

ToolbarDisplay ToolbarSettings::display() const
{
    const QVariant mode = stored(defaults, DisplayMode);
    const bool iconOnly =
        mode.typeId() == QMetaType::LongLong && mode.toInt() == int(ToolbarDisplay::IconOnly);
    return iconOnly ? ToolbarDisplay::IconOnly : ToolbarDisplay::IconAndLabel;
}

bool ToolbarSettings::isShown() const
{
    return UserDefaults::booleanOf(stored(defaults, IsShown)).value_or(true);
}

void ToolbarSettings::setIdentifiers(const QStringList &identifiers)
{
    defaults.change(
        Settings::Toolbar,
        setting({ { ItemIdentifiers, QVariantList(identifiers.begin(), identifiers.end()) } }));
}

void ToolbarSettings::setDisplay(ToolbarDisplay display)
{
    defaults.change(Settings::Toolbar, setting({ { DisplayMode, qlonglong(display) } }));
}

void ToolbarSettings::setShown(bool shown)
{
    defaults.change(Settings::Toolbar, setting({ { IsShown, shown } }));
}

void ToolbarSettings::restoreDefaults()
{
    defaults.change(Settings::Toolbar, setting({ { ItemIdentifiers, {} }, { DisplayMode, {} } }));
}

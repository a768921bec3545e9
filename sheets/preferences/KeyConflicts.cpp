#include "sheets/preferences/KeyConflicts.h"

#include "base/Localized.h"
#include "commands/CommandTable.h"
#include "views/VirtualKeys.h"

#include <QKeyEvent>
#include <QKeySequence>

namespace {

std::optional<ClassicAction> otherOnKey(ClassicAction action, const ClassicKeys &keys)
{
    if (const auto before = keys.hiding(action))
        return before;
    for (int i = 0; i < ClassicKeys::ActionCount; ++i)
        if (const auto other = ClassicAction(i); keys.hiding(other) == action)
            return other;
    return std::nullopt;
}

// The command of the menus whose own key would run the action instead.
const CommandEntry *menuCommandOnKey(ClassicAction action, const ClassicKeys &keys)
{
    for (const CommandEntry &entry : commandTable()) {
        if (!entry.shortcut || entry.classic == action)
            continue;
        const QKeyCombination shortcut = QKeySequence(QString::fromLatin1(entry.shortcut))[0];
        const QKeyEvent press(QEvent::KeyPress, shortcut.key(), shortcut.keyboardModifiers());
        if (keys.match(VirtualKeys::code(press), VirtualKeys::modifierFlags(press)) == action)
            return &entry;
    }
    return nullptr;
}

} // namespace

QString nameOfAction(ClassicAction action)
{
    for (const CommandEntry &entry : commandTable())
        if (entry.classic == action)
            return localized(entry.text);
    return {};
}

QString keyConflict(ClassicAction action, const ClassicKeys &keys)
{
    if (VirtualKeys::isTypeAheadKey(keys.key(action)))
        return localized("This key finds names.");
    if (keys.key(action) == VirtualKeys::F10 && keys.modifierFlag(action) == VirtualKeys::Shift)
        return localized("This key opens the context menu.");
    if (const auto other = otherOnKey(action, keys))
        return filled(localized("Same key as '%@'."), nameOfAction(*other));
    if (const CommandEntry *entry = menuCommandOnKey(action, keys))
        return filled(localized("Same key as '%@'."), localized(entry->text));
    return {};
}

#include "views/ClassicKeys.h"

#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "views/VirtualKeys.h"

#include <QKeySequence>

using namespace Qt::StringLiterals;

namespace {

// The words of an action in the settings: "CopyKeys" holds "CopyKey" and "CopyModifierFlag".
constexpr std::array StoredNames { "Copy", "Move", "NewFolder", "Delete", "Rename", "Exit" };

std::optional<int> storedInteger(const QVariantMap &entries, const QString &key)
{
    bool isNumber = false;
    const int value = entries.value(key).toInt(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

// The modifier is stored as the index of a choice. Kept: any other index, "none" included, leaves
// the mask of all modifiers, so that the key needs at least one of them (every F-key carries one).
std::optional<qint32> maskOfChoice(int choice)
{
    switch (choice) {
    case 1:
        return VirtualKeys::Shift;
    case 2:
        return VirtualKeys::Option;
    case 3:
        return VirtualKeys::Command;
    default:
        return std::nullopt;
    }
}

} // namespace

ClassicKeys::ClassicKeys()
    : _bindings { { { VirtualKeys::F5, VirtualKeys::AnyModifier },
                    { VirtualKeys::F6, VirtualKeys::AnyModifier },
                    { VirtualKeys::F7, VirtualKeys::AnyModifier },
                    { VirtualKeys::F8, VirtualKeys::AnyModifier },
                    { VirtualKeys::F9, VirtualKeys::AnyModifier },
                    { VirtualKeys::F10, VirtualKeys::AnyModifier } } }
{
}

ClassicKeys ClassicKeys::fromDefaults(const UserDefaults &defaults)
{
    ClassicKeys keys;
    const auto stored = defaults.dictionary(Settings::ClassicKeys);
    if (!stored)
        return keys;
    for (int i = 0; i < ActionCount; ++i) {
        const QString name = QString::fromLatin1(StoredNames[i]);
        const QVariantMap entries = stored->value(name + u"Keys"_s).toMap();
        if (const auto key = storedInteger(entries, name + u"Key"_s))
            keys._bindings[i].key = *key;
        if (const auto choice = storedInteger(entries, name + u"ModifierFlag"_s))
            if (const auto mask = maskOfChoice(*choice))
                keys._bindings[i].modifierFlag = *mask;
    }
    return keys;
}

std::optional<ClassicAction> ClassicKeys::match(int keyCode, qint32 modifierFlags) const
{
    for (int i = 0; i < ActionCount; ++i)
        if (keyCode == _bindings[i].key && (modifierFlags & _bindings[i].modifierFlag) != 0)
            return static_cast<ClassicAction>(i);
    return std::nullopt;
}

bool ClassicKeys::isOfAnother(int keyCode, ClassicAction action) const
{
    for (int i = 0; i < ActionCount; ++i)
        if (keyCode == _bindings[i].key && static_cast<ClassicAction>(i) != action)
            return true;
    return false;
}

QString ClassicKeys::menuText(ClassicAction action) const
{
    const Binding &binding = _bindings[static_cast<int>(action)];
    const QString key = VirtualKeys::name(binding.key);
    if (key.isEmpty())
        return {};
    QString modifier;
    switch (binding.modifierFlag) {
    case VirtualKeys::Shift:
        modifier = u"Shift+"_s;
        break;
    case VirtualKeys::Option:
        modifier = u"Alt+"_s;
        break;
    case VirtualKeys::Command:
        modifier = u"Ctrl+"_s;
        break;
    default:
        break;
    }
    return QKeySequence(modifier + key).toString(QKeySequence::NativeText);
}

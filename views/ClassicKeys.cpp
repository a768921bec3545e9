#include "views/ClassicKeys.h"

#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "views/VirtualKeys.h"

#include <QKeySequence>

using namespace Qt::StringLiterals;

namespace {

// The words of an action in the settings: "CopyKeys" holds "CopyKey" and "CopyModifierFlag".
constexpr std::array StoredNames { "Copy", "Move", "NewFolder", "Delete", "Rename", "Exit" };

struct Words {
    QString group;
    QString key;
    QString modifier;
};

Words words(int action)
{
    const QString name = QString::fromLatin1(StoredNames[action]);
    return { name + u"Keys"_s, name + u"Key"_s, name + u"ModifierFlag"_s };
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

ClassicKeys::ClassicKeys(const Choices &choices)
    : ClassicKeys()
{
    for (int i = 0; i < ActionCount; ++i) {
        if (const auto key = choices[i].key)
            _bindings[i].key = *key;
        if (const auto modifier = choices[i].modifier)
            if (const auto mask = maskOfChoice(*modifier))
                _bindings[i].modifierFlag = *mask;
    }
}

ClassicKeys::Choices ClassicKeys::storedChoices(const UserDefaults &defaults)
{
    Choices choices;
    const auto stored = defaults.dictionary(Settings::ClassicKeys).value_or(QVariantMap());
    for (int i = 0; i < ActionCount; ++i) {
        const auto [group, key, modifier] = words(i);
        const QVariantMap entries = stored.value(group).toMap();
        choices[i] = { UserDefaults::integerOf(entries.value(key)),
                       UserDefaults::integerOf(entries.value(modifier)) };
    }
    return choices;
}

void ClassicKeys::store(const Choices &choices, UserDefaults &defaults)
{
    defaults.change(Settings::ClassicKeys, [choices](const QVariant &before) {
        QVariantMap stored = before.toMap();
        for (int i = 0; i < ActionCount; ++i) {
            const auto [group, key, modifier] = words(i);
            QVariantMap entries = stored.value(group).toMap();
            if (choices[i].key)
                entries[key] = *choices[i].key;
            if (choices[i].modifier)
                entries[modifier] = *choices[i].modifier;
            stored[group] = entries;
        }
        return stored;
    });
}

ClassicKeys ClassicKeys::fromDefaults(const UserDefaults &defaults)
{
    return ClassicKeys(storedChoices(defaults));
}

std::optional<ClassicAction> ClassicKeys::match(int keyCode, qint32 modifierFlags) const
{
    if (keyCode < 0) // a key without a code: whatever the settings hold, it is nobody's
        return std::nullopt;
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

bool ClassicKeys::isOfAny(int keyCode) const
{
    return std::ranges::any_of(_bindings,
                               [keyCode](const Binding &one) { return one.key == keyCode; });
}

std::optional<ClassicAction> ClassicKeys::hiding(ClassicAction action) const
{
    const Binding &binding = _bindings[static_cast<int>(action)];
    for (int i = 0; i < static_cast<int>(action); ++i)
        if (_bindings[i].key == binding.key
            && (_bindings[i].modifierFlag == VirtualKeys::AnyModifier
                || _bindings[i].modifierFlag == binding.modifierFlag))
            return static_cast<ClassicAction>(i);
    return std::nullopt;
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

#pragma once

#include <QString>

#include <array>
#include <optional>

class UserDefaults;

enum class ClassicAction { Copy, Move, NewFolder, Delete, Rename, Exit };

// The configurable keys of the six Classic commands: a virtual key code and a modifier mask each.
class ClassicKeys final {
public:
    static constexpr int ActionCount = 6;

    // As a person chooses it and the settings hold it: the modifier by its place among any, Shift,
    // Alt and Ctrl.
    struct Choice {
        std::optional<int> key;
        std::optional<int> modifier;
    };
    using Choices = std::array<Choice, ActionCount>; // in the order of the actions
    static Choices storedChoices(const UserDefaults &defaults);
    static void store(const Choices &choices, UserDefaults &defaults);

    ClassicKeys(); // F5 to F10
    explicit ClassicKeys(const Choices &choices); // those for what is not chosen
    static ClassicKeys fromDefaults(const UserDefaults &defaults);

    // The first action, in the order of the enum, whose key is pressed with a modifier of its mask.
    std::optional<ClassicAction> match(int keyCode, qint32 modifierFlags) const;
    // Whether the key, with whatever modifier, is that of another action.
    bool isOfAnother(int keyCode, ClassicAction action) const;
    bool isOfAny(int keyCode) const; // of any action
    // The action before this one that gets every press of this one's key.
    std::optional<ClassicAction> hiding(ClassicAction action) const;
    int key(ClassicAction action) const { return _bindings[static_cast<int>(action)].key; }
    qint32 modifierFlag(ClassicAction action) const
    {
        return _bindings[static_cast<int>(action)].modifierFlag;
    }
    // "F5", "Shift+F5": the key as menus and buttons show it.
    QString menuText(ClassicAction action) const;

private:
    struct Binding {
        int key;
        qint32 modifierFlag;
    };
    std::array<Binding, ActionCount> _bindings;
};

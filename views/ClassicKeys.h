#pragma once

#include <QString>

#include <array>
#include <optional>

class UserDefaults;

enum class ClassicAction { Copy, Move, NewFolder, Delete, Rename, Exit };

// The configurable keys of the six Classic commands: a virtual key code and a modifier mask each.
class ClassicKeys final {
public:
    ClassicKeys(); // F5 to F10
    static ClassicKeys fromDefaults(const UserDefaults &defaults);

    // The first action, in the order of the enum, whose key is pressed with a modifier of its mask.
    std::optional<ClassicAction> match(int keyCode, qint32 modifierFlags) const;
    // Whether the key, with whatever modifier, is that of another action.
    bool isOfAnother(int keyCode, ClassicAction action) const;
    // "F5", "Shift+F5": the key as menus and buttons show it.
    QString menuText(ClassicAction action) const;

private:
    struct Binding {
        int key;
        qint32 modifierFlag;
    };
    static constexpr int ActionCount = 6;
    std::array<Binding, ActionCount> _bindings;
};

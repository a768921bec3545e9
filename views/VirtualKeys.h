#pragma once

#include <QString>

class QKeyEvent;

// The virtual key codes and modifier masks under which key bindings are stored: one number per
// physical key, whatever the layout (letters as on a US keyboard).
namespace VirtualKeys {

inline constexpr int Return = 36, Space = 49, Backspace = 51, Escape = 53;
inline constexpr int KeypadEnter = 76, Delete = 117;
inline constexpr int F1 = 122, F2 = 120, F3 = 99, F4 = 118, F5 = 96, F6 = 97, F7 = 98, F8 = 100,
                     F9 = 101, F10 = 109, F11 = 103, F12 = 111;
inline constexpr int FunctionKeys[] = { F1, F2, F3, F4, F5, F6, F7, F8, F9, F10, F11, F12 };
inline constexpr int Home = 115, End = 119, LeftArrow = 123, RightArrow = 124, Insert = 114;
inline constexpr int KeypadStar = 67, KeypadPlus = 69, KeypadMinus = 78;

inline constexpr qint32 Shift = 0x20000;
inline constexpr qint32 Option = 0x80000; // Alt
inline constexpr qint32 Command = 0x100000; // Ctrl
inline constexpr qint32 Function = 0x800000; // carried by every F-key press
inline constexpr qint32 AnyModifier = -1;

// The code of the key, or -1 for a key without one.
int code(const QKeyEvent &event);
qint32 modifierFlags(const QKeyEvent &event);
// "F5", "Return": the text of a code in menus; empty for an unknown one.
QString name(int code);
// The keys of letters and digits, and those that carry umlauts on some layouts: pressing them in a
// list looks for a name.
bool isTypeAheadKey(int code);

} // namespace VirtualKeys

#include "views/VirtualKeys.h"

#include <QHash>
#include <QKeyEvent>

namespace {

struct Named {
    int key;
    int code;
    const char *name;
};

constexpr Named namedKeys[] = {
    { Qt::Key_F1, VirtualKeys::F1, "F1" },
    { Qt::Key_F2, VirtualKeys::F2, "F2" },
    { Qt::Key_F3, VirtualKeys::F3, "F3" },
    { Qt::Key_F4, VirtualKeys::F4, "F4" },
    { Qt::Key_F5, VirtualKeys::F5, "F5" },
    { Qt::Key_F6, VirtualKeys::F6, "F6" },
    { Qt::Key_F7, VirtualKeys::F7, "F7" },
    { Qt::Key_F8, VirtualKeys::F8, "F8" },
    { Qt::Key_F9, VirtualKeys::F9, "F9" },
    { Qt::Key_F10, VirtualKeys::F10, "F10" },
    { Qt::Key_F11, VirtualKeys::F11, "F11" },
    { Qt::Key_F12, VirtualKeys::F12, "F12" },
    { Qt::Key_F13, 105, "F13" },
    { Qt::Key_F14, 107, "F14" },
    { Qt::Key_F15, 113, "F15" },
    { Qt::Key_F16, 106, "F16" },
    { Qt::Key_F17, 64, "F17" },
    { Qt::Key_F18, 79, "F18" },
    { Qt::Key_F19, 80, "F19" },
    { Qt::Key_F20, 90, "F20" },
    { Qt::Key_Return, VirtualKeys::Return, "Return" },
    { Qt::Key_Enter, VirtualKeys::KeypadEnter, "Enter" },
    { Qt::Key_Tab, 48, "Tab" },
    { Qt::Key_Backtab, 48, "Tab" },
    { Qt::Key_Space, VirtualKeys::Space, "Space" },
    { Qt::Key_Backspace, VirtualKeys::Backspace, "Backspace" },
    { Qt::Key_Delete, VirtualKeys::Delete, "Del" },
    { Qt::Key_Escape, VirtualKeys::Escape, "Esc" },
    { Qt::Key_Insert, VirtualKeys::Insert, "Ins" },
    { Qt::Key_Help, VirtualKeys::Insert, "Ins" },
    { Qt::Key_Home, VirtualKeys::Home, "Home" },
    { Qt::Key_End, VirtualKeys::End, "End" },
    { Qt::Key_PageUp, 116, "PgUp" },
    { Qt::Key_PageDown, 121, "PgDown" },
    { Qt::Key_Left, VirtualKeys::LeftArrow, "Left" },
    { Qt::Key_Right, VirtualKeys::RightArrow, "Right" },
    { Qt::Key_Down, 125, "Down" },
    { Qt::Key_Up, 126, "Up" },
};

// The typing keys of a US keyboard row by row, the scan code of the first key of each row and the
// codes of its keys. Scan codes are those of X11 and Wayland alike: the kernel's plus 8.
struct Row {
    quint32 firstScanCode;
    const char *keys;
    int codes[13];
};

constexpr Row typingRows[] = {
    { 10, "1234567890-=", { 18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24 } },
    { 24, "QWERTYUIOP[]", { 12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30 } },
    { 38, "ASDFGHJKL;'`", { 0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39, 50 } },
    { 51, "\\ZXCVBNM,./", { 42, 6, 7, 8, 9, 11, 45, 46, 43, 47, 44 } },
    { 94, "<", { 10 } },
};

constexpr Named keypadKeys[] = {
    { Qt::Key_0, 82, "0" },
    { Qt::Key_1, 83, "1" },
    { Qt::Key_2, 84, "2" },
    { Qt::Key_3, 85, "3" },
    { Qt::Key_4, 86, "4" },
    { Qt::Key_5, 87, "5" },
    { Qt::Key_6, 88, "6" },
    { Qt::Key_7, 89, "7" },
    { Qt::Key_8, 91, "8" },
    { Qt::Key_9, 92, "9" },
    { Qt::Key_Period, 65, "." },
    { Qt::Key_Comma, 65, "," },
    { Qt::Key_Asterisk, VirtualKeys::KeypadStar, "*" },
    { Qt::Key_Plus, VirtualKeys::KeypadPlus, "+" },
    { Qt::Key_Minus, VirtualKeys::KeypadMinus, "-" },
    { Qt::Key_Slash, 75, "/" },
    { Qt::Key_Equal, 81, "=" },
};

QHash<int, int> codesOf(const auto &table)
{
    QHash<int, int> codes;
    for (const Named &entry : table)
        codes.insert(entry.key, entry.code);
    return codes;
}

struct TypingKeys {
    QHash<quint32, int> byScanCode;
    QHash<int, int> byKey; // for events without a scan code, as accessibility tools send them
};

TypingKeys typingKeys()
{
    TypingKeys keys;
    for (const Row &row : typingRows) {
        for (int i = 0; row.keys[i]; ++i) {
            keys.byScanCode.insert(row.firstScanCode + quint32(i), row.codes[i]);
            keys.byKey.insert(row.keys[i], row.codes[i]);
        }
    }
    return keys;
}

bool isFunctionKey(int key)
{
    return key >= Qt::Key_F1 && key <= Qt::Key_F35;
}

} // namespace

int VirtualKeys::code(const QKeyEvent &event)
{
    static const QHash<int, int> named = codesOf(namedKeys);
    static const QHash<int, int> keypad = codesOf(keypadKeys);
    static const TypingKeys typing = typingKeys();
    // What a key does counts before where it lies: a layout may put arrows on a level of letters.
    if (const auto found = named.constFind(event.key()); found != named.constEnd())
        return *found;
    if (event.modifiers() & Qt::KeypadModifier)
        return keypad.value(event.key(), -1);
    return typing.byScanCode.value(event.nativeScanCode(), typing.byKey.value(event.key(), -1));
}

qint32 VirtualKeys::modifierFlags(const QKeyEvent &event)
{
    qint32 flags = 0;
    if (event.modifiers() & Qt::ShiftModifier)
        flags |= Shift;
    if (event.modifiers() & Qt::AltModifier)
        flags |= Option;
    if (event.modifiers() & Qt::ControlModifier)
        flags |= Command;
    if (isFunctionKey(event.key()))
        flags |= Function;
    return flags;
}

QString VirtualKeys::name(int code)
{
    for (const Named &entry : namedKeys) {
        if (entry.code == code)
            return QString::fromLatin1(entry.name);
    }
    for (const Row &row : typingRows) {
        for (int i = 0; row.keys[i]; ++i) {
            if (row.codes[i] == code)
                return QString(QLatin1Char(row.keys[i]));
        }
    }
    return {};
}

bool VirtualKeys::isTypeAheadKey(int code)
{
    if (code < 0 || code > 46)
        return false;
    switch (code) {
    case 10:
    case 24:
    case 27:
    case 30:
    case 36:
    case 42:
    case 43:
    case 44:
        return false;
    default:
        return true;
    }
}

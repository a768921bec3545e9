#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "tests/support/TestFolder.h"
#include "views/ClassicKeys.h"
#include "views/VirtualKeys.h"

#include <QKeyEvent>

#include <cmath>

namespace {

QVariantMap binding(const QString &name, const QVariant &key, const QVariant &modifierFlag)
{
    return { { name + u"Keys"_s,
               QVariantMap { { name + u"Key"_s, key },
                             { name + u"ModifierFlag"_s, modifierFlag } } } };
}

} // namespace

class tst_ClassicKeys : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void codeIsThePhysicalKeys()
    {
        const struct {
            const char *name;
            quint32 scanCode;
            int key;
            int code;
            Qt::KeyboardModifiers modifiers {};
        } cases[] = {
            { "Q key of a French keyboard", 24, Qt::Key_A, 12 },
            { "Y key of a German keyboard", 29, Qt::Key_Z, 16 },
            { "Ä", 48, Qt::Key_Adiaeresis, 39 },
            { "Cyrillic A", 41, 0x0410, 3 },
            { "last letter of the keyboard", 58, Qt::Key_M, 46 },
            { "shifted digit", 10, Qt::Key_Exclam, 18 },
            { "no scan code", 0, Qt::Key_M, 46 },
            { "arrow on the level of a letter", 39, Qt::Key_Left, VirtualKeys::LeftArrow },
            { "F10", 76, Qt::Key_F10, VirtualKeys::F10 },
            { "digit of the keypad", 87, Qt::Key_1, 83, Qt::KeypadModifier },
            { "no Num Lock", 79, Qt::Key_Home, VirtualKeys::Home, Qt::KeypadModifier },
            { "Shift alone", 50, Qt::Key_Shift, -1 },
            { "volume", 123, Qt::Key_VolumeUp, -1 },
        };
        for (const auto &[name, scanCode, key, code, modifiers] : cases) {
            const QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
            QVERIFY2(VirtualKeys::code(event) == code, name);
        }
    }

    void flagsTellFunctionKeysFromOthers()
    {
        using namespace VirtualKeys;
        const std::tuple<int, Qt::KeyboardModifiers, qint32> cases[] = {
            { Qt::Key_F10, {}, Function },
            { Qt::Key_F5, Qt::ShiftModifier, Function | Shift },
            { Qt::Key_Return, {}, 0 },
            { Qt::Key_Return, Qt::ControlModifier | Qt::AltModifier, Command | Option },
        };
        for (const auto &[key, modifiers, flags] : cases)
            QCOMPARE(modifierFlags(QKeyEvent(QEvent::KeyPress, key, modifiers)), flags);
    }

    void storedBindingDecidesWhichPressMatches()
    {
        using namespace VirtualKeys;
        using enum ClassicAction;
        const auto copy = [](const QVariant &key, int choice) {
            return binding(u"Copy"_s, key, choice);
        };
        const struct {
            QVariant stored;
            int key;
            qint32 flags;
            std::optional<ClassicAction> action;
        } rows[] = {
            { {}, F5, Function, Copy },
            { {}, F5, Function | Shift, Copy },
            { {}, F10, Function, Exit },
            { copy(F5, 3), F5, Function | Command, Copy },
            { copy(F5, 1), F5, Function, {} }, // the chosen modifier is missing
            { copy(F5, 1), F5, Function | Shift, Copy },
            { copy(Return, 0), Return, 0, {} }, // needs some flag
            { copy(Return, 4), Return, Option, Copy },
            { copy(Return, 0), F5, Function, {} }, // the old key is free
            { copy(-1, 0), -1, Shift, {} }, // Shift alone has no code
            { copy(true, 0), F5, Function, Copy }, // no keys at all
            { copy(std::nan(""), 0), F5, Function, Copy },
            { copy(1e300, 0), F5, Function, Copy },
            { copy(u"F5"_s, 0), F5, Function, Copy }, // a key that is no number
            { QVariantMap { { u"CopyKeys"_s, 7 } }, F5, Function, Copy },
            { binding(u"Delete"_s, F6, 0), F6, Function, Move }, // the first of two on one key
        };
        for (const auto &row : rows) {
            defaults.setValue(Settings::ClassicKeys, row.stored);
            QCOMPARE(ClassicKeys::fromDefaults(defaults).match(row.key, row.flags), row.action);
        }
        defaults.setValue(Settings::ClassicKeys, binding(u"Rename"_s, F8, 3));
        const ClassicKeys keys = ClassicKeys::fromDefaults(defaults);
        QCOMPARE(keys.menuText(Copy) + u' ' + keys.menuText(Rename), u"F5 Ctrl+F8"_s);
    }

private:
    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
};

QTEST_GUILESS_MAIN(tst_ClassicKeys)
#include "tst_ClassicKeys.moc"

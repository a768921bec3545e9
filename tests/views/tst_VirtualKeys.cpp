#include "views/VirtualKeys.h"

#include <QKeyEvent>
#include <QTest>

class tst_VirtualKeys : public QObject {
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
            { "A", 38, Qt::Key_A, 0 },
            { "Q key of a French keyboard", 24, Qt::Key_A, 12 },
            { "Y key of a German keyboard", 29, Qt::Key_Z, 16 },
            { "Ä", 48, Qt::Key_Adiaeresis, 39 },
            { "Ö", 47, Qt::Key_Odiaeresis, 41 },
            { "Ü", 34, Qt::Key_Udiaeresis, 33 },
            { "Cyrillic A", 41, 0x0410, 3 },
            { "last letter of the keyboard", 58, Qt::Key_M, 46 },
            { "shifted digit", 10, Qt::Key_Exclam, 18 },
            { "no scan code", 0, Qt::Key_M, 46 },
            { "arrow on the level of a letter", 39, Qt::Key_Left, VirtualKeys::LeftArrow },
            { "F5", 71, Qt::Key_F5, VirtualKeys::F5 },
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
};

QTEST_GUILESS_MAIN(tst_VirtualKeys)
#include "tst_VirtualKeys.moc"

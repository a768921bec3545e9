#include "platform/VirtualKeys.h"

#include <QKeyEvent>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_VirtualKeys : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void codeIsThePhysicalKeys_data();
    void codeIsThePhysicalKeys();
    void flagsTellFunctionKeysFromOthers_data();
    void flagsTellFunctionKeysFromOthers();
};

void tst_VirtualKeys::codeIsThePhysicalKeys_data()
{
    QTest::addColumn<quint32>("scanCode");
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("code");
    const Qt::KeyboardModifiers none;
    const Qt::KeyboardModifiers keypad = Qt::KeypadModifier;
    QTest::newRow("A") << 38U << int(Qt::Key_A) << none << 0;
    QTest::newRow("Q key of a French keyboard") << 24U << int(Qt::Key_A) << none << 12;
    QTest::newRow("Y key of a German keyboard") << 29U << int(Qt::Key_Z) << none << 16;
    QTest::newRow("Ä") << 48U << int(Qt::Key_Adiaeresis) << none << 39;
    QTest::newRow("Ö") << 47U << int(Qt::Key_Odiaeresis) << none << 41;
    QTest::newRow("Ü") << 34U << int(Qt::Key_Udiaeresis) << none << 33;
    QTest::newRow("Cyrillic A") << 41U << 0x0410 << none << 3;
    QTest::newRow("last letter of the keyboard") << 58U << int(Qt::Key_M) << none << 46;
    QTest::newRow("shifted digit") << 10U << int(Qt::Key_Exclam) << none << 18;
    QTest::newRow("no scan code") << 0U << int(Qt::Key_M) << none << 46;
    QTest::newRow("left arrow on the level of a letter")
        << 39U << int(Qt::Key_Left) << none << VirtualKeys::LeftArrow;
    QTest::newRow("F5") << 71U << int(Qt::Key_F5) << none << VirtualKeys::F5;
    QTest::newRow("F10") << 76U << int(Qt::Key_F10) << none << VirtualKeys::F10;
    QTest::newRow("digit of the keypad") << 87U << int(Qt::Key_1) << keypad << 83;
    QTest::newRow("keypad without Num Lock")
        << 79U << int(Qt::Key_Home) << keypad << VirtualKeys::Home;
    QTest::newRow("Shift alone") << 50U << int(Qt::Key_Shift) << none << -1;
    QTest::newRow("volume") << 123U << int(Qt::Key_VolumeUp) << none << -1;
}

void tst_VirtualKeys::codeIsThePhysicalKeys()
{
    QFETCH(quint32, scanCode);
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
    QTEST(VirtualKeys::code(event), "code");
}

void tst_VirtualKeys::flagsTellFunctionKeysFromOthers_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<qint32>("flags");
    const Qt::KeyboardModifiers none;
    QTest::newRow("F10") << int(Qt::Key_F10) << none << VirtualKeys::Function;
    QTest::newRow("Shift+F5") << int(Qt::Key_F5) << Qt::KeyboardModifiers(Qt::ShiftModifier)
                              << (VirtualKeys::Function | VirtualKeys::Shift);
    QTest::newRow("Return") << int(Qt::Key_Return) << none << 0;
    QTest::newRow("Ctrl+Alt+Return")
        << int(Qt::Key_Return) << (Qt::ControlModifier | Qt::AltModifier)
        << (VirtualKeys::Command | VirtualKeys::Option);
}

void tst_VirtualKeys::flagsTellFunctionKeysFromOthers()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QTEST(VirtualKeys::modifierFlags(QKeyEvent(QEvent::KeyPress, key, modifiers)), "flags");
}

QTEST_GUILESS_MAIN(tst_VirtualKeys)
#include "tst_VirtualKeys.moc"

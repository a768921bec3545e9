#include "platform/UserDefaults.h"
#include "platform/VirtualKeys.h"
#include "tests/support/TestFolder.h"
#include "util/SettingsKeys.h"
#include "views/ClassicKeys.h"

#include <QtTest>

using namespace Qt::StringLiterals;

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
    void storedBindingDecidesWhichPressMatches_data();
    void storedBindingDecidesWhichPressMatches();
    void menuTextNamesModifierAndKey();
};

void tst_ClassicKeys::storedBindingDecidesWhichPressMatches_data()
{
    QTest::addColumn<QVariantMap>("stored");
    QTest::addColumn<int>("key");
    QTest::addColumn<qint32>("flags");
    QTest::addColumn<int>("action"); // -1: none

    const int copy = int(ClassicAction::Copy);
    const int move = int(ClassicAction::Move); // comes before Delete
    const QVariantMap none;
    using namespace VirtualKeys;
    QTest::newRow("F5 by default") << none << F5 << Function << copy;
    QTest::newRow("F10 quits by default") << none << F10 << Function << int(ClassicAction::Exit);
    QTest::newRow("F5 with Shift too") << none << F5 << (Function | Shift) << copy;
    QTest::newRow("chosen modifier missing") << binding(u"Copy"_s, F5, 1) << F5 << Function << -1;
    QTest::newRow("two on one key") << binding(u"Delete"_s, F6, 0) << F6 << Function << move;
    QTest::newRow("Shift") << binding(u"Copy"_s, F5, 1) << F5 << (Function | Shift) << copy;
    QTest::newRow("Option") << binding(u"Copy"_s, F5, 2) << F5 << (Function | Option) << copy;
    QTest::newRow("Command") << binding(u"Copy"_s, F5, 3) << F5 << (Function | Command) << copy;
    QTest::newRow("choice 0 needs some flag") << binding(u"Copy"_s, Return, 0) << Return << 0 << -1;
    QTest::newRow("choice 4 takes any flag")
        << binding(u"Copy"_s, Return, 4) << Return << Option << copy;
    QTest::newRow("the old key is free") << binding(u"Copy"_s, Return, 0) << F5 << Function << -1;
    QTest::newRow("a key that is no number")
        << binding(u"Copy"_s, u"F5"_s, 0) << F5 << Function << copy;
    QTest::newRow("no dictionary for the action")
        << QVariantMap { { u"CopyKeys"_s, 7 } } << F5 << Function << copy;
}

void tst_ClassicKeys::storedBindingDecidesWhichPressMatches()
{
    QFETCH(QVariantMap, stored);
    QFETCH(int, key);
    QFETCH(qint32, flags);
    const TestFolder folder;
    UserDefaults defaults(folder.path(u"settings.plist"_s));
    if (!stored.isEmpty())
        defaults.setValue(Settings::ClassicKeys, stored);
    const auto match = ClassicKeys::fromDefaults(defaults).match(key, flags);
    QTEST(match ? int(*match) : -1, "action");
}

void tst_ClassicKeys::menuTextNamesModifierAndKey()
{
    const TestFolder folder;
    UserDefaults defaults(folder.path(u"settings.plist"_s));
    defaults.setValue(Settings::ClassicKeys, binding(u"Rename"_s, VirtualKeys::F8, 3));
    const ClassicKeys keys = ClassicKeys::fromDefaults(defaults);
    QCOMPARE(keys.menuText(ClassicAction::Copy), u"F5"_s);
    QCOMPARE(keys.menuText(ClassicAction::Rename), u"Ctrl+F8"_s);
}

QTEST_GUILESS_MAIN(tst_ClassicKeys)
#include "tst_ClassicKeys.moc"

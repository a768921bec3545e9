#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "tests/support/TestFolder.h"
#include "views/ClassicKeys.h"
#include "views/VirtualKeys.h"

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
            { copy(F5, 1), F5, Function, {} }, // the chosen modifier is missing
            { copy(F5, 1), F5, Function | Shift, Copy },
            { copy(F5, 2), F5, Function | Option, Copy },
            { copy(F5, 3), F5, Function | Command, Copy },
            { copy(Return, 0), Return, 0, {} }, // needs some flag
            { copy(Return, 4), Return, Option, Copy },
            { copy(Return, 0), F5, Function, {} }, // the old key is free
            { copy(u"F5"_s, 0), F5, Function, Copy }, // a key that is no number
            { QVariantMap { { u"CopyKeys"_s, 7 } }, F5, Function, Copy },
            { binding(u"Delete"_s, F6, 0), F6, Function, Move }, // the first of two on one key
        };
        for (const auto &row : rows) {
            defaults.setValue(Settings::ClassicKeys, row.stored);
            QCOMPARE(ClassicKeys::fromDefaults(defaults).match(row.key, row.flags), row.action);
        }
    }

    void menuTextNamesModifierAndKey()
    {
        defaults.setValue(Settings::ClassicKeys, binding(u"Rename"_s, VirtualKeys::F8, 3));
        const ClassicKeys keys = ClassicKeys::fromDefaults(defaults);
        QCOMPARE(keys.menuText(ClassicAction::Copy), u"F5"_s);
        QCOMPARE(keys.menuText(ClassicAction::Rename), u"Ctrl+F8"_s);
    }

private:
    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
};

QTEST_GUILESS_MAIN(tst_ClassicKeys)
#include "tst_ClassicKeys.moc"

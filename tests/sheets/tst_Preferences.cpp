#include "search/WalkRules.h"
#include "settings/StoredWords.h"
#include "sheets/preferences/KeyConflicts.h"
#include "sheets/preferences/PreferencesController.h"
#include "tests/sheets/ShownPreferences.h"
#include "views/VirtualKeys.h"
#include "widgets/Colors.h"
#include "widgets/ColorWell.h"
#include "widgets/SegmentedControl.h"
#include "window/InfoBarTextField.h"
#include "window/MainWindowLayout.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QListWidget>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabWidget>
#include <QTranslator>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QVariantMap binding(int key, int modifier, const QString &name)
{
    return { { name + u"Keys"_s,
               QVariantMap { { name + u"Key"_s, key }, { name + u"ModifierFlag"_s, modifier } } } };
}

QVariantMap color(const QVariant &red, const QVariant &alpha = {})
{
    QVariantMap dictionary { { u"Red"_s, red }, { u"Green"_s, 0.5 }, { u"Blue"_s, 0.5 } };
    if (alpha.isValid())
        dictionary[u"Alpha"_s] = alpha;
    return dictionary;
}

// All of them, the next one that is added included.
QStringList keysOfSettings()
{
    QFile header(QFINDTESTDATA("../../settings/SettingsKeys.h"));
    if (!header.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression key(u"\\bKey \\w+ \\{ \"([^\"]+)\" \\};"_s);
    QStringList keys;
    for (const auto &match : key.globalMatch(QString::fromUtf8(header.readAll())))
        keys.append(match.captured(1));
    return keys;
}

} // namespace

class tst_Preferences : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withNothingStoredTheDefaultsAreShownAndOkStoresThem()
    {
        StartedWorld world;
        preferences(world, [&](const Shown &shown) {
            for (const char *on :
                 { "Ask before file operations", "Show each item's own icon", "Show tool tips",
                   "Follow symbolic links", "Show the folders that were open last" })
                QVERIFY2(shown.control<QCheckBox>(QLatin1StringView(on)).isChecked(), on);
            for (const char *off : { "Flat look", "Long format", "Align on the right" })
                QVERIFY2(!shown.control<QCheckBox>(QLatin1StringView(off)).isChecked(), off);
            QCOMPARE(shown.control<QComboBox>(u"Path navigators"_s).currentText(), u"Small"_s);
            QCOMPARE(shown.control<QComboBox>(u"Font of the paths"_s).currentText(), u"Bold"_s);
            QCOMPARE(shown.control<QSpinBox>(u"Font size of the paths"_s).value(), 10);
            QCOMPARE(shown.key(u"Copy"_s).currentIndex(), 4);
            QCOMPARE(shown.key(u"Quit"_s).currentText(), u"F10"_s);
        });
        // Kept: both colours are stored although nobody chose them.
        const auto frame = world.defaults.dictionary(Settings::InfoBarFrameColor).value();
        QVERIFY(qAbs(frame[u"Red"_s].toDouble() - 120.0 / 255) < 1e-6);
        QCOMPARE(world.defaults.dictionary(Settings::InfoBarFontColor)->value(u"Alpha"_s), 1.0);
        const auto keys = world.defaults.dictionary(Settings::ClassicKeys).value();
        QCOMPARE(keys.size(), 6);
        QCOMPARE(keys[u"RenameKeys"_s].toMap()[u"RenameKey"_s].toInt(), 101);
        QCOMPARE(keys[u"ExitKeys"_s].toMap()[u"ExitModifierFlag"_s].toInt(), 0);
        QVERIFY(!world.defaults.contains(Settings::ShowToolTips)); // untouched
    }

    void okGoesThroughItsStepsInOrder()
    {
        StartedWorld world;
        world.openPanel.folder = world.folder.path(u"right"_s);
        QStringList steps;
        const auto stored = [&world](Settings::Key key) { return world.defaults.contains(key); };
        auto &controller = world.application.preferencesController();
        using Preferences = PreferencesController;
        connect(&controller, &Preferences::dateFormattersToSet, this, [&] {
            const bool before = stored(Settings::ClassicKeys)
                && world.model.confirmationForFileOperations() == false
                && world.defaults.string(Settings::LeftFileListLastPath)
                    == world.folder.path(u"right"_s)
                && !stored(Settings::InfoBarFontColor);
            steps.append(before ? u"dates"_s : u"dates too early"_s);
        });
        connect(&controller, &Preferences::pathNavigatorsToSetUp, this,
                [&] { steps.append(u"navigators"_s); });
        struct Lists {
            void read(Side side, const FolderChange &change)
            {
                steps.append((side == Side::Left ? u"left "_s : u"right "_s)
                             + PathText::lastComponent(change.path));
            }
            QStringList &steps;
        } lists { steps };
        world.bus.subscribe(DirectoryChanged, &lists, &Lists::read);
        connect(&controller, &Preferences::infoBarColorsToSet, this, [&] {
            steps.append(stored(Settings::InfoBarFontColor) ? u"colors"_s : u"none"_s);
        });
        connect(&controller, &Preferences::openWithFavoriteApplicationsToSet, this,
                [&] { steps.append(u"open with"_s); });
        connect(&controller, &Preferences::toolbarToSetUp, this,
                [&] { steps.append(u"toolbar"_s); });
        preferences(world, [&](const Shown &shown) {
            shown.click(u"Ask before file operations"_s);
            shown.click(u"Show the folders that were open last"_s);
            shown.click(u"Choose left folder"_s);
        });
        world.bus.unsubscribe(&lists);
        // The panes stay where they are: the start folders are those of the next start.
        QCOMPARE(steps,
                 (QStringList { u"dates"_s, u"navigators"_s, u"colors"_s, u"left left"_s,
                                u"right right"_s, u"open with"_s, u"toolbar"_s }));
    }

    void whatIsStoredAtOnceIsSeenAtOnceAndOutlivesClosing()
    {
        StartedWorld world;
        const SegmentedControl &navigator = *world.window.segmentedControls.left;
        const int date = int(Column::Date);
        preferences(
            world,
            [&](const Shown &shown) {
                shown.click(u"Ask before file operations"_s);
                QVERIFY(!world.model.confirmationForFileOperations());
                for (const bool on : { false, true }) {
                    shown.click(u"Show tool tips"_s);
                    QCOMPARE(navigator.segmentToolTip(1), on ? navigator.label(1) : QString());
                }
                shown.click(u"Flat look"_s);
                QVERIFY(!world.window.flat()); // Kept: the other way round
                shown.click(u"Align on the right"_s);
                const auto &rows = world.list().tableModel();
                QVERIFY(rows.index(0, date).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
                const QString before = rows.index(0, date).data().toString();
                shown.click(u"Long format"_s);
                QVERIFY(world.model.useLongDateFormat());
                shown.choose(u"Path navigators"_s, 1);
                QCOMPARE(world.defaults.string(Settings::PathNavigatorsSize), u"Mini"_s);
                // A size counts only beside a style, so the one shown is stored with it.
                shown.control<QSpinBox>(u"Font size of the paths"_s).setValue(14);
                QCOMPARE(navigator.font().pointSize(), 14);
                shown.choose(u"Font of the paths"_s, 0);
                QVERIFY(!navigator.font().bold());
                QCOMPARE(navigator.font().pointSize(), 14);
                shown.key(u"Copy"_s).setCurrentIndex(0);
                shown.control<ColorWell>(u"Text color"_s).setColor(Qt::red);
            },
            End::Close);
        QCOMPARE(world.defaults.boolean(Settings::ConfirmationForFileOperations), false);
        for (const auto dropped : { Settings::ClassicKeys, Settings::InfoBarFontColor })
            QVERIFY(!world.defaults.contains(dropped));
    }

    void aSizeStoredWithoutAStyleShowsTen()
    {
        World world;
        world.defaults.setValue(Settings::PathNavigatorsFontSize, u"14"_s);
        world.start();
        QCOMPARE(world.window.segmentedControls.left->font().pointSize(), 10);
        preferences(world, [](const Shown &shown) {
            auto &size = shown.control<QSpinBox>(u"Font size of the paths"_s);
            QCOMPARE(size.value(), 10);
            shown.choose(u"Font of the paths"_s, 1);
            QCOMPARE(size.value(), 14); // which counts from now on
        });
        QCOMPARE(world.window.segmentedControls.left->font().pointSize(), 14);
    }

    void startFoldersAreThoseShownUntilOthersAreSearched()
    {
        StartedWorld world;
        const QString lost = u"caf"_s + QChar(0xDCE9); // a byte that is not UTF-8
        makeTree(world.folder, lost + u'/');
        world.show(Side::Right, lost);
        preferences(world, [&](const Shown &shown) {
            auto &left = shown.control<QLineEdit>(u"Left folder"_s);
            auto &search = shown.control<QAbstractButton>(u"Choose left folder"_s);
            QVERIFY(!left.isEnabled() && !search.isEnabled());
            shown.click(u"Show the folders that were open last"_s);
            QVERIFY(left.isEnabled() && search.isEnabled());
            QCOMPARE(left.text(), world.twinleaf.getLocalizedPath(world.shown()));
            search.click(); // and cancelled
            QCOMPARE(left.text(), world.twinleaf.getLocalizedPath(world.shown()));
        });
        QCOMPARE(world.defaults.string(Settings::LeftFileListLastPath), world.shown());
        QCOMPARE(world.defaults.string(Settings::RightFileListLastPath), world.folder.path(lost));
        QCOMPARE(world.defaults.boolean(Settings::SaveLastPaths), false);
    }

    void keysThatAreInNoListAreKept()
    {
        World world;
        QVariantMap keys = binding(36, 3, u"Copy"_s); // Ctrl+Return
        keys.insert(binding(-7, 9, u"Move"_s));
        keys.insert(binding(2147483647, -1, u"Delete"_s));
        keys.insert({ { u"RenameKeys"_s, u"none"_s }, { u"LaterKeys"_s, 5 } });
        world.defaults.setValue(Settings::ClassicKeys, keys);
        world.start();
        preferences(world, [](const Shown &shown) {
            QCOMPARE(shown.key(u"Copy"_s).currentText(), u"Return"_s);
            QCOMPARE(shown.modifier(u"Copy"_s).currentText(), u"Ctrl"_s);
            QCOMPARE(shown.key(u"Move"_s).currentText(), u"Key -7"_s);
            QCOMPARE(shown.modifier(u"Move"_s).currentIndex(), 0);
            QCOMPARE(shown.key(u"Rename"_s).currentText(), u"F9"_s);
        });
        const auto stored = world.defaults.dictionary(Settings::ClassicKeys).value();
        QCOMPARE(stored[u"CopyKeys"_s], QVariant(binding(36, 3, u"Copy"_s)[u"CopyKeys"_s]));
        QCOMPARE(stored[u"MoveKeys"_s].toMap()[u"MoveKey"_s].toInt(), -7);
        QCOMPARE(stored[u"DeleteKeys"_s].toMap()[u"DeleteKey"_s].toInt(), 2147483647);
        QCOMPARE(stored[u"LaterKeys"_s].toInt(), 5);
        preferences(world, [](const Shown &shown) { shown.click(u"Restore defaults"_s); });
        const auto restored = world.defaults.dictionary(Settings::ClassicKeys).value();
        QCOMPARE(restored[u"CopyKeys"_s], QVariant(binding(96, 0, u"Copy"_s)[u"CopyKeys"_s]));
        QCOMPARE(restored[u"ExitKeys"_s].toMap()[u"ExitKey"_s].toInt(), 109);
    }

    void conflictsOfKeysAreTold()
    {
        using enum ClassicAction;
        const auto choose = [](std::initializer_list<std::tuple<ClassicAction, int, int>> chosen) {
            ClassicKeys::Choices choices;
            for (const auto &[action, key, modifier] : chosen)
                choices[std::size_t(action)] = { key, modifier };
            return ClassicKeys(choices);
        };
        const int f5 = VirtualKeys::F5;
        const std::tuple<ClassicKeys, ClassicAction, QString> rows[] = {
            { ClassicKeys(), Copy, {} },
            { choose({ { Move, f5, 0 } }), Move, u"Same key as 'Copy'."_s },
            { choose({ { Move, f5, 0 } }), Copy, u"Same key as 'Move'."_s },
            { choose({ { Move, f5, 1 } }), Move, u"Same key as 'Copy'."_s }, // F5 takes all
            { choose({ { Copy, f5, 1 }, { Move, f5, 0 } }), Move, {} }, // all but Shift+F5
            { choose({ { Copy, f5, 1 }, { Move, f5, 2 } }), Move, {} },
            { choose({ { Copy, f5, 2 }, { Move, f5, 2 } }), Move, u"Same key as 'Copy'."_s },
            { choose({ { Rename, VirtualKeys::F3, 0 } }), Rename, u"Same key as 'View'."_s },
            { choose({ { Rename, VirtualKeys::F3, 1 } }), Rename, {} },
            { choose({ { Exit, VirtualKeys::F10, 1 } }), Exit,
              u"This key opens the context menu."_s },
            { choose({ { Copy, 0, 3 } }), Copy, u"This key finds names."_s },
        };
        for (const auto &[keys, action, conflict] : rows)
            QCOMPARE(keyConflict(action, keys), conflict);

        StartedWorld world;
        preferences(world, [](const Shown &shown) {
            shown.key(u"Move"_s).setCurrentIndex(4);
            for (const QString &command : { u"Move"_s, u"Copy"_s })
                QVERIFY(shown.key(command).accessibleDescription().startsWith(u"Same key"_s));
            shown.key(u"Move"_s).setCurrentIndex(10);
            QCOMPARE(shown.key(u"Copy"_s).accessibleDescription(), QString());
        });
    }

    void coloursThatAreNoneDoNoHarm_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QColor>("shown");
        const auto shown = [](double red, double alpha) {
            return QColor::fromRgbF(float(red), 0.5F, 0.5F, float(alpha));
        };
        QTest::newRow("missing") << QVariant(color(0.25)) << shown(0.25, 0);
        QTest::newRow("above 1") << QVariant(color(7.5, 1.0)) << shown(1, 1);
        QTest::newRow("below 0") << QVariant(color(-1.0, 1.0)) << shown(0, 1);
        QTest::newRow("not a number") << QVariant(color(std::nan(""), 1.0)) << shown(0, 1);
        QTest::newRow("text") << QVariant(color(u"red"_s, 1.0)) << shown(0, 1);
        QTest::newRow("no dictionary") << QVariant(u"black"_s) << QColor(Qt::black);
    }
    void coloursThatAreNoneDoNoHarm()
    {
        QFETCH(QVariant, stored);
        QFETCH(QColor, shown);
        World world;
        world.defaults.setValue(Settings::InfoBarFontColor, stored);
        world.start();
        preferences(world, [&](const Shown &page) {
            QCOMPARE(page.control<ColorWell>(u"Text color"_s).color().rgba64(), shown.rgba64());
        });
        const auto written = world.defaults.dictionary(Settings::InfoBarFontColor).value();
        for (const QString &part : { u"Red"_s, u"Green"_s, u"Blue"_s, u"Alpha"_s }) {
            const double value = written[part].toDouble();
            QVERIFY(value >= 0 && value <= 1);
        }
    }

    void settingsOfWrongTypesDoNoHarm_data()
    {
        QTest::addColumn<QVariant>("wrong");
        QTest::addColumn<bool>("isNumber"); // which stands for a truth and for a text
        QTest::newRow("text") << QVariant(u"maybe"_s) << false;
        QTest::newRow("list") << QVariant(QVariantList { 1 }) << false;
        QTest::newRow("dictionary") << QVariant(QVariantMap {}) << false;
        QTest::newRow("foreign dictionary") << QVariant(QVariantMap { { u"x"_s, 7 } }) << false;
        QTest::newRow("date") << QVariant(QDateTime::currentDateTime()) << false;
        QTest::newRow("bytes") << QVariant(QByteArray("x")) << false;
        QTest::newRow("number") << QVariant(7LL) << true;
        QTest::newRow("no number") << QVariant(std::nan("")) << true;
        QTest::newRow("huge") << QVariant(1e300) << true;
    }
    void settingsOfWrongTypesDoNoHarm()
    {
        QFETCH(QVariant, wrong);
        QFETCH(bool, isNumber);
        const QStringList keys = keysOfSettings();
        QVERIFY(keys.size() > 40);
        World world;
        qputenv("HOME", world.folder.bytes(u"left"_s)); // where no start folder is there
        for (const QString &key : keys)
            world.defaults.setValue(QLatin1StringView(key.toLatin1()), wrong);
        world.start();
        preferences(world, [isNumber](const Shown &shown) {
            QVERIFY(shown.control<QCheckBox>(u"Show tool tips"_s).isChecked());
            QCOMPARE(shown.control<QCheckBox>(u"Long format"_s).isChecked(), isNumber);
            QCOMPARE(shown.control<QSpinBox>(u"Font size of the paths"_s).value(), 10);
            QCOMPARE(shown.key(u"Copy"_s).currentText(), u"F5"_s);
        });
        world.bus.post(ApplicationWillTerminate);
        const auto stored = *world.defaults.dictionary(Settings::ClassicKeys);
        const bool keepsForeign = wrong.typeId() == QMetaType::QVariantMap;
        QCOMPARE(stored.size(), keepsForeign ? 6 + wrong.toMap().size() : 6);
        QCOMPARE(world.defaults.string(Settings::LeftFileListLastPath), world.shown());
    }

    void foldersAreLeftOutOfTheSearch()
    {
        World world;
        const QString odd = u"/home/"_s + QChar(0xDCFF);
        world.defaults.setValue(Settings::SearchLeftOutFolders, QVariantList { odd, 7 });
        world.start();
        const auto stored = [&] { return WalkRules::leftOutIn(world.defaults).join(u' '); };
        preferences(world, [&](const Shown &shown) {
            auto &field = shown.control<QLineEdit>(u"Folder"_s);
            auto &list = shown.control<QListWidget>(u"Folders left out"_s);
            QCOMPARE(list.count(), 1);
            for (const char *name : { "build", "build", "~/old" }) {
                QTest::keyClicks(&field, QString::fromLatin1(name));
                QTest::keyClick(&field, Qt::Key_Return); // and the sheet stays
                QVERIFY(shown.sheet.isVisible());
            }
            world.openPanel.folder = u"/data"_s;
            shown.click(u"Choose folder to leave out"_s);
            QCOMPARE(stored(), odd + u" build ~/old /data"_s);
            list.setCurrentRow(1);
            shown.click(u"Delete folder left out"_s);
            QCOMPARE(stored(), odd + u" ~/old /data"_s);
        });
    }

    void theKeyboardReachesEveryControlAndEachHasAName()
    {
        StartedWorld world;
        preferences(world, [](const Shown &shown) {
            shown.click(u"Show the folders that were open last"_s);
            auto &tabs = *shown.sheet.findChild<QTabWidget *>();
            const QSize size = shown.sheet.size();
            for (int page = 0; page < tabs.count(); ++page) {
                tabs.setCurrentIndex(page);
                QCOMPARE(shown.sheet.size(), size);
                tabs.tabBar()->setFocus();
                QSet<QWidget *> reached;
                for (int step = 0; step < 40; ++step) {
                    QTest::keyClick(shown.sheet.focusWidget(), Qt::Key_Tab);
                    reached.insert(shown.sheet.focusWidget());
                }
                const auto controls = tabs.widget(page)->findChildren<QWidget *>();
                for (QWidget *each : controls) {
                    if (!each->isEnabled() || each->focusPolicy() == Qt::NoFocus
                        || each->focusProxy() || each->inherits("QScrollBar")
                        || each->inherits("QHeaderView")
                        || each->parentWidget()->inherits("QSpinBox"))
                        continue;
                    QVERIFY2(reached.contains(each), each->metaObject()->className());
                    QVERIFY2(!each->accessibleName().isEmpty(), each->metaObject()->className());
                }
            }
        });
    }

    void aWordOfAnotherLanguageBecomesThisOnes()
    {
        TestFolder folder;
        UserDefaults defaults(folder.path(u"settings.plist"_s));
        QTranslator german;
        QVERIFY(german.load(u"twinleaf_de"_s, QStringLiteral(TWINLEAF_TRANSLATIONS)));
        const auto adopted = [&](Settings::Key key, const QString &stored, bool inGerman) {
            defaults.setValue(key, stored);
            if (inGerman)
                QCoreApplication::installTranslator(&german);
            adoptStoredWords(defaults, QStringLiteral(TWINLEAF_TRANSLATIONS));
            QCoreApplication::removeTranslator(&german);
            return defaults.string(key).value();
        };
        const auto size = Settings::PathNavigatorsSize;
        const auto style = Settings::PathNavigatorsFontStyle;
        QCOMPARE(adopted(style, u"Fett"_s, false), u"Bold"_s);
        QCOMPARE(adopted(style, u"Bold"_s, true), u"Fett"_s);
        QCOMPARE(adopted(size, u"Klein"_s, false), u"Small"_s);
        QCOMPARE(adopted(size, u"Klein"_s, true), u"Klein"_s);
        for (const QString &noWord : { u"Winzig"_s, u"Fett"_s, QString() })
            QCOMPARE(adopted(size, noWord, false), noWord);
    }
};

QTEST_MAIN(tst_Preferences)
#include "tst_Preferences.moc"

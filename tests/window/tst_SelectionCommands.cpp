#include "window/SelectionCommands.h"

#include "model/MainModel.h"
#include "platform/FileKinds.h"
#include "platform/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/PaneWindowStub.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/FileQueries.h"
#include "util/Launching.h"
#include "util/SettingsKeys.h"

#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// Two folders in the panes, sorted by name, and a person who answers the sheets as told.
struct World {
    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
    MessageBus bus;
    AlertScript alerts;
    RecordedWorkspace workspace;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    Launching launching { workspace, alerts };
    PaneWindowStub window;
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    ExpandSelection pattern;
    QString title;
    SelectionCommands
        commands { window, bus, model, queries, launching, defaults, [this](const QString &asked) {
                      title = asked;
                      return pattern;
                  } };

    World(const QStringList &left, const QStringList &right = {})
    {
        defaults.setValue(Settings::ShortTimeDateFormat, u"%Y-%m-%d"_s);
        model.setWindowController(&window);
        fill(Side::Left, u"left"_s, left);
        fill(Side::Right, u"right"_s, right);
    }
    void fill(Side side, const QString &name, const QStringList &files)
    {
        folder.makeFolder(name);
        for (const QString &file : files)
            write(name + u'/' + file, 1);
        show(side, name);
    }
    void write(const QString &path, qsizetype size, time_t modified = 1000000000)
    {
        folder.write(path, QByteArray(size, 'x'));
        const timespec times[2] = { { modified, 0 }, { modified, 0 } };
        utimensat(AT_FDCWD, folder.path(path).toUtf8(), times, 0);
    }
    void show(Side side, const QString &name)
    {
        window.paths[side] = folder.path(name);
        bus.post(DirectoryChanged[side], { .path = folder.path(name) });
        model.sortRowEntries(Column::Name, side, SortDirection::Ascending);
        window.tables[side].rows = int(model.rows(side).size());
        window.tables[side].selectRow(0);
    }
    QStringList selected(Side side = Side::Left)
    {
        QStringList names;
        for (const int row : std::as_const(window.tables[side].selected))
            names.append(model.rows(side)[row].name());
        return names;
    }
    void type(const QString &letter) { bus.post(LetterPressed, { letter }); }
};

} // namespace

class tst_SelectionCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLetterGoesFromNameToName();
    void aLetterWithoutAMatchSelectsNothingElse();
    void aGroupAddsToAndTakesFromTheSelection();
    void withoutAPatternNothingChanges();
    void sameNamesAreSelectedInTheActivePane();
    void comparedFoldersShareWhatIsEqual();
    void findLooksAtAllColumnsBelowAndAtNamesAbove();
    void findAsksOnlyWhenItMust();
    void theMetadataSearchIsAskedForTheSelectedName();
    void aChosenSearchResultIsShownOrOpened();
};

void tst_SelectionCommands::aLetterGoesFromNameToName()
{
    World world({ u"Desk"_s, u"Dev"_s, u"Zoo"_s, u"docs"_s });
    for (const QString &expected : { u"Desk"_s, u"Dev"_s, u"docs"_s, u"Desk"_s }) {
        world.type(u"d"_s);
        QCOMPARE(world.selected(), QStringList { expected });
    }
    // Kept: a capital finds capitals alone.
    world.type(u"D"_s);
    world.type(u"D"_s);
    QCOMPARE(world.selected(), QStringList { u"Desk"_s });
}

void tst_SelectionCommands::aLetterWithoutAMatchSelectsNothingElse()
{
    World world({ u"a"_s, u"b"_s });
    world.type(u"b"_s);
    for (const QString &letter : { u"x"_s, QString() })
        world.type(letter);
    QCOMPARE(world.selected(), QStringList { u"b"_s });
    world.window.focus.reset();
    world.type(u"a"_s);
    QCOMPARE(world.selected(), QStringList { u"b"_s });
}

void tst_SelectionCommands::aGroupAddsToAndTakesFromTheSelection()
{
    World world({ u"B.Txt"_s, u"a.txt"_s, u"c.png"_s });
    world.window.tables.left.selectRows({ 3 });
    world.pattern = { .target = MatchTarget::Name,
                      .method = MatchMethod::Contains,
                      .text = u"."_s };
    world.commands.groupSelectClicked();
    QCOMPARE(world.title, u"Group selection"_s);
    QCOMPARE(world.selected(), QStringList({ u"B.Txt"_s, u"a.txt"_s, u"c.png"_s })); // ".." never
    world.pattern = { .method = MatchMethod::EndsWith, .text = u".TXT"_s };
    world.commands.groupDeselectClicked();
    QCOMPARE(world.title, u"Group deselection"_s);
    QCOMPARE(world.selected(), QStringList { u"c.png"_s });

    world.write(u"left/big"_s, 2048);
    world.show(Side::Left, u"left"_s);
    world.window.tables.left.selectRows({});
    world.pattern = { .target = MatchTarget::Size, .text = u"KB"_s };
    world.commands.groupSelectClicked();
    QCOMPARE(world.selected(), QStringList { u"big"_s });
    world.pattern = { .target = MatchTarget::Date, .text = u"2001-09"_s };
    world.commands.groupSelectClicked();
    QCOMPARE(world.selected().size(), 4);
}

void tst_SelectionCommands::withoutAPatternNothingChanges()
{
    World world({ u"a"_s, u"b"_s });
    world.window.tables.left.selectRows({ 1 });
    world.commands.groupSelectClicked(); // cancelled: an empty text
    world.commands.groupDeselectClicked();
    QCOMPARE(world.selected(), QStringList { u"a"_s });
}

void tst_SelectionCommands::sameNamesAreSelectedInTheActivePane()
{
    World world({ u"a"_s, u"b"_s, u"c"_s }, { u"B"_s, u"a"_s, u"c"_s });
    world.window.tables.left.selectRows({ 2 });
    world.window.tables.right.selectRows({ 1 });
    world.commands.selectSameClicked();
    QCOMPARE(world.selected(), QStringList({ u"a"_s, u"c"_s }));
    QCOMPARE(world.selected(Side::Right), QStringList { u"B"_s });
}

void tst_SelectionCommands::comparedFoldersShareWhatIsEqual()
{
    World world({ u"date"_s, u"equal"_s, u"here"_s, u"size"_s },
                { u"date"_s, u"equal"_s, u"size"_s, u"there"_s });
    world.write(u"right/date"_s, 1, 1000000001);
    world.write(u"right/size"_s, 2);
    world.show(Side::Right, u"right"_s);
    world.window.tables.right.selectRows({ 4 });
    world.commands.compareFoldersClicked();
    QCOMPARE(world.selected(), QStringList { u"equal"_s });
    QCOMPARE(world.selected(Side::Right), QStringList { u"equal"_s });
}

void tst_SelectionCommands::findLooksAtAllColumnsBelowAndAtNamesAbove()
{
    World world({ u"a"_s, u"b"_s, u"c"_s });
    world.write(u"left/b"_s, 1, 1180000000); // 2007
    world.show(Side::Left, u"left"_s);
    world.window.typed = u"2007"_s;
    world.commands.searchClicked(SelectionCommands::Ask::Always);
    QCOMPARE(world.selected(), QStringList { u"b"_s }); // by its date
    // Kept: from the top only names are looked at, so the date is not found again.
    world.commands.searchClicked(SelectionCommands::Ask::WithoutTerm);
    QCOMPARE(world.selected(), QStringList { u"b"_s });
    world.window.typed = u"A"_s;
    world.commands.searchClicked(SelectionCommands::Ask::Always);
    QCOMPARE(world.selected(), QStringList { u"a"_s });
}

void tst_SelectionCommands::findAsksOnlyWhenItMust()
{
    World world({ u"ab"_s, u"b"_s });
    world.commands.searchClicked(SelectionCommands::Ask::WithoutTerm);
    QCOMPARE(world.window.prompts, QStringList { u"Please enter search term(s):|"_s });
    QCOMPARE(world.selected(), QStringList { u".."_s }); // cancelled
    world.window.typed = u"b"_s;
    world.commands.searchClicked(SelectionCommands::Ask::WithoutTerm);
    world.commands.searchClicked(SelectionCommands::Ask::WithoutTerm);
    QCOMPARE(world.window.prompts.size(), 2);
    QCOMPARE(world.selected(), QStringList { u"b"_s });
    world.commands.searchClicked(SelectionCommands::Ask::Always);
    QCOMPARE(world.window.prompts.last(), u"Please enter search term(s):|b"_s);
}

void tst_SelectionCommands::theMetadataSearchIsAskedForTheSelectedName()
{
    World world({ u"a"_s });
    struct Search {
        void add(const SearchFor &asked) { texts.append(asked.text.value_or(u"nothing"_s)); }
        QStringList texts;
    } search;
    world.bus.subscribe(SpotlightSearch, &search, &Search::add);
    world.window.tables.left.selectRow(1);
    world.commands.spotlightSearchMenuItemClicked();
    world.commands.spotlightSearchClicked();
    world.window.tables.left.selectRow(-1);
    world.commands.spotlightSearchMenuItemClicked();
    QCOMPARE(search.texts, QStringList({ u"a"_s, u"nothing"_s }));
}

void tst_SelectionCommands::aChosenSearchResultIsShownOrOpened()
{
    World world({});
    world.folder.makeFolder(u"found"_s);
    world.folder.write(u"file"_s);
    world.bus.post(SpotlightSearchResultClicked, { world.folder.path(u"found"_s) });
    QCOMPARE(world.model.rowsLeft().folder(), world.folder.path(u"found"_s));
    for (const QString &name : { u"file"_s, u"some.app"_s, u"some.pkg"_s })
        world.bus.post(SpotlightSearchResultClicked, { world.folder.path(name) });
    QStringList verbs;
    for (const QStringList &call : std::as_const(world.workspace.calls))
        verbs.append(call.first());
    QCOMPARE(verbs, QStringList({ u"open"_s, u"launch"_s, u"install"_s }));
}

QTEST_MAIN(tst_SelectionCommands)
#include "tst_SelectionCommands.moc"

#include "commands/SelectionCommands.h"

#include "files/FileName.h"
#include "tests/support/PaneWorld.h"

#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// Files of one byte and one date in the panes, sorted by name, and a person who answers the sheets
// as told.
using Search = void (SelectionCommands::*)();

struct World : PaneWorld {
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
        for (const Side side : { Side::Left, Side::Right }) {
            folder.makeFolder(sideWord(side));
            for (const QString &name : side == Side::Left ? left : right)
                write(side, name, 1);
            list(side);
        }
    }
    void write(Side side, const QString &name, qsizetype size, time_t modified = 1000000000,
               long nanoseconds = 0)
    {
        const QString path = sideWord(side) + u'/' + name;
        folder.write(path, QByteArray(size, 'x'));
        const timespec times[2] = { { modified, nanoseconds }, { modified, nanoseconds } };
        utimensat(AT_FDCWD, FileName::toBytes(folder.path(path)), times, 0);
    }
    void list(Side side)
    {
        show(side, sideWord(side));
        model.sortRowEntries(Column::Name, side, SortDirection::Ascending);
        window.tables[side].selectRow(0);
    }
    void select(const RowSet &rows) { window.tables.left.selectRows(rows); }
    QString selected(Side side = Side::Left)
    {
        QStringList names;
        for (const int row : std::as_const(window.tables[side].selected))
            names.append(name(row, side));
        return names.join(u' ');
    }
    QString afterLetter(const QString &letter)
    {
        bus.post(LetterPressed, { letter });
        return selected();
    }
    QString afterSearch(const QString &typed, Search search = &SelectionCommands::searchClicked)
    {
        window.typed = typed;
        (commands.*search)();
        return selected();
    }
};

} // namespace

class tst_SelectionCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLetterGoesFromNameToName()
    {
        World world({ u"Desk"_s, u"Dev"_s, u"Zoo"_s, u"docs"_s });
        for (const QString &expected : { u"Desk"_s, u"Dev"_s, u"docs"_s, u"Desk"_s })
            QCOMPARE(world.afterLetter(u"d"_s), expected);
        // Kept: a capital finds capitals alone.
        QCOMPARE(world.afterLetter(u"D"_s), u"Dev"_s);
        QCOMPARE(world.afterLetter(u"D"_s), u"Desk"_s);
        for (const QString &letter : { u"x"_s, QString() })
            QCOMPARE(world.afterLetter(letter), u"Desk"_s);
        world.window.focus.reset();
        QCOMPARE(world.afterLetter(u"d"_s), u"Desk"_s);
    }

    void aGroupAddsToAndTakesFromTheSelection()
    {
        World world({ u"B.Txt"_s, u"a.txt"_s, u"c.png"_s });
        const auto after = [&](void (SelectionCommands::*command)(),
                               const ExpandSelection &pattern) {
            world.pattern = pattern;
            (world.commands.*command)();
            return world.selected();
        };
        const auto select = &SelectionCommands::groupSelectClicked;
        const auto deselect = &SelectionCommands::groupDeselectClicked;
        world.select({ 3 });
        const ExpandSelection cancelled { .method = MatchMethod::BeginsWith };
        QCOMPARE(after(select, cancelled), u"c.png"_s);
        QCOMPARE(after(deselect, cancelled), u"c.png"_s);
        QCOMPARE(after(select, { .text = u"."_s }), u"B.Txt a.txt c.png"_s); // ".." never
        QCOMPARE(world.title, u"Group selection"_s);
        QCOMPARE(after(deselect, { .method = MatchMethod::EndsWith, .text = u".TXT"_s }),
                 u"c.png"_s);
        QCOMPARE(world.title, u"Group deselection"_s);

        world.write(Side::Left, u"big"_s, 2048);
        world.list(Side::Left);
        world.select({});
        QCOMPARE(after(select, { .target = MatchTarget::Size, .text = u"KB"_s }), u"big"_s);
        QCOMPARE(after(select, { .target = MatchTarget(9), .text = u"a"_s }), u"big"_s); // unknown
        QCOMPARE(after(select, { .target = MatchTarget::Date, .text = u"2001-09"_s }),
                 u"B.Txt a.txt big c.png"_s);
    }

    void sameNamesAreSelectedInTheActivePane()
    {
        // The letter in one piece and in two, and bytes that are no text: alike to the eye alone.
        World world({ QString(QChar(0xE9)), FileName::fromBytes("x\xFF"), u"a"_s, u"b"_s, u"c"_s },
                    { u"e\u0301"_s, FileName::fromBytes("x\xFE"), u"B"_s, u"a"_s, u"c"_s });
        world.select({ 2 });
        world.window.tables.right.selectRows({ 1 });
        world.commands.selectSameClicked();
        QCOMPARE(world.selected(), u"a c"_s);
        QCOMPARE(world.selected(Side::Right), u"B"_s);
    }

    void comparedFoldersShareWhatIsListedAlike()
    {
        const struct {
            QString name;
            qsizetype size;
            qint64 nanoseconds;
        } files[] = {
            { u"a date"_s, 2048, 6'000'000 },
            { u"a date cut by a disk"_s, 2048, 5'000'700 },
            { u"a size"_s, 4096, 5'000'000 },
            { u"a size that reads the same"_s, 2049, 5'000'000 },
        };
        World world({ u"here"_s }, { u"there"_s });
        for (const auto &file : files) {
            world.write(Side::Left, file.name, 2048, 1, 5'000'000);
            world.write(Side::Right, file.name, file.size, 1, file.nanoseconds);
        }
        for (const Side side : { Side::Right, Side::Left })
            world.list(side);
        world.window.tables.right.selectRows({ 4 });
        world.commands.compareFoldersClicked();
        for (const Side side : { Side::Left, Side::Right })
            QCOMPARE(world.selected(side), u"a date cut by a disk a size that reads the same"_s);
    }

    void findLooksAtAllColumnsBelowAndAtNamesAbove()
    {
        World world({ u"a"_s, u"b"_s, u"c"_s });
        world.write(Side::Left, u"b"_s, 1, 1180000000); // 2007
        world.list(Side::Left);
        QCOMPARE(world.afterSearch(u"2007"_s), u"b"_s); // by its date
        // Kept: from the top only names are looked at, so the date is not found again.
        world.select({ 3 });
        QCOMPARE(world.afterSearch({}, &SelectionCommands::searchNextClicked), u"c"_s);
        QCOMPARE(world.afterSearch(u"A"_s), u"a"_s);
        QCOMPARE(world.afterSearch(u".."_s), u".."_s);
    }

    void findAsksOnlyWhenItMust()
    {
        const Search next = &SelectionCommands::searchNextClicked;
        World world({ u"ab"_s, u"b"_s });
        QCOMPARE(world.afterSearch({}, next), u".."_s); // cancelled
        QCOMPARE(world.afterSearch(u"b"_s, next), u"ab"_s);
        QCOMPARE(world.afterSearch(u"not asked"_s, next), u"b"_s);
        world.commands.searchClicked();
        const QString prompt = u"Please enter search term(s):|"_s;
        QCOMPARE(world.window.prompts, QStringList({ prompt, prompt, prompt + u'b' }));
    }

    void theMetadataSearchTakesTheSelectedNameAndOpensWhatIsChosen()
    {
        World world({ u"a"_s });
        struct Search {
            void add(const SearchFor &asked) { texts.append(asked.text.value_or(u"nothing"_s)); }
            QStringList texts;
        } search;
        world.bus.subscribe(SpotlightSearch, &search, &Search::add);
        world.select({ 1 });
        world.commands.spotlightSearchMenuItemClicked();
        world.commands.spotlightSearchClicked();
        world.select({});
        world.commands.spotlightSearchMenuItemClicked();
        QCOMPARE(search.texts, QStringList({ u"a"_s, u"nothing"_s }));

        for (const QString &name : { u"Right"_s, u"Left/a"_s, u"some.app"_s, u"some.pkg"_s })
            world.bus.post(SpotlightSearchResultClicked, { world.folder.path(name) });
        QStringList verbs;
        for (const QStringList &call : std::as_const(world.workspace.calls))
            verbs.append(call.first());
        QCOMPARE(verbs, QStringList({ u"open"_s, u"launch"_s, u"install"_s }));
        QCOMPARE(world.shown(), world.folder.path(u"Right"_s));
    }
};

QTEST_MAIN(tst_SelectionCommands)
#include "tst_SelectionCommands.moc"

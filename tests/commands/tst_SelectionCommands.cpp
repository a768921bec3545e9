#include "commands/SelectionCommands.h"

#include "model/RowMatching.h"
#include "tests/support/World.h"
#include "window/NoticeLabel.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace {

// Files of one byte and one date in the panes, sorted by name, and a person who answers the sheet
// for a pattern as told.
struct Panes : World {
    ExpandSelection pattern;
    QString title;
    SelectionCommands selection { application.windowController(),
                                  bus,
                                  model,
                                  twinleaf,
                                  twinleaf,
                                  application.waiting(),
                                  defaults,
                                  [this](const QString &asked) {
                                      title = asked;
                                      return pattern;
                                  } };

    explicit Panes(const QStringList &left, const QStringList &right = {})
    {
        bus.unsubscribe(&selection); // the application's own answers what is posted
        defaults.setValue(Settings::ShortTimeDateFormat, u"%Y-%m-%d"_s);
        start();
        for (const Side side : { Side::Right, Side::Left }) {
            for (const QString &name : side == Side::Left ? left : right)
                write(side, name, 1);
            listAnew(side);
        }
    }
    void write(Side side, const QString &name, qsizetype size, time_t modified = 1000000000,
               long nanoseconds = 0)
    {
        const QString path = sideWord(side).toLower() + u'/' + name;
        folder.write(path, QByteArray(size, 'x'));
        const timespec times[2] = { { modified, nanoseconds }, { modified, nanoseconds } };
        utimensat(AT_FDCWD, folder.bytes(path), times, 0);
    }
    void listAnew(Side side)
    {
        show(side, sideWord(side).toLower());
        model.sortRowEntries(Column::Name, side, SortDirection::Ascending);
        list(side).selectRow(0);
    }
    QString afterLetter(const QString &letter)
    {
        bus.post(LetterPressed, { letter });
        return selected();
    }
    QString after(Command command)
    {
        run(command);
        return selected();
    }
    QString afterSearch(const QString &typed, Command command = Command::Find)
    {
        answerSheet(typed);
        return after(command);
    }
};

} // namespace

class tst_SelectionCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void patterns()
    {
        using enum MatchMethod;
        const std::tuple<MatchMethod, QString, QString, bool, bool> rows[] = {
            // The field, the text, and whether they match in either case and by case.
            { Contains, u"a.txt"_s, u".T"_s, true, false },
            { BeginsWith, u"abc"_s, u"AB"_s, true, false },
            { EndsWith, u"B.Txt"_s, u".TXT"_s, true, false },
            { Equals, u"ABC"_s, u"abc"_s, true, false },
            { Equals, u"abcd"_s, u"abc"_s, false, false },
            { BeginsWith, u"ab"_s, u"abc"_s, false, false },
            { EndsWith, u"bc"_s, u"abc"_s, false, false },
            { Equals, {}, u"a"_s, false, false },
            { MatchMethod(7), u"abc"_s, u"abc"_s, false, false },
            { Contains, u"abc"_s, u"a.c"_s, false, false }, // no expression
            { Contains, u"a[1]*"_s, u"[1]*"_s, true, true },
        };
        for (const auto &[method, field, text, eitherCase, byCase] : rows)
            for (const bool sensitive : { false, true })
                QVERIFY2(RowMatching::matches(field, { MatchTarget::Name, method, text, sensitive })
                             == (sensitive ? byCase : eitherCase),
                         qPrintable(field + u' ' + text));
    }

    void aSearchBeginsBelowTheSelectedRow()
    {
        QCOMPARE(RowMatching::startRow(-1, 5), 0);
        QCOMPARE(RowMatching::startRow(0, 5), 0); // the parent row, which is looked at again
        QCOMPARE(RowMatching::startRow(1, 5), 2);
        QCOMPARE(RowMatching::startRow(4, 5), 5);
        QCOMPARE(RowMatching::startRow(5, 5), 0); // past the rows of a folder that shrank
    }

    void aLetterGoesFromNameToName()
    {
        Panes world({ u"Desk"_s, u"Dev"_s, u"Zoo"_s, u"docs"_s });
        for (const QString &expected : { u"Desk"_s, u"Dev"_s, u"docs"_s, u"Desk"_s })
            QCOMPARE(world.afterLetter(u"d"_s), expected);
        // Kept: a capital finds capitals alone.
        QCOMPARE(world.afterLetter(u"D"_s), u"Dev"_s);
        QCOMPARE(world.afterLetter(u"D"_s), u"Desk"_s);
        for (const QString &letter : { u"x"_s, QString() })
            QCOMPARE(world.afterLetter(letter), u"Desk"_s);
        world.window.segmentedControls.left->setFocus();
        QCOMPARE(world.afterLetter(u"d"_s), u"Desk"_s);
    }

    void aGroupAddsToAndTakesFromTheSelection()
    {
        Panes world({ u"B.Txt"_s, u"a.txt"_s, u"c.png"_s });
        const auto after = [&](void (SelectionCommands::*command)(),
                               const ExpandSelection &pattern) {
            world.pattern = pattern;
            (world.selection.*command)();
            return world.selected();
        };
        const auto select = &SelectionCommands::groupSelectClicked;
        const auto deselect = &SelectionCommands::groupDeselectClicked;
        world.list().selectRows({ 3 });
        const ExpandSelection cancelled { .method = MatchMethod::BeginsWith };
        QCOMPARE(after(select, cancelled), u"c.png"_s);
        QCOMPARE(after(deselect, cancelled), u"c.png"_s);
        QCOMPARE(after(select, { .text = u"."_s }), u"B.Txt a.txt c.png"_s); // ".." never
        QCOMPARE(world.title, u"Group selection"_s);
        QCOMPARE(after(deselect, { .method = MatchMethod::EndsWith, .text = u".TXT"_s }),
                 u"c.png"_s);
        QCOMPARE(world.title, u"Group deselection"_s);

        // Wildcards stand for what they stand for elsewhere, with each method.
        const std::pair<ExpandSelection, QString> wildcards[] = {
            { { .text = u"*.txt"_s }, u"B.Txt a.txt"_s },
            { { .text = u"*.txt"_s, .caseSensitive = true }, u"a.txt"_s },
            { { .text = u"?.t*"_s }, u"B.Txt a.txt"_s },
            { { .text = u"?.t"_s }, {} }, // of the whole name
            { { .method = MatchMethod::BeginsWith, .text = u"?.p"_s }, u"c.png"_s },
            { { .method = MatchMethod::EndsWith, .text = u"?ng"_s }, u"c.png"_s },
            { { .method = MatchMethod::Equals, .text = u"[a-b].*"_s }, u"B.Txt a.txt"_s },
            { { .target = MatchTarget::Size, .text = u"? By*"_s }, u"B.Txt a.txt c.png"_s },
        };
        for (const auto &[pattern, selected] : wildcards) {
            world.list().selectRows({});
            QCOMPARE(after(select, pattern), selected);
        }

        world.write(Side::Left, u"big"_s, 2048);
        world.listAnew(Side::Left);
        world.list().selectRows({});
        QCOMPARE(after(select, { .target = MatchTarget::Size, .text = u"KB"_s }), u"big"_s);
        QCOMPARE(after(select, { .target = MatchTarget(9), .text = u"a"_s }), u"big"_s); // unknown
        QCOMPARE(after(select, { .target = MatchTarget::Date, .text = u"2001-09"_s }),
                 u"B.Txt a.txt big c.png"_s);
    }

    void sameNamesAreSelectedInTheActivePane()
    {
        // The letter in one piece and in two, and bytes that are no text: alike to the eye alone.
        Panes world({ QString(QChar(0xE9)), FileName::fromBytes("x\xFF"), u"a"_s, u"b"_s, u"c"_s },
                    { u"e\u0301"_s, FileName::fromBytes("x\xFE"), u"B"_s, u"a"_s, u"c"_s });
        world.list().selectRows({ 2 });
        world.list(Side::Right).selectRows({ 1 });
        world.run(Command::SelectSame);
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
        Panes world({ u"here"_s }, { u"there"_s });
        for (const auto &file : files) {
            world.write(Side::Left, file.name, 2048, 1, 5'000'000);
            world.write(Side::Right, file.name, file.size, 1, file.nanoseconds);
        }
        for (const Side side : { Side::Right, Side::Left })
            world.listAnew(side);
        world.list(Side::Right).selectRows({ 4 });
        world.run(Command::CompareFolders);
        for (const Side side : { Side::Left, Side::Right })
            QCOMPARE(world.selected(side), u"a date cut by a disk a size that reads the same"_s);
    }

    void findLooksAtAllColumnsBelowAndAtNamesAbove()
    {
        Panes world({ u"a"_s, u"b"_s, u"c"_s });
        world.write(Side::Left, u"b"_s, 1, 1180000000); // 2007
        world.listAnew(Side::Left);
        QCOMPARE(world.afterSearch(u"2007"_s), u"b"_s); // by its date
        // Kept: from the top only names are looked at, so the date is not found again.
        world.list().selectRows({ 3 });
        QCOMPARE(world.after(Command::FindNext), u"c"_s);
        QCOMPARE(world.afterSearch(u"A"_s), u"a"_s);
        QCOMPARE(world.afterSearch(u".."_s), u".."_s);
        QCOMPARE(world.afterSearch(u"x"_s), u".."_s); // as it was
        QVERIFY(world.window.notice->isVisible());
        QCOMPARE(world.window.notice->text(), u"'x' was not found"_s);
    }

    void findAsksOnlyWhenItMust()
    {
        Panes world({ u"ab"_s, u"b"_s });
        QCOMPARE(world.afterSearch({}, Command::FindNext), u".."_s); // cancelled
        QCOMPARE(world.afterSearch(u"b"_s, Command::FindNext), u"ab"_s);
        QCOMPARE(world.after(Command::FindNext), u"b"_s);
        world.afterSearch({});
        const QString prompt = u"Please enter search term(s):|"_s;
        QCOMPARE(world.prompts, QStringList({ prompt, prompt, prompt + u'b' }));
    }

    void theMetadataSearchTakesTheSelectedNameAndOpensWhatIsChosen()
    {
        Panes world({ u"a"_s });
        struct Search {
            void add(const SearchFor &asked) { texts += asked.text.value_or(u"nothing"_s) + u' '; }
            QString texts;
        } search;
        world.bus.unsubscribe(&world.application.spotlightSearchController()); // its sheet waits
        world.bus.subscribe(SpotlightSearch, &search, &Search::add);
        world.list().selectRows({ 1 });
        world.selection.spotlightSearchMenuItemClicked();
        world.selection.spotlightSearchClicked();
        world.list().selectRows({});
        world.selection.spotlightSearchMenuItemClicked();
        QCOMPARE(search.texts, u"a nothing "_s);

        for (const QString &name : { u"right"_s, u"left/a"_s, u"some.app"_s, u"some.pkg"_s })
            world.bus.post(SpotlightSearchResultClicked, { world.folder.path(name) });
        QString verbs;
        for (const QStringList &call : std::as_const(world.workspace.calls))
            verbs += call.first() + u' ';
        QCOMPARE(verbs, u"open launch install "_s);
        QCOMPARE(world.shown(), world.folder.path(u"right"_s));
    }
};

QTEST_MAIN(tst_SelectionCommands)
#include "tst_SelectionCommands.moc"

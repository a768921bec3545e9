#include "tests/support/World.h"

#include "sheets/information/InfoSheet.h"
#include "sheets/information/TextField.h"
#include "window/FilterBar.h"
#include "window/NoticeLabel.h"

using What = ShowRequest::What;

// What other programs ask to be shown, over the panes of the real window.
class tst_ShowOnRequest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whereItIsShown_data()
    {
        QTest::addColumn<What>("what");
        QTest::addColumn<QString>("paths");
        QTest::addColumn<Side>("active");
        QTest::addColumn<QString>("left"); // the folder and what is selected
        QTest::addColumn<QString>("right");
        QTest::addColumn<QStringList>("complaints");
        const auto row = [](const char *name, What what, const char *paths, Side active,
                            const char *left, const char *right,
                            const QStringList &complaints = {}) {
            QTest::newRow(name) << what << QString::fromLatin1(paths) << active
                                << QString::fromLatin1(left) << QString::fromLatin1(right)
                                << complaints;
        };
        constexpr Side L = Side::Left;
        constexpr Side R = Side::Right;
        row("both panes", What::Panes, "one two", R, "one:..", "two:..");
        row("one is the left", What::Panes, "one", R, "one:..", "right:..");
        row("a file", What::Panes, "one/b", L, "one:b", "right:..");
        row("gone", What::Panes, "gone two", L, "left:..", "two:..", { u"gone' does not exist"_s });
        row("a third one", What::Panes, "one two left", L, "one:..", "two:..",
            { u"1 more folder(s) are not shown"_s });
        row("active first", What::Folders, "one two", R, "two:..", "one:..");
        row("items of one folder", What::Items, "one/c one/a", R, "left:..", "one:a c");
        row("items of three folders", What::Items, "one/a two/x left/l one/b two/y", R, "two:x y",
            "one:a b", { u"1 item(s) of further folders are not shown"_s });
        row("an item that is gone", What::Items, "one/gone one/c", L, "one:c", "right:..",
            { u"one/gone' does not exist"_s });
        row("a hidden one", What::Items, "one/.dot", L, "one:..", "right:..",
            { u"one/.dot' is hidden"_s });
    }
    void whereItIsShown()
    {
        QFETCH(const What, what);
        QFETCH(const QString, paths);
        QFETCH(const Side, active);
        QFETCH(const QStringList, complaints);
        StartedWorld world(u"left/l, one/a, one/b, one/c, one/.dot, two/x, two/y"_s);
        world.focus(active);
        const QStringList told = ask(world, what, paths);
        const auto state = [&world](Side side) {
            return PathText::lastComponent(world.shown(side)) + u':' + world.selected(side);
        };
        QTEST(state(Side::Left), "left");
        QTEST(state(Side::Right), "right");
        QCOMPARE(told.size(), complaints.size());
        for (qsizetype i = 0; i < told.size(); ++i)
            QVERIFY2(told[i].contains(complaints[i]), qPrintable(told[i]));
        QCOMPARE(world.window.notice->text().isEmpty(), complaints.isEmpty());
        QVERIFY(world.list(what == What::Panes ? Side::Left : active).hasFocus());
    }

    void aFilterOrMarksDoNotHideIt()
    {
        StartedWorld world(u"left/a, left/b, left/c"_s);
        world.commands.action(Command::QuickFilter)->trigger();
        world.window.filterBars.left->field->setText(u"a"_s);
        QCOMPARE(world.names(), u".. a"_s);
        ask(world, What::Items, u"left/b left/c"_s);
        QCOMPARE(world.selected(), u"b c"_s);
        QTest::keyClick(&world.list(), Qt::Key_Insert);
        ask(world, What::Items, u"left/a"_s);
        QCOMPARE(world.selected(), u"a"_s);
    }

    // Rows that somebody answers about stay. Of what came meanwhile the last is meant.
    void nothingIsShownUnderASheet()
    {
        StartedWorld world(u"left/a, one/, two/b"_s);
        {
            const OpenDialogs::Guard sheet(world.openDialogs);
            for (const QString &paths : { u"one"_s, u"two/b"_s })
                ask(world, paths.contains(u'/') ? What::Items : What::Folders, paths);
            QCoreApplication::processEvents();
            QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        }
        QTRY_COMPARE(world.selected(), u"b"_s);
        world.commands.action(Command::Back)->trigger();
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
    }

    void whatComesBeforeTheWindowIsShownInIt()
    {
        World world(u"one/a"_s);
        ask(world, What::Items, u"one/a"_s);
        QVERIFY(world.shown().isEmpty());
        world.start();
        QCOMPARE(world.selected(), u"a"_s);
    }

    void sheetsOfInformationStandInARow()
    {
        StartedWorld world(u"one/a, one/b"_s);
        QStringList names;
        QTimer person;
        person.callOnTimeout(&world.window, [&] {
            if (auto *sheet = qobject_cast<InfoSheet *>(QApplication::activeModalWidget())) {
                names += sheet->Name->text();
                sheet->reject();
            }
        });
        person.start(1);
        ask(world, What::Information, u"one/a one/gone one/b"_s);
        QTRY_COMPARE(names, (QStringList { u"a"_s, u"b"_s }));
        QVERIFY(!world.window.notice->text().isEmpty());
    }

private:
    // The complaints, as far as they came at once.
    static QStringList ask(World &world, What what, const QString &words)
    {
        QStringList paths;
        const QStringList names = words.split(u' ');
        for (const QString &name : names)
            paths.append(world.folder.path(name));
        const auto told = std::make_shared<QStringList>();
        world.application.showOnRequest().show(
            { what, paths, [told](const QStringList &complaints) { *told = complaints; } });
        return *told;
    }
};

QTEST_MAIN(tst_ShowOnRequest)
#include "tst_ShowOnRequest.moc"

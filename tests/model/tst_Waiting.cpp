#include "tests/support/StoppedDisk.h"

#include "base/Arrivals.h"
#include "base/MainThread.h"

#include <latch>
#include <thread>

class tst_Waiting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        MountTable::setSource(u"/proc/self/mountinfo"_s);
        QTRY_VERIFY(!Arrivals::areHeld()); // of the world that went
    }

    void theWindowItselfAsksNoDisk()
    {
        World world(u"left/sub/in=i, left/a=a, left/b=b, left/to sub->sub"_s);
        world.defaults.setValue(Settings::ConfirmationForFileOperations, false);
        Disk disk;
        world.start();
        disk.askedByWindow.clear(); // what an earlier run left is settled before the first listing
        for (const QString &name : { u"sub"_s, u"to sub"_s }) {
            world.select(name);
            press(world, { Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Right, Qt::Key_Backspace });
        }
        world.select(u"a"_s);
        world.click(Command::Copy);
        world.run(Command::Duplicate);
        world.answerSheet(u"new"_s);
        world.click(Command::NewFolder);
        world.select(u"b"_s);
        world.answerSheet(u"c"_s);
        world.click(Command::Rename);
        world.select(u"c"_s);
        world.click(Command::Move);
        for (const Command command : { Command::Reload, Command::ShowHiddenFiles })
            world.run(command);
        world.select(u"a"_s);
        QVERIFY(world.isEnabled(Command::Copy));
        world.closeMenus();
        QCOMPARE(world.names(Side::Right), u".. a c"_s);
        QCOMPARE(disk.askedByWindow, QByteArrayList());
    }

    void whatArrivesIsKeptInItsOrder()
    {
        StartedWorld world(QString::fromLatin1(Tree));
        Disk disk;
        disk.stopAt(world.folder.path(u"left/slow"_s));
        world.select(u"slow"_s);
        world.window.notice->tell(u"told before"_s);
        QStringList order;
        std::thread worker;
        bool workerWasServed = false;
        whileWaiting(world, [&] {
            press(world, { Qt::Key_Down });
            Arrivals::deliver(&world.window, [&] { order.append(world.selected()); });
            press(world, { Qt::Key_Down });
            Arrivals::deliver(&world.window, [&] { order.append(world.selected()); });
            std::latch begun(1);
            worker = std::thread([&] {
                begun.count_down();
                onMainThread([&] { workerWasServed = order.size() == 2; });
            });
            begun.wait();
            // Nothing has happened yet, and the window shows what it waits for.
            QCOMPARE(world.shown(), world.folder.path(u"left"_s));
            QCOMPARE(world.selected(), u"slow"_s);
            QTRY_VERIFY(notice(world).contains(u"slow"));
            QVERIFY(order.isEmpty() && !workerWasServed);
            disk.answer();
        });
        press(world, { Qt::Key_Return });
        QCOMPARE(world.shown(), world.folder.path(u"left/slow"_s));
        QVERIFY(order.isEmpty()); // whoever waited goes on first
        QTRY_VERIFY(workerWasServed);
        QCOMPARE(order,
                 (QStringList { world.names({ 1 }, Side::Left), world.names({ 2 }, Side::Left) }));
        QCOMPARE(notice(world), u"told before"_s);
        worker.join();
    }

    // What is typed meanwhile is meant for what does not come, unless that came by itself.
    void escapeGivesUp_data()
    {
        QTest::addColumn<bool>("byItself");
        QTest::newRow("what a key began") << false;
        QTest::newRow("what began by itself") << true;
    }
    void escapeGivesUp()
    {
        QFETCH(const bool, byItself);
        StartedWorld world(QString::fromLatin1(Tree));
        Disk disk;
        disk.stopAt(world.folder.path(u"left/slow"_s));
        world.select(u"slow"_s);
        whileWaiting(world, [&] {
            press(world, { Qt::Key_Escape }); // nothing is shown that it could be about
            press(world, { Qt::Key_Home });
            QTRY_VERIFY(notice(world).contains(u"slow"));
            press(world, { Qt::Key_Escape });
        });
        if (byItself)
            Arrivals::deliver(&world.window, [&] {
                world.model.showFolder(Side::Left, { world.folder.path(u"left/slow"_s) });
            });
        else
            press(world, { Qt::Key_Return });
        QVERIFY(Waiting::anyLost());
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        QCOMPARE(notice(world), QString()); // the person knows
        QTRY_VERIFY(!Arrivals::areHeld());
        QCOMPARE(world.selected(), byItself ? u".."_s : u"slow"_s);
        // The answer that comes after all is nobody's any more.
        disk.answer();
        QTRY_VERIFY(!Waiting::anyLost());
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        world.select(u"slow"_s);
        press(world, { Qt::Key_Return });
        QCOMPARE(world.shown(), world.folder.path(u"left/slow"_s));
    }

    void nothingIsDoneWithoutAnAnswer_data()
    {
        QTest::addColumn<Command>("command");
        QTest::addColumn<QString>("silent");
        QTest::newRow("copy") << Command::Copy << u"right"_s;
        QTest::newRow("move") << Command::Move << u"right"_s;
        QTest::newRow("duplicate") << Command::Duplicate << u"left/a Copy"_s;
        QTest::newRow("duplicate, of what kind") << Command::Duplicate << u"left/a"_s;
        QTest::newRow("new folder") << Command::NewFolder << u"left/new"_s;
        QTest::newRow("pack") << Command::CreateArchive << u"right/new.zip"_s;
    }
    void nothingIsDoneWithoutAnAnswer()
    {
        QFETCH(const Command, command);
        QFETCH(const QString, silent);
        World world(u"left/a=a, left/a Copy=old, right/new.zip=old"_s);
        world.defaults.setValue(Settings::ConfirmationForFileOperations, false);
        world.start();
        world.select(u"a"_s);
        Disk disk;
        disk.stopAt(world.folder.path(silent));
        bool gaveUp = false;
        bool goesOn = false;
        QTimer person;
        person.callOnTimeout(&world.window, [&] {
            if (world.application.waiting().isShown()) {
                gaveUp = true;
                press(world, { Qt::Key_Escape });
            } else if (world.twinleaf.anyRunning()) { // and is waited for
                goesOn = true;
                disk.answer();
            }
        });
        person.start(1);
        if (command == Command::NewFolder || command == Command::CreateArchive)
            world.answerSheet(u"new"_s);
        world.commands.action(command)->trigger();
        person.stop();
        goesOn |= world.twinleaf.anyRunning();
        disk.answer();
        world.twinleaf.drain();
        QVERIFY(gaveUp);
        QVERIFY(!goesOn);
    }

    void aMountThatIsSilentIsGivenUp()
    {
        World world(u"left/server/x/, left/to server->server/x"_s);
        mountServer(world, u"left/server"_s);
        Disk disk;
        const QString server = world.folder.path(u"left/server"_s);
        disk.stopAt(server);
        world.start(); // a folder that holds such a mount, and a link into it, is listed at once
        QCOMPARE(world.names(), u".. server to server"_s);
        QVERIFY(world.model.rowsLeft()[1].isFolder());
        QVERIFY(!world.model.rowsLeft()[1].date().isValid());
        QVERIFY(!disk.asked().contains("server"));
        QVERIFY(!disk.asked().contains(FileName::toBytes(world.folder.path(u"left/to server"_s))));

        disk.answer();
        world.show(Side::Left, u"left/server"_s);
        world.show(Side::Right, u"left/server/x"_s);
        disk.stopAt(server);
        world.run(Command::Reload); // nobody gives up but the program
        QCOMPARE(notice(world), u"'server' does not answer."_s);
        QCOMPARE(world.shown(), server);
        QCOMPARE(world.shown(Side::Right), world.folder.path(u"left/server/x"_s));
        const auto pressAlone = [&](Qt::Key key) { // not behind what arrived meanwhile
            QTRY_VERIFY(!Arrivals::areHeld());
            press(world, { key });
        };
        pressAlone(Qt::Key_Backspace); // asks nobody there
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        world.window.notice->hide();
        world.select(u"server"_s);
        pressAlone(Qt::Key_Return);
        QCOMPARE(notice(world), u"'server' does not answer."_s);
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
    }

    void workIsNotGivenUp()
    {
        StartedWorld world;
        std::latch end(1);
        whileWaiting(world, [&] {
            press(world, { Qt::Key_Escape });
            end.count_down();
        });
        QCOMPARE(world.application.waiting().forRows(1'000'000, u"Work"_s,
                                                     [&] {
                                                         end.wait();
                                                         return 7;
                                                     }),
                 7);
    }

    void aFolderThatIsGoneIsReplacedByTheNearest()
    {
        World world(u"left/stick/deep/"_s);
        world.defaults.setValue(Settings::LeftFileListLastPath,
                                world.folder.path(u"left/gone/deep"_s));
        world.start();
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        QVERIFY(notice(world).contains(u"left/gone/deep"));
        world.show(Side::Left, u"left/stick/deep"_s);
        world.folder.shell(u"rm -r left/stick"_s);
        world.window.notice->hide();
        world.run(Command::Reload);
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        QVERIFY(notice(world).contains(u"left/stick/deep"));
    }
};

QTEST_MAIN(tst_Waiting)
#include "tst_Waiting.moc"

#include "tests/support/StoppedDisk.h"

#include "base/Arrivals.h"
#include "files/Journal.h"
#include "sheets/information/InfoSheet.h"
#include "window/ShowOnRequest.h"

// What a disk that does not answer holds up at the start and the end of the program, and what not.
class tst_StartAndEnd : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        MountTable::setSource(u"/proc/self/mountinfo"_s);
        QTRY_VERIFY(!Arrivals::areHeld()); // of the world that went
    }

    void interruptedWorkOnASilentMountIsLeft()
    {
        World world(u"left/server/"_s);
        mountServer(world, u"left/server"_s);
        const Journal journal(Journal::runsFolder());
        const QString server = world.folder.path(u"left/server"_s);
        QVERIFY(journal.write({ server, u"1.1"_s, u"staging"_s }));
        Disk disk;
        disk.stopAt(server);
        world.start();
        QCOMPARE(notice(world), u"'server' does not answer."_s);
        auto notes = journal.abandoned();
        QCOMPARE(notes.size(), 1);
        notes.first()->remove();
    }

    // What was done by then, and what is done when the disk answers after all.
    void interruptedWorkThatIsNotWaitedForIsTold()
    {
        World world(u"left/a=a, left/slow/b=b, right/a=a, right/b=b, right/staging/"_s);
        QStringList note { world.folder.path(u"right"_s), u"1.1"_s, u"staging"_s };
        for (const QString &copied : { u"left/a"_s, u"left/slow/b"_s }) {
            const QString path = world.folder.path(copied);
            const QString name = PathText::lastComponent(path);
            const auto inode = [](const QString &item) {
                return QString::number(fileStatus(item, Links::NoFollow)->identity.inode);
            };
            note << u"copied"_s << PathText::parent(path) << name << inode(path)
                 << inode(PathText::joined(note[0], name));
        }
        QVERIFY(Journal(Journal::runsFolder()).write(note));
        Disk disk;
        disk.stopAt(world.folder.path(u"left/slow/b"_s));
        whileWaiting(world, [&] {
            QTRY_VERIFY(world.application.waiting().isShown());
            press(world, { Qt::Key_Escape });
        });
        QStringList told;
        world.alerts.decide = [&told](const Alert &alert) {
            told.append(alert.details);
            return Alert::Ok;
        };
        world.start();
        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].contains(u"left/a'"));
        disk.answer();
        QTRY_COMPARE(told.size(), 2);
        QVERIFY(told[1].contains(u"left/slow/b'"));
        QVERIFY(Journal(Journal::runsFolder()).abandoned().isEmpty());
    }

    void anEndBeforeTheFirstListingKeepsWhatIsStored()
    {
        World world(QString::fromLatin1(Tree));
        const QVariantMap rows { { u"/somewhere"_s, 3LL } };
        world.defaults.setValue(Settings::SelectedItemsLeft, rows);
        world.defaults.setValue(Settings::LeftFileListSortedColumn, u"Size"_s);
        const QVariantMap before = world.defaults.dictionaryRepresentation();
        QVariantMap stored;
        Disk disk;
        disk.stopAt(world.folder.path(u"left"_s));
        whileWaiting(world, [&] {
            Q_EMIT world.workspace.willPowerOff();
            stored = world.defaults.dictionaryRepresentation();
            disk.answer();
        });
        world.start(); // the end was called off
        QCOMPARE(stored, before);
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
    }

    // Nobody would close its sheet, and the end of the session would wait for that.
    void whatOthersAskForWaitsUntilTheEndIsCalledOff()
    {
        World world(u"left/a=a"_s);
        world.defaults.setValue(Settings::ConfirmationForFileOperations, false);
        world.start();
        Disk disk;
        world.select(u"a"_s);
        disk.stopAt(world.folder.path(u"left/a"_s));
        world.commands.action(Command::Copy)->trigger();
        int sheets = 0;
        QTimer person;
        person.callOnTimeout(&world.window, [&] {
            auto *sheet = world.window.findChild<InfoSheet *>();
            if (!sheet || !sheet->isVisible())
                return;
            ++sheets;
            sheet->reject();
        });
        person.start(1);
        QTimer::singleShot(0, &world.window, [&] { // while the worker is waited for
            world.application.showOnRequest().show(
                { ShowRequest::What::Information, { world.folder.path(u"left"_s) } });
            QCOMPARE(sheets, 0);
            disk.answer();
        });
        Q_EMIT world.workspace.willPowerOff();
        QCOMPARE(sheets, 0);
        QTRY_COMPARE(sheets, 1);
    }

    void quitDoesNotWaitForEverForAWorker_data()
    {
        QTest::addColumn<bool>("asksAgain");
        QTest::newRow("quit once more") << true;
        QTest::newRow("Escape, when the program looks who does not answer") << false;
    }
    void quitDoesNotWaitForEverForAWorker()
    {
        QFETCH(const bool, asksAgain);
        World world(u"left/a=a"_s);
        world.defaults.setValue(Settings::ConfirmationForFileOperations, false);
        world.start();
        Disk disk;
        world.select(u"a"_s);
        disk.stopAt(world.folder.path(u"left/a"_s));
        world.commands.action(Command::Copy)->trigger();
        if (!asksAgain)
            disk.stopAt(world.folder.path(u"left"_s));
        world.show(Side::Left, u"right"_s);
        world.alerts.answer(Alert::Yes);
        if (asksAgain)
            world.alerts.answer(Alert::Yes);
        QTimer::singleShot(0, &world.window, [&] {
            world.window.close();
            // While the worker is waited for; all is saved by then.
            QTimer::singleShot(0, &world.window, [&] {
                QCOMPARE(world.defaults.string(Settings::LeftFileListLastPath),
                         world.folder.path(u"right"_s));
                if (asksAgain)
                    world.window.close();
            });
        });
        QTimer person;
        person.callOnTimeout(&world.window, [&] {
            if (world.application.waiting().isShown())
                QTest::keyClick(world.window.windowHandle(), Qt::Key_Escape);
        });
        person.start(1);
        QCoreApplication::exec();
        QVERIFY(!world.application.end());
        disk.answer();
        world.twinleaf.drain();
        QTRY_VERIFY(!Waiting::anyLost());
        QVERIFY(world.application.end());
    }
};

QTEST_MAIN(tst_StartAndEnd)
#include "tst_StartAndEnd.moc"

#include "files/Journal.h"
#include "operations/PermanentRemoval.h"
#include "tests/operations/DeskWorld.h"
#include "tests/support/InterruptedRuns.h"
#include "tests/support/Watched.h"
#include "tests/support/WithoutRights.h"

#include <csignal>
#include <sys/wait.h>

// What goes for good is what the person was asked about, whole or not at all.
class tst_PermanentRemoval : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatGoesAndWhatStays_data()
    {
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("items");
        QTest::addColumn<QString>("left"); // "": all
        const auto row = [](const char *name, const QString &given, const QString &items,
                            const QString &left) { QTest::newRow(name) << given << items << left; };
        row("a file", u"from/a=a, from/b=b"_s, u"a"_s, u"from/b=b"_s);
        row("a tree", u"from/a/x/y=y, from/a/x/link->~/to, from/b=b, to/z=z"_s, u"a"_s,
            u"from/b=b, to/z=z"_s);
        row("links", u"from/l->~/to, from/none->nowhere, from/b=b, to/z=z"_s, u"l none"_s,
            u"from/b=b, to/z=z"_s);
        row("a name with a leading dash", u"from/-rf=a, from/b=b"_s, u"-rf"_s, u"from/b=b"_s);
        row("one is locked", u"from/a=a, from/b=!b"_s, u"a b"_s, {});
        row("one is a volume", u"from/a=a, from/volume/x=x"_s, u"a volume"_s, {});
        row("the parent", u"from/a=a, to/z=z"_s, u".."_s, {});
        row("elsewhere", u"from/a=a, to/z=z"_s, u"../to/z"_s, {});
    }
    void whatGoesAndWhatStays()
    {
        QFETCH(QString, given);
        QFETCH(QString, items);
        QFETCH(QString, left);
        Desk desk(given);
        desk.workspace.refusals.insert(desk.folder.path(u"from/volume"_s), u"It is a volume."_s);
        if (left.isEmpty())
            desk.alerts.answer(Alert::Ok);
        remove(desk, items);
        QCOMPARE(desk.tree(), left.isEmpty() ? given : left);
        QCOMPARE(desk.alerts.last().text, left.isEmpty() ? u"Delete failed!"_s : QString());
    }

    void closedFoldersGoToo()
    {
        Desk desk(u"from/a/closed/x=x, from/b=b, from/none/"_s);
        const WithoutRights rights;
        desk.folder.shell(u"chmod 500 from/a/closed from/a; chmod 0 from/none"_s);
        remove(desk, u"a none"_s);
        QCOMPARE(desk.tree(), u"from/b=b"_s);
    }

    void anotherItemAtTheNameStays()
    {
        const QString given = u"from/a/new=new, from/b=new"_s;
        Desk desk(given);
        desk.alerts.answer(Alert::Ok);
        PermanentRemoval removal(desk.alerts, desk.workspace, journal);
        removal.removeItems(request(desk, u"a b"_s), { FileIdentity(), FileIdentity() }, never);
        QCOMPARE(desk.tree(), given);
        QVERIFY(desk.alerts.last().details.startsWith(u"a: It is not the item any more"_s));
        // One that comes at the last moment is back in its place.
        desk.folder.makeFolder(u"other/mine"_s);
        bool swapped = false;
        const Watched watched([&](Call call, const char *, unsigned) {
            if (call == Call::Rename && !swapped) {
                swapped = true;
                desk.folder.shell(u"mv from/a kept; mv other from/a"_s);
            }
            return 0;
        });
        desk.alerts.answer(Alert::Ok);
        remove(desk, u"a"_s);
        QVERIFY(swapped);
        QCOMPARE(desk.tree(), u"from/a/mine/, from/b=new"_s);
    }

    void whatCannotGoIsBackAndNamed()
    {
        Desk desk(u"from/a/c/x=x, from/a/d/held=x, from/a/other=x, from/b=b"_s);
        desk.alerts.answer(Alert::Ok);
        {
            const Watched watched([](Call call, const char *name, unsigned) {
                return call == Call::Remove && qstrcmp(name, "held") == 0 ? EPERM : 0;
            });
            remove(desk, u"a b"_s);
        }
        QCOMPARE(desk.tree(), u"from/a/d/held=x"_s);
        QCOMPARE(desk.alerts.last().details,
                 u"a: 'd/held' stays: Operation not permitted. What else was in it may be gone."_s);
        QVERIFY(journal.abandoned().isEmpty());
        // A full disk is no reason to keep what fills it.
        const Watched watched([](Call call, const char *, unsigned) {
            return call == Call::MakeFolder ? ENOSPC : 0;
        });
        remove(desk, u"a"_s);
        QCOMPARE(desk.tree(), QString());
    }

    void cancelIsBetweenItems()
    {
        Desk desk(u"from/a/x=x, from/b=b"_s);
        int asked = 0;
        PermanentRemoval removal(desk.alerts, desk.workspace, journal);
        removal.removeItems(request(desk, u"a b"_s), seen(desk, u"a b"_s),
                            [&] { return ++asked > 1; });
        QCOMPARE(desk.tree(), u"from/b=b"_s);
    }

    // The name holds the whole item or nothing, and the next start does the rest.
    void killedAtEachStep()
    {
        int step = 0;
        for (bool died = true; died; ++step) {
            Desk desk(u"from/a/x=x, from/a/y/z=z, from/b=b"_s);
            const pid_t child = fork();
            if (child == 0) {
                int seenCalls = 0;
                const Watched watched([&](Call call, const char *, unsigned) {
                    if ((call == Call::Rename || call == Call::Remove) && seenCalls++ == step)
                        kill(getpid(), SIGKILL);
                    return 0;
                });
                remove(desk, u"a"_s);
                _exit(0);
            }
            int status = 0;
            waitpid(child, &status, 0);
            died = WIFSIGNALED(status);
            const bool whole = exists(desk.folder.path(u"from/a"_s));
            QCOMPARE(whole, died && step == 0);
            const QStringList told = settleInterruptedRuns(journal, desk.workspace);
            QCOMPARE(desk.tree(), whole ? u"from/a/x=x, from/a/y/z=z, from/b=b"_s : u"from/b=b"_s);
            QVERIFY(journal.abandoned().isEmpty());
            if (died && !whole)
                QVERIFY2(told.size() == 1 && told[0].contains(u"for good was interrupted"_s),
                         qPrintable(told.join(u'\n')));
        }
        QVERIFY(step > 4);
    }

    void anotherOneIsNotRemovedByTheNextStart()
    {
        Desk desk(u"from/a/x=x, other/mine/"_s);
        const pid_t child = fork();
        if (child == 0) {
            int renames = 0;
            const Watched watched([&](Call call, const char *, unsigned) {
                if (call == Call::Rename && ++renames == 1)
                    desk.folder.shell(u"mv from/a kept; mv other from/a"_s);
                if (call == Call::Rename && renames == 2) // on its way back
                    kill(getpid(), SIGKILL);
                return 0;
            });
            remove(desk, u"a"_s);
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        QVERIFY(WIFSIGNALED(status));
        settleInterruptedRuns(journal, desk.workspace);
        QCOMPARE(desk.tree(), u"trash/a/mine/"_s); // where a person finds it
    }

    void theKeyAsksAlwaysAndReturnMeansNo()
    {
        Desk desk(u"from/a/x=x, from/b=b, from/c=c"_s);
        desk.defaults.setValue(Settings::ConfirmationForFileOperations, false);
        desk.model.setUserDefaultValues();
        desk.focus(Side::Left);
        const auto press = [&](const QString &name, Qt::KeyboardModifiers modifiers) {
            desk.select(name);
            QTest::keyClick(&desk.list(), Qt::Key_Delete, modifiers);
            desk.twinleaf.drain();
        };
        desk.alerts.answer(Alert::No);
        press(u"a"_s, Qt::ShiftModifier);
        QCOMPARE(desk.tree(), u"from/a/x=x, from/b=b, from/c=c"_s);
        QCOMPARE(desk.alerts.last().text,
                 u"Are you sure that you want to delete the selected 1 item(s) for good? This "
                 "cannot be undone."_s);
        QCOMPARE(desk.alerts.last().buttons.first().answer, Alert::No);
        QCOMPARE(desk.alerts.last().cancel, Alert::No);
        desk.alerts.answer(Alert::Yes);
        press(u"a"_s, Qt::ShiftModifier | Qt::KeypadModifier);
        QCOMPARE(desk.tree(), u"from/b=b, from/c=c"_s);
        QCOMPARE(desk.names(), u".. b c"_s);
        press(u".."_s, Qt::ShiftModifier);
        press(u"b"_s, Qt::NoModifier); // to the Trash, unasked
        QCOMPARE(desk.tree(), u"from/c=c, trash/b=b"_s);
    }

private:
    static bool never() { return false; }
    static OperationRequest request(const Desk &desk, const QString &items)
    {
        return { .source = desk.source, .items = items.split(u' '), .side = Side::Left };
    }
    static QList<FileIdentity> seen(const Desk &desk, const QString &items)
    {
        QList<FileIdentity> all;
        for (const QString &name : items.split(u' ')) {
            const auto status = fileStatus(PathText::joined(desk.source, name), Links::NoFollow);
            all.append(status ? status->identity : FileIdentity());
        }
        return all;
    }
    void remove(Desk &desk, const QString &items) const
    {
        PermanentRemoval(desk.alerts, desk.workspace, journal)
            .removeItems(request(desk, items), seen(desk, items), never);
    }

    const Journal journal { Journal::runsFolder() };
};

QTEST_MAIN(tst_PermanentRemoval)
#include "tst_PermanentRemoval.moc"

#include "base/MainThread.h"
#include "files/MountTable.h"
#include "tests/operations/OperationWorld.h"
#include "tests/support/Watched.h"

class tst_CopyMove : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSheetComesUpForFoldersAndNeverForAMove()
    {
        const QString copied = u"Copy progress finished."_s;
        const std::tuple<Operation, QString, QString, int, QStringList> rows[] = {
            { Operation::Copy, u"a"_s, {}, 0, { u"Copying 'a'"_s, copied } },
            { Operation::Copy, u"f"_s, u"/bin/cp -R -p "_s, 1, { u"Copying 'f'"_s, copied } },
            { Operation::Move, u"f"_s, {}, 0, { u"Moving 'f'"_s, u"Move progress finished."_s } },
        };
        for (const auto &[operation, item, program, shown, texts] : rows) {
            World world(u"from/a=0123456789, from/f/"_s);
            world.run(operation, { item });
            const QStringList run = world.programs.runs.value(0);
            QCOMPARE(run.mid(0, run.size() - 1).join(u' '), // the last is a hidden name
                     program.isEmpty() ? program : program + world.source + u'/' + item);
            QCOMPARE(world.folder.names(u"to"_s), QStringList { item });
            QCOMPARE(world.sheet.maximum, 1.0);
            QCOMPARE(world.sheet.closed, 1);
            QCOMPARE(world.sheet.shown, shown);
            QCOMPARE(world.sheet.texts, texts);
        }
    }

    void anAnswerDecidesWhatIsReplaced()
    {
        using enum Alert::Answer;
        const struct {
            QString items;
            QList<Alert::Answer> answers;
            QByteArray left; // contents of a, b and c
            QString trashed;
            QList<double> counted; // the first and the last value of the sheet
        } rows[] = {
            { u"a b c"_s, { All }, "new new new", {}, { 1, 3 } },
            { u"a b"_s, { Yes, Yes }, "new new old", {}, { 1, 2 } },
            // The one after No is copied unasked, and no further.
            { u"a b c"_s, { No, Yes }, "old new new", u"b"_s, { 1, 3 } },
            { u"a"_s, { No }, "old old old", {}, {} }, // No for the last ends the run
            // As two names that a folder takes for one: the second would eat the first.
            { u"a a"_s, { All, Ok }, "new old old", {}, { 1, 2 } },
            { u"a .. b"_s, { Yes, Ok }, "new old old", {}, { 1, 3 } }, // the parent aborts
            { u"a .. b"_s, { No, Ok }, "old old old", {}, { 3, 3 } },
        };
        for (const auto &[items, answers, left, trashed, counted] : rows) {
            World world(u"from/a=new, from/b=new, from/c=new, to/a=old, to/b=old, to/c=old"_s);
            world.alerts.answer(answers);
            world.run(Operation::Copy, items.split(u' '));
            QCOMPARE(world.to(u"a"_s) + ' ' + world.to(u"b"_s) + ' ' + world.to(u"c"_s), left);
            QCOMPARE(world.folder.names(u"trash"_s).join(u' '), trashed);
            QCOMPARE(world.workspace.origins, // where it stood
                     QStringList(trashed.size(), PathText::joined(world.destination, trashed)));
            QCOMPARE(world.leftovers(), 0);
            // Those between may be left out while the sheet is hidden.
            const auto &values = world.sheet.values;
            QCOMPARE(values.isEmpty() ? values : QList<double>({ values.first(), values.last() }),
                     counted);
            QCOMPARE(world.sheet.cancelled, int(values.isEmpty()));
            QCOMPARE(world.sheet.texts.isEmpty(), values.isEmpty());
        }
    }

    // The name keeps the whole old item, nothing is left beside it, and the person learns why.
    void aFailedReplacementKeepsTheOldItem()
    {
        using enum Operation;
        const QString files = u"from/a=new, to/a=old"_s;
        const QString folders = u"from/a/x=new, to/a/precious=old"_s;
        const std::tuple<Operation, QString, Call, int> rows[] = {
            { Copy, files, Call::CopyRange, ENOSPC },
            { Copy, files, Call::SetMode, ENOSPC }, // at the attributes' place
            { Copy, files, Call::CopyRange, EIO },
            { Copy, files, Call::Flush, ENOSPC }, // told by a server at the end
            { Copy, files, Call::Rename, EACCES }, // no exchange
            { Copy, folders, Call::Rename, EACCES },
            { Move, files, Call::Rename, EACCES },
            { Copy, folders, Call::Clone, 0 }, // the copy command fails
            { Move, files, Call::CopyRange, ENOSPC }, // across
            { Move, files, Call::Flush, EDQUOT },
            { Move, folders, Call::MakeFolder, EDQUOT },
        };
        for (const auto &[operation, given, call, error] : rows) {
            World world(given);
            const bool across = operation == Move && call != Call::Rename;
            const Watched watched(
                [&, call = call, error = error](Call made, const char *, unsigned flags) {
                    if (across && made == Call::Rename && (flags & RENAME_EXCHANGE))
                        return EXDEV;
                    return made == call ? error : 0;
                });
            const bool commandFails = error == 0;
            world.programs.before = [&](const QStringList &arguments) -> std::optional<int> {
                DesktopPrograms().run(arguments);
                return commandFails ? std::optional(1) : std::nullopt;
            };
            world.programs.errorText = u"cp: it broke"_s;
            world.alerts.answer({ Alert::Yes, Alert::Ok });
            world.run(operation, { u"a"_s });
            QCOMPARE(world.tree(), given);
            QCOMPARE(world.alerts.last().text,
                     operation == Copy ? u"Copy progress of 'a' failed!"_s
                                       : u"Move progress of 'a' failed!"_s);
            const QString why =
                commandFails ? world.programs.errorText : QString::fromLocal8Bit(strerror(error));
            QVERIFY2(world.alerts.last().details.endsWith(why),
                     qPrintable(why + u" for "_s + world.alerts.last().details));
        }
    }

    void aThingIsNeverReplacedByItselfOrItsPart()
    {
        const struct {
            QString given;
            QString source = u"from"_s;
            QString destination = u"to"_s;
        } rows[] = {
            { u"from/a=only, to/a==from/a"_s },
            { u"to/a=only, from/a->~/to/a"_s }, // a link to the target
            { u"from/a/deep/"_s, u"from"_s, u"from/a/deep"_s },
            { u"to/a/a=only"_s, u"to/a"_s }, // over what holds it
            { u"from/a=only, alias->~/from"_s, u"from"_s, u"alias"_s },
            { u"from/a=new, to/a=!old"_s }, // over a locked item
        };
        for (const auto &[given, source, destination] : rows) {
            World world(given);
            world.source = world.folder.path(source);
            world.destination = world.folder.path(destination);
            const QString before = world.tree();
            for (const auto operation : { Operation::Copy, Operation::Move }) {
                world.alerts.answer({ Alert::Ok });
                world.run(operation, { u"a"_s });
            }
            QCOMPARE(world.tree(), before);
            QVERIFY2(world.programs.runs.isEmpty(), qPrintable(given));
            QCOMPARE(world.alerts.shown().size(), 2);
        }
    }

    void aLinkReplacesAnotherThatLeadsToTheSamePlace()
    {
        World world(u"at=kept, from/a->~/at, to/a->../at"_s);
        world.alerts.answer(Alert::Yes);
        world.run(Operation::Copy, { u"a"_s });
        QCOMPARE(linkTarget(world.folder.path(u"to/a"_s)), world.folder.path(u"at"_s));
    }

    void allAndALateCancelDoNotReachTheNextRun()
    {
        World world(u"from/a=new, from/b=new, from/c=new, to/a=old, to/b=old, to/c=old"_s);
        world.sheet.onText = [&](const QString &text) {
            if (text == u"Copy progress finished."_s)
                world.engine.queue().cancel();
        };
        world.alerts.answer({ Alert::All, Alert::Yes });
        world.start(Operation::Copy, { u"a"_s, u"b"_s });
        world.run(Operation::Move, { u"c"_s });
        QCOMPARE(world.alerts.last().text, u"Target 'c' already exists! Overwrite?"_s);
        world.sheet.texts.removeAll(u"Copying 'b'"_s); // may be left out while the sheet is hidden
        QCOMPARE(world.sheet.texts.join(u' '),
                 u"Copying 'a' Copy progress finished. Moving 'c' Move progress finished."_s);
        QCOMPARE(world.tree(), u"from/a=new, from/b=new, to/a=new, to/b=new, to/c=new"_s);
    }

    void whatWaitsIsCancelledAloneOrAll()
    {
        const auto twice = [](RunQueue &queue) { // the sheet's button
            queue.cancel();
            queue.cancel();
        };
        const auto third = [](RunQueue &queue) { queue.cancel(queue.runs()[2].ticket); };
        const std::pair<std::function<void(RunQueue &)>, QString> rows[] = {
            { twice, u"a c d e"_s },
            { third, u"a b c e"_s },
            { &RunQueue::cancelWaiting, u"a b"_s },
            { &RunQueue::cancelAll, u"a"_s },
        };
        for (const auto &[cancel, copied] : rows) {
            World world(u"from/a=x, from/b=x, from/c=x, from/d=x, from/e=x"_s);
            RunQueue &queue = world.engine.queue();
            QStringList shown;
            queue.setChangeHandler([&] { // any thread
                onMainThread([&] {
                    shown.clear();
                    for (const ShownRun &run : queue.runs())
                        shown.append(run.text);
                });
            });
            bool once = false;
            world.sheet.onText = [&, cancel = cancel](const QString &) {
                if (std::exchange(once, true))
                    return;
                QCOMPARE(shown, QStringList({ u"a, b"_s, u"c"_s, u"d"_s, u"e"_s }));
                cancel(queue);
            };
            queue.cancel(); // nothing runs: it must not reach what comes
            world.start(Operation::Copy, { u"a"_s, u"b"_s });
            for (const QString &item : { u"c"_s, u"d"_s, u"e"_s })
                world.start(Operation::Copy, { item });
            world.workers.drain();
            QVERIFY(once);
            QCOMPARE(world.folder.names(u"to"_s).join(u' '), copied);
            QCOMPARE(shown, QStringList());
        }
    }

    // All of it has arrived, as far as any call but the last one tells.
    void whatAStickDoesNotTakeIsTold()
    {
        const std::pair<Verb, bool> rows[] = {
            { Verb::Copy, false },
            { Verb::Copy, true }, // cancelled after the first item
            { Verb::Move, false },
            { Verb::Duplicate, false },
        };
        for (const auto &[verb, cancelled] : rows) {
            World world(u"from/a=a, stick/"_s);
            world.folder.shell(u"rmdir to; ln -s stick to"_s); // a bookmark
            world.folder.write(u"mounts"_s,
                               "1 1 0:1 / " + world.folder.pathInMountTable(u"stick"_s)
                                   + " rw - fuse.stick stick rw\n");
            MountTable::setSource(world.folder.path(u"mounts"_s));
            int synced = 0;
            {
                const Watched watched(
                    [&, cancelled = cancelled](Call call, const char *, unsigned) {
                        if (cancelled && call == Call::CopyRange)
                            world.engine.queue().cancel();
                        synced += call == Call::SyncAll && world.sheet.closed == 0;
                        return call == Call::SyncAll ? EIO : 0;
                    });
                world.alerts.answer(Alert::Ok);
                if (cancelled)
                    world.run(Operation::Copy, { u"a"_s, u"b"_s });
                else
                    world.perform(verb, u"a"_s, u"../to/a"_s);
            }
            MountTable::setSource(u"/proc/self/mountinfo"_s);
            QCOMPARE(synced, 1);
            QCOMPARE(world.to(u"a"_s), "a");
            QCOMPARE(world.alerts.last().text, u"Not everything could be written to the disk."_s);
            QVERIFY(world.alerts.last().details.endsWith(u"/to: Input/output error"_s));
        }
    }
};

QTEST_MAIN(tst_CopyMove)
#include "tst_CopyMove.moc"

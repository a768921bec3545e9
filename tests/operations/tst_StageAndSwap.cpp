#include "tests/operations/OperationWorld.h"
#include "tests/support/Watched.h"
#include "tests/support/WithoutRights.h"

#include <sys/stat.h>

using Meanwhile = std::function<int(World &, Call, const char *)>;

namespace {

void replaceBySave(World &world)
{
    world.folder.write(u"save"_s, "precious");
    std::filesystem::rename(world.folder.bytes(u"save"_s).toStdString(),
                            world.folder.bytes(u"to/a"_s).toStdString());
}

Meanwhile appears(Call when)
{
    return [when](World &world, Call call, const char *name) {
        if (call == when && (!name || qstrcmp(name, "a") == 0)
            && !exists(world.folder.path(u"to/a"_s)))
            world.folder.write(u"to/a"_s, "precious");
        return 0;
    };
}

} // namespace

// What others do to the two folders while a copy or move works on them, and what must not be lost,
// overwritten or hidden by it.
class tst_StageAndSwap : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The first question is answered with "Yes", any other with "No".
    void whatComesMeanwhileIsKept()
    {
        using enum Operation;
        const QString fresh = u"from/a=new"_s;
        const QString replaced = u"from/a=new, to/a=old"_s;
        const QString kept = u"to/a=precious"_s;
        const struct {
            const char *what;
            QString given;
            Operation operation;
            Meanwhile meanwhile;
            int questions;
            QString left; // in the destination
        } rows[] = {
            { "a save while the disk is full", replaced, Copy,
              [](World &world, Call call, const char *) {
                  if (call != Call::CopyRange)
                      return 0;
                  replaceBySave(world);
                  return ENOSPC;
              },
              1, kept },
            { "a save just before the exchange", replaced, Copy,
              [done = false](World &world, Call call, const char *) mutable {
                  if (call == Call::SetTimes && !std::exchange(done, true))
                      replaceBySave(world);
                  return 0;
              },
              2, kept },
            { "a save just before the exchange of a move", replaced, Move,
              [renames = 0](World &world, Call call, const char *name) mutable {
                  // The first one finds the name taken.
                  if (call == Call::Rename && qstrcmp(name, "a") == 0 && ++renames == 2)
                      replaceBySave(world);
                  return 0;
              },
              2, kept },
            { "a file while one is copied", fresh, Copy, appears(Call::CopyRange), 1, kept },
            { "a file as the name is taken", fresh, Copy, appears(Call::Link), 1, kept },
            { "a file as one is moved", fresh, Move, appears(Call::Rename), 1, kept },
            { "no status to be had", replaced, Copy,
              [](World &, Call call, const char *name) {
                  return call == Call::Status && qstrcmp(name, "a") == 0 ? EIO : 0;
              },
              0, u"to/a=old"_s },
            { "a link at the name", fresh + u", victim=precious"_s, Copy,
              [](World &world, Call call, const char *) {
                  if (call == Call::CopyRange && !exists(world.folder.path(u"to/a"_s)))
                      world.folder.link(u"../victim"_s, u"to/a"_s);
                  return 0;
              },
              1, u"to/a->../victim"_s },
        };
        for (const auto &row : rows) {
            World world(row.given);
            int questions = 0;
            world.alerts.decide = [&](const Alert &alert) {
                if (alert.buttons.size() == 1)
                    return Alert::Ok;
                return ++questions == 1 && row.given == replaced ? Alert::Yes : Alert::No;
            };
            {
                const Watched watched([&](Call call, const char *name, unsigned) {
                    return row.meanwhile(world, call, name);
                });
                world.run(row.operation, { u"a"_s });
            }
            QVERIFY2(treeOf(world.folder, { u"to"_s }) == row.left, row.what);
            QVERIFY2(questions == row.questions, row.what);
            QCOMPARE(world.from(u"a"_s), "new");
            if (row.given.contains(u"victim"_s))
                QCOMPARE(world.folder.read(u"victim"_s), "precious");
        }
    }

    // What is put into a folder that stands at its name, as after "No" and by duplicating.
    void aFolderSwappedForALinkIsNotEntered()
    {
        for (const Verb verb : { Verb::Copy, Verb::Move, Verb::Duplicate }) {
            World world(u"from/a=a, from/b=new, to/a=old, to/b/, victim/b=precious"_s);
            const Watched watched([&](Call call, const char *name, unsigned) {
                if (call == Call::Open && QByteArray(name).endsWith("/to/b"))
                    world.folder.shell(u"rmdir to/b; ln -s ../victim to/b"_s);
                return 0;
            });
            if (verb == Verb::Duplicate) {
                world.alerts.answer(Alert::Ok);
                world.perform(verb, u"b"_s, u"../to/b"_s);
            } else {
                world.alerts.answer({ Alert::No, Alert::Ok });
                world.run(verb == Verb::Copy ? Operation::Copy : Operation::Move,
                          { u"a"_s, u"b"_s });
            }
            QVERIFY(world.alerts.last().text.endsWith(u"failed!"_s));
            QCOMPARE(treeOf(world.folder, { u"from"_s, u"to"_s, u"victim"_s, u"trash"_s }),
                     u"from/a=a, from/b=new, to/a=old, to/b->../victim, victim/b=precious"_s);
        }
    }

    void lateFilesOfAMoveStayAndAreNamed()
    {
        World world(u"from/a/x=new, from/a/log=line, from/a/deep/y=new, from/a/pair==from/a/x"_s,
                    Device::Other);
        world.programs.before = [&](const QStringList &arguments) -> std::optional<int> {
            DesktopPrograms().run(arguments);
            makeTree(world.folder, u"from/a/deep/late=late, from/a/log=line and another"_s);
            return 0;
        };
        world.alerts.answer({ Alert::Ok });
        world.run(Operation::Move, { u"a"_s });
        QCOMPARE(world.tree(),
                 u"from/a/deep/late=late, from/a/log=line and another, "
                 "to/a/deep/y=new, to/a/log=line, to/a/pair=new, to/a/x=new"_s);
        const QString details = world.alerts.last().details;
        QVERIFY2(details.contains(u"'a/deep/late'"_s) && details.contains(u"'a/log'"_s),
                 qPrintable(details));
    }

    void nothingGoesBeforeTheNewItemIsWritten()
    {
        for (const auto &[operation, device] :
             { std::pair(Operation::Copy, Device::Same), std::pair(Operation::Move, Device::Same),
               std::pair(Operation::Move, Device::Other) }) {
            World world(u"from/a=new, from/b=new, to/a=old, to/b=old"_s, device);
            world.alerts.answer({ Alert::All });
            QList<Call> order;
            bool writes = true;
            const Watched watched([&](Call call, const char *, unsigned flags) {
                if (call == Call::SyncAll || (call == Call::Remove && !(flags & AT_REMOVEDIR)))
                    order.append(call);
                return call == Call::SyncAll && !writes ? EIO : 0;
            });
            world.run(operation, { u"a"_s, u"b"_s });
            QCOMPARE(order.count(Call::SyncAll), 1); // of many at once
            QCOMPARE(order.value(0), Call::SyncAll);
            QVERIFY(order.count(Call::Remove) >= 2);

            makeTree(world.folder, u"from/a=newer"_s);
            writes = false;
            world.alerts.answer({ Alert::Yes, Alert::Ok });
            world.run(operation, { u"a"_s });
            QCOMPARE(world.to(u"a"_s), "newer");
            QVERIFY(world.contents().contains("new")); // in the Trash, or beside it
            QVERIFY(device == Device::Same || world.from(u"a"_s) == "newer");
            QVERIFY(world.alerts.last().details.contains(u"'a'"_s));
            QCOMPARE(world.leftovers(), 0);
        }
    }

    void afterNoTheOldItemStaysWhereTheCopyFails()
    {
        World world(u"from/a=new, from/b=new, to/a=old, to/b=old"_s);
        world.alerts.answer({ Alert::No, Alert::Ok });
        const Watched watched([](Call call, const char *name, unsigned) {
            return call == Call::Open && qstrcmp(name, "b") == 0 ? EACCES : 0;
        });
        world.run(Operation::Copy, { u"a"_s, u"b"_s });
        QCOMPARE(world.tree(), u"from/a=new, from/b=new, to/a=old, to/b=old"_s);
        QVERIFY(world.alerts.shown().first().details.contains(u"goes to the Trash"_s));
    }

    void anOldFolderThatStaysInPartIsNamed()
    {
        World world(u"from/a/x=new, to/a/stuck=old, to/a/y=old"_s);
        world.alerts.answer({ Alert::Yes, Alert::Ok });
        const Watched watched([](Call call, const char *name, unsigned) {
            return call == Call::Remove && qstrcmp(name, "stuck") == 0 ? EBUSY : 0;
        });
        world.run(Operation::Copy, { u"a"_s });
        QCOMPARE(world.tree(), u"from/a/x=new, to/a/x=new, trash/a/stuck=old"_s);
        QVERIFY(world.alerts.last().details.contains(u"'a' could not be removed"_s));
    }

    void whatCanBeReadOfATreeArrivesWithItsAttributes()
    {
        World world(u"from/a/x=new, from/a/closed=secret"_s);
        world.folder.setAttribute(u"from/a/x"_s, "user.note", "kept");
        chmod(world.folder.bytes(u"from/a/closed"_s), 0);
        const WithoutRights withoutRights;
        // Root's command has all rights again.
        world.programs.before = [&](const QStringList &arguments) -> std::optional<int> {
            DesktopPrograms().run(arguments);
            std::filesystem::remove(
                FileName::toBytes(arguments.last() + u"/closed"_s).toStdString());
            return 1;
        };
        world.programs.errorText = u"/bin/cp: cannot open 'closed'"_s;
        world.alerts.answer({ Alert::Ok });
        world.run(Operation::Copy, { u"a"_s });
        QCOMPARE(world.folder.names(u"to/a"_s), QStringList { u"x"_s });
        QCOMPARE(world.folder.attribute(u"to/a/x"_s, "user.note"), "kept");
        QCOMPARE(world.alerts.last().details,
                 u"cannot open 'closed'\nEverything else of it was copied."_s);
    }

    void theFolderThatRefusesAMoveIsNamed()
    {
        for (const QString &closed : { u"from"_s, u"to"_s }) {
            World world(u"from/a=x"_s);
            chmod(world.folder.bytes(closed), 0555);
            const WithoutRights withoutRights;
            world.alerts.answer({ Alert::Ok });
            world.run(Operation::Move, { u"a"_s });
            chmod(world.folder.bytes(closed), 0755);
            QVERIFY(world.alerts.last().details.startsWith(world.folder.path(closed + u"/a: "_s)));
        }
    }

    // A device tells its failure once, perhaps with a lot that was written before the one it hit.
    void oldItemsStayAfterAFailureToWriteAnyLot()
    {
        constexpr int Items = 2500; // more than two lots
        World world;
        QStringList names;
        for (int number = 0; number < Items; ++number) {
            names.append(u"item %1"_s.arg(number));
            world.folder.write(u"from/"_s + names.last(), "new");
            world.folder.write(u"to/"_s + names.last(), "old");
        }
        std::atomic<int> written = 0; // by more than one thread
        const Watched watched([&](Call call, const char *, unsigned) {
            return call == Call::SyncAll && ++written == 1 ? EIO : 0;
        });
        world.alerts.answer({ Alert::All, Alert::Ok });
        world.run(Operation::Copy, names);
        QCOMPARE(written, 3);
        QCOMPARE(world.folder.names(u"trash"_s).size(), Items);
        QCOMPARE(world.folder.names(u"to"_s).size(), Items);
    }

    void contentAndPropertiesAreThoseOfTheSource()
    {
        for (const bool byHand : { false, true }) {
            World world(u"from/a=12345, from/tree/x=x"_s);
            const QByteArray from = world.folder.bytes(u"from/a"_s);
            for (const QString &file : { u"from/a"_s, u"from/tree/x"_s })
                world.folder.setAttribute(file, "user.note", "kept");
            QCOMPARE(truncate(from, 1 << 20), 0);
            QCOMPARE(chmod(from, 0451), 0);
            world.folder.setModified(u"from/a"_s, 1'000'000);
            const Watched watched([&](Call call, const char *, unsigned) {
                return byHand && call == Call::CopyRange ? EXDEV : 0;
            });
            world.run(Operation::Copy, { u"a"_s, u"tree"_s });
            struct stat source { };
            struct stat made { };
            QCOMPARE(stat(from, &source), 0);
            QCOMPARE(stat(world.folder.bytes(u"to/a"_s), &made), 0);
            QCOMPARE(made.st_mode, source.st_mode);
            QCOMPARE(made.st_size, source.st_size);
            QVERIFY(made.st_blocks <= source.st_blocks);
            QCOMPARE(made.st_mtime, 1'000'000);
            for (const QString &file : { u"to/a"_s, u"to/tree/x"_s })
                QCOMPARE(world.folder.attribute(file, "user.note"), "kept");
            QVERIFY(world.to(u"a"_s) == world.from(u"a"_s));
        }
    }
};

QTEST_GUILESS_MAIN(tst_StageAndSwap)
#include "tst_StageAndSwap.moc"

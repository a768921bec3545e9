#include "files/Journal.h"
#include "platform/desktop/DesktopPrograms.h"
#include "tests/support/InterruptedRuns.h"
#include "tests/support/LongArchive.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/TestTree.h"
#include "tests/support/Watched.h"
#include "unpack/Unpacking.h"

#include <QUrl>

#include <archive.h>
#include <archive_entry.h>

#include <clocale>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

struct Member {
    QByteArray name;
    QByteArray content {};
    unsigned type = AE_IFREG;
    QByteArray target {}; // of a link
    unsigned mode = 0644;
};

// Archives "a.zip" and "a.cpgz", and folders to unpack them into.
struct World {
    TestFolder folder;
    DesktopPrograms programs;

    explicit World(const QString &words = {}) { makeTree(folder, u"to/, outside/, "_s + words); }

    // Writes what no archiver would, too. "OUTSIDE" is a folder outside.
    void write(const QString &name, const QList<Member> &members)
    {
        const auto bytes = [&](QByteArray text) {
            return text.replace("OUTSIDE", folder.bytes(u"outside"_s));
        };
        archive *writer = archive_write_new();
        if (name.endsWith(u".zip"_s)) {
            archive_write_set_format_zip(writer);
        } else {
            archive_write_set_format_cpio_newc(writer);
            archive_write_add_filter_gzip(writer);
        }
        QCOMPARE(archive_write_open_filename(writer, folder.bytes(name)), ARCHIVE_OK);
        for (const Member &member : members) {
            archive_entry *entry = archive_entry_new();
            archive_entry_set_pathname(entry, bytes(member.name));
            archive_entry_set_filetype(entry, member.type);
            archive_entry_set_perm(entry, member.mode);
            archive_entry_set_size(entry, member.content.size());
            if (!member.target.isEmpty())
                archive_entry_set_symlink(entry, bytes(member.target));
            QVERIFY2(archive_write_header(writer, entry) >= ARCHIVE_WARN,
                     archive_error_string(writer));
            archive_write_data(writer, member.content.constData(), size_t(member.content.size()));
            archive_entry_free(entry);
        }
        QCOMPARE(archive_write_close(writer), ARCHIVE_OK);
        archive_write_free(writer);
    }
    // The one that a script of a shell has made; answers the exit status.
    int unpackMadeBy(const QString &script)
    {
        folder.shell(script);
        return unpack(script.contains(u"a.zip"_s) ? u"a.zip"_s : u"a.cpgz"_s);
    }
    int unpack(const QString &archive, const std::function<void(pid_t)> &started = {})
    {
        QStringList arguments { QStringLiteral(TWINLEAF_DITTO_FOLDER "/twinleaf-ditto"), u"-x"_s };
        if (archive.endsWith(u".zip"_s))
            arguments.append(u"-k"_s);
        return programs.run(arguments << folder.path(archive) << folder.path(u"to"_s), started)
            .status;
    }
    // In this process, seeing its system calls. The Trash refuses, after a script of a shell.
    bool unpackHere(const SystemCalls::Watch &watch, const QString &beforeTrash = u":"_s)
    {
        const Watched watched(watch);
        const bool whole =
            ::unpack({ ArchiveKind::PkZip, folder.bytes(u"a.zip"_s), folder.bytes(u"to"_s) },
                     Journal(Journal::runsFolder()), [&](const QString &, const QString &) {
                         folder.shell(beforeTrash);
                         return false;
                     });
        return chdir("/") == 0 && whole;
    }
    // Kind, permissions and content of everything below a folder.
    QByteArray tree(const QString &name)
    {
        folder.shell(u"cd %1; { find . -mindepth 1 -printf '%P %y %m %l\\n' | LC_ALL=C sort; "
                     "find . -type f -exec md5sum {} + | LC_ALL=C sort; } > ../listed"_s.arg(name));
        return folder.read(u"listed"_s);
    }
    QString left() const { return treeOf(folder, { u"to"_s, u"outside"_s }); }
    unsigned mode(const QString &name) const
    {
        return fileStatus(folder.path(name), Links::NoFollow)->mode & 07777;
    }
    // What it holds, and from where it came.
    QString trashed(const QString &name)
    {
        folder.shell(u"cd \"$HOME/.local/share/Trash\"; { cat files/%1; echo -n ' from '; "
                     "sed -n s,Path=,,p info/%1.trashinfo; } > \"$OLDPWD/trashed\""_s.arg(name));
        return QUrl::fromPercentEncoding(folder.read(u"trashed"_s))
            .trimmed()
            .replace(folder.path(), u"~"_s);
    }
};

} // namespace

class tst_Ditto : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { std::setlocale(LC_ALL, "C.UTF-8"); }

    void whatOtherToolsPackComesOutWhole()
    {
        const QString cpio = u"find . -print0 | cpio -0 -o --quiet -H "_s;
        for (
            const QString &command :
            { u"zip -qry ../a.zip ."_s, u"bsdtar --format zip -cf ../a.zip ."_s,
              u"rm link; zip -qr - . | cat > ../a.zip"_s, // which refuses to stream a link
              u"zip -qry ../b .; { echo '#!/bin/sh'; cat ../b.zip; } > ../a.zip; zip -qA ../a.zip"_s,
              cpio + u"newc | gzip > ../a.cpgz"_s, cpio + u"odc | gzip > ../a.cpgz"_s,
              cpio + u"newc > ../a.cpgz"_s }) {
            World world(
                u"from/deep/folder/a b=deep, from/empty/, from/\u00FCmlaut-e\u0301=accents, "
                "from/-m=dash, from/$(x) \"q\" \\=shell, from/link->/nowhere/else"_s);
            world.folder.write(u"from/deep/program"_s, QByteArray(300000, 'p'));
            if (!command.contains(u"bsdtar"_s)) // which refuses such a name
                world.folder.write(u"from/caf"_s + QChar(0xDCE9), "bytes");
            const int status =
                world.unpackMadeBy(u"cd from; chmod 755 deep/program; chmod 600 -- -m; "
                                   "ln deep/program twin; chmod 555 deep; "_s
                                   + command);
            QVERIFY2(status == 0, qPrintable(command));
            QCOMPARE(world.tree(u"to"_s), world.tree(u"from"_s));
            world.folder.shell(u"chmod 755 from/deep to/deep"_s);
        }
    }

    void hostileMembersAreRefused()
    {
        const auto refused = [](const QString &archive, const QList<Member> &members,
                                const QString &left = {}) {
            World world;
            world.write(archive, members + QList { Member { "good", "good" } });
            const int status = world.unpack(archive);
            const QString which = archive + u": "_s + QString::fromUtf8(members.last().name) + u' ';
            QCOMPARE(which + world.left(), which + u"to/good=good"_s + left);
            QCOMPARE(status, 1);
            QCOMPARE(world.mode(u"outside"_s), 0755U);
        };
        const Member link { "l", {}, AE_IFLNK, "OUTSIDE" };
        const QString linkAlone = u", to/l->~/outside"_s;
        for (const QString &archive : { u"a.zip"_s, u"a.cpgz"_s }) {
            refused(archive, { { "OUTSIDE/x", "evil" } });
            refused(archive, { { "../outside/x", "evil" } });
            refused(archive, { { "a/../../outside/x", "evil" } });
            refused(archive, { { "../outside", {}, AE_IFDIR, {}, 0 } });
            refused(archive, { link, { "l/through it", "evil" } }, linkAlone);
            refused(archive, { link, { "l", {}, AE_IFDIR, {}, 0 } }, linkAlone);
            refused(archive, { { "twice", "1" }, { "twice", "2" } }, u", to/twice=1"_s);
        }
        refused(u"a.cpgz"_s, { { "device", {}, AE_IFCHR } });
        refused(u"a.cpgz"_s, { { "pipe", {}, AE_IFIFO } });
    }

    void setIdBitsAreDropped()
    {
        World world;
        world.write(u"a.zip"_s,
                    { { "run", "x", AE_IFREG, {}, 06755 }, { "d", {}, AE_IFDIR, {}, 03755 } });
        QCOMPARE(world.unpack(u"a.zip"_s), 0);
        QCOMPARE(world.mode(u"to/run"_s), 0755U);
        QCOMPARE(world.mode(u"to/d"_s), 0755U);
    }

    void markedNamesStayTheBytesTheyAre()
    {
        // Two spellings of one accent, and a name that is not what its mark says.
        World world;
        QCOMPARE(world.unpackMadeBy(uR"(python3 - <<'END'
import zipfile
with zipfile.ZipFile('a.zip', 'w') as made:
    for number, name in enumerate(['e\u0301', '\u00e9', '\u00fc']):
        made.writestr(name, str(number))
data = open('a.zip', 'rb').read()
open('a.zip', 'wb').write(data.replace('\u00fc'.encode(), b'\x81\xff'))
END)"_s),
                 0);
        QCOMPARE(world.folder.read(u"to/e\u0301"_s), "0");
        QCOMPARE(world.folder.read(u"to/\u00E9"_s), "1");
        QCOMPARE(world.folder.read(FileName::fromBytes("to/\x81\xff")), "2");
    }

    void everyByteOfANameComesBack()
    {
        for (const QString &locale : { u"C.UTF-8"_s, u"C"_s }) {
            World world;
            world.folder.shell(uR"(mkdir from; cd from; python3 - <<'END'
import os
for number in range(1, 256):
    if chr(number) not in '/\\\\': # a backslash is masked by a byte that no other name has
        for name in (b'a%cb', b'%c', b'\xc3\xbc%c'):
            name %= number
            if name not in (b'.', b'-'): # which zip takes for its input
                open(name, 'w').write('x')
END
LC_ALL=%1 zip -qr ../a.zip .)"_s.arg(locale));
            QCOMPARE(world.unpack(u"a.zip"_s), 0);
            QVERIFY(world.folder.names(u"to"_s) == world.folder.names(u"from"_s));
        }
    }

    // In a folder that everybody may write to.
    void aSwappedFolderIsLeftAlone()
    {
        const QString private_ = u"mkdir -m 700 to/$1; echo -n private > to/$1/victim"_s;
        const struct {
            Call when;
            QString script; // with the name of the hidden folder
            bool arrives;
        } cases[] = {
            { Call::Open, private_, false },
            { Call::Open,
              u"mkdir victims; echo -n private > victims/victim; ln -s ../victims to/$1"_s, false },
            { Call::Rename, private_, true },
            { Call::Rename,
              u"mkdir victims; echo -n private > victims/victim; ln -s ../victims to/$1"_s, true },
        };
        for (const auto &row : cases) {
            for (const QString &old : { QString(), u"to/d/x=old"_s }) {
                World world(u"from/d/x=new, to/d/, to/d/y=y, "_s + old);
                world.folder.shell(u"cd from; zip -qr ../a.zip ."_s);
                QString hidden;
                const bool whole = world.unpackHere([&](Call call, const char *name, unsigned) {
                    const QByteArray called(name);
                    if (call == Call::Open && called.startsWith(".twinleaf-"))
                        hidden = FileName::fromBytes(called);
                    if (call == row.when && !hidden.isEmpty()
                        && !exists(world.folder.path(u"away"_s)))
                        world.folder.shell(u"set %1; mv to/$1 away; "_s.arg(hidden) + row.script);
                    return 0;
                });
                QCOMPARE(whole, row.arrives && old.isEmpty());
                QCOMPARE(world.folder.read(u"to/"_s + hidden + u"/victim"_s), "private");
                QCOMPARE(world.folder.names(u"to/"_s + hidden), QStringList { u"victim"_s });
                QCOMPARE(world.folder.read(u"to/d/x"_s),
                         !old.isEmpty()    ? "old"
                             : row.arrives ? "new"
                                           : "");
                QCOMPARE(world.folder.names(u"away"_s), QStringList());
            }
        }
    }

    // A link at the name of a folder that is there is not followed.
    void nothingIsMergedThroughALink()
    {
        World world(u"from/d/x=new, to/d/y=y"_s);
        world.folder.shell(u"cd from; zip -qr ../a.zip ."_s);
        QVERIFY(!world.unpackHere([&](Call call, const char *name, unsigned flags) {
            if (call == Call::Open && qstrcmp(name, "d") == 0 && (flags & O_PATH))
                world.folder.shell(u"mv to/d away; ln -s ../outside to/d"_s);
            return 0;
        }));
        QCOMPARE(world.left(), u"to/d->../outside"_s);
    }

    void nothingComesOfABrokenArchive()
    {
        for (const QString &damage :
             { u"zip -qr b.zip from; head -c 300000 b.zip > a.zip"_s,
               u"zip -qr a.zip from; truncate -s -30 a.zip"_s, u"zip -qr -P secret a.zip from"_s,
               u"zip -q0r a.zip from; printf XX | dd of=a.zip bs=1 seek=5000 conv=notrunc"_s,
               u"echo hello > a.zip"_s, u": > a.zip"_s, u"rm -f a.zip"_s, u"mkfifo a.zip"_s,
               u"mkdir a.zip"_s, u"find from | cpio -o --quiet -H newc > a.zip"_s,
               u"find from | cpio -o --quiet -H newc | gzip > b; head -c 300000 b > a.cpgz"_s,
               u"zip -qr b.zip from; mv b.zip a.cpgz"_s }) {
            World world(u"from/a=a, to/old=old"_s);
            const int status =
                world.unpackMadeBy(u"head -c 600000 /dev/urandom > from/b; "_s + damage);
            QVERIFY2(status == 1, qPrintable(damage));
            QCOMPARE(damage + world.left(), damage + u"to/old=old"_s);
        }
    }

    void whatIsInTheWayGoesToTheTrash()
    {
        World world(u"from/d/both=new, from/d/new/x=x, from/linked/x=x, to/d/both=old, "
                    "to/d/kept=kept, to/d/new=a file where a folder comes, to/linked->~/outside"_s);
        QCOMPARE(world.unpackMadeBy(u"chmod 700 to/d; cd from; zip -qr ../a.zip ."_s), 0);
        QCOMPARE(world.left(), u"to/d/both=new, to/d/kept=kept, to/d/new/x=x, to/linked/x=x"_s);
        QCOMPARE(world.trashed(u"both"_s), u"old from ~/to/d/both"_s);
        QCOMPARE(world.trashed(u"new"_s), u"a file where a folder comes from ~/to/d/new"_s);
        QCOMPARE(world.mode(u"to/d"_s), 0700U); // the folder that was there keeps what it was
    }

    void whatMustStayStays()
    {
        const QString stays = u"to/closed=!a file where a closed folder comes, to/folder/x=x, "_s;
        World world(stays + u"to/locked=!old"_s);
        world.write(u"a.zip"_s,
                    { { "folder", "file" },
                      { "locked", "new" },
                      { "free", "free" },
                      { "closed", {}, AE_IFDIR, {}, 0 } });
        QCOMPARE(world.unpack(u"a.zip"_s), 1);
        QCOMPARE(world.left(), stays + u"to/free=free, to/locked=!old"_s);
        QCOMPARE(world.mode(u"to/closed"_s), 0644U);
    }

    // What somebody does to the new item while the Trash refuses the old one.
    void whatTheTrashRefusesIsNotLost()
    {
        const struct {
            QString script;
            QString left;
        } cases[] = {
            { u":"_s, u"to/x=old"_s },
            { u"rm to/x"_s, u"to/x=old"_s },
            { u"echo -n saved > y; mv y to/x"_s, u"to/x=old, trash/x=saved"_s },
            { u"echo -n ', more' >> to/x"_s, u"to/x=old, trash/x=new, more"_s },
            { u"mv to/x to/y; mkdir to/x; echo -n z > to/x/z"_s,
              u"to/x=old, to/y=new, trash/x/z=z"_s },
        };
        const Journal journal(Journal::runsFolder());
        for (const auto &row : cases) {
            for (const bool plain : { false, true }) { // a file system without exchange
                World world(u"from/x=new, to/x=old, trash/"_s);
                world.folder.shell(u"cd from; zip -qr ../a.zip ."_s);
                QVERIFY(!world.unpackHere(
                    [plain](Call call, const char *, unsigned flags) {
                        return plain ? answerOfPlainFileSystem(call, flags) : 0;
                    },
                    row.script));
                RecordedWorkspace workspace;
                workspace.trashFolder = world.folder.path(u"trash"_s);
                settleInterruptedRuns(journal, workspace);
                QCOMPARE(row.script + u": "_s + treeOf(world.folder, { u"to"_s, u"trash"_s }),
                         row.script + u": "_s + row.left);
            }
        }
    }

    void whatAKilledOneLeftIsRemovedByTheNextStart()
    {
        RecordedWorkspace workspace;
        const Journal journal(Journal::runsFolder());
        for (const bool programToo : { false, true }) {
            World world(u"to/old=old"_s);
            writeLongArchive(world.folder, u"."_s);
            const pid_t program = fork();
            if (program == 0) {
                world.unpack(u"a.cpgz"_s, [&](pid_t process) {
                    const auto hasBegun = [&] {
                        const QString hidden = world.folder.names(u"to"_s).value(0);
                        return hidden.startsWith(u'.')
                            && !world.folder.names(u"to/"_s + hidden).isEmpty();
                    };
                    while (!hasBegun())
                        sched_yield();
                    kill(programToo ? getpid() : process, SIGKILL);
                });
                _exit(0);
            }
            waitpid(program, nullptr, 0);
            // Of the two the unpacker alone takes back what it began.
            QStringList told;
            QTRY_VERIFY((told += settleInterruptedRuns(journal, workspace),
                         world.left() == u"to/old=old"_s));
            QCOMPARE(told.value(0),
                     programToo ? QString()
                                : u"Unpacking 'a.cpgz' was interrupted; what had not arrived was "
                                  "removed."_s);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Ditto)
#include "tst_Ditto.moc"

#include "platform/desktop/DesktopPrograms.h"
#include "platform/FileFlags.h"
#include "platform/FileName.h"
#include "platform/FileStatus.h"
#include "tests/support/TestFolder.h"
#include "util/PathText.h"

#include <QTest>

#include <archive.h>
#include <archive_entry.h>

#include <clocale>
#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

struct Member {
    QByteArray name;
    QByteArray content {};
    unsigned type = AE_IFREG;
    QByteArray target {}; // of a link
    unsigned mode = 0644;
};
using Members = QList<Member>;

enum class Made { Zip, Cpio };

// Writes what no archiver would, too.
void writeArchive(const QString &path, Made kind, const Members &members)
{
    archive *writer = archive_write_new();
    if (kind == Made::Zip) {
        archive_write_set_format_zip(writer);
    } else {
        archive_write_set_format_cpio_newc(writer);
        archive_write_add_filter_gzip(writer);
    }
    QCOMPARE(archive_write_open_filename(writer, FileName::toBytes(path).constData()), ARCHIVE_OK);
    for (const Member &member : members) {
        archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, member.name.constData());
        archive_entry_set_filetype(entry, member.type);
        archive_entry_set_perm(entry, member.mode);
        archive_entry_set_size(entry, member.content.size());
        if (!member.target.isEmpty())
            archive_entry_set_symlink(entry, member.target.constData());
        QVERIFY2(archive_write_header(writer, entry) >= ARCHIVE_WARN, archive_error_string(writer));
        archive_write_data(writer, member.content.constData(), size_t(member.content.size()));
        archive_entry_free(entry);
    }
    QCOMPARE(archive_write_close(writer), ARCHIVE_OK);
    archive_write_free(writer);
}

struct World {
    TestFolder folder;
    DesktopPrograms programs;

    World()
    {
        folder.makeFolder(u"to"_s);
        folder.makeFolder(u"outside"_s);
    }
    QString archive(Made kind) const
    {
        return folder.path(kind == Made::Zip ? u"a.zip"_s : u"a.cpgz"_s);
    }
    int unpack(const QString &path, Made kind, const std::function<void(pid_t)> &started = {})
    {
        QStringList arguments { QStringLiteral(TWINLEAF_DITTO_FOLDER "/twinleaf-ditto"), u"-x"_s };
        if (kind == Made::Zip)
            arguments.append(u"-k"_s);
        return programs.run(arguments << path << folder.path(u"to"_s), started).status;
    }
    int unpack(Made kind) { return unpack(archive(kind), kind); }
    int shell(const QString &script)
    {
        return programs
            .run({ u"/bin/sh"_s, u"-c"_s, u"cd '"_s + folder.path() + u"' && "_s + script })
            .status;
    }
    // Kind, permissions and content of everything below a folder.
    QByteArray tree(const QString &name)
    {
        const int status =
            shell(u"cd %1 && { find . -mindepth 1 -printf '%P %y %m %l\\n' | "
                  "LC_ALL=C sort; find . -type f -exec md5sum {} + | LC_ALL=C sort; } "
                  "> ../listed"_s.arg(name));
        return status == 0 ? folder.read(u"listed"_s)
                           : QByteArray("no listing of ") + name.toUtf8();
    }
    QByteArray trashed(const QByteArray &name) const
    {
        QFile file(QFile::decodeName(qgetenv("HOME") + "/.local/share/Trash/files/" + name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

Q_DECLARE_METATYPE(Members)

class tst_Ditto : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { std::setlocale(LC_ALL, "C.UTF-8"); }
    void whatOtherToolsPackComesOutWhole_data();
    void whatOtherToolsPackComesOutWhole();
    void hostileMembersAreRefused_data();
    void hostileMembersAreRefused();
    void setIdBitsAreDropped();
    void markedNamesStayTheBytesTheyAre();
    void nothingComesOfABrokenArchive_data();
    void nothingComesOfABrokenArchive();
    void whatIsInTheWayGoesToTheTrash();
    void whatMustStayStays();
    void cancellingLeavesNothing();
};

void tst_Ditto::whatOtherToolsPackComesOutWhole_data()
{
    QTest::addColumn<Made>("kind");
    QTest::addColumn<QString>("command");
    QTest::newRow("zip") << Made::Zip << u"zip -qry ../a.zip ."_s;
    QTest::newRow("bsdtar's zip") << Made::Zip << u"bsdtar --format zip -cf ../a.zip ."_s;
    QTest::newRow("streamed zip") << Made::Zip << u"zip -qry - . | cat > ../a.zip"_s;
    QTest::newRow("zip behind a program")
        << Made::Zip
        << u"zip -qry ../b . && { printf '#!/bin/sh\n'; cat ../b.zip; } > ../a.zip && zip -qA ../a.zip"_s;
    QTest::newRow("new cpio")
        << Made::Cpio << u"find . -print0 | cpio -0 -o --quiet -H newc | gzip > ../a.cpgz"_s;
    QTest::newRow("old cpio") << Made::Cpio
                              << u"find . -print0 | cpio -0 -o --quiet -H odc | gzip > ../a.cpgz"_s;
    QTest::newRow("cpio, not compressed")
        << Made::Cpio << u"find . -print0 | cpio -0 -o --quiet -H newc > ../a.cpgz"_s;
}

void tst_Ditto::whatOtherToolsPackComesOutWhole()
{
    QFETCH(Made, kind);
    QFETCH(QString, command);
    World world;
    world.folder.makeFolder(u"from/deep/folder"_s);
    world.folder.makeFolder(u"from/empty"_s);
    world.folder.write(u"from/deep/folder/a b"_s, "deep");
    world.folder.write(u"from/deep/program"_s, QByteArray(300000, 'p'));
    world.folder.write(u"from/\u00FCmlaut-e\u0301"_s, "accents");
    world.folder.write(u"from/-m"_s, "dash");
    world.folder.write(u"from/$(x) \"q\" \\"_s, "shell");
    if (!command.contains(u"bsdtar"_s)) // which refuses such a name
        world.folder.write(u"from/caf"_s + QChar(0xDCE9), "bytes");
    world.folder.link(u"/nowhere/else"_s, u"from/link"_s);
    QCOMPARE(world.shell(u"cd from && chmod 755 deep/program && chmod 600 -- -m && "
                         "ln deep/program twin && chmod 555 deep"_s),
             0);
    QCOMPARE(world.shell(u"cd from && "_s + command), 0);
    QCOMPARE(world.unpack(kind), 0);
    QCOMPARE(world.tree(u"to"_s), world.tree(u"from"_s));
    world.shell(u"chmod 755 from/deep to/deep"_s);
}

void tst_Ditto::hostileMembersAreRefused_data()
{
    QTest::addColumn<Made>("kind");
    QTest::addColumn<Members>("members");
    QTest::addColumn<int>("left"); // items in the destination, with the good one
    for (const Made kind : { Made::Zip, Made::Cpio }) {
        const auto row = [&](const char *name, const Members &members, int left = 1) {
            QTest::addRow("%s, %s", name, kind == Made::Zip ? "zip" : "cpio")
                << kind << members << left;
        };
        row("absolute", { { "OUTSIDE/x", "evil" } });
        row("climbing", { { "../outside/x", "evil" } });
        row("climbing in the middle", { { "a/../../outside/x", "evil" } });
        row("closed folder outside", { { "../outside", {}, AE_IFDIR, {}, 0 } });
        row("through its own link", { { "l", {}, AE_IFLNK, "OUTSIDE" }, { "l/x", "evil" } }, 2);
        row("folder over its own link",
            { { "l", {}, AE_IFLNK, "OUTSIDE" }, { "l", {}, AE_IFDIR, {}, 0 } }, 2);
        row("the same name again", { { "twice", "first" }, { "twice", "second" } }, 2);
    }
    QTest::newRow("device") << Made::Cpio << Members { { "null", {}, AE_IFCHR } } << 1;
    QTest::newRow("pipe") << Made::Cpio << Members { { "pipe", {}, AE_IFIFO } } << 1;
}

void tst_Ditto::hostileMembersAreRefused()
{
    QFETCH(Made, kind);
    QFETCH(Members, members);
    QFETCH(int, left);
    World world;
    const QByteArray outside = FileName::toBytes(world.folder.path(u"outside"_s));
    for (Member &member : members) {
        member.name.replace("OUTSIDE", outside);
        member.target.replace("OUTSIDE", outside);
    }
    members.append(Member { "good", "good" });
    writeArchive(world.archive(kind), kind, members);
    QCOMPARE(world.unpack(kind), 1);
    QCOMPARE(world.folder.names(u"outside"_s), QStringList());
    QCOMPARE(fileStatus(world.folder.path(u"outside"_s), Links::NoFollow)->mode & 0777, 0755U);
    QCOMPARE(world.folder.read(u"to/good"_s), "good");
    QCOMPARE(world.folder.names(u"to"_s).size(), left);
    if (exists(world.folder.path(u"to/twice"_s)))
        QCOMPARE(world.folder.read(u"to/twice"_s), "first");
}

void tst_Ditto::setIdBitsAreDropped()
{
    World world;
    writeArchive(world.archive(Made::Zip), Made::Zip,
                 { { "run", "x", AE_IFREG, {}, 06755 }, { "d", {}, AE_IFDIR, {}, 03755 } });
    QCOMPARE(world.unpack(Made::Zip), 0);
    for (const QString &name : { u"to/run"_s, u"to/d"_s })
        QCOMPARE(fileStatus(world.folder.path(name), Links::NoFollow)->mode & 07777, 0755U);
}

void tst_Ditto::markedNamesStayTheBytesTheyAre()
{
    // Two spellings of one accent, and a name that is not what its mark says.
    World world;
    QCOMPARE(world.shell(uR"(python3 - <<'END'
import zipfile
with zipfile.ZipFile('a.zip', 'w') as made:
    for number, name in enumerate(['e\u0301', '\u00e9', '\u00fc']):
        made.writestr(name, str(number))
data = open('a.zip', 'rb').read()
open('a.zip', 'wb').write(data.replace('\u00fc'.encode(), b'\x81\xff'))
END)"_s),
             0);
    QCOMPARE(world.unpack(Made::Zip), 0);
    QCOMPARE(world.folder.read(u"to/e\u0301"_s), "0");
    QCOMPARE(world.folder.read(u"to/\u00E9"_s), "1");
    QCOMPARE(world.folder.read(FileName::fromBytes("to/\x81\xff")), "2");
}

void tst_Ditto::nothingComesOfABrokenArchive_data()
{
    QTest::addColumn<Made>("kind");
    QTest::addColumn<QString>("damage");
    const auto zip = [](const char *name, const QString &damage) {
        QTest::newRow(name) << Made::Zip << damage;
    };
    zip("cut short", u"zip -qr b.zip from && head -c 300000 b.zip > a.zip"_s);
    zip("directory cut short", u"zip -qr a.zip from && truncate -s -30 a.zip"_s);
    zip("encrypted", u"zip -qr -P secret a.zip from"_s);
    zip("changed content",
        u"zip -q0r a.zip from && printf XX | dd of=a.zip bs=1 seek=5000 conv=notrunc"_s);
    zip("no archive", u"echo hello > a.zip"_s);
    zip("empty file", u": > a.zip"_s);
    zip("missing", u"true"_s);
    zip("pipe", u"mkfifo a.zip"_s);
    zip("folder", u"mkdir a.zip"_s);
    zip("cpio called zip", u"find from | cpio -o --quiet -H newc > a.zip"_s);
    QTest::newRow("cpio cut short")
        << Made::Cpio
        << u"find from | cpio -o --quiet -H newc | gzip > b && head -c 300000 b > a.cpgz"_s;
    QTest::newRow("zip called cpio") << Made::Cpio << u"zip -qr a.zip from && mv a.zip a.cpgz"_s;
}

void tst_Ditto::nothingComesOfABrokenArchive()
{
    QFETCH(Made, kind);
    QFETCH(QString, damage);
    World world;
    world.folder.makeFolder(u"from"_s);
    world.folder.write(u"to/old"_s, "old");
    QCOMPARE(
        world.shell(
            u"head -c 600000 /dev/urandom > from/b && echo a > from/a && { %1; }"_s.arg(damage)),
        0);
    QCOMPARE(world.unpack(kind), 1);
    QCOMPARE(world.folder.names(u"to"_s), QStringList { u"old"_s });
}

void tst_Ditto::whatIsInTheWayGoesToTheTrash()
{
    World world;
    world.folder.makeFolder(u"from/d/new"_s);
    world.folder.write(u"from/d/both"_s, "new");
    world.folder.write(u"from/d/new/x"_s, "x");
    world.folder.makeFolder(u"from/linked"_s);
    world.folder.write(u"from/linked/x"_s, "x");
    QCOMPARE(world.shell(u"cd from && zip -qr ../a.zip ."_s), 0);
    world.folder.makeFolder(u"to/d"_s);
    world.folder.write(u"to/d/both"_s, "old");
    world.folder.write(u"to/d/kept"_s, "kept");
    world.folder.write(u"to/d/new"_s, "a file where a folder comes");
    world.folder.link(world.folder.path(u"outside"_s), u"to/linked"_s);
    QCOMPARE(world.shell(u"chmod 700 to/d"_s), 0);

    QCOMPARE(world.unpack(Made::Zip), 0);
    QCOMPARE(world.folder.names(u"to/d"_s), QStringList({ u"both"_s, u"kept"_s, u"new"_s }));
    QCOMPARE(world.folder.read(u"to/d/both"_s), "new");
    QCOMPARE(world.folder.read(u"to/d/new/x"_s), "x");
    QCOMPARE(world.folder.names(u"outside"_s), QStringList());
    QCOMPARE(world.folder.read(u"to/linked/x"_s), "x");
    QCOMPARE(world.trashed("both"), "old");
    QCOMPARE(world.trashed("new"), "a file where a folder comes");
    // The folder that was there keeps what it was.
    QCOMPARE(fileStatus(world.folder.path(u"to/d"_s), Links::NoFollow)->mode & 0777, 0700U);
}

void tst_Ditto::whatMustStayStays()
{
    World world;
    writeArchive(world.archive(Made::Zip), Made::Zip,
                 { { "folder", "file" },
                   { "locked", "new" },
                   { "free", "free" },
                   { "closed", {}, AE_IFDIR, {}, 0 } });
    world.folder.makeFolder(u"to/folder"_s);
    world.folder.write(u"to/folder/x"_s, "x");
    world.folder.write(u"to/locked"_s, "old");
    world.folder.write(u"to/closed"_s, "a locked file where a closed folder comes");
    if (!world.folder.setAttribute(u"to/locked"_s, "user.twinleaf.locked", "1")
        || !world.folder.setAttribute(u"to/closed"_s, "user.twinleaf.locked", "1"))
        QSKIP("no extended attributes here");
    QCOMPARE(world.unpack(Made::Zip), 1);
    QCOMPARE(world.folder.read(u"to/folder/x"_s), "x");
    QCOMPARE(world.folder.read(u"to/locked"_s), "old");
    QCOMPARE(world.folder.read(u"to/free"_s), "free");
    QCOMPARE(fileStatus(world.folder.path(u"to/closed"_s), Links::NoFollow)->mode & 0777, 0644U);
    QCOMPARE(world.folder.names(u"to"_s).size(), 4);
}

void tst_Ditto::cancellingLeavesNothing()
{
    World world;
    world.folder.write(u"to/old"_s, "old");
    QCOMPARE(world.shell(u"mkdir from && truncate -s 100M from/big && find from | "
                         "cpio -o --quiet -H newc | gzip -1 > a.cpgz"_s),
             0);
    const int status = world.unpack(world.archive(Made::Cpio), Made::Cpio, [&](pid_t process) {
        while (world.folder.names(u"to"_s).size() < 2)
            usleep(1000);
        kill(process, SIGTERM);
    });
    QCOMPARE(status, 15);
    QCOMPARE(world.folder.names(u"to"_s), QStringList { u"old"_s });
}

QTEST_GUILESS_MAIN(tst_Ditto)
#include "tst_Ditto.moc"

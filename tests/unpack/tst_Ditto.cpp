#include "files/FileName.h"
#include "platform/desktop/DesktopPrograms.h"
#include "tests/support/TestTree.h"

#include <QTest>

#include <archive.h>
#include <archive_entry.h>

#include <clocale>
#include <csignal>
#include <sys/stat.h>

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

    explicit World(const QString &words = {}) { makeTree(folder, u"to/, outside/, "_s + words); }
    QString archive(Made kind) const
    {
        return folder.path(kind == Made::Zip ? u"a.zip"_s : u"a.cpgz"_s);
    }
    int unpack(Made kind, const std::function<void(pid_t)> &started = {})
    {
        QStringList arguments { QStringLiteral(TWINLEAF_DITTO_FOLDER "/twinleaf-ditto"), u"-x"_s };
        if (kind == Made::Zip)
            arguments.append(u"-k"_s);
        return programs.run(arguments << archive(kind) << folder.path(u"to"_s), started).status;
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
    QByteArray trashed(const QString &name)
    {
        folder.shell(u"cp \"$HOME/.local/share/Trash/files/%1\" trashed"_s.arg(name));
        return folder.read(u"trashed"_s);
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
    QTest::addColumn<QString>("command");
    QTest::newRow("zip") << u"zip -qry ../a.zip ."_s;
    QTest::newRow("bsdtar's zip") << u"bsdtar --format zip -cf ../a.zip ."_s;
    // Which refuses to stream a link.
    QTest::newRow("streamed zip") << u"rm link; zip -qr - . | cat > ../a.zip"_s;
    QTest::newRow("zip behind a program")
        << u"zip -qry ../b .; { printf '#!/bin/sh\n'; cat ../b.zip; } > ../a.zip; zip -qA ../a.zip"_s;
    const QString cpio = u"find . -print0 | cpio -0 -o --quiet -H "_s;
    QTest::newRow("new cpio") << cpio + u"newc | gzip > ../a.cpgz"_s;
    QTest::newRow("old cpio") << cpio + u"odc | gzip > ../a.cpgz"_s;
    QTest::newRow("cpio, not compressed") << cpio + u"newc > ../a.cpgz"_s;
}

void tst_Ditto::whatOtherToolsPackComesOutWhole()
{
    QFETCH(QString, command);
    World world(u"from/deep/folder/a b=deep, from/empty/, from/\u00FCmlaut-e\u0301=accents, "
                "from/-m=dash, from/$(x) \"q\" \\=shell, from/link->/nowhere/else"_s);
    world.folder.write(u"from/deep/program"_s, QByteArray(300000, 'p'));
    if (!command.contains(u"bsdtar"_s)) // which refuses such a name
        world.folder.write(u"from/caf"_s + QChar(0xDCE9), "bytes");
    world.folder.shell(u"cd from; chmod 755 deep/program; chmod 600 -- -m; "
                       "ln deep/program twin; chmod 555 deep"_s);
    world.folder.shell(u"cd from; "_s + command);
    QCOMPARE(world.unpack(command.contains(u"a.zip"_s) ? Made::Zip : Made::Cpio), 0);
    QCOMPARE(world.tree(u"to"_s), world.tree(u"from"_s));
    world.folder.shell(u"chmod 755 from/deep to/deep"_s);
}

void tst_Ditto::hostileMembersAreRefused_data()
{
    QTest::addColumn<Made>("kind");
    QTest::addColumn<Members>("members");
    QTest::addColumn<QString>("left"); // beside the good one
    for (const Made kind : { Made::Zip, Made::Cpio }) {
        const auto row = [&](const char *name, const Members &members, const QString &left = {}) {
            QTest::addRow("%s, %s", name, kind == Made::Zip ? "zip" : "cpio")
                << kind << members << left;
        };
        const Member link { "l", {}, AE_IFLNK, "OUTSIDE" };
        const QString linkAlone = u", to/l->~/outside"_s;
        row("absolute", { { "OUTSIDE/x", "evil" } });
        row("climbing", { { "../outside/x", "evil" } });
        row("climbing in the middle", { { "a/../../outside/x", "evil" } });
        row("closed folder outside", { { "../outside", {}, AE_IFDIR, {}, 0 } });
        row("through its own link", { link, { "l/x", "evil" } }, linkAlone);
        row("folder over its own link", { link, { "l", {}, AE_IFDIR, {}, 0 } }, linkAlone);
        row("the same name again", { { "twice", "first" }, { "twice", "second" } },
            u", to/twice=first"_s);
    }
    QTest::newRow("device") << Made::Cpio << Members { { "null", {}, AE_IFCHR } } << QString();
    QTest::newRow("pipe") << Made::Cpio << Members { { "pipe", {}, AE_IFIFO } } << QString();
}

void tst_Ditto::hostileMembersAreRefused()
{
    QFETCH(Made, kind);
    QFETCH(Members, members);
    QFETCH(QString, left);
    World world;
    const QByteArray outside = FileName::toBytes(world.folder.path(u"outside"_s));
    for (Member &member : members) {
        member.name.replace("OUTSIDE", outside);
        member.target.replace("OUTSIDE", outside);
    }
    members.append(Member { "good", "good" });
    writeArchive(world.archive(kind), kind, members);
    QCOMPARE(world.unpack(kind), 1);
    QCOMPARE(world.left(), u"to/good=good"_s + left);
    QCOMPARE(world.mode(u"outside"_s), 0755U);
}

void tst_Ditto::setIdBitsAreDropped()
{
    World world;
    writeArchive(world.archive(Made::Zip), Made::Zip,
                 { { "run", "x", AE_IFREG, {}, 06755 }, { "d", {}, AE_IFDIR, {}, 03755 } });
    QCOMPARE(world.unpack(Made::Zip), 0);
    QCOMPARE(world.mode(u"to/run"_s), 0755U);
    QCOMPARE(world.mode(u"to/d"_s), 0755U);
}

void tst_Ditto::markedNamesStayTheBytesTheyAre()
{
    // Two spellings of one accent, and a name that is not what its mark says.
    World world;
    world.folder.shell(uR"(python3 - <<'END'
import zipfile
with zipfile.ZipFile('a.zip', 'w') as made:
    for number, name in enumerate(['e\u0301', '\u00e9', '\u00fc']):
        made.writestr(name, str(number))
data = open('a.zip', 'rb').read()
open('a.zip', 'wb').write(data.replace('\u00fc'.encode(), b'\x81\xff'))
END)"_s);
    QCOMPARE(world.unpack(Made::Zip), 0);
    QCOMPARE(world.folder.read(u"to/e\u0301"_s), "0");
    QCOMPARE(world.folder.read(u"to/\u00E9"_s), "1");
    QCOMPARE(world.folder.read(FileName::fromBytes("to/\x81\xff")), "2");
}

void tst_Ditto::nothingComesOfABrokenArchive_data()
{
    QTest::addColumn<Made>("kind");
    QTest::addColumn<QString>("damage");
    const auto row = [](const char *name, const QString &damage) {
        QTest::newRow(name) << (damage.contains(u"a.zip"_s) ? Made::Zip : Made::Cpio) << damage;
    };
    row("cut short", u"zip -qr b.zip from; head -c 300000 b.zip > a.zip"_s);
    row("directory cut short", u"zip -qr a.zip from; truncate -s -30 a.zip"_s);
    row("encrypted", u"zip -qr -P secret a.zip from"_s);
    row("changed content",
        u"zip -q0r a.zip from; printf XX | dd of=a.zip bs=1 seek=5000 conv=notrunc"_s);
    row("no archive", u"echo hello > a.zip"_s);
    row("empty file", u": > a.zip"_s);
    row("missing", u"rm -f a.zip"_s);
    row("pipe", u"mkfifo a.zip"_s);
    row("folder", u"mkdir a.zip"_s);
    row("cpio called zip", u"find from | cpio -o --quiet -H newc > a.zip"_s);
    row("cpio cut short",
        u"find from | cpio -o --quiet -H newc | gzip > b; head -c 300000 b > a.cpgz"_s);
    row("zip called cpio", u"zip -qr b.zip from; mv b.zip a.cpgz"_s);
}

void tst_Ditto::nothingComesOfABrokenArchive()
{
    QFETCH(Made, kind);
    QFETCH(QString, damage);
    World world(u"from/a=a, to/old=old"_s);
    world.folder.shell(u"head -c 600000 /dev/urandom > from/b; "_s + damage);
    QCOMPARE(world.unpack(kind), 1);
    QCOMPARE(world.left(), u"to/old=old"_s);
}

void tst_Ditto::whatIsInTheWayGoesToTheTrash()
{
    World world(u"from/d/both=new, from/d/new/x=x, from/linked/x=x, to/d/both=old, to/d/kept=kept, "
                "to/d/new=a file where a folder comes, to/linked->~/outside"_s);
    world.folder.shell(u"chmod 700 to/d; cd from; zip -qr ../a.zip ."_s);
    QCOMPARE(world.unpack(Made::Zip), 0);
    QCOMPARE(world.left(), u"to/d/both=new, to/d/kept=kept, to/d/new/x=x, to/linked/x=x"_s);
    QCOMPARE(world.trashed(u"both"_s), "old");
    QCOMPARE(world.trashed(u"new"_s), "a file where a folder comes");
    QCOMPARE(world.mode(u"to/d"_s), 0700U); // the folder that was there keeps what it was
}

void tst_Ditto::whatMustStayStays()
{
    World world(u"to/folder/x=x, to/locked=!old, to/closed=!a file where a closed folder comes"_s);
    writeArchive(world.archive(Made::Zip), Made::Zip,
                 { { "folder", "file" },
                   { "locked", "new" },
                   { "free", "free" },
                   { "closed", {}, AE_IFDIR, {}, 0 } });
    QCOMPARE(world.unpack(Made::Zip), 1);
    QCOMPARE(world.left(),
             u"to/closed=!a file where a closed folder comes, to/folder/x=x, "
             "to/free=free, to/locked=!old"_s);
    QCOMPARE(world.mode(u"to/closed"_s), 0644U);
}

void tst_Ditto::cancellingLeavesNothing()
{
    World world(u"to/old=old"_s);
    world.folder.shell(u"mkdir from; truncate -s 100M from/big; "
                       "find from | cpio -o --quiet -H newc | gzip -1 > a.cpgz"_s);
    const int status = world.unpack(Made::Cpio, [&](pid_t process) {
        QTRY_VERIFY(world.folder.names(u"to"_s).size() > 1);
        kill(process, SIGTERM);
    });
    QCOMPARE(status, 15);
    QCOMPARE(world.left(), u"to/old=old"_s);
}

QTEST_GUILESS_MAIN(tst_Ditto)
#include "tst_Ditto.moc"

#include "files/PathText.h"
#include "platform/desktop/Trash.h"
#include "platform/desktop/TrashRecord.h"
#include "tests/support/OwnMounts.h"
#include "tests/support/TestTree.h"

#include <QDir>
#include <QUrl>

#include <sys/stat.h>

// The real Trash, in a data folder of the test's own.
class tst_Trash : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(_home.contains(u"twinleaf-test"), "only in a home folder made for the test");
        qputenv("XDG_DATA_HOME", _data.path().toUtf8());
    }

    void itemMovesWholeBesideWhatIsThere()
    {
        makeTree(folder,
                 u"file=content, folder/inner=content, dangling->nowhere, -rf, a\n\"b' %41"_s);
        QCOMPARE(mkfifo(folder.bytes(u"fifo"_s), 0644), 0);
        for (const QByteArray &name : { QByteArray(245, 'n'), QByteArray("caf\xe9 \xff") })
            folder.write(FileName::fromBytes(name));
        const QStringList names = folder.names();
        QCOMPARE(names.size(), 8);
        for (const QString &name : names) {
            const auto status = fileStatus(folder.path(name), Links::NoFollow);
            QVERIFY2(Trash::moveItem(folder.path(name)), qPrintable(name));
            QVERIFY(!exists(folder.path(name)));
            const auto trashedOne = fileStatus(_trash + u"/files/"_s + name, Links::NoFollow);
            QVERIFY2(trashedOne && trashedOne->identity == status->identity, qPrintable(name));
        }
        const qsizetype before = trashed();
        folder.write(u"file"_s, "second");
        QVERIFY(Trash::moveItem(folder.path(u"file"_s)));
        QCOMPARE(trashed(), before + 1);
    }

    void linkTargetStays()
    {
        makeTree(folder, u"target/inner=content, link->target"_s);
        folder.link(_home, u"home"_s);
        // With a slash at its end a path would mean the folder behind the link.
        for (const QString &link : { u"link/"_s, u"home/"_s })
            QVERIFY2(Trash::moveItem(folder.path(link)), qPrintable(link));
        QCOMPARE(treeOf(folder, { {} }), u"/target/inner=content"_s);
        QVERIFY(exists(_home));
    }

    void whatMustStayIsRefused()
    {
        makeTree(_data, u"Trash/files/old/inner=x, Trash/info/"_s);
        for (const int length : { 245, 246 })
            folder.write(QString(length, u'm'));
        folder.write(u"relative"_s);
        QVERIFY(QDir::setCurrent(folder.path()));
        const QString kept =
            u"It is a volume, the home folder or the Trash, or holds one of them."_s;
        const QString inTrash = u"It lies in the Trash already."_s;
        const QString gone = u"It does not exist."_s;
        const std::pair<QString, std::optional<QString>> rows[] = {
            { u"/"_s, kept },
            { u"///"_s, kept },
            { u"/proc"_s, kept },
            { _home, kept },
            { _home + u'/', kept },
            { _home + u"/../home"_s, kept },
            { _home.section(u'/', 0, -2), kept },
            { _data.path(), kept },
            { _trash, kept },
            { _trash + u"/files"_s, {} },
            { _trash + u"/info"_s, {} },
            { _trash + u"/files/old"_s, inTrash },
            { _trash + u"/files/old/inner"_s, inTrash },
            { u""_s, {} },
            { u"relative"_s, {} },
            { folder.path(u"gone"_s), gone },
            { folder.path(QString(246, u'm')), u"Its name is too long for the Trash."_s },
        };
        const qsizetype before = trashed();
        for (const auto &[path, reason] : rows) {
            const bool stood = exists(path);
            QString told;
            QVERIFY2(!Trash::moveItem(path, &told), qPrintable(path));
            QVERIFY2(!told.isEmpty() && told == reason.value_or(told), qPrintable(path + told));
            if (path.startsWith(u'/'))
                QCOMPARE(refusal(path), told);
            QCOMPARE(exists(path), stood);
            QCOMPARE(trashed(), before);
        }
        const QString longest = folder.path(QString(245, u'm'));
        QCOMPARE(refusal(longest), QString());
        QVERIFY(Trash::moveItem(longest));
    }

    void whatMustStayDoesNotGoForGoodEither()
    {
        makeTree(_data, u"Trash/files/old/inner=x, Trash/info/"_s);
        makeTree(folder, u"holder/volume/, link->holder"_s);
        TestMount mount(folder.path(u"holder/volume"_s));
        mount.fresh("");
        const std::pair<QString, bool> rows[] = {
            { u"/proc"_s, false },
            { _home, false },
            { _home.section(u'/', 0, -2), false },
            { _data.path(), false },
            { _trash, false },
            { folder.path(u"holder"_s), false },
            { folder.path(u"holder/volume"_s), false },
            { folder.path(u"gone"_s), false },
            { folder.path(u"link"_s), true }, // itself
            { _trash + u"/files/old"_s, true },
            { _trash + u"/files/old/inner"_s, true },
        };
        for (const auto &[path, mayGo] : rows)
            QVERIFY2(Trash::Folder(PathText::parent(path))
                             .refusalForGood(PathText::lastComponent(path))
                             .isEmpty()
                         == mayGo,
                     qPrintable(path));
    }

    void whatCameToTheNameIsLookedAtAgain()
    {
        makeTree(folder, u"x=x"_s);
        Trash::Folder trash(folder.path());
        QCOMPARE(trash.refusal(u"x"_s), QString());
        folder.shell(u"rm x; mkdir x"_s);
        TestMount mount(folder.path(u"x"_s));
        mount.fresh("");
        QString why;
        QVERIFY(!trash.moveItem(u"x"_s, &why));
        QVERIFY2(why.startsWith(u"It is a volume"_s), qPrintable(why));
    }

    void anotherOriginIsRecorded()
    {
        const auto recorded = [](const TestFolder &data, const QString &record) {
            for (const QByteArray &line : data.read(record).split('\n'))
                if (line.startsWith("Path="))
                    return line;
            return QByteArray();
        };
        // The second of a name gets another one in the Trash.
        for (const QString &name : { u"x.tar.gz"_s, u"x.2.tar.gz"_s }) {
            makeTree(folder, u"hidden/x.tar.gz=old"_s);
            QVERIFY(Trash::moveItem(folder.path(u"hidden/x.tar.gz"_s), nullptr,
                                    folder.path(u"\u00FC %.gz"_s)));
            QCOMPARE(recorded(_data, u"Trash/info/%1.trashinfo"_s.arg(name)),
                     "Path=" + QUrl::toPercentEncoding(folder.path(), "/") + "/%C3%BC%20%25.gz");
        }
        // Below the top of a volume, whose own Trash it is in.
        const TestFolder volume;
        TestMount mount(volume.path());
        mount.fresh("");
        const QString trash = u".Trash-%1"_s.arg(getuid());
        volume.makeFolder(trash + u"/info"_s);
        makeTree(volume, trash + u"/files/x=old, hidden/, to/"_s);
        volume.write(trash + u"/info/x.trashinfo"_s,
                     "[Trash Info]\nPath=hidden/x\nDeletionDate=2026-01-01T00:00:00\n");
        const auto item = fileStatus(volume.path(trash + u"/files/x"_s), Links::NoFollow);
        QVERIFY(TrashRecord::setOrigin(item->identity, volume.path(u"hidden/x"_s),
                                       volume.path(u"to/x"_s)));
        QCOMPARE(volume.read(trash + u"/info/x.trashinfo"_s),
                 "[Trash Info]\nPath=to/x\nDeletionDate=2026-01-01T00:00:00\n");
    }

    void namesTooLongForTheTrashOfAnotherVolume()
    {
        const TestFolder volume;
        TestMount mount(volume.path());
        mount.fresh("size=64k");
        const QString records = u".Trash-%1/info/"_s.arg(getuid());
        makeTree(volume, u"in/, "_s + records);
        for (const int length : { 241, 242, 246 }) {
            const QString name(length, u'n');
            volume.write(u"in/"_s + name);
            if (length < 246) // taken: the next one gets a number
                volume.write(records + name + u".trashinfo"_s);
            const QString reason = refusal(volume.path(u"in/"_s + name));
            QCOMPARE(reason == u"Its name is too long for the Trash."_s, length > 241);
        }
    }

private:
    static QString refusal(const QString &path)
    {
        return Trash::Folder(PathText::parent(path)).refusal(PathText::lastComponent(path));
    }
    qsizetype trashed() const { return _data.names(u"Trash/info"_s).size(); }

    const QString _home = QString::fromUtf8(qgetenv("HOME"));
    const TestFolder folder;
    const TestFolder _data; // outside the home folder, which could not move into itself
    const QString _trash = _data.path(u"Trash"_s);
};

TWINLEAF_MAIN_WITH_MOUNTS(tst_Trash)
#include "tst_Trash.moc"

#include "tests/indexer/IndexerWorld.h"

class tst_Indexer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        home.reset();
        home.emplace();
    }

    void leavesOutWhatIsNotWalked();
    void followsChanges_data();
    void followsChanges();
    void doesNotTakeForKnownWhatItStillReads();
    void findsWhatChangedUnseen_data();
    void findsWhatChangedUnseen();
    void seesWhatAnotherMachineWrites();
    void keepsWhatAPersonWroteOnAnItem();
    void anotherHomeFolderTakesThePlace();

private:
    std::optional<Home> home;
};

void tst_Indexer::leavesOutWhatIsNotWalked()
{
    for (const char *folder :
         { "plain", ".hidden", "cache", "no cache", "listed", "plain/anywhere" }) {
        home->makeFolder(folder);
        home->write(folder + QByteArray("/file"), "text");
    }
    home->write("cache/CACHEDIR.TAG", "Signature: 8a477f597d28d172789f06886806bc55\nmore");
    home->write("no cache/CACHEDIR.TAG", "Signature: 8a477f597d28d172789f06886806bc5");
    QCOMPARE(::symlink("plain", home->at("link")), 0);
    home->makeFolder("odd \xFF");
    home->write("odd \xFF/\xFE.txt", "odd text");
    qputenv("XDG_CACHE_HOME", home->at("caches"));
    PlainFiles files;
    std::atomic<bool> isListed = true;
    const Running running(files, Running::quick(), [&isListed] {
        return isListed ? QStringList { u"~/listed/"_s, u"anywhere"_s } : QStringList();
    });
    QTRY_COMPARE(known(),
                 (Known { { ".hidden", {} },
                          { "cache", {} },
                          { "caches", {} },
                          { "caches/org.twinleaf.Twinleaf", {} },
                          { "link", {} },
                          { "listed", {} },
                          { "no cache", {} },
                          { "no cache/CACHEDIR.TAG", "Signature: 8a477f597d28d172789f06886806bc5" },
                          { "no cache/file", "text" },
                          { "odd \xFF", {} },
                          { "odd \xFF/\xFE.txt", "odd text" },
                          { "plain", {} },
                          { "plain/anywhere", {} },
                          { "plain/file", "text" } }));
    // The list changes while it runs.
    for (const bool listed : { false, true }) {
        isListed = listed;
        for (const char *path : { "listed/file", "plain/anywhere/file" })
            QTRY_COMPARE(known().contains(path), !listed);
    }
}

void tst_Indexer::followsChanges_data()
{
    using Change = std::function<void(const Home &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<Known>("after");
    QTest::addColumn<int>("read"); // files
    const Known before {
        { "a", {} }, { "a/b", {} }, { "a/b/x.txt", "old" }, { "a/y.txt", "other" }
    };
    const auto with = [&before](const Known &more, const QByteArrayList &less = {}) {
        Known all = before;
        all.insert(more);
        for (const QByteArray &name : less)
            all.remove(name);
        return all;
    };
    const auto row = [](const char *name, const Change &change, const Known &after, int read) {
        QTest::newRow(name) << change << after << read;
    };
    row(
        "a new file", [](const Home &h) { h.write("a/new.txt", "fresh"); },
        with({ { "a/new.txt", "fresh" } }), 1);
    row(
        "written in place", [](const Home &h) { h.write("a/b/x.txt", "new"); },
        with({ { "a/b/x.txt", "new" } }), 1);
    row(
        "deleted", [](const Home &h) { h.remove("a/b/x.txt"); }, with({}, { "a/b/x.txt" }), 0);
    row(
        "a file renamed", [](const Home &h) { h.rename("a/y.txt", "a/z.txt"); },
        with({ { "a/z.txt", "other" } }, { "a/y.txt" }), 1);
    // It mostly gets the number, too.
    row(
        "a file of another's size and time",
        [](const Home &h) {
            struct stat other { };
            QCOMPARE(::stat(h.at("a/y.txt"), &other), 0);
            h.remove("a/y.txt");
            h.write("a/z.txt", "OTHER");
            const timespec times[] = { other.st_atim, other.st_mtim };
            QCOMPARE(::utimensat(AT_FDCWD, h.at("a/z.txt"), times, 0), 0);
        },
        with({ { "a/z.txt", "OTHER" } }, { "a/y.txt" }), 1);
    row(
        "a folder renamed", [](const Home &h) { h.rename("a/b", "a/c"); },
        with({ { "a/c", {} }, { "a/c/x.txt", "old" } }, { "a/b", "a/b/x.txt" }), 0);
    row(
        "a folder moved, and written to",
        [](const Home &h) {
            h.rename("a/b", "moved");
            h.write("moved/late.txt", "late");
        },
        with({ { "moved", {} }, { "moved/x.txt", "old" }, { "moved/late.txt", "late" } },
             { "a/b", "a/b/x.txt" }),
        1);
    row(
        "a new tree",
        [](const Home &h) {
            h.makeFolder("n");
            h.makeFolder("n/e");
            h.write("n/e/w.txt", "deep");
        },
        with({ { "n", {} }, { "n/e", {} }, { "n/e/w.txt", "deep" } }), 1);
    row(
        "a tree deleted",
        [](const Home &h) {
            h.remove("a/b/x.txt");
            h.remove("a/b");
        },
        with({}, { "a/b", "a/b/x.txt" }), 0);
    row(
        "a folder in place of another",
        [](const Home &h) {
            h.rename("a/b", "a/.gone");
            h.makeFolder("a/b");
            h.write("a/b/own.txt", "own");
        },
        with({ { "a/.gone", {} }, { "a/b/own.txt", "own" } }, { "a/b/x.txt" }), 1);
    row(
        "moved out of sight", [](const Home &h) { h.rename("a/b", "../away"); },
        with({}, { "a/b", "a/b/x.txt" }), 0);
}

void tst_Indexer::followsChanges()
{
    using Change = std::function<void(const Home &)>;
    QFETCH(const Change, change);
    QFETCH(const Known, after);
    QFETCH(const int, read);
    home->makeFolder("a");
    home->makeFolder("a/b");
    home->write("a/b/x.txt", "old");
    home->write("a/y.txt", "other");
    PlainFiles files;
    Running running(files);
    QTRY_COMPARE(files.count, 2);
    QTRY_VERIFY(running.idle && known().value("a/y.txt") == "other");
    change(*home);
    QTRY_COMPARE(known(), after);
    QTRY_VERIFY(files.count >= 2 + read);
    if (read == 0)
        QCOMPARE(files.count, 2);
    // What went took its words along, and what stays kept them.
    const bool hasOld = after.values().contains("old");
    QTRY_COMPARE(withWord("old").size(), hasOld ? 1 : 0);
}

void tst_Indexer::doesNotTakeForKnownWhatItStillReads()
{
    home->write("held.txt", "first");
    PlainFiles files;
    files.gate.release();
    const Running running(files);
    const auto opened = qScopeGuard([&files] { files.gate.release(1000); }); // it waits for it
    QTRY_VERIFY(isWhole());
    home->write("held.txt", "second");
    QTRY_VERIFY(!isWhole());
    files.gate.release(1000); // it may have been seen half written
    QTRY_COMPARE(known(), (Known { { "held.txt", "second" } }));
    QTRY_VERIFY(isWhole());
}

void tst_Indexer::findsWhatChangedUnseen_data()
{
    QTest::addColumn<bool>("away");
    QTest::newRow("while no indexer ran") << true;
    QTest::newRow("where nothing is watched") << false;
}

void tst_Indexer::findsWhatChangedUnseen()
{
    QFETCH(const bool, away);
    home->makeFolder("a");
    home->write("a/keeps.txt", "keeps");
    home->write("a/changes.txt", "first");
    home->write("a/goes.txt", "goes");
    PlainFiles files;
    Indexer::Limits limits = Running::quick();
    limits.watches = 0;
    auto running = std::make_unique<Running>(files, limits);
    QTRY_COMPARE(files.count, 3);
    QTRY_COMPARE(known().value("a/goes.txt"), "goes");
    if (away)
        running.reset();
    home->write("a/changes.txt", "later");
    home->remove("a/goes.txt");
    home->rename("a", "b");
    if (away)
        running = std::make_unique<Running>(files);
    QTRY_COMPARE(known(),
                 (Known { { "b", {} }, { "b/keeps.txt", "keeps" }, { "b/changes.txt", "later" } }));
    if (away) // else it may have been seen half written
        QCOMPARE(files.count, 4);
}

// By a name of the file that is not watched here.
void tst_Indexer::seesWhatAnotherMachineWrites()
{
    home->write("file.txt", "first");
    home->folder.hardLink(u"home/file.txt"_s, u"outside.txt"_s);
    home->folder.write(u"mounts"_s,
                       "1 0 0:1 / / rw - ext4 d rw\n2 1 0:2 / "
                           + home->folder.pathInMountTable(u"home"_s) + " rw - nfs4 m: rw\n");
    MountTable::setSource(home->folder.path(u"mounts"_s));
    const auto back = qScopeGuard([] { MountTable::setSource(u"/proc/self/mountinfo"_s); });
    PlainFiles files;
    const Running running(files);
    QTRY_COMPARE(known(), (Known { { "file.txt", "first" } }));
    home->folder.write(u"outside.txt"_s, "later");
    QTRY_COMPARE(known(), (Known { { "file.txt", "later" } }));
}

void tst_Indexer::keepsWhatAPersonWroteOnAnItem()
{
    home->makeFolder("folder");
    home->folder.setAttribute(u"home/folder"_s, "user.xdg.tags", "red, late summer");
    home->write("file.bin", "data");
    home->folder.setAttribute(u"home/file.bin"_s, "user.xdg.comment", "from Anna");
    PlainFiles files;
    const Running running(files);
    QTRY_COMPARE(withWord("summer", "property_words"), QList<QByteArray> { "folder" });
    QTRY_COMPARE(withWord("anna", "property_words"), QList<QByteArray> { "file.bin" });
}

void tst_Indexer::anotherHomeFolderTakesThePlace()
{
    home->write("old.txt", "old");
    home->rename("", "../real");
    QCOMPARE(::symlink("real", home->at("")), 0);
    PlainFiles files;
    const Running running(files);
    QTRY_COMPARE(known(), (Known { { "old.txt", "old" } }));
    home->remove("");
    home->makeFolder("");
    home->write("new.txt", "new");
    QTRY_COMPARE(known(), (Known { { "new.txt", "new" } }));
}

QTEST_GUILESS_MAIN(tst_Indexer)
#include "tst_Indexer.moc"

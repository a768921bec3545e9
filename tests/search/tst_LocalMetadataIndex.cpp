#include "files/PathText.h"
#include "search/IndexLock.h"
#include "search/LocalMetadataIndex.h"
#include "settings/UserDefaults.h"
#include "tests/search/SmallIndex.h"
#include "tests/support/TestFolder.h"

#include <QRegularExpression>
#include <QSignalSpy>

#include <sys/stat.h>

// Queries over real files and real indexes of them.
class tst_LocalMetadataIndex final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void namesAreFoundWhateverTheIndexIs_data();
    void namesAreFoundWhateverTheIndexIs();
    void theHomeFolderIsWalkedByItsRules();
    void documentsAreFound_data();
    void documentsAreFound();
    void whatIsNotSoAnyMoreIsNotShown();
    void resultsStandInTheOrderOfTheirNames();
    void resultsFollowTheIndex();
    void resultsFollowTheDisk();
    void unseenResultsAreNotFollowed();
    void whatNobodyFollowsIsNotComplete();
    void anIndexThatComesTakesOver();
    void aDamagedIndexCountsAsNone();
    void otherQueriesFindNothing();
    void queriesEndWhileTheyRun();
    void attributesTellAllThatIsKnown();

private:
    using Query = std::unique_ptr<MetadataQuery>;
    Query start(const QString &text, const QString &modifiers = u"cdw"_s, bool content = true)
    {
        const QString value = u" == \""_s + text + u'"' + modifiers;
        return index->execute(
            { u'*' + value + (content ? u" || kMDItemTextContent"_s + value : QString()), text });
    }
    // Found and finished.
    Query find(const QString &text, const QString &modifiers = u"cdw"_s, bool content = true)
    {
        Query query = start(text, modifiers, content);
        QSignalSpy finished(query.get(), &MetadataQuery::queryDidFinish);
        if (!finished.wait(30'000))
            QTest::qFail("The query does not finish", __FILE__, __LINE__);
        return query;
    }
    QStringList names(const Query &query) const // relative to the home folder
    {
        QStringList found;
        for (qsizetype i = 0; i < query->resultCount(); ++i)
            found.append(query->resultAt(i).path.sliced(home->path().size() + 1));
        return found;
    }
    QStringList sorted(const Query &query) const
    {
        QStringList found = names(query);
        found.sort();
        return found;
    }

    std::unique_ptr<TestFolder> home;
    std::unique_ptr<TestFolder> caches; // elsewhere: the walk is not to meet it
    std::unique_ptr<UserDefaults> defaults;
    std::unique_ptr<LocalMetadataIndex> index;
    std::optional<IndexLock> indexer; // as if one ran
};

void tst_LocalMetadataIndex::init()
{
    home = std::make_unique<TestFolder>();
    caches = std::make_unique<TestFolder>();
    qputenv("HOME", FileName::toBytes(home->path()));
    qputenv("XDG_CACHE_HOME", FileName::toBytes(caches->path()));
    defaults = std::make_unique<UserDefaults>(caches->path(u"settings.plist"_s));
    index = std::make_unique<LocalMetadataIndex>(*defaults, nullptr);
    indexer.emplace();
}

void tst_LocalMetadataIndex::cleanup()
{
    QVERIFY(index->end());
    index.reset();
}

void tst_LocalMetadataIndex::namesAreFoundWhateverTheIndexIs_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("complete");
    QTest::newRow("whole") << u"whole"_s << true;
    QTest::newRow("a file changed just now") << u"changed"_s << true;
    QTest::newRow("not all is read") << u"unread"_s << false;
    QTest::newRow("young") << u"young"_s << false;
    QTest::newRow("none") << u"none"_s << false;
    QTest::newRow("something else") << u"text"_s << false;
    QTest::newRow("a folder") << u"folder"_s << false;
    QTest::newRow("a FIFO") << u"fifo"_s << false;
    QTest::newRow("of another home") << u"foreign"_s << false;
}

void tst_LocalMetadataIndex::namesAreFoundWhateverTheIndexIs()
{
    QFETCH(const QString, state);
    const QString undecodable = FileName::fromBytes("report \xFF.txt");
    home->makeFolder(u"a/deep"_s);
    home->write(u"Report.txt"_s);
    home->write(u"a/my_report-2.pdf"_s);
    home->write(u"a/deep/"_s + undecodable);
    home->write(u"a/other.txt"_s);
    home->makeFolder(u"Reports 2024"_s);
    home->link(u"nowhere"_s, u"report link"_s);
    const QByteArray path = FileName::toBytes(IndexFile::path());
    if (state == u"whole" || state == u"changed" || state == u"unread") {
        SmallIndex written;
        for (const auto &folder : { u"a"_s, u"a/deep"_s, u"Reports 2024"_s })
            written.addFolder(folder);
        written.commit(true,
                       state == u"whole"         ? IndexFile::Pending::No
                           : state == u"changed" ? IndexFile::Pending::Changed
                                                 : IndexFile::Pending::Unknown);
    } else if (state == u"young") {
        SmallIndex().commit(false);
    } else if (state == u"foreign") {
        qputenv("HOME", FileName::toBytes(home->path(u"a"_s)));
        SmallIndex().commit(true);
        qputenv("HOME", FileName::toBytes(home->path()));
    } else if (state == u"folder") {
        QCOMPARE(::mkdir(path, 0700), 0);
    } else if (state == u"fifo") {
        QCOMPARE(::mkfifo(path, 0600), 0);
    } else if (state == u"text") {
        caches->write(IndexFile::path().sliced(caches->path().size() + 1),
                      QByteArray("none ").repeated(10'000));
    }
    const Query query = find(u"report"_s);
    QCOMPARE(sorted(query),
             (QStringList { u"Report.txt"_s, u"Reports 2024"_s, u"a/deep/"_s + undecodable,
                            u"a/my_report-2.pdf"_s, u"report link"_s }));
    QTEST(query->isComplete(), "complete");
}

void tst_LocalMetadataIndex::theHomeFolderIsWalkedByItsRules()
{
    home->makeFolder(u".hidden"_s);
    home->write(u".hidden/word"_s);
    home->write(u".word"_s);
    home->makeFolder(u"cache/word"_s);
    home->write(u"cache/CACHEDIR.TAG"_s, "Signature: 8a477f597d28d172789f06886806bc55");
    home->makeFolder(u"no cache"_s);
    home->write(u"no cache/CACHEDIR.TAG"_s, "something else");
    home->write(u"no cache/word"_s);
    home->makeFolder(u"linked"_s);
    home->write(u"linked/word"_s);
    home->link(u"linked"_s, u"link"_s);
    QCOMPARE(sorted(find(u"word"_s)),
             (QStringList { u".word"_s, u"linked/word"_s, u"no cache/word"_s }));
}

void tst_LocalMetadataIndex::documentsAreFound_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("modifiers");
    QTest::addColumn<bool>("content");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char *name, const QString &text, const char *modifiers, bool content,
                        const QStringList &found) {
        QTest::newRow(name) << text << QString::fromLatin1(modifiers) << content << found;
    };
    const QString letter = u"letter"_s;
    const QString song = u"song"_s;
    row("a word of the text", u"holiday"_s, "cdw", true, { letter });
    row("not looked for there", u"holiday"_s, "cdw", false, {});
    row("its beginning", u"holi"_s, "cdw", true, { letter });
    row("not its end", u"day"_s, "cdw", true, {});
    row("its end as a part", u"DAY"_s, "cd", true, { letter });
    row("a part over two words", u"oliday in Süd"_s, "d", true, { letter });
    row("case by case", u"Holiday"_s, "dw", true, {});
    row("case, a part", u"sud"_s, "d", true, {});
    row("accents", u"sudtirol"_s, "cdw", true, { letter });
    row("no accents", u"sudtirol"_s, "cw", true, {});
    row("accents in two parts", u"su\u0308dtirol"_s, "cw", true, { letter });
    row("words in order", u"holiday in süd"_s, "cdw", true, { letter });
    row("words in another order", u"in holiday"_s, "cdw", true, {});
    row("words of two kinds of value", u"holiday Dear"_s, "cdw", true, {});
    row("words of two values", u"Queen Elton"_s, "cdw", true, {});
    row("words of one value", u"elton jo"_s, "cdw", false, { song });
    row("a title", u"rocket"_s, "cdw", false, { song });
    row("both", u"man"_s, "cdw", true, { letter, song });
    row("a number is no text", u"1972"_s, "cdw", false, {});
    row("quotes and operators", u"\" || * == \""_s, "", true, { letter });
    row("operators are words", u"near AND \"not"_s, "cdw", true, { letter });
    row("a column of a table", u"words: holiday"_s, "cdw", true, {});
    row("no words", u"??"_s, "cdw", true, { letter });
    row("a long word", QString(100, u'x'), "cdw", true, { letter });
    row("a longer word", QString(121, u'x'), "cdw", true, {});
    row("in a long word", QString(90, u'x') + u'y', "cd", true, { letter });
    row("very long", u"holiday "_s.repeated(1250), "cdw", true, {});
    row("blanks", u"   "_s, "cdw", true, {});
}

void tst_LocalMetadataIndex::documentsAreFound()
{
    QFETCH(const QString, text);
    QFETCH(const QString, modifiers);
    QFETCH(const bool, content);
    home->write(u"letter"_s);
    home->write(u"song"_s);
    SmallIndex written;
    written.addDocument(u"letter"_s, { { u"kMDItemTitle"_s, u"Dear man"_s } },
                        "our holiday in S\u00FCdtirol, ?? near and not \" || * == \" "
                            + QByteArray(120, 'x') + 'y');
    written.addDocument(u"song"_s,
                        { { u"kMDItemTitle"_s, u"Rocket Man"_s },
                          { u"kMDItemAuthors"_s, QStringList { u"Queen"_s, u"Elton John"_s } },
                          { u"kMDItemRecordingYear"_s, qint64(1972) } },
                        {});
    written.commit(true);
    const Query query = find(text, modifiers, content);
    QTEST(sorted(query), "found");
    QVERIFY(query->isComplete());
}

void tst_LocalMetadataIndex::whatIsNotSoAnyMoreIsNotShown()
{
    for (const auto &name : { u"word gone"_s, u"word moved"_s, u"text"_s, u"read"_s })
        home->write(name, "word");
    SmallIndex written;
    for (const auto &name : { u"word moved"_s, u"text"_s, u"read"_s })
        written.addDocument(name, {}, "word");
    home->makeFolder(u"tagged"_s);
    written.addDocument(u"tagged"_s, { { u"kMDItemUserTags"_s, QStringList { u"word"_s } } }, {});
    written.commit(true);
    home->shell(
        u"echo > tagged/new; rm 'word gone'; echo other > text; rm 'word moved'; echo > 'word moved'"_s);
    // By its name an item is found whatever it holds.
    QCOMPARE(sorted(find(u"word"_s)), (QStringList { u"read"_s, u"tagged"_s, u"word moved"_s }));
}

void tst_LocalMetadataIndex::resultsStandInTheOrderOfTheirNames()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    home->makeFolder(u"z"_s);
    for (const auto &name :
         { u"z/x10"_s, u"x9"_s, u"z/Ärger x"_s, u"azur x"_s, u"z/x9"_s, u"B x"_s })
        home->write(name);
    const Query query = find(u"x"_s, u"cd"_s);
    QCOMPARE(
        names(query),
        (QStringList { u"z/Ärger x"_s, u"azur x"_s, u"B x"_s, u"x9"_s, u"z/x9"_s, u"z/x10"_s }));
    for (qsizetype i = 0; i < query->resultCount(); ++i)
        QCOMPARE(query->indexOf(query->resultAt(i)), i);
    QCOMPARE(query->indexOf({ home->path(u"y/x9"_s), u"x9"_s }), -1);
    QLocale::setDefault(before);
}

void tst_LocalMetadataIndex::resultsFollowTheIndex()
{
    home->write(u"word 1"_s);
    SmallIndex written;
    written.commit(true);
    const Query query = find(u"word"_s);
    QSignalSpy updated(query.get(), &MetadataQuery::queryDidUpdate);
    QCOMPARE(names(query), QStringList { u"word 1"_s });
    home->write(u"word 2"_s);
    home->write(u"text"_s);
    written.addFolder({});
    written.addDocument(u"text"_s, {}, "word");
    written.commit(true);
    QTRY_COMPARE(sorted(query), (QStringList { u"text"_s, u"word 1"_s, u"word 2"_s }));
    QVERIFY(!updated.isEmpty());
    // Without anything that concerns it there is no news.
    updated.clear();
    home->write(u"other"_s);
    written.addFolder({});
    written.commit(true);
    home->write(u"word 3"_s);
    written.addFolder({});
    written.commit(true);
    QTRY_COMPARE(query->resultCount(), 4);
    QCOMPARE(updated.size(), 1);
}

void tst_LocalMetadataIndex::resultsFollowTheDisk()
{
    home->makeFolder(u"a/b"_s);
    for (const auto &name : { u"word"_s, u"word 2"_s, u"a/word"_s, u"a/b/word"_s })
        home->write(name);
    SmallIndex written;
    for (const auto &folder : { u"a"_s, u"a/b"_s })
        written.addFolder(folder);
    written.commit(true);
    const Query query = find(u"word"_s);
    QCOMPARE(query->resultCount(), 4);
    home->shell(u"rm word"_s);
    QTRY_COMPARE(sorted(query), (QStringList { u"a/b/word"_s, u"a/word"_s, u"word 2"_s }));
    home->shell(u"mv a c"_s);
    QTRY_COMPARE(sorted(query), QStringList { u"word 2"_s });
}

void tst_LocalMetadataIndex::unseenResultsAreNotFollowed()
{
    home->write(u"word"_s);
    SmallIndex written;
    written.commit(true);
    const Query hidden = find(u"word"_s);
    const Query shown = find(u"word"_s);
    hidden->setShown(false);
    QSignalSpy updated(hidden.get(), &MetadataQuery::queryDidUpdate);
    home->shell(u"rm word"_s);
    QTRY_COMPARE(shown->resultCount(), 0);
    QCOMPARE(hidden->resultCount(), 1);
    hidden->setShown(true);
    QTRY_COMPARE(hidden->resultCount(), 0);
}

void tst_LocalMetadataIndex::whatNobodyFollowsIsNotComplete()
{
    home->write(u"word 1"_s);
    SmallIndex written;
    written.commit(true);
    indexer.reset();
    home->write(u"word 2"_s);
    const Query query = find(u"word"_s);
    QCOMPARE(names(query), (QStringList { u"word 1"_s, u"word 2"_s }));
    QVERIFY(!query->isComplete());
    indexer.emplace();
    QTRY_VERIFY(query->isComplete());
    indexer.reset();
    QTRY_VERIFY(!query->isComplete());
    home->write(u"word 3"_s);
    QTRY_COMPARE_WITH_TIMEOUT(query->resultCount(), 3, 30'000);
}

void tst_LocalMetadataIndex::anIndexThatComesTakesOver()
{
    home->write(u"word"_s);
    home->write(u"text"_s);
    const Query query = find(u"word"_s);
    QVERIFY(!query->isComplete());
    SmallIndex written;
    written.addDocument(u"text"_s, {}, "word");
    written.commit(true);
    QTRY_VERIFY_WITH_TIMEOUT(query->isComplete(), 30'000);
    QCOMPARE(sorted(query), (QStringList { u"text"_s, u"word"_s }));
}

// The first pages are good, so it opens.
void tst_LocalMetadataIndex::aDamagedIndexCountsAsNone()
{
    home->makeFolder(u"a"_s);
    for (int i = 0; i < 500; ++i)
        home->write(u"a/word with a long name %1"_s.arg(i));
    {
        SmallIndex written;
        written.addFolder(u"a"_s);
        written.commit(true);
    }
    const QString file = IndexFile::path().sliced(caches->path().size() + 1);
    QByteArray bytes = caches->read(file);
    // The names are the large part, at the end.
    bytes.replace(bytes.size() / 2, bytes.size() / 2, QByteArray(bytes.size() / 2, '\xA5'));
    caches->write(file, bytes);
    const Query query = find(u"word"_s);
    QCOMPARE(query->resultCount(), 500);
    QVERIFY(!query->isComplete());
}

void tst_LocalMetadataIndex::otherQueriesFindNothing()
{
    home->write(u"word"_s);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Not a query"_s));
    const Query query = index->execute({ u"* == \"word\"cdw || true"_s, u"word"_s });
    QSignalSpy finished(query.get(), &MetadataQuery::queryDidFinish);
    QVERIFY(finished.wait());
    QCOMPARE(query->resultCount(), 0);
}

void tst_LocalMetadataIndex::queriesEndWhileTheyRun()
{
    home->shell(u"for i in {1..50}; do mkdir $i; touch $i/word{1..50}; done"_s);
    for (int i = 0; i < 100; ++i) {
        const Query query = start(u"w"_s);
        if (i % 2 == 0)
            continue; // at once
        // In the middle of its own signal.
        Query other = start(u"wo"_s);
        bool heard = false;
        const auto forget = [&] {
            other.reset();
            heard = true;
        };
        connect(other.get(), &MetadataQuery::queryProgress, this, forget);
        connect(other.get(), &MetadataQuery::queryDidFinish, this, forget);
        QTRY_VERIFY(heard);
    }
}

void tst_LocalMetadataIndex::attributesTellAllThatIsKnown()
{
    home->makeFolder(u"a"_s);
    home->write(u"a/picture.png"_s, "12345");
    home->setAttribute(u"a/picture.png"_s, "user.xdg.tags", "red, summer");
    SmallIndex written;
    written.addFolder(u"a"_s);
    const QDateTime made(QDate(2001, 2, 3), QTime(4, 5), Qt::UTC);
    written.addDocument(u"a/picture.png"_s,
                        { { u"kMDItemPixelWidth"_s, qint64(4000) },
                          { u"kMDItemFNumber"_s, 2.8 },
                          { u"kMDItemContentCreationDate"_s, made } },
                        QByteArray("\u00FC").repeated(10'000));
    written.commit(true);
    const auto valuesOf = [this](const QString &name) {
        QVariantMap values;
        const auto attributes = index->attributesOf(home->path(name));
        for (const MetadataAttribute &attribute : attributes)
            values[attribute.name] = attribute.value;
        return values;
    };
    QVariantMap values = valuesOf(u"a/picture.png"_s);
    QCOMPARE(values[u"kMDItemPath"_s], home->path(u"a/picture.png"_s));
    QCOMPARE(values[u"kMDItemDisplayName"_s], u"picture.png"_s);
    QCOMPARE(values[u"kMDItemFSSize"_s], qint64(5));
    QCOMPARE(values[u"kMDItemContentType"_s], u"image/png"_s);
    QCOMPARE(values[u"kMDItemUserTags"_s], (QStringList { u"red"_s, u"summer"_s }));
    QCOMPARE(values[u"kMDItemFSContentChangeDate"_s].typeId(), QMetaType::QDateTime);
    QCOMPARE(values[u"kMDItemPixelWidth"_s], qint64(4000));
    QCOMPARE(values[u"kMDItemFNumber"_s], 2.8);
    QCOMPARE(values[u"kMDItemContentCreationDate"_s], made);
    QCOMPARE(values[u"kMDItemTextContent"_s].toString(), QString(2000, u'ü') + u'…');
    // What was read in another file is not this one's.
    home->write(u"a/picture.png"_s, "123456");
    values = valuesOf(u"a/picture.png"_s);
    QCOMPARE(values[u"kMDItemFSSize"_s], qint64(6));
    QVERIFY(!values.contains(u"kMDItemPixelWidth"_s));
    QVERIFY(valuesOf(u"missing"_s).isEmpty());
}

QTEST_GUILESS_MAIN(tst_LocalMetadataIndex)
#include "tst_LocalMetadataIndex.moc"

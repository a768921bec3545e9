#include "pictures/ThumbnailCache.h"

#include "pictures/Thumbnails.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPictures.h"

using namespace TestPictures;
using enum LoadedPicture::Outcome;

namespace {

constexpr time_t Changed = 1'700'000'000;

// A red picture, 1200 x 600, and a cache for its thumbnails.
struct Desk {
    Desk()
    {
        folder.write(u"red.jpg"_s, encoded(plain({ 1200, 600 }, Qt::red), "jpeg"));
        folder.setModified(u"red.jpg"_s, Changed);
    }
    LoadedPicture thumbnail(const QString &name = u"red.jpg"_s) const
    {
        return thumbnails.thumbnail(folder.path(name), { 110, 60 });
    }
    // As another program leaves one that is green.
    QByteArray foreign(const QSize &size = { 128, 64 }, const QString &changed = {},
                       const QString &bytes = {}, const QString &of = u"red.jpg"_s) const
    {
        QImage image = plain(size, Qt::green);
        image.setText(u"Thumb::URI"_s,
                      QString::fromLatin1(ThumbnailCache::addressOf(folder.path(of))));
        image.setText(u"Thumb::MTime"_s, changed.isEmpty() ? QString::number(Changed) : changed);
        if (!bytes.isEmpty())
            image.setText(u"Thumb::Size"_s, bytes);
        return encoded(image, "png");
    }
    QString entry(const QString &in, const QString &of = u"red.jpg"_s) const
    {
        return u"cache/"_s + in + u'/'
            + QString::fromLatin1(
                   ThumbnailCache::nameFor(ThumbnailCache::addressOf(folder.path(of))));
    }
    QString failures() const { return u"cache/fail/"_s + folder.names(u"cache/fail"_s).value(0); }

    TestFolder folder;
    const Thumbnails thumbnails { ThumbnailCache(folder.path(u"cache"_s)) };
};

} // namespace

class tst_ThumbnailCache : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addressesAreAsOthersWriteThem()
    {
        QCOMPARE(ThumbnailCache::nameFor(ThumbnailCache::addressOf(u"/home/jens/photos/me.png"_s)),
                 "c6ee772d9e49320e97ec29a7eb5b1697.png");
        const QString odd = u"/a b\u00e4%;[]?#\"<`{|^~!$&'()*+,:=@-_."_s + QChar(0xDCFF);
        QCOMPARE(ThumbnailCache::addressOf(odd),
                 "file:///a%20b%C3%A4%25%3B%5B%5D%3F%23%22%3C%60%7B%7C%5E~!$&'()*+,:=@-_.%FF");
    }

    void whatIsMadeIsKeptForAll()
    {
        const Desk desk;
        const LoadedPicture made = desk.thumbnail();
        QCOMPARE(made.outcome, Decoded);
        QCOMPARE(made.image.size(), QSize(128, 64));
        QCOMPARE(made.size, QSize(1200, 600));
        const QString entry = desk.entry(u"normal"_s);
        QCOMPARE(desk.folder.names(u"cache/normal"_s).size(), 1); // nothing half-done beside it
        const auto mode = [&](const QString &name) {
            return fileStatus(desk.folder.path(name), Links::NoFollow)->mode;
        };
        QCOMPARE(mode(entry), mode_t(0600));
        QCOMPARE(mode(u"cache/normal"_s), mode_t(0700));
        const QImage kept = QImage::fromData(desk.folder.read(entry), "png");
        QCOMPARE(kept.size(), QSize(128, 64));
        QCOMPARE(kept.text(u"Thumb::MTime"_s), QString::number(Changed));
        QCOMPARE(kept.text(u"Thumb::Image::Width"_s), u"1200"_s);
        QCOMPARE(kept.text(u"Thumb::URI"_s),
                 QString::fromLatin1(ThumbnailCache::addressOf(desk.folder.path(u"red.jpg"_s))));
        // And none of a thumbnail.
        QCOMPARE(desk.thumbnail(entry).outcome, Decoded);
        QCOMPARE(desk.folder.names(u"cache/normal"_s).size(), 1);
    }

    void onlyValidEntriesAreUsed_data()
    {
        using Write = std::function<void(const Desk &)>;
        QTest::addColumn<Write>("write");
        QTest::addColumn<bool>("isUsed");
        const auto row = [](const char *name, bool isUsed, const Write &write) {
            QTest::newRow(name) << write << isUsed;
        };
        const auto put = [](const QString &in, auto... as) {
            return [=](const Desk &desk) {
                desk.folder.makeFolder(u"cache/"_s + in);
                desk.folder.write(desk.entry(in), desk.foreign(as...));
            };
        };
        const auto script = [put](const QString &text) {
            return [=](const Desk &desk) {
                put(u"normal"_s)(desk);
                desk.folder.shell(u"e="_s + desk.entry(u"normal"_s) + u';' + text);
            };
        };
        const QSize usual(128, 64);
        row("another program's", true, put(u"normal"_s));
        row("a larger one", true, put(u"large"_s, QSize(256, 128)));
        row("the largest", true, put(u"xx-large"_s, QSize(1024, 512)));
        row("of an older content", false, put(u"normal"_s, usual, QString::number(Changed - 1)));
        row("of one with other bytes", false, put(u"normal"_s, usual, QString(), u"5"_s));
        row("of another file", false, put(u"normal"_s, usual, QString(), QString(), u"blue.jpg"_s));
        row("larger than its folder says", false, put(u"normal"_s, QSize(2000, 2000)));
        row("torn", false, script(u"truncate -s 150 $e"_s));
        row("no picture", false, script(u"echo x > $e"_s));
        row("of 1 GB", false, script(u"truncate -s 1G $e"_s));
        row("a link", false, script(u"mv $e other; ln -s \"$PWD/other\" $e"_s));
        row("a pipe", false, script(u"rm $e; mkfifo $e"_s));
        row("a folder", false, script(u"rm $e; mkdir $e"_s));
    }
    void onlyValidEntriesAreUsed()
    {
        QFETCH(const std::function<void(const Desk &)>, write);
        QFETCH(const bool, isUsed);
        const Desk desk;
        write(desk);
        const LoadedPicture picture = desk.thumbnail();
        QCOMPARE(picture.outcome, Decoded);
        QCOMPARE(picture.image.pixelColor(9, 9).green() > 200, isUsed);
    }

    void whatFailedIsNotTriedAgainUntilItChanges()
    {
        Desk desk;
        const auto torn = [](const QByteArray &bytes) {
            return bytes.left(bytes.size() / 2) + QByteArray(bytes.size() / 2, ' ');
        };
        const QByteArray good = encoded(plain({ 300, 300 }, Qt::red), "png");
        desk.folder.write(u"bad.png"_s, torn(good));
        desk.folder.setModified(u"bad.png"_s, Changed);
        QCOMPARE(desk.thumbnail(u"bad.png"_s).outcome, Broken);
        QCOMPARE(desk.folder.names(desk.failures()).size(), 1);
        desk.folder.write(u"bad.png"_s, good.left(good.size() / 2 * 2));
        desk.folder.setModified(u"bad.png"_s, Changed);
        QCOMPARE(desk.thumbnail(u"bad.png"_s).outcome, Broken); // as far as can be known
        desk.folder.write(u"bad.png"_s, good);
        desk.folder.setModified(u"bad.png"_s, Changed + 1);
        QCOMPARE(desk.thumbnail(u"bad.png"_s).outcome, Decoded);
        // That there is no reader says nothing of the file.
        desk.folder.write(u"a.svg"_s, "<svg/>");
        QCOMPARE(
            desk.thumbnails.thumbnailByReader(desk.folder.path(u"a.svg"_s), {}, nullptr).outcome,
            Unread);
        QCOMPARE(desk.folder.names(desk.failures()).size(), 1);
    }

    void aCacheThatCannotBeWrittenIsNoMatter()
    {
        const Desk desk;
        desk.folder.write(u"cache"_s, "no folder");
        QCOMPARE(desk.thumbnail().outcome, Decoded);
        QCOMPARE(desk.folder.read(u"cache"_s), "no folder");
    }
};

QTEST_MAIN(tst_ThumbnailCache)
#include "tst_ThumbnailCache.moc"

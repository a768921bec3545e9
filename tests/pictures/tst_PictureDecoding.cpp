#include "pictures/PictureDecoding.h"

#include "pictures/MovingPicture.h"
#include "pictures/PictureWorkers.h"
#include "pictures/Thumbnails.h"
#include "platform/ForeignFiles.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPictures.h"

#include <QSignalSpy>

#include <mutex>
#include <semaphore>

using namespace TestPictures;
using enum LoadedPicture::Outcome;

namespace {

// Reads pictures that say of themselves how large they are, and nothing else.
struct Reader final : ForeignFiles {
    Outcome read(int, const QString &, ForeignContents &) override { return Outcome::Nothing; }
    Outcome picture(int, const QSize &, QImage &image, QSize &size) override
    {
        image = plain(answer, Qt::green);
        size = answer;
        return outcome;
    }
    Outcome outcome = Outcome::Read;
    QSize answer { 30, 20 };
};

LoadedPicture decoded(const QByteArray &bytes, const QSize &bound = {})
{
    const TestFolder folder;
    folder.write(u"picture"_s, bytes);
    return decodedPicture(openedPicture(folder.path(u"picture"_s)).number(), bound);
}

bool isNear(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) < 40 && std::abs(qGreen(a) - qGreen(b)) < 40
        && std::abs(qBlue(a) - qBlue(b)) < 40;
}

// The same picture with another size in its header.
QByteArray claiming(QByteArray jpeg, quint16 side)
{
    const auto frame = jpeg.indexOf("\xff\xc2");
    for (const int at : { 5, 7 }) {
        jpeg[frame + at] = char(side >> 8);
        jpeg[frame + at + 1] = char(side & 0xFF);
    }
    return jpeg;
}

} // namespace

class tst_PictureDecoding : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void picturesAreTurnedAsTheCameraWasHeld_data()
    {
        QTest::addColumn<char>("orientation");
        QTest::addColumn<QSize>("bound");
        QTest::addColumn<QSize>("image");
        QTest::addColumn<QRgb>("topLeft");
        QTest::addColumn<QRgb>("bottomRight");
        const QRgb red = qRgb(255, 0, 0), blue = qRgb(0, 0, 255);
        QTest::newRow("upright") << char(1) << QSize() << QSize(800, 400) << red << blue;
        QTest::newRow("upside down") << char(3) << QSize() << QSize(800, 400) << blue << red;
        QTest::newRow("to the right") << char(6) << QSize() << QSize(400, 800) << red << blue;
        QTest::newRow("to the left") << char(8) << QSize() << QSize(400, 800) << blue << red;
        QTest::newRow("small") << char(1) << QSize(90, 90) << QSize(90, 45) << red << blue;
        QTest::newRow("small and turned")
            << char(8) << QSize(90, 90) << QSize(45, 90) << blue << red;
        QTest::newRow("never larger")
            << char(1) << QSize(2000, 2000) << QSize(800, 400) << red << blue;
    }
    void picturesAreTurnedAsTheCameraWasHeld()
    {
        QFETCH(const char, orientation);
        QFETCH(const QSize, bound);
        const auto picture =
            decoded(held(encoded(halves({ 800, 400 }), "jpeg"), orientation), bound);
        QCOMPARE(picture.outcome, Decoded);
        QTEST(picture.image.size(), "image");
        const bool isTurned = orientation > 4;
        QCOMPARE(picture.size, isTurned ? QSize(400, 800) : QSize(800, 400));
        QFETCH(const QRgb, topLeft);
        QFETCH(const QRgb, bottomRight);
        const QSize size = picture.image.size();
        QVERIFY(isNear(picture.image.pixel(2, 2), topLeft));
        QVERIFY(isNear(picture.image.pixel(size.width() - 3, size.height() - 3), bottomRight));
    }

    void contentDecidesWhoDecodes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<LoadedPicture::Outcome>("here");
        QTest::addColumn<LoadedPicture::Outcome>("withoutReader");
        const auto row = [](const char *name, const QByteArray &bytes, auto here, auto without) {
            QTest::newRow(name) << bytes << here << without;
        };
        const QImage image = halves({ 20, 10 });
        for (const char *format : { "jpeg", "png", "bmp", "webp" })
            row(format, encoded(image, format), Decoded, Decoded);
        row("gif", blinking(), Decoded, Decoded);
        row("tiff", encoded(image, "tiff"), Elsewhere, Decoded);
        const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>";
        row("drawing", drawing, Elsewhere, Unread);
        row("drawing behind blanks", QByteArray(5000, ' ') + drawing, Elsewhere, Broken);
        row("heif", QByteArray(4, '\0') + "ftypheic" + QByteArray(40, '\0'), Elsewhere, Unread);
        row("text", "no picture", Elsewhere, Broken);
        row("nothing", "", Elsewhere, Broken);
        row("only a start", encoded(image, "png").left(40), Broken, Broken);
        row("more points than fit", encoded(QImage(12000, 12000, QImage::Format_Mono), "png"),
            Broken, Broken);
        row("many passes over as many", claiming(encoded(halves({ 64, 64 }), "jpeg", true), 65500),
            Broken, Broken);
    }
    void contentDecidesWhoDecodes()
    {
        QFETCH(const QByteArray, bytes);
        QTEST(decoded(bytes).outcome, "here");
        const TestFolder folder;
        folder.write(u"picture"_s, bytes);
        const Descriptor file = openedPicture(folder.path(u"picture"_s));
        QFETCH(const LoadedPicture::Outcome, withoutReader);
        QFETCH(const LoadedPicture::Outcome, here);
        if (here != Elsewhere)
            return;
        QCOMPARE(decodedByReader(file.number(), {}, nullptr).outcome, withoutReader);
        Reader reader;
        QCOMPARE(decodedByReader(file.number(), { 6, 6 }, &reader).size, QSize(30, 20));
        QCOMPARE(decodedByReader(file.number(), { 6, 6 }, &reader).image.size(), QSize(6, 4));
        reader.outcome = ForeignFiles::Outcome::Failed;
        QCOMPARE(decodedByReader(file.number(), {}, &reader).outcome, Broken);
        reader.outcome = ForeignFiles::Outcome::Late;
        QCOMPARE(decodedByReader(file.number(), {}, &reader).outcome, Unread);
    }

    void onlyPlainFilesAreOpened()
    {
        const TestFolder folder;
        folder.shell(u"mkfifo fifo; mkdir folder; ln -s none dangling"_s);
        for (const auto &name : { u"fifo"_s, u"folder"_s, u"dangling"_s, u"none"_s })
            QCOMPARE(Thumbnails::picture(folder.path(name), {}).outcome, Unread);
    }

    void animatedOnesPlay()
    {
        const TestFolder folder;
        folder.write(u"blinks"_s, blinking());
        folder.write(u"still"_s, encoded(halves({ 2, 2 }), "png"));
        {
            MovingPicture picture(folder.path(u"blinks"_s), { 100, 100 });
            QSignalSpy frames(&picture, &MovingPicture::frameChanged);
            QVERIFY(!frames.wait(1)); // not before it is told to
            picture.setPlaying(true);
            QTRY_VERIFY(frames.size() >= 3);
            QList<QColor> colors;
            for (const auto &frame : std::as_const(frames).first(3))
                colors.append(frame.first().value<QImage>().pixelColor(0, 0));
            QCOMPARE(colors, QList<QColor>({ Qt::blue, Qt::red, Qt::blue }));
        }
        const MovingPicture still(folder.path(u"still"_s), { 100, 100 });
        QTRY_VERIFY(!MovingPicture::anyUnderWay()); // the threads of both have ended
    }

    void oneThatHangsHoldsUpNoOther()
    {
        std::mutex hangs;
        std::binary_semaphore begun(0);
        QStringList done;
        PictureWorkers workers(1, std::chrono::milliseconds(40));
        const auto job = [&](quint64 id, const QString &name, const std::function<void()> &work) {
            return PictureWorkers::Job { { id, {} },
                                         [work, name, &done] {
                                             work();
                                             return [name, &done] { done.append(name); };
                                         },
                                         [name, &done] { done.append(u"not "_s + name); } };
        };
        {
            const std::lock_guard lock(hangs);
            workers.want({ job(1, u"hanging"_s,
                               [&] {
                                   begun.release();
                                   const std::lock_guard wait(hangs);
                               }),
                           job(2, u"next"_s, [] {}), job(3, u"unwanted"_s, [] {}) });
            begun.acquire();
            workers.want({ job(1, u"hanging again"_s, [] {}), job(2, u"next"_s, [] {}) });
            QTRY_COMPARE(done, QStringList({ u"not hanging"_s, u"next"_s }));
            QVERIFY(!workers.end(QDeadlineTimer(0))); // and is not waited for
        }
        QVERIFY(workers.end(QDeadlineTimer(QDeadlineTimer::Forever)));
    }
};

QTEST_MAIN(tst_PictureDecoding)
#include "tst_PictureDecoding.moc"

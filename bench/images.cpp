// A folder of 10,000 photos of 24 megapixels, opened in the image browser until the first screenful
// of small pictures is painted, with the shared cache warm; against the least that this takes: each
// file looked at, and those cache files read and decoded. Then the memory of going through all of
// them, and of making small and large pictures anew; and the speed of that.

#include "bench/BareFiles.h"
#include "bench/BareWalk.h"
#include "bench/Measure.h"
#include "bench/Panes.h"
#include "pictures/Thumbnails.h"
#include "sheets/images/ImageBrowserSheet.h"
#include "sheets/images/ImageRows.h"
#include "sheets/images/ImageTable.h"

#include "widgets/ElidedLabel.h"

#include <QApplication>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>

#include <filesystem>

namespace {

using namespace Qt::StringLiterals;

constexpr int Photos = 10'000;
constexpr QSize PhotoSize(6000, 4000);
constexpr QSize ThumbnailSize(128, 85);
constexpr int Runs = 21;
constexpr int DecodingRuns = 7;
constexpr int MadeAnew = 60;
constexpr double MostMemory = 300; // MB

double residentMegabytes()
{
    QFile status(u"/proc/self/statm"_s);
    BareFiles::demand(status.open(QIODevice::ReadOnly), "statm");
    return status.readAll().split(' ')[1].toDouble() * 4096 / 1e6;
}

// Hills, and as much noise as a camera has.
QImage photo()
{
    QImage image(PhotoSize, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            noise = noise * 1664525U + 1013904223U;
            const int grain = int(noise >> 29);
            const bool isHill = y > 2000 + int(600 * std::sin(x / 700.0));
            line[x] = isHill ? qRgb(40 + grain, 90 + y / 60 + grain, 50 + grain)
                             : qRgb(120 + grain, 150 + grain, 235 - y / 40 + grain);
        }
    }
    return image;
}

QString nameOf(int number)
{
    return u"photo %1.jpg"_s.arg(number, 5, 10, QChar(u'0'));
}

// One file under many names: what counts is that each is looked at.
void makePhotos(const QString &folder)
{
    BareFiles::demand(::mkdir(folder.toUtf8(), 0700) == 0, "folder");
    const QImage image = photo();
    const QString first = folder + u'/' + nameOf(0);
    BareFiles::demand(image.save(first, "jpeg", 90), "photo");
    for (int number = 1; number < Photos; ++number)
        BareFiles::demand(
            ::link(first.toUtf8(), QString(folder + u'/' + nameOf(number)).toUtf8()) == 0, "link");
}

void warmCache(const QString &folder)
{
    const ThumbnailCache cache;
    const QImage small = QImage(folder + u'/' + nameOf(0)).scaled(ThumbnailSize);
    const auto status = fileStatus(folder + u'/' + nameOf(0), Links::Follow);
    for (int number = 0; number < Photos; ++number)
        cache.store({ folder + u'/' + nameOf(number), *status }, ThumbnailCache::Size::Normal,
                    { small, PhotoSize });
}

struct Shown {
    explicit Shown(ImageBrowserSheet &open)
        : sheet(open)
    {
    }
    // All that can be seen, and is painted.
    bool isScreenful() const
    {
        const auto rows = seen();
        return !rows.isEmpty() && std::ranges::all_of(rows, [&](int row) {
            return images.thumbnail(row).state == ImageRows::State::Shown;
        });
    }
    QList<int> seen() const
    {
        const auto nearby = sheet.tableView->rowsNearby();
        QList<int> rows;
        for (const int row : nearby)
            if (sheet.tableView->viewport()->rect().intersects(
                    sheet.tableView->visualRect(images.index(row, 0))))
                rows.append(row);
        return rows;
    }
    void untilScreenful() const
    {
        while (!isScreenful())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        sheet.tableView->viewport()->repaint();
    }

    ImageBrowserSheet &sheet;
    ImageRows &images = *qobject_cast<ImageRows *>(sheet.tableView->model());
};

void measureOpening(ImageBrowser &browser, const Shown &shown, const QString &folder)
{
    QList<QString> files;
    const auto openFolder = [&] {
        browser.setupPaths(folder);
        shown.untilScreenful();
    };
    openFolder();
    for (const int row : shown.seen())
        files.append(qEnvironmentVariable("HOME") + u"/.cache/thumbnails/normal/"_s
                     + QString::fromLatin1(ThumbnailCache::nameFor(
                         ThumbnailCache::addressOf(shown.images.path(row)))));
    const auto readFiles = [&] {
        bareWalk(folder.toUtf8());
        for (const QString &file : std::as_const(files))
            BareFiles::demand(!QImage(file, "png").isNull(), "thumbnail");
    };
    Measure::report("images-10k", Runs,
                    { .work = openFolder,
                      .floor = readFiles,
                      .before = [] { QCoreApplication::processEvents(); } },
                    ", " + std::to_string(files.size()) + " pictures of "
                        + std::to_string(shown.images.rowCount()));
}

void measureMemory(const Shown &shown, const QString &folder)
{
    double most = residentMegabytes();
    const double before = most;
    QScrollBar *bar = shown.sheet.tableView->verticalScrollBar();
    for (int at = 0; at < bar->maximum(); at += bar->pageStep()) {
        bar->setValue(at);
        shown.untilScreenful();
        most = std::max(most, residentMegabytes());
    }
    // What nobody has made yet, small and large.
    BareFiles::demand(
        std::filesystem::remove_all((qgetenv("HOME") + "/.cache/thumbnails").constData()) > 0,
        "cache");
    shown.sheet.tableView->selectRow(0);
    for (int row = 0; row < MadeAnew; ++row) {
        shown.sheet.tableView->selectRow(row);
        shown.untilScreenful();
        while (shown.sheet.imageDimensions->text().isEmpty())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        most = std::max(most, residentMegabytes());
    }
    char detail[160];
    std::snprintf(detail, sizeof detail, "%.0f MB at most, %.0f MB before, of %.0f MB", most,
                  before, MostMemory);
    Measure::print("images-memory", most / MostMemory, detail);
    const QString file = folder + u'/' + nameOf(0);
    Measure::report("images-decode", DecodingRuns,
                    { .work =
                          [&] {
                              const auto made = Thumbnails::picture(file, { 128, 128 });
                              BareFiles::demand(!made.image.isNull(), "small picture");
                          },
                      .floor =
                          [&] {
                              QImageReader reader(file, "jpeg");
                              BareFiles::demand(!reader.read().isNull(), "whole picture");
                          } },
                    ", a small picture against a whole one decoded");
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString folder = home.path(u"photos"_s);
    makePhotos(folder);
    warmCache(folder);
    Panes panes(home);
    ImageBrowser &browser = panes.application.imageBrowser();
    QTimer::singleShot(0, &browser, [&] {
        const Shown shown(*panes.application.mainWindow().findChild<ImageBrowserSheet *>());
        measureOpening(browser, shown, folder);
        measureMemory(shown, folder);
        browser.closeImageBrowserSheet();
    });
    browser.showImageBrowserSheet(folder);
    return 0;
}

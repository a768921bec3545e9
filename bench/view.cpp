// A log of 10 GB in the viewer: from F3 until its first page is painted, against a bare dialog that
// reads that page, puts it into a plain text view and is painted; and a search through all of it
// for what is not there, against grep -F. What fits into memory is written, a gigabyte; the rest is
// a hole, which both of them pass over, so that the search is measured on the written part.

#include "bench/BareFiles.h"
#include "bench/Measure.h"
#include "bench/Panes.h"
#include "bench/RunProgram.h"
#include "sheets/viewer/TextArea.h"
#include "sheets/viewer/ViewedFile.h"
#include "sheets/viewer/ViewerSheet.h"
#include "texts/FileSearch.h"

#include <QApplication>
#include <QDialog>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

using namespace Qt::StringLiterals;

constexpr qint64 Written = qint64(1) << 30;
constexpr qint64 Size = qint64(10) << 30;
constexpr qint64 Page = 64 << 10; // bytes
constexpr int Runs = 21;
constexpr int EngineRuns = 301;
constexpr int SearchRuns = 7;
constexpr auto Absent = "no such needle";

QByteArray line(int number)
{
    return QByteArray("2026-11-22 10:00:") + QByteArray::number(number % 60).rightJustified(2, '0')
        + " server " + QByteArray::number(number * 7919 % 100'003)
        + " answered the request of a user after some time with an error of its own\n";
}

void makeLog(const QByteArray &path)
{
    QByteArray block;
    for (int number = 0; block.size() < (4 << 20); ++number)
        block += line(number);
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    BareFiles::demand(file >= 0, "log");
    for (qint64 done = 0; done < Written; done += block.size())
        BareFiles::demand(::write(file, block.constData(), size_t(block.size())) == block.size(),
                          "write");
    BareFiles::demand(::ftruncate(file, Size) == 0 && ::close(file) == 0, "truncate");
}

QByteArray barePage(const QByteArray &path)
{
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    struct stat status;
    BareFiles::demand(file >= 0 && ::fstat(file, &status) == 0, "open");
    QByteArray page(Page, Qt::Uninitialized);
    page.truncate(::pread(file, page.data(), size_t(page.size()), 0));
    ::close(file);
    return page;
}

// What any program has to do that shows a page in a window of its own.
void bareDialog(QWidget &parent, const QByteArray &path, const QSize &size)
{
    QDialog dialog(&parent);
    auto *rows = new QVBoxLayout(&dialog);
    auto *text = new QPlainTextEdit(&dialog);
    text->setReadOnly(true);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    rows->addWidget(text);
    text->setPlainText(QString::fromUtf8(barePage(path).first(8 << 10))); // as much as is seen
    dialog.resize(size);
    dialog.show();
    QCoreApplication::processEvents();
    text->viewport()->repaint();
}

void measureWindow(Panes &panes, const QByteArray &path)
{
    QSize size(1000, 680);
    panes.left.selectRow(1);
    panes.left.setFocus();
    const auto view = [&] {
        QTimer look;
        look.callOnTimeout(&panes.application, [&] {
            auto *sheet = qobject_cast<ViewerSheet *>(QApplication::activeModalWidget());
            if (!sheet)
                return;
            look.stop();
            QCoreApplication::processEvents();
            sheet->textArea->viewport()->repaint();
            BareFiles::demand(sheet->textArea->shownText().startsWith(u"2026"_s), "first page");
            size = sheet->size();
            sheet->accept();
        });
        look.start(0);
        panes.application.commands().run(Command::View);
    };
    view(); // what only the first one loads
    Measure::report(
        "view-10g", Runs,
        { .work = view, .floor = [&] { bareDialog(panes.application.mainWindow(), path, size); } },
        ", F3 to the first page painted, against a bare dialog with that page");
    Measure::report(
        "view-10g-engine", EngineRuns,
        { .work =
              [&] {
                  for (int i = 0; i < 20; ++i)
                      BareFiles::demand(
                          ViewedFile::open(QString::fromUtf8(path)).firstPage.lineCount() > 50,
                          "page");
              },
          .floor =
              [&] {
                  for (int i = 0; i < 20; ++i)
                      barePage(path);
              } },
        ", 20 first pages without a window, against open, fstat and pread of 64 KiB");
}

// A search at most half as fast takes twice as long: so the ratio is grep's time to ours.
void measureSearch(const QString &name, const QByteArray &path, const QString &text,
                   const QByteArray &option)
{
    const auto file = FileBytes::open(QString::fromUtf8(path)).file;
    const auto sensitivity = option.contains('i') ? Qt::CaseInsensitive : Qt::CaseSensitive;
    const auto pattern = SearchPattern::ofText(text, {}, sensitivity);
    const auto search = [&] {
        FileSearch::Progress progress;
        BareFiles::demand(
            FileSearch::find(*file, *pattern, 0, FileSearch::Direction::Forwards, progress).offset
                < 0,
            "search");
    };
    // It answers 1 where there is nothing, which is no failure here.
    const auto grep = [&] {
        runProgram({ "/bin/sh", "-c", "LC_ALL=C /bin/grep \"$@\" > /dev/null; test $? = 1", "sh",
                     option, "-e", text.toUtf8(), path });
    };
    grep(); // into memory
    Measure::report(name.toStdString(), SearchRuns, { .work = grep, .floor = search },
                    ", grep -F to the viewer's search: 1 GiB in memory, then a hole up to 10 GiB");
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QByteArray path = home.bytes(u"logs/large.log"_s);
    BareFiles::demand(::mkdir(home.bytes(u"logs"_s).constData(), 0700) == 0, "mkdir");
    makeLog(path);
    Panes panes(home);
    panes.open(home.path(u"logs"_s));
    measureWindow(panes, path);
    measureSearch(u"view-10g-search"_s, path, QString::fromLatin1(Absent), "-F");
    measureSearch(u"view-10g-search-any-case"_s, path, QString::fromLatin1(Absent), "-Fi");
    return 0;
}

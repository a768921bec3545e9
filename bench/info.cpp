// The information sheet with 5,000 users, against an empty sheet of its size; and its count of a
// folder of 200,000 files, against a bare walk that looks at each of them.

#include "bench/BareFiles.h"
#include "bench/BareWalk.h"
#include "bench/Measure.h"
#include "bench/OwnHome.h"
#include "bench/Panes.h"
#include "files/HeldItem.h"
#include "sheets/information/FolderCount.h"
#include "sheets/information/InfoSheet.h"

#include <QApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 41;
constexpr int CountingRuns = 5;
constexpr int Accounts = 5000;

// With the same frame, and nothing in it.
class EmptySheet final : public Sheet {
public:
    EmptySheet(QWidget *below, const QSize &size)
        : Sheet(below)
    {
        auto *nothing = new QWidget(this);
        rows().addWidget(nothing);
        const QMargins margins = layout()->contentsMargins();
        nothing->setFixedHeight(size.height() - margins.top() - margins.bottom()
                                - layout()->spacing());
    }
};

// Closes a sheet as soon as all of it is painted.
class UntilPainted final : public QObject {
public:
    explicit UntilPainted(QDialog &sheet)
        : QObject(&sheet)
        , _sheet(sheet)
    {
        sheet.installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        // It comes first, those in it follow in the same turn of the event loop.
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(&_sheet, &QDialog::reject, Qt::QueuedConnection);
        return false;
    }

private:
    QDialog &_sheet;
};

AccountNames manyAccounts()
{
    AccountNames names;
    for (int number = 0; number < Accounts; ++number) {
        names.users.append(u"user%1"_s.arg(number));
        names.groups.append(u"group%1"_s.arg(number));
    }
    return names;
}

void measureOpening(const OwnHome &home)
{
    Panes panes(home);
    auto &controller = panes.application.infoSheetController();
    controller.setAccountSource(&manyAccounts);
    const OperationRequest request { .source = home.path({}).chopped(1),
                                     .items = { u"settings.plist"_s },
                                     .side = Side::Left,
                                     .updateBoth = UpdateBoth::No };
    BareFiles::demand(
        ::close(::open(home.bytes(u"settings.plist"_s), O_CREAT | O_RDONLY | O_CLOEXEC, 0600)) == 0,
        "settings");
    InfoSheet *sheet = nullptr;
    QTimer::singleShot(0, &panes.application, [&] {
        sheet = panes.application.mainWindow().findChild<InfoSheet *>();
        new UntilPainted(*sheet);
        sheet->reject();
    });
    controller.showInfoSheet(request);
    const auto showEmpty = [&] {
        EmptySheet empty(&panes.application.mainWindow(), sheet->size());
        new UntilPainted(empty);
        empty.run();
        return empty.size();
    };
    const QSize emptySize = showEmpty();
    char size[64];
    std::snprintf(size, sizeof size, ", %dx%d against %dx%d", sheet->width(), sheet->height(),
                  emptySize.width(), emptySize.height());
    Measure::report("info-open", Runs,
                    { .work = [&] { controller.showInfoSheet(request); },
                      .floor = [&] { showEmpty(); },
                      .before = [] { QCoreApplication::processEvents(); } },
                    size);
}

void measureCounting(const OwnHome &home)
{
    const QString tree = home.path(u"tree"_s);
    makeManyFiles(tree.toUtf8());
    std::error_code why;
    const auto held = HeldItem::at(tree, Links::Follow, why);
    FolderCount count;
    QEventLoop loop;
    QObject::connect(&count, &FolderCount::counted, &loop, &QEventLoop::quit);
    Measure::report("info-folder-size", CountingRuns,
                    { .work =
                          [&] {
                              count.start(held);
                              loop.exec();
                          },
                      .floor = [&] { bareWalk(tree.toUtf8()); } });
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    // On a display: there a person waits for the window manager as well, and without one an empty
    // sheet costs next to nothing.
    if (qEnvironmentVariableIsSet("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    measureOpening(home);
    measureCounting(home);
    return 0;
}

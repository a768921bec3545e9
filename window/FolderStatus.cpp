#include "window/FolderStatus.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "files/DiskQuestions.h"
#include "model/MainModel.h"
#include "settings/SizeText.h"
#include "widgets/ElidedLabel.h"

#include <QEvent>
#include <QLocale>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto BetweenQuestions = 5s;
// An answer mostly comes at once; so long the text of the volume before may stand.
constexpr auto Outdated = 300ms;

} // namespace

QString textOf(const ListingTotals &totals)
{
    QStringList parts;
    const auto count = [&](qsizetype number, const char *one, const char *several) {
        if (number > 0)
            parts.append(
                filled(localized(number == 1 ? one : several), QLocale().toString(number)));
    };
    count(totals.folders, QT_TRANSLATE_NOOP("Twinleaf", "%@ folder"),
          QT_TRANSLATE_NOOP("Twinleaf", "%@ folders"));
    count(totals.files, QT_TRANSLATE_NOOP("Twinleaf", "%@ file"),
          QT_TRANSLATE_NOOP("Twinleaf", "%@ files"));
    if (parts.isEmpty())
        return localized("Empty folder");
    if (totals.files > 0)
        parts.append(SizeText::getRoundedSize(double(totals.bytes)));
    return parts.join(QStringLiteral(", "));
}

QString textOfFiltered(qsizetype shown, qsizetype items)
{
    const QLocale locale;
    return filled(localized("%@ of %@ items"), locale.toString(shown), locale.toString(items));
}

QString textOf(const VolumeSpace &space)
{
    const QString total = SizeText::getRoundedSize(double(space.total));
    if (space.isReadOnly)
        return filled(localized("%@, read-only"), total);
    return filled(localized("%@ free of %@"), SizeText::getRoundedSize(double(space.available)),
                  total);
}

FolderStatus::FolderStatus(const PerSide<FolderStatusFields> &fields, const MainModel &model,
                           DiskQuestions &diskQuestions, QWidget &mainWindow)
    : _fields(fields)
    , mainModel(model)
    , questions(diskQuestions)
    , window(mainWindow)
{
    connect(&mainModel, &MainModel::rowsChanged, this, &FolderStatus::rowsChanged);
    connect(&mainModel, &MainModel::fewRowsChanged, this, &FolderStatus::rowsChanged);
    for (const Side side : { Side::Left, Side::Right }) {
        _outdated[side].setSingleShot(true);
        _outdated[side].setInterval(Outdated);
        _outdated[side].callOnTimeout(this, [this, side] { _fields[side].space->clear(); });
    }
    _next.setInterval(BetweenQuestions);
    _next.callOnTimeout(this, &FolderStatus::askForBoth);
    _next.start();
    window.installEventFilter(this);
}

bool FolderStatus::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        askForBoth(); // other programs may have used the room up
    return QObject::eventFilter(watched, event);
}

void FolderStatus::askForBoth()
{
    if (!window.isActiveWindow())
        return;
    Arrivals::deliver(this, [this] {
        for (const QString &folder : QSet<QString> { _folders.left, _folders.right })
            askForSpace(folder);
    });
}

void FolderStatus::rowsChanged(Side side)
{
    const Listing &rows = mainModel.rows(side);
    QString contents;
    if (mainModel.isFiltered(side))
        contents = textOfFiltered(rows.size() - FirstItemRow,
                                  mainModel.wholeRows(side).size() - FirstItemRow);
    else if (!rows.error())
        contents = textOf(ListingTotals::of(rows));
    _fields[side].contents->setText(contents);
    if (const QString folder = rows.folder(); folder != _folders[side]) {
        _folders[side] = folder;
        _outdated[side].start();
    }
    // Not with each letter of a filter.
    const quint64 generation = mainModel.wholeRows(side).generation();
    if (std::exchange(_generations[side], generation) != generation)
        askForSpace(rows.folder());
}

void FolderStatus::askForSpace(const QString &folder)
{
    if (folder.isEmpty())
        return;
    // One question at a time about a folder: whoever does not answer is not asked ever more.
    if (_asked.contains(folder)) {
        _toAskAgain.insert(folder);
        return;
    }
    _asked.insert(folder);
    questions.ask(
        folder, [folder] { return volumeSpace(folder); },
        [this, folder](const std::optional<VolumeSpace> &space) { show(folder, space); });
}

void FolderStatus::show(const QString &folder, const std::optional<VolumeSpace> &space)
{
    _asked.remove(folder);
    const bool again = _toAskAgain.remove(folder);
    bool isShown = false;
    for (const Side side : { Side::Left, Side::Right }) {
        if (_folders[side] != folder)
            continue;
        _outdated[side].stop();
        _fields[side].space->setText(space ? textOf(*space) : QString());
        isShown = true;
    }
    if (again && isShown)
        askForSpace(folder); // once, also where both panes show it
}

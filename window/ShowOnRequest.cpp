#include "window/ShowOnRequest.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "model/PaneWindow.h"
#include "platform/OpenDialogs.h"
#include "sheets/information/InfoSheetController.h"
#include "views/TableViews.h"
#include "window/MainWindowLayout.h"
#include "window/PathPlace.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QScopedValueRollback>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;
using What = ShowRequest::What;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.requests")

constexpr auto BetweenLooks = 50ms;
constexpr qsizetype Panes = 2;
constexpr qsizetype MostSheets = 10; // that a person closes one by one

// A line, when anything is.
QStringList leftOut(qsizetype count, const char *line)
{
    return count > 0 ? QStringList(filled(localized(line), int(count))) : QStringList();
}

} // namespace

ShowOnRequest::ShowOnRequest(MainWindowLayout &layout, PaneWindow &paneWindow, ItemsInPane &items,
                             InfoSheetController &information, OpenDialogs &dialogs, Waiting &asker)
    : mainWindow(layout)
    , window(paneWindow)
    , itemsInPane(items)
    , infoSheet(information)
    , openDialogs(dialogs)
    , waiting(asker)
{
    _looks.setInterval(BetweenLooks);
    _looks.callOnTimeout(this, &ShowOnRequest::showWhatMay);
}

void ShowOnRequest::begin()
{
    _stands = true;
    showWhatMay();
}

void ShowOnRequest::end()
{
    _stands = false;
    _looks.stop();
}

void ShowOnRequest::show(const ShowRequest &request)
{
    if (request.what == What::Information) {
        const QStringList shown = request.paths.first(qMin(request.paths.size(), MostSheets));
        qsizetype kept = 0;
        for (const QString &path : shown)
            kept += keep({ .what = What::Information, .paths = { path } });
        tell(leftOut(request.paths.size() - kept,
                     QT_TRANSLATE_NOOP("Twinleaf", "Of %i more item(s) no information is shown.")));
        request.settled({});
    } else {
        keep(request);
    }
    showWhatMay();
}

bool ShowOnRequest::keep(const ShowRequest &request)
{
    const auto isSheet = [](const ShowRequest &one) { return one.what == What::Information; };
    if (isSheet(request)) {
        if (std::ranges::count_if(_held, isSheet) >= MostSheets)
            return false;
        _held.append(request);
        return true;
    }
    // The panes can show but one; the person went on to another since.
    QList<ShowRequest> kept;
    for (const ShowRequest &held : std::as_const(_held)) {
        if (isSheet(held))
            kept.append(held);
        else
            held.settled({});
    }
    _held = kept + QList { request };
    return true;
}

void ShowOnRequest::showWhatMay()
{
    if (!_held.isEmpty() && mayShow()) {
        const ShowRequest next = _held.takeFirst();
        if (next.what == What::Information) // what happens while the sheet stands is the person's
            perform(next);
        else
            Arrivals::deliver(this, [this, next] { perform(next); }); // at once: none is held
    }
    if (_held.isEmpty() || !_stands)
        _looks.stop();
    else if (!_looks.isActive())
        _looks.start();
}

bool ShowOnRequest::mayShow() const
{
    return _stands && !_showing && !Arrivals::areHeld() && !openDialogs.anyOpen()
        && !QApplication::activeModalWidget() && !QApplication::activePopupWidget()
        && QGuiApplication::mouseButtons() == Qt::NoButton
        && !window.getTableView(Side::Left).isPointedAt()
        && !window.getTableView(Side::Right).isPointedAt();
}

void ShowOnRequest::perform(const ShowRequest &request)
{
    const QScopedValueRollback showing(_showing, true);
    QStringList complaints;
    switch (request.what) {
    case What::Panes:
    case What::Folders:
        complaints = showPlaces(request);
        break;
    case What::Items:
        complaints = showItems(request.paths);
        break;
    case What::Information:
        complaints = showInformation(request.paths.value(0));
        break;
    }
    tell(complaints);
    request.settled(complaints);
}

void ShowOnRequest::tell(const QStringList &complaints) const
{
    if (!complaints.isEmpty())
        window.showNotice(complaints.first());
    for (const QString &complaint : complaints)
        qCInfo(log, "%s", qUtf8Printable(complaint));
}

QStringList ShowOnRequest::showPlaces(const ShowRequest &request)
{
    Side side = request.what == What::Panes ? Side::Left : activeSide();
    const Side first = side;
    QStringList complaints;
    const QStringList paths = request.paths.first(qMin(request.paths.size(), Panes));
    for (const QString &path : paths) {
        const auto place = waiting.forAnswer(path, [path] { return placeOf(path); });
        if (!place)
            complaints += filled(localized("'%@' does not answer."), FileName::shown(path));
        else if (!place->complaint.isEmpty())
            complaints += place->complaint;
        else
            itemsInPane.show(side, place->folder,
                             place->selected.isEmpty() ? QStringList()
                                                       : QStringList(place->selected));
        side = otherSide(side);
    }
    complaints += leftOut(
        request.paths.size() - Panes,
        QT_TRANSLATE_NOOP("Twinleaf", "%i more folder(s) are not shown: there are two panes."));
    mainWindow.fileList(first).setFocus();
    return complaints;
}

QStringList ShowOnRequest::showItems(const QStringList &paths)
{
    struct Folder {
        QString path;
        QStringList names {};
    };
    QList<Folder> folders; // in the order in which they are named first
    qsizetype further = 0;
    for (const QString &path : paths) {
        const QString parent = PathText::parent(path);
        auto folder = std::ranges::find(folders, parent, &Folder::path);
        if (folder == folders.end() && folders.size() == Panes) {
            ++further;
            continue;
        }
        if (folder == folders.end())
            folder = folders.insert(folders.end(), { parent });
        if (path != parent) // of "/" there is no row
            folder->names.append(PathText::lastComponent(path));
    }
    Side side = activeSide();
    mainWindow.fileList(side).setFocus();
    QStringList complaints;
    for (const Folder &folder : std::as_const(folders)) {
        const QStringList missing = itemsInPane.show(side, folder.path, folder.names);
        if (!missing.isEmpty())
            complaints += whyMissing(PathText::joined(folder.path, missing.first()));
        side = otherSide(side);
    }
    return complaints
        + leftOut(further,
                  QT_TRANSLATE_NOOP(
                      "Twinleaf",
                      "%i item(s) of further folders are not shown: there are two panes."));
}

QStringList ShowOnRequest::showInformation(const QString &path)
{
    const auto isThere = waiting.forAnswer(path, [path] { return exists(path); });
    if (!isThere.value_or(false))
        return { filled(isThere ? localized("'%@' does not exist")
                                : localized("'%@' does not answer."),
                        FileName::shown(path)) };
    infoSheet.showInfoSheet({ .source = PathText::parent(path),
                              .items = { PathText::lastComponent(path) },
                              .side = activeSide(),
                              .updateBoth = UpdateBoth::Yes });
    return {};
}

Side ShowOnRequest::activeSide() const
{
    const PaneTable *active = window.getFirstResponderTableView();
    return active ? active->side() : Side::Left;
}

QString ShowOnRequest::whyMissing(const QString &path) const
{
    const auto isThere = waiting.forAnswer(path, [path] { return exists(path); });
    return filled(isThere.value_or(false) ? localized("'%@' is hidden in its folder.")
                                          : localized("'%@' does not exist"),
                  FileName::shown(path));
}

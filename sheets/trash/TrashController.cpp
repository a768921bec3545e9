#include "sheets/trash/TrashController.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "operations/SmallPrint.h"
#include "platform/Alerts.h"
#include "platform/OpenDialogs.h"
#include "settings/SizeText.h"
#include "sheets/trash/TrashSheet.h"
#include "sheets/trash/TrashTable.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

TrashController::TrashController(TrashCan &trash, const DateText &dates, const FileKinds &kinds,
                                 Alerts &alertsToAsk, OpenDialogs &dialogs, QWidget *window)
    : alerts(alertsToAsk)
    , openDialogs(dialogs)
    , mainWindow(window)
    , _rows(dates, kinds)
    , _work(trash)
{
    connect(&_work, &TrashWork::workingChanged, this, [this](qsizetype items) {
        if (sheet)
            sheet->showWorking(items);
    });
    connect(&_work, &TrashWork::progressed, this, [this](qsizetype items) {
        if (sheet)
            sheet->showProgress(items);
    });
}

TrashController::~TrashController() = default;

void TrashController::showTrashSheet()
{
    // One that is emptied still has its sheet.
    if (sheet || _work.isWorking())
        return;
    const OpenDialogs::Guard guard(openDialogs);
    _havePutBack = false;
    _rows.setItems({});
    sheet = std::make_unique<TrashSheet>(_rows, mainWindow);
    connect(sheet->putBackButton, &QPushButton::clicked, this, [this] { putBack(); });
    connect(sheet->removeButton, &QPushButton::clicked, this, [this] { remove(); });
    connect(sheet->table, &TrashTable::removeAsked, this, [this] { remove(); });
    connect(sheet->table, &TrashTable::reloadAsked, this, &TrashController::reload);
    connect(sheet->emptyButton, &QPushButton::clicked, this, &TrashController::empty);
    connect(sheet.get(), &TrashSheet::cancelAsked, &_work, &TrashWork::cancel);
    sheet->table->setPlaceholder(localized("Reading the Trash..."));
    reload();
    sheet->run();
    _work.cancel();
    sheet.reset();
    _rows.setItems({});
    if (_havePutBack)
        Q_EMIT itemsPutBack();
}

bool TrashController::end(QDeadlineTimer deadline)
{
    return _work.end(deadline);
}

void TrashController::reload()
{
    _work.list([this](const TrashWork::Contents &contents) {
        if (!sheet)
            return;
        sheet->table->setPlaceholder(localized("The Trash is empty."));
        sheet->table->setItems(contents.items);
        QStringList state { filled(localized("%i item(s)"), int(contents.items.size())) };
        state += contents.unread;
        sheet->showState(state.join(u"   "_s));
    });
}

void TrashController::putBack()
{
    if (!_work.isWorking())
        putBack(sheet->table->selectedItems(), TrashCan::Folders::Keep);
}

void TrashController::putBack(const QList<TrashedItem> &items, TrashCan::Folders folders)
{
    if (!items.isEmpty())
        _work.putBack(items, folders, [this](const TrashWork::End &end) { afterPutBack(end); });
}

void TrashController::afterPutBack(const TrashWork::End &end)
{
    _havePutBack = _havePutBack || end.done > 0;
    if (!sheet)
        return;
    reload();
    if (!end.failed.isEmpty())
        alerts.ask(Alert::failure(localized("Put back failed!"), shortened(end.failed)));
    if (end.homeless.isEmpty())
        return;
    QStringList lines;
    for (const TrashedItem &item : end.homeless)
        lines.append(FileName::shown(PathText::parent(item.origin)));
    lines.removeDuplicates();
    if (alerts.ask(Alert::question(
            filled(localized("The folders that %i item(s) lay in are gone. Make them again?"),
                   int(end.homeless.size())),
            shortened(lines)))
            == Alert::Yes
        && sheet)
        putBack(end.homeless, TrashCan::Folders::Make);
}

bool TrashController::isAgreedTo(const QString &text, const QString &details)
{
    return alerts.ask(Alert::questionMeaningNo(text, details)) == Alert::Yes && sheet
        && !_work.isWorking();
}

void TrashController::remove()
{
    if (_work.isWorking())
        return;
    const QList<TrashedItem> items = sheet->table->selectedItems();
    QStringList names;
    for (const TrashedItem &item : items)
        names.append(FileName::shown(item.formerName()));
    if (!items.isEmpty()
        && isAgreedTo(
            filled(localized("Are you sure that you want to delete the selected %i item(s) for "
                             "good? This cannot be undone."),
                   int(items.size())),
            shortened(names)))
        remove(items);
}

void TrashController::empty()
{
    if (_work.isWorking())
        return;
    // What comes later was not counted, and stays.
    const QList<TrashedItem> items = _rows.items();
    _work.count(items, [this, items](std::optional<qint64> bytes) {
        if (!bytes || !sheet)
            return;
        const QString question =
            filled(filled(localized("Are you sure that you want to remove the %i item(s) (%@) in "
                                    "the Trash for good?"),
                          int(items.size())),
                   SizeText::getCalcFileSize(*bytes));
        if (isAgreedTo(question, localized("This cannot be undone.")))
            remove(items);
    });
}

void TrashController::remove(const QList<TrashedItem> &items)
{
    _work.remove(items, [this](const TrashWork::End &end) {
        if (!sheet)
            return;
        reload();
        if (!end.failed.isEmpty())
            alerts.ask(Alert::failure(localized("Delete failed!"), shortened(end.failed)));
    });
}

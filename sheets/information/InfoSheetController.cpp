#include "sheets/information/InfoSheetController.h"

#include "base/Localized.h"
#include "files/PathText.h"
#include "operations/Authentication.h"
#include "operations/Twinleaf.h"
#include "platform/OpenDialogs.h"
#include "sheets/information/AccountBox.h"
#include "sheets/information/InfoSheet.h"
#include "widgets/PathIcons.h"

#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The product: they are not the rights of one command.
QStringList rightsOfPadlock()
{
    return { u"Twinleaf"_s };
}

} // namespace

InfoSheetController::InfoSheetController(Twinleaf &operations, Authentication &rights,
                                         PathIcons &icons, const FileKinds &fileKinds,
                                         Alerts &alertsToAsk, OpenPanel &panel,
                                         OpenDialogs &dialogs, Waiting &asker, QWidget &window)
    : twinleaf(operations)
    , authentication(rights)
    , applicationIcons(icons)
    , kinds(fileKinds)
    , alerts(alertsToAsk)
    , openPanel(panel)
    , openDialogs(dialogs)
    , waiting(asker)
    , mainWindow(window)
{
    connect(&applicationIcons, &PathIcons::arrived, this, [this](const QString &application) {
        if (_sheet && _sheet->isVisible())
            showIconOf(application);
    });
    connect(&_folderCount, &FolderCount::countedUp, this,
            [this](qint64 bytes) { showSize(bytes, Size::SoFar); });
    connect(&_folderCount, &FolderCount::counted, this,
            [this](qint64 bytes) { showSize(bytes, Size::Whole); });
}

InfoSheetController::~InfoSheetController()
{
    end();
}

bool InfoSheetController::end(QDeadlineTimer deadline)
{
    // All of them: one that hangs must not keep the others from being given up.
    const bool ended[] = { _folderCount.end(deadline), _itemReading.end(deadline),
                           _accountReading.end(deadline) };
    return std::ranges::all_of(ended, std::identity());
}

void InfoSheetController::setAccountSource(std::function<AccountNames()> source)
{
    _accountReading.drop();
    _readAccounts = std::move(source);
}

void InfoSheetController::awakeFromNib()
{
    if (_accountReading.anyWanted())
        return; // a directory service may take its time
    _accountReading.start(_readAccounts, [this](const AccountNames &names) {
        _accounts = names;
        if (!_sheet)
            return;
        _sheet->Owner->setNames(names.users);
        _sheet->Group->setNames(names.groups);
    });
}

InfoSheet &InfoSheetController::sheet()
{
    if (_sheet)
        return *_sheet;
    _sheet = new InfoSheet(&mainWindow);
    _sheet->Owner->setNames(_accounts.users);
    _sheet->Group->setNames(_accounts.groups);
    connect(_sheet->LockButton, &QPushButton::clicked, this,
            &InfoSheetController::LockButton_clicked);
    connect(_sheet->OpenWith, &QComboBox::activated, this, &InfoSheetController::OpenWithChanged);
    connect(_sheet, &InfoSheet::okClicked, this, &InfoSheetController::endInfoSheet);
    return *_sheet;
}

void InfoSheetController::showInfoSheet(const OperationRequest &request)
{
    if (_sheet && _sheet->isBusy())
        return;
    currentFullPath = PathText::joined(request.source, request.items.value(0));
    showKnown();
    setFileInformations(currentFullPath);
    if (sheet().isVisible())
        return;
    awakeFromNib(); // accounts come and go
    _changed = false;
    _written = false;
    {
        const OpenDialogs::Guard guard(openDialogs);
        sheet().run();
    }
    _itemReading.drop();
    _folderCount.stop();
    _facts.reset(); // lets go of the item
    // Now that the rows behind the sheet may be others.
    if (_changed)
        twinleaf.updateFileLists({ .operation = Operation::Info, .item = currentFullPath });
}

void InfoSheetController::setFileInformations(const QString &fullPath)
{
    _folderCount.stop();
    _itemReading.drop();
    _itemReading.start(
        [fullPath, queries = static_cast<const FileQueries *>(&twinleaf)] { // worker thread
            return readItemFacts(fullPath, *queries);
        },
        [this](const ItemFacts &facts) { showItem(facts); });
}

// What is held now: rights run out by themselves, and come by other ways than the padlock.
void InfoSheetController::showPadlock()
{
    sheet().showRights(authentication.isAuthenticated(rightsOfPadlock()),
                       lockButtonStatus ? InfoSheet::Press::GivesUp : InfoSheet::Press::Gains);
}

void InfoSheetController::LockButton_clicked()
{
    InfoSheet &shown = sheet();
    if (shown.isBusy())
        return;
    QString note;
    shown.setBusy(true);
    if (lockButtonStatus) {
        authentication.deauthenticate();
        lockButtonStatus = false;
        if (_facts)
            showChoices(*_facts); // what was changed may need the rights
    } else {
        lockButtonStatus = authentication.authenticate(rightsOfPadlock());
        if (!lockButtonStatus)
            note = localized("The administrator's rights were not granted.");
    }
    shown.setBusy(false);
    shown.showNote(note);
    showPadlock();
    setFileInformations(currentFullPath);
}

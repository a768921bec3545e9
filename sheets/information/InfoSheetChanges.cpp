#include "base/Localized.h"
#include "files/FileName.h"
#include "files/WaitForWrite.h"
#include "operations/Authentication.h"
#include "operations/Twinleaf.h"
#include "platform/Alerts.h"
#include "sheets/information/AccountBox.h"
#include "sheets/information/InfoSheet.h"
#include "sheets/information/InfoSheetController.h"

#include <QLineEdit>

#include <algorithm>
#include <cerrno>

// What OK does. A control that the person did not touch writes nothing, and its step counts as one
// that succeeded.

using namespace Qt::StringLiterals;

void InfoSheetController::endInfoSheet()
{
    InfoSheet &shown = sheet();
    if (shown.isBusy() || !areAccountsKnown())
        return;
    // What was pressed before the item was there has changed nothing, and must not look done.
    if (_itemReading.anyWanted()) {
        _saidReading = true;
        return shown.showNote(localized("The item is still being read."));
    }
    _written = false;
    shown.setBusy(true);
    const bool done = changeAll();
    shown.setBusy(false);
    if (done)
        return shown.accept();
    setFileInformations(currentFullPath);
}

bool InfoSheetController::areAccountsKnown()
{
    InfoSheet &shown = sheet();
    for (const auto &[box, complaint] :
         { std::pair(shown.Owner, QT_TRANSLATE_NOOP("Twinleaf", "There is no user '%@'.")),
           { shown.Group, QT_TRANSLATE_NOOP("Twinleaf", "There is no group '%@'.") } }) {
        if (box->takeTyped())
            continue;
        shown.showNote(filled(localized(complaint), box->currentText().trimmed()));
        box->setFocus();
        box->lineEdit()->selectAll();
        return false;
    }
    return true;
}

bool InfoSheetController::changeAll()
{
    if (!_facts)
        return true; // nothing was known that could have been changed
    const Choices now = choices();
    if (now != _shown) {
        const auto why =
            waiting.forAnswer(currentFullPath, [path = currentFullPath, facts = *_facts] {
                return whyNotThatItem(path, facts);
            });
        sheet().showNote(why.value_or(localized("The item could not be reached.")));
        if (!why || !why->isEmpty())
            return false;
    }
    // Each is tried, whatever became of the one before.
    const bool application = changeLaunchApplication(now);
    const bool owner = changeOwnerAndGroup(now);
    const bool permissions = changePermissions(now);
    const bool lock = changeLockState(now);
    return application && owner && permissions && lock;
}

bool InfoSheetController::isOwnerMe()
{
    return sheet().Owner->title() == _facts->currentUser;
}

bool InfoSheetController::complain(const QString &failure, const QString &why)
{
    alerts.ask(Alert::failure(failure, FileName::shown(why)));
    return false;
}

// Of a step that does not say why itself: what is known of the item, and what else it is about.
bool InfoSheetController::complainOf(const QString &failure, const QString &subject)
{
    const auto why =
        waiting.forAnswer(currentFullPath, [held = _facts->held] { return whyNotChanged(*held); });
    return complain(failure, why && !why->isEmpty() ? *why : subject);
}

bool InfoSheetController::changeLaunchApplication(const Choices &now)
{
    if (!lockButtonStatus && !isOwnerMe())
        return true;
    const QString application = getCurrentLaunchApp();
    const bool writes = now.application != _shown.application;
    if (writes
        && (!twinleaf.isThere(application)
            || !twinleaf.setCreatorAndTypeCode(_facts->held->ownPath(), application)))
        return complainOf(localized("Cannot change launch application!"), application);
    _written = _written || writes;
    _changed = true;
    return true;
}

bool InfoSheetController::changeOwnerAndGroup(const Choices &now)
{
    static const auto program = u"/usr/sbin/chown"_s;
    if (!lockButtonStatus)
        return true;
    if (now.owner != _shown.owner || now.group != _shown.group) {
        struct Present {
            QString path;
            QString owner;
            QString group;
        };
        const auto present = waiting.forAnswer(currentFullPath, [held = _facts->held] {
            const FileStatus status = held->statusNow().value_or(held->status());
            // As numbers: a name need not lead back to the number that it is shown for.
            return Present { held->presentPath(), u'+' + QString::number(status.owner),
                             u'+' + QString::number(status.group) };
        });
        const auto failed = [this](const QString &why) {
            return complain(localized("Cannot set owner and group!"), why);
        };
        if (!present || present->path.isEmpty())
            return failed(localized("The item could not be reached."));
        if (!authentication.authenticate({ program }))
            return failed(localized("The administrator's rights were not granted."));
        // The half that was not touched is what the item has by now.
        const QString account = (now.owner != _shown.owner ? now.owner : present->owner) + u':'
            + (now.group != _shown.group ? now.group : present->group);
        if (!authentication.executeCommand(program, { account, present->path },
                                           _facts->status().identity))
            return complainOf(localized("Cannot set owner and group!"), present->path);
        _written = true;
    }
    _changed = true;
    return true;
}

bool InfoSheetController::changePermissions(const Choices &now)
{
    if (!lockButtonStatus && !isOwnerMe())
        return true;
    if (!lockButtonStatus && currentFileLocked) {
        if (now.permissions == _shown.permissions)
            return true;
        sheet().showNote(localized("While the item is locked its permissions stay as they are."));
        return false;
    }
    if (now.permissions != _shown.permissions) {
        const auto error = waitForWrite(
            waiting, currentFullPath,
            [=, shown = _shown.permissions, held = _facts->held](const std::atomic<bool> &givenUp) {
                const auto status = held->statusNow();
                if (!status)
                    return errno;
                // Kept: a class that was changed gets the bits that its control names, although of
                // a set-id or sticky item the control had shown those of the class before. The bits
                // of the others stay, and so do set-id and sticky.
                QString digits = QString::number(status->mode & 0777, 8).rightJustified(3, u'0');
                for (size_t place = 0; place < shown.size(); ++place)
                    if (now.permissions[place] != shown[place])
                        digits[qsizetype(place)] =
                            Permissions::stringToPermission(now.permissions[place]);
                if (givenUp)
                    return ECANCELED;
                errno = 0;
                return Permissions::setPosixPermissions(mode_t(Permissions::octalToDecimal(digits)),
                                                        held->ownPath())
                    ? 0
                    : std::max(errno, EPERM);
            });
        if (!error || *error != 0)
            return complain(localized("Cannot set permissions!"),
                            error ? QString::fromStdString(
                                std::error_code(*error, std::generic_category()).message())
                                  : localized("The item could not be reached."));
        _written = true;
    }
    _changed = true;
    return true;
}

bool InfoSheetController::changeLockState(const Choices &now)
{
    if ((!lockButtonStatus && !isOwnerMe()) || now.locked == _shown.locked)
        return true;
    if (!twinleaf.setLockState(_facts->held->ownPath(), now.locked))
        return complainOf(localized("Cannot set lock state!"), currentFullPath);
    _written = true;
    return true;
}

#include "operations/Permissions.h"

#include "base/Localized.h"
#include "files/AccountLookUp.h"
#include "files/FileName.h"
#include "files/HeldItem.h"
#include "files/ItemMarks.h"
#include "files/WaitForWrite.h"
#include "operations/ApplicationCodes.h"
#include "operations/Authentication.h"
#include "platform/Alerts.h"

#include <fcntl.h>
#include <grp.h>
#include <memory>
#include <pwd.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *Words[] = {
    QT_TRANSLATE_NOOP("Twinleaf", "No Access"),
    QT_TRANSLATE_NOOP("Twinleaf", "Execute only"),
    QT_TRANSLATE_NOOP("Twinleaf", "Write only"),
    QT_TRANSLATE_NOOP("Twinleaf", "Write & Execute"),
    QT_TRANSLATE_NOOP("Twinleaf", "Read only"),
    QT_TRANSLATE_NOOP("Twinleaf", "Read & Execute"),
    QT_TRANSLATE_NOOP("Twinleaf", "Read & Write"),
    QT_TRANSLATE_NOOP("Twinleaf", "Read & Write & Execute"),
};

constexpr mode_t SpecialBits = 07000; // set-id and sticky

std::shared_ptr<const HeldItem> held(const QString &path)
{
    std::error_code why;
    return HeldItem::at(path, Links::Follow, why);
}

// What a wait is said to be for.
QString placeOf(const QString &path)
{
    return path.startsWith(u"/proc/self/fd/") ? linkTarget(path).value_or(path) : path;
}

// A name of the user database, or a number, which is shown where there is none.
template <typename Entry>
std::optional<unsigned> numberOf(const QString &name,
                                 int (*byName)(const char *, Entry *, char *, size_t, Entry **),
                                 unsigned Entry::*number)
{
    std::optional<unsigned> found;
    lookUpAccount(byName, name.toUtf8().constData(),
                  [&](const Entry &entry) { found = entry.*number; });
    if (found)
        return found;
    bool isNumber = false;
    const unsigned value = name.toUInt(&isNumber);
    return isNumber && value != unsigned(-1) ? std::optional(value) : std::nullopt;
}

// Of "'APPL'" APPL; nothing of any other text.
QByteArray codeIn(const QString &quoted)
{
    constexpr qsizetype Length = 6;
    const bool isCode =
        quoted.size() == Length && quoted.startsWith(u'\'') && quoted.endsWith(u'\'');
    return isCode ? quoted.sliced(1, Length - 2).toUtf8() : QByteArray();
}

} // namespace

Permissions::Permissions(Alerts &alertsToAsk, Authentication &rights, Waiting &waitingToUse)
    : alerts(alertsToAsk)
    , authentication(rights)
    , waiting(waitingToUse)
{
}

std::optional<QString> Permissions::permissionToString(QChar digit)
{
    if (digit < u'0' || digit > u'7')
        return std::nullopt;
    return localized(Words[digit.unicode() - u'0']);
}

QChar Permissions::stringToPermission(const QString &words)
{
    for (char16_t digit = u'0'; digit <= u'7'; ++digit)
        if (words == permissionToString(digit))
            return digit;
    return u' ';
}

int Permissions::octalToDecimal(const QString &digits)
{
    quint32 value = 0;
    for (const QChar digit : digits)
        value = value * 8 + quint16(digit.unicode() - u'0');
    return int(value);
}

bool Permissions::setPosixPermissions(mode_t permissions, const QString &path)
{
    const auto item = held(path);
    if (!item)
        return false;
    const mode_t now = item->status().mode;
    const mode_t mode = permissions | (now & SpecialBits);
    return mode == now || ::chmod(FileName::toBytes(item->ownPath()), mode) == 0;
}

bool Permissions::setOwnerAndGroup(const QString &path, const QString &owner, const QString &group)
{
    const auto item = held(path);
    const auto newOwner = numberOf(owner, &::getpwnam_r, &passwd::pw_uid);
    const auto newGroup = numberOf(group, &::getgrnam_r, &::group::gr_gid);
    if (!item || !newOwner || !newGroup)
        return false;
    const FileStatus &before = item->status();
    if (newOwner == before.owner && newGroup == before.group)
        return true;
    constexpr uid_t Same = -1;
    if (::fchownat(item->number(), "", newOwner == before.owner ? Same : *newOwner,
                   newGroup == before.group ? Same : *newGroup, AT_EMPTY_PATH)
        != 0)
        return false;
    // The kernel takes the set-id bits of a program.
    const auto after = item->statusNow();
    return (after && after->mode == before.mode)
        || ::chmod(FileName::toBytes(item->ownPath()), before.mode) == 0;
}

bool Permissions::setLockState(const QString &path, bool locked) const
{
    static const auto program = u"/usr/bin/chattr"_s;
    struct Found {
        std::shared_ptr<const HeldItem> item;
        QString place;
        ItemMarks::Lock lock;
    };
    const auto found = waiting.forAnswer(placeOf(path), [path]() -> std::optional<Found> {
        const auto item = held(path);
        if (!item)
            return std::nullopt;
        return Found { item, item->presentPath(), ItemMarks::lockOf(item->number()) };
    });
    if (!found || !*found)
        return false;
    const auto &[item, place, lock] = **found;
    const auto setMarked = [&, held = item] {
        const auto error =
            waitForWrite(waiting, placeOf(path), [held, locked](const std::atomic<bool> &givenUp) {
                return givenUp ? std::make_error_code(std::errc::operation_canceled)
                               : ItemMarks::setMarked(held->number(), locked);
            });
        return error && !*error;
    };
    const auto setImmutable = [&, held = item, at = place](const QString &flag) {
        return !at.isEmpty()
            && authentication.executeCommand(program, { flag, at }, held->status().identity);
    };
    if (!locked) {
        // First of all: nothing can be written to an item that has the file system's own.
        if (lock.immutable && !setImmutable(u"-i"_s))
            return false;
        return !lock.marked || setMarked();
    }
    if (lock.immutable || lock.marked)
        return true;
    return lock.canBeImmutable && authentication.isAuthenticated({ program })
        ? setImmutable(u"+i"_s)
        : setMarked();
}

bool Permissions::setCreatorAndTypeCode(const QString &path, const QString &application) const
{
    if (!application.startsWith(u'/'))
        return true;
    const auto item = waiting.forAnswer(placeOf(path), [path] { return held(path); });
    if (!item || !*item)
        return false;
    const ItemMarks::Codes codes { codeIn(getBundleOSType(application)),
                                   codeIn(getBundleSignature(application)) };
    const auto error = waitForWrite(
        waiting, placeOf(path), [item = *item, codes](const std::atomic<bool> &givenUp) {
            return givenUp ? std::make_error_code(std::errc::operation_canceled)
                           : ItemMarks::setCodes(item->number(), codes);
        });
    return error && !*error;
}

QString Permissions::getBundleOSType(const QString &bundle) const
{
    const auto type =
        waiting.forAnswer(bundle, [bundle] { return ApplicationCodes::documentType(bundle); });
    return told(type.value_or(std::nullopt),
                QT_TRANSLATE_NOOP("Twinleaf", "Cannot read bundle OS type of launch application!"));
}

QString Permissions::getBundleSignature(const QString &bundle) const
{
    const auto signature =
        waiting.forAnswer(bundle, [bundle] { return ApplicationCodes::signature(bundle); });
    return told(
        signature.value_or(std::nullopt),
        QT_TRANSLATE_NOOP("Twinleaf", "Cannot read bundle signature of launch application!"));
}

QString Permissions::told(const std::optional<QString> &code, const char *complaint) const
{
    if (!code)
        alerts.ask(Alert::error(localized(complaint)));
    // Kept: what is missing reads like this, and is no code for anybody.
    return u'\'' + code.value_or(u"(null)"_s) + u'\'';
}

#include "sheets/information/ItemFacts.h"

#include "base/Localized.h"
#include "model/FileQueries.h"
#include "sheets/information/Accounts.h"

#include <cerrno>

namespace {

QString targetOf(const QString &path, const FileQueries &queries)
{
    if (queries.isAlias(path))
        return queries.resolveAliasPath(path);
    return queries.getPathContentOfSymbolicLinkAtPath(path);
}

} // namespace

ItemFacts readItemFacts(const QString &path, const FileQueries &queries) // worker thread
{
    ItemFacts facts;
    const auto itself = fileStatus(path, Links::NoFollow);
    const bool isLink = itself && itself->kind == FileKind::Symlink;
    facts.held = HeldItem::at(path, queries.linksAsSet(), facts.why);
    if (!facts.held && isLink) {
        facts.isDangling = true;
        facts.held = HeldItem::at(path, Links::NoFollow, facts.why);
    }
    if (!facts.held)
        return facts;
    facts.throughLink = isLink && facts.status().kind != FileKind::Symlink;
    facts.isApplication = queries.isApplication(path);
    facts.isLocked = facts.held->isLocked();
    facts.label = queries.finderLabelColorOfPath(path);
    facts.owner = userName(facts.status().owner);
    facts.group = groupName(facts.status().group);
    facts.currentUser = currentUserName();
    facts.target = targetOf(path, queries);
    facts.type = queries.getFileType(path);
    facts.application = queries.getApplicationForFile(path);
    return facts;
}

QString whyNotThatItem(const QString &path, const ItemFacts &facts) // worker thread
{
    const QString gone = localized("The item is no longer there.");
    if (facts.throughLink) { // it is written to, whatever the link leads to by now
        const auto now = facts.held->statusNow();
        return now && now->links > 0 ? QString() : gone;
    }
    const auto now = fileStatus(path, Links::NoFollow);
    if (now)
        return now->identity == facts.status().identity
            ? QString()
            : localized("Another item has taken its place. Nothing was changed.");
    return errno == ENOENT || errno == ENOTDIR
        ? gone
        : QString::fromStdString(std::error_code(errno, std::generic_category()).message());
}

QString whyNotChanged(const HeldItem &item) // worker thread
{
    if (item.isOnReadOnlyDisk())
        return QString::fromStdString(
            std::make_error_code(std::errc::read_only_file_system).message());
    const auto status = item.statusNow();
    return status && status->immutable ? localized("The item is locked.") : QString();
}

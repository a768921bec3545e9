#include "base/Localized.h"
#include "files/PathText.h"
#include "operations/Twinleaf.h"
#include "sheets/information/AccountBox.h"
#include "sheets/information/InfoSheet.h"
#include "sheets/information/InfoSheetController.h"
#include "sheets/information/TextField.h"
#include "widgets/FileKinds.h"

#include <QCheckBox>
#include <QLocale>

#include <utility>

// What the controls show of an item.

using namespace Qt::StringLiterals;

namespace {

// With the bytes in groups of three, whatever the person's own language does.
QString sizeText(qint64 bytes)
{
    QLocale grouping = QLocale::c();
    grouping.setNumberOptions(QLocale::DefaultNumberOptions);
    return SizeText::getCalcFileSize(bytes) + u" ("_s + grouping.toString(bytes) + u" Bytes)"_s;
}

QDateTime timeOf(qint64 nanoseconds)
{
    return QDateTime::fromMSecsSinceEpoch(nanoseconds / 1'000'000);
}

} // namespace

// What the request says; the rest is empty until it is read.
void InfoSheetController::showKnown()
{
    _facts.reset();
    InfoSheet &shown = sheet();
    shown.Name->showText(PathText::lastComponent(currentFullPath));
    shown.Path->showText(PathText::parent(twinleaf.getLocalizedPath(currentFullPath)));
    for (TextField *field :
         { shown.Type, shown.FileSize, shown.Target, shown.Created, shown.Modified })
        field->showText({});
    shown.showIcon({});
    shown.showNameColor({});
    shown.showNote({});
    shown.OpenWith->clear();
    launchApplications.clear();
    for (AccountBox *account : { shown.Owner, shown.Group })
        account->setTitle({});
    for (QComboBox *box : shown.permissions())
        box->setCurrentIndex(-1);
    shown.LockState->setChecked(false);
    setWidgets({});
    _shown = choices();
}

void InfoSheetController::showItem(const ItemFacts &facts)
{
    InfoSheet &shown = sheet();
    if (std::exchange(_saidReading, false))
        shown.showNote({});
    showPadlock();
    if (!facts.held) {
        _facts.reset();
        setWidgets({});
        const bool isGone = facts.why == std::errc::no_such_file_or_directory
            || facts.why == std::errc::not_a_directory;
        shown.showNote(isGone ? localized("The item is no longer there.")
                              : filled(localized("The item cannot be read: %@"),
                                       QString::fromStdString(facts.why.message())));
        return;
    }
    const bool isSame = _facts && facts.status().identity == _facts->status().identity;
    if (_facts && !isSame)
        shown.showNote(_written
                           ? localized("Another item has taken its place.")
                           : localized("Another item has taken its place. Nothing was changed."));
    const Choices before = _shown;
    const Choices chosen = choices();
    const QString application = getCurrentLaunchApp();
    _facts = facts;
    currentFileLocked = facts.isLocked;
    showFacts(facts);
    showChoices(facts);
    setWidgets(facts.owner);
    _shown = choices();
    // What the person has changed in the item stays so; what was written since is its own by now.
    if (isSame)
        choose(chosen, before, application);
    showSizeOf(facts);
}

void InfoSheetController::showFacts(const ItemFacts &facts)
{
    InfoSheet &shown = sheet();
    const FileStatus &status = facts.status();
    const QString name = PathText::lastComponent(currentFullPath);
    shown.showIcon(kinds.icon(name, status.kind, facts.isDangling));
    shown.Name->showText(facts.isApplication ? PathText::withoutExtension(name) : name);
    shown.showNameColor(facts.label == 0 ? QColor() : FileQueries::finderLabelColor(facts.label));
    shown.Target->showText(facts.target);
    shown.Type->showText(facts.type);
    shown.Created->showText(
        status.created ? twinleaf.getLocalizedDateAndTime(timeOf(*status.created)) : u"--"_s);
    shown.Modified->showText(twinleaf.getLocalizedDateAndTime(timeOf(status.modified)));
}

void InfoSheetController::showChoices(const ItemFacts &facts)
{
    InfoSheet &shown = sheet();
    shown.OpenWith->clear();
    launchApplications.clear();
    addItemForLaunchApp(facts.application);
    addItemForLaunchApp(localized("Other..."));
    shown.OpenWith->setCurrentIndex(0);
    shown.Owner->setTitle(facts.owner);
    shown.Group->setTitle(facts.group);
    // Kept: of four digits the first three are shown, so those of a set-id or sticky item stand
    // one control too far down. Below 0100 there are three all the same.
    const QString digits = QString::number(facts.status().mode, 8).rightJustified(3, u'0');
    for (size_t place = 0; place < shown.permissions().size(); ++place)
        shown.permissions()[place]->setCurrentText(
            Permissions::permissionToString(digits[qsizetype(place)]).value_or(QString()));
    shown.LockState->setChecked(currentFileLocked);
}

void InfoSheetController::showSizeOf(const ItemFacts &facts)
{
    _folderCount.stop();
    if (facts.status().kind != FileKind::Directory)
        return showSize(facts.status().size, Size::Whole);
    sheet().FileSize->showText(localized("Calculating..."));
    _folderCount.start(facts.held);
}

void InfoSheetController::showSize(qint64 bytes, Size size)
{
    const QString goesOn = size == Size::SoFar ? u" \u2026"_s : QString();
    sheet().FileSize->showText(sizeText(bytes) + goesOn);
}

InfoSheetController::Choices InfoSheetController::choices()
{
    const InfoSheet &now = sheet();
    Choices choices { now.OpenWith->currentText(),
                      now.Owner->title(),
                      now.Group->title(),
                      {},
                      now.LockState->isChecked() };
    for (size_t place = 0; place < choices.permissions.size(); ++place)
        choices.permissions[place] = now.permissions()[place]->currentText();
    return choices;
}

// Has the controls say again what differs between the two.
void InfoSheetController::choose(const Choices &chosen, const Choices &before,
                                 const QString &application)
{
    InfoSheet &shown = sheet();
    if (chosen.application != before.application) {
        addItemForLaunchApp(application);
        shown.OpenWith->setCurrentText(chosen.application);
    }
    if (chosen.owner != before.owner)
        shown.Owner->setTitle(chosen.owner);
    if (chosen.group != before.group)
        shown.Group->setTitle(chosen.group);
    for (size_t place = 0; place < chosen.permissions.size(); ++place)
        if (chosen.permissions[place] != before.permissions[place])
            shown.permissions()[place]->setCurrentText(chosen.permissions[place]);
    if (chosen.locked != before.locked)
        shown.LockState->setChecked(chosen.locked);
}

void InfoSheetController::setWidgets(const QString &owner)
{
    const bool isAll = _facts && lockButtonStatus;
    const bool isMine = _facts && owner == _facts->currentUser;
    InfoSheet &shown = sheet();
    shown.Owner->setEnabled(isAll);
    shown.Group->setEnabled(isAll);
    for (QWidget *control :
         std::initializer_list<QWidget *> { shown.OpenWith, shown.OwnerPermissions,
                                            shown.GroupPermissions, shown.Other, shown.LockState })
        control->setEnabled(isAll || isMine);
}

#include "commands/SelectionCommands.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "model/FileQueries.h"
#include "model/Launching.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "settings/CalendarFormat.h"
#include "settings/UserDefaults.h"

#include <algorithm>
#include <iterator>
#include <numeric>

using namespace Qt::StringLiterals;

SelectionCommands::SelectionCommands(PaneWindow &paneWindow, MessageBus &messages,
                                     const MainModel &model, const FileQueries &fileQueries,
                                     Launching &launcher, Waiting &asker,
                                     const UserDefaults &settings, AskForPattern ask)
    : window(paneWindow)
    , bus(messages)
    , mainModel(model)
    , queries(fileQueries)
    , launching(launcher)
    , waiting(asker)
    , defaults(settings)
    , _askForPattern(std::move(ask))
{
    bus.subscribe(SpotlightSearchResultClicked, this,
                  &SelectionCommands::spotlightSearchResultClicked);
    bus.subscribe(LetterPressed, this, &SelectionCommands::letterPressed);
}

SelectionCommands::~SelectionCommands()
{
    bus.unsubscribe(this);
}

RowMatching::DateToText SelectionCommands::dateText() const
{
    return [format = mainModel.dateFormat(), locale = defaults.dictionaryRepresentation()](
               const QDateTime &date) { return CalendarFormat::text(date, format, locale); };
}

void SelectionCommands::show(PaneTable &list, int row)
{
    if (row < 0)
        return; // nothing found: the selection stays
    list.goToRow(row);
}

void SelectionCommands::letterPressed(const TypedLetter &typed)
{
    if (PaneTable *list = window.getFirstResponderTableView())
        show(*list,
             RowMatching::nextLetterItem(typed.characters, mainModel.rows(list->side()),
                                         list->rowOfKeyboard()));
}

void SelectionCommands::selectAllClicked()
{
    PaneTable *list = window.getFirstResponderTableView();
    if (!list)
        return;
    RowSet all(list->rowCount());
    std::iota(all.begin(), all.end(), 0);
    list->selectRows(all);
}

void SelectionCommands::selectSameClicked()
{
    PaneTable *list = window.getFirstResponderTableView();
    if (!list)
        return;
    const Listing rows = mainModel.rows(list->side());
    const Listing others = mainModel.rows(otherSide(list->side()));
    list->selectRows(waiting.forRows(rows.size() + others.size(), localized("Comparing..."),
                                     [=] { return RowMatching::rowsOfSameName(rows, others); }));
}

void SelectionCommands::compareFoldersClicked()
{
    PaneTable *list = window.getFirstResponderTableView();
    PaneTable *other = window.getOtherResponderTableView();
    if (!list || !other)
        return;
    const Listing rows = mainModel.rows(list->side());
    const Listing others = mainModel.rows(other->side());
    const auto equal = waiting.forRows(rows.size() + others.size(), localized("Comparing..."),
                                       [=] { return RowMatching::equalRows(rows, others); });
    list->selectRows(equal.here);
    other->selectRows(equal.there);
}

void SelectionCommands::groupSelectClicked()
{
    group(true);
}

void SelectionCommands::groupDeselectClicked()
{
    group(false);
}

void SelectionCommands::group(bool select)
{
    const ExpandSelection request =
        _askForPattern(select ? localized("Group selection") : localized("Group deselection"));
    PaneTable *list = window.getFirstResponderTableView();
    if (request.text.isEmpty() || !list)
        return;
    const RowSet matching =
        waiting.forRows(mainModel.rows(list->side()).size(), localized("Searching..."),
                        [request, rows = mainModel.rows(list->side()), dates = dateText()] {
                            return RowMatching::matchingRows(rows, request, dates);
                        });
    const RowSet selected = list->selectedRows();
    RowSet result;
    if (select)
        std::ranges::set_union(selected, matching, std::back_inserter(result));
    else
        std::ranges::set_difference(selected, matching, std::back_inserter(result));
    list->selectRows(result);
}

void SelectionCommands::searchClicked()
{
    _globalSearchString = window.getStringFromInputSheet(localized("Please enter search term(s):"),
                                                         _globalSearchString);
    search();
}

void SelectionCommands::searchNextClicked()
{
    if (_globalSearchString.isEmpty())
        searchClicked();
    else
        search();
}

void SelectionCommands::search()
{
    PaneTable *list = window.getFirstResponderTableView();
    if (_globalSearchString.isEmpty() || !list)
        return;
    const Listing rows = mainModel.rows(list->side());
    const int found = waiting.forRows(
        rows.size(), localized("Searching..."),
        [rows, term = _globalSearchString, from = list->rowOfKeyboard(), dates = dateText()] {
            return RowMatching::nextFoundItem(term, rows, from, dates);
        });
    if (found < 0)
        window.showNotice(
            filled(localized("'%@' was not found"), FileName::shown(_globalSearchString)));
    show(*list, found);
}

void SelectionCommands::spotlightSearchClicked()
{
    bus.post(SpotlightSearch);
}

void SelectionCommands::spotlightSearchMenuItemClicked()
{
    const PaneTable *list = window.getFirstResponderTableView();
    if (list && mainModel.rows(list->side()).holds(list->selectedRow()))
        bus.post(SpotlightSearch, { mainModel.rows(list->side())[list->selectedRow()].name() });
}

void SelectionCommands::spotlightSearchResultClicked(const ChosenResult &result)
{
    const auto item = queries.lookAtOpened(result.path);
    if (!item)
        return; // given up
    const QString extension = PathText::extension(result.path);
    if (item->isApplication)
        launching.launchApp(result.path);
    else if (extension == u"pkg"_s || extension == u"mpkg"_s)
        launching.launchInstallerPackage(result.path);
    else if (!item->isDirectory)
        launching.launchFileURLs({ result.path });
    else if (const PaneTable *list = window.getFirstResponderTableView())
        mainModel.showFolder(list->side(), { .path = result.path });
}

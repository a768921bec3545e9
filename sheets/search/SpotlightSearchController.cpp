#include "sheets/search/SpotlightSearchController.h"

#include "base/Localized.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "platform/Alerts.h"
#include "platform/OpenDialogs.h"
#include "platform/Workspace.h"
#include "sheets/search/LanguageWidths.h"
#include "sheets/search/SearchResultTable.h"
#include "sheets/search/SpotlightSearchSheet.h"
#include "widgets/PathIcons.h"

#include <QLineEdit>
#include <QScopedValueRollback>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

// A pause in typing; what was typed is then searched for.
constexpr std::chrono::milliseconds Pause { 200 };

} // namespace

SpotlightSearchController::SpotlightSearchController(const Services &services, const Looks &looks,
                                                     QWidget *window)
    : _services(services)
    , mainWindow(window)
    , icons(looks.icons)
    , _results(looks.queries, looks.kinds, looks.icons)
    , _details(services.metadataIndex)
{
    _typing.setSingleShot(true);
    _typing.setInterval(Pause);
    _typing.callOnTimeout(this, &SpotlightSearchController::startSearch);
    services.bus.subscribe(SpotlightSearch, this,
                           &SpotlightSearchController::showSpotlightSearchSheet);
    services.bus.subscribe(DirectoryChanged, this, &SpotlightSearchController::paneLedAway);
}

SpotlightSearchController::~SpotlightSearchController()
{
    _services.bus.unsubscribe(this);
}

void SpotlightSearchController::makeSheet()
{
    const auto width = [this](int english, int german) {
        return columnWidthForLanguage(_services.defaults, english, german);
    };
    sheet = std::make_unique<SpotlightSearchSheet>(
        _results, _details.rows(), _options,
        SpotlightSearchSheet::Widths {
            .name = width(200, 261), .path = width(362, 428), .value = width(355, 457) },
        mainWindow);
    using Controller = SpotlightSearchController;
    using Shown = SpotlightSearchSheet;
    connect(sheet.get(), &Shown::searchAsked, this, &Controller::startSearch);
    connect(sheet.get(), &Shown::textTyped, &_typing, qOverload<>(&QTimer::start));
    connect(sheet.get(), &Shown::optionsChanged, this, [this] {
        _options = sheet->options();
        startSearch();
    });
    connect(sheet.get(), &Shown::systemSearchAsked, this,
            &Controller::showSpotlightSearchWindowClicked);
    connect(sheet.get(), &Shown::tabViewDidSelect, this, &Controller::tabViewDidSelectTabViewItem);
    connect(sheet->resultTable, &SearchResultTable::doubleClicked, this,
            &Controller::tableViewDoubleClicked);
    connect(sheet->resultTable, &SearchResultTable::openAsked, this,
            &Controller::tableViewDoubleClicked);
    connect(sheet->resultTable, &SearchResultTable::folderAsked, this, [this] {
        if (const QString path = selectedItem(); !path.isEmpty()) {
            endSpotlightSearchSheet();
            Q_EMIT folderAsked(path);
        }
    });
    connect(&icons, &PathIcons::arrived, sheet->resultTable->viewport(),
            qOverload<>(&QWidget::update));
    connect(&_details, &SpotlightSearchDetailsController::arrived, sheet.get(),
            [this] { showDetailsPlaceholder(); });
    showDetailsPlaceholder();
}

void SpotlightSearchController::setOption(bool SearchOptions::*option, bool on)
{
    _options.*option = on;
    if (sheet)
        sheet->setOptions(_options);
}

void SpotlightSearchController::showSpotlightSearchSheet(const SearchFor &search)
{
    const OpenDialogs::Guard guard(_services.openDialogs);
    if (!sheet)
        makeSheet();
    if (search.text) {
        sheet->searchField->setText(*search.text);
        startSearch();
    }
    if (sheet->isVisible())
        return;
    if (_query)
        _query->setShown(true);
    sheet->run();
    _typing.stop();
    if (_query)
        _query->setShown(false);
}

void SpotlightSearchController::endSpotlightSearchSheet()
{
    if (sheet)
        sheet->done(1);
}

void SpotlightSearchController::startSearch()
{
    _typing.stop();
    const QString text = sheet->searchField->text();
    if (text.isEmpty())
        return;
    sheet->showSearching(true);
    sheet->showResults();
    killQuery();
    icons.forget(); // what stands there may have changed since
    _finished = false;
    _query = _services.metadataIndex.execute({ searchQuery(text, _options), text });
    connect(_query.get(), &MetadataQuery::queryProgress, this,
            &SpotlightSearchController::updateData);
    connect(_query.get(), &MetadataQuery::queryDidUpdate, this,
            &SpotlightSearchController::updateData);
    connect(_query.get(), &MetadataQuery::queryDidFinish, this,
            &SpotlightSearchController::finishUpdate);
    _results.setQuery(_query.get());
}

void SpotlightSearchController::killQuery()
{
    _results.setQuery(nullptr);
    _query.reset();
    _details.setCurrentItem({});
    sheet->resultTable->setPlaceholder({});
}

void SpotlightSearchController::updateData()
{
    sheet->resultTable->reload();
    const bool isComplete = _query->isComplete();
    const QString status =
        localized("Found %d items").replace("%d"_L1, QString::number(_query->resultCount()));
    QString note;
    if (_query->isCut())
        note = localized("There are more: the list is cut here.");
    else if (!isComplete)
        note = localized("Not complete yet: the index is being made.");
    sheet->showStatus(status, note);
    if (_finished)
        sheet->resultTable->setPlaceholder(isComplete ? localized("Nothing was found.")
                                                      : localized("Nothing was found yet."));
}

void SpotlightSearchController::finishUpdate()
{
    _finished = true;
    updateData();
    sheet->showSearching(false);
}

QString SpotlightSearchController::selectedItem() const
{
    return sheet ? sheet->resultTable->selectedPath() : QString();
}

void SpotlightSearchController::tableViewDoubleClicked()
{
    const QString path = selectedItem();
    if (path.isEmpty())
        return;
    const QScopedValueRollback choosing(_choosing, true);
    _services.bus.post(SpotlightSearchResultClicked, { path });
}

// Who chose a folder wants to be there; a file opens beside the sheet, which stays for the next
// one.
void SpotlightSearchController::paneLedAway(Side, const FolderChange &)
{
    if (_choosing)
        endSpotlightSearchSheet();
}

void SpotlightSearchController::tabViewDidSelectTabViewItem(const QString &identifier)
{
    if (identifier == SpotlightSearchSheet::DetailsIdentifier)
        _details.setCurrentItem(selectedItem());
    showDetailsPlaceholder();
}

void SpotlightSearchController::showDetailsPlaceholder()
{
    if (_details.currentItem().isEmpty())
        sheet->setDetailsPlaceholder(localized("No result is selected."));
    else if (!_details.isReading() && _details.rows().rowCount() == 0)
        sheet->setDetailsPlaceholder(localized("Nothing is known of it."));
    else
        sheet->setDetailsPlaceholder({});
}

void SpotlightSearchController::showSpotlightSearchWindowClicked()
{
    const QString text = sheet->searchField->text();
    if (text.isEmpty())
        return;
    const auto shown = _services.waiting.forAnswer(
        PathText::homeFolder(),
        [text, workspace = &_services.workspace] { return workspace->showSearchWindow(text); });
    if (!shown.value_or(false))
        _services.alerts.ask(Alert::failure(
            localized("Spotlight search failed!"),
            localized("No search program of the desktop is installed, or it could not be started."),
            localized("Ok")));
}

bool SpotlightSearchController::end(QDeadlineTimer deadline)
{
    return _details.end(deadline);
}

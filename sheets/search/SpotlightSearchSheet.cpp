#include "sheets/search/SpotlightSearchSheet.h"

#include "base/Localized.h"
#include "sheets/search/SearchResultModel.h"
#include "sheets/search/SearchResultTable.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/ElidedLabel.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int NameWidth = 220; // pixels, where the language has none
constexpr int PathWidth = 380;
constexpr int ShownRows = 16;

} // namespace

SpotlightSearchSheet::SpotlightSearchSheet(SearchResultModel &results, QAbstractItemModel &details,
                                           const SearchOptions &options, const Widths &widths,
                                           QWidget *mainWindow)
    : Sheet(mainWindow)
    , searchField(new QLineEdit(this))
    , resultTable(new SearchResultTable(results, this))
    , _pages(new QTabWidget(this))
    , _details(new QTableView(this))
    , _detailsPlaceholder(new QLabel(_details))
    , _spinner(new ActivitySpinner(this))
    , _status(new ElidedLabel(Qt::ElideRight, this))
{
    setWindowTitle(localized("Search"));
    setAccessibleName(windowTitle());
    layout()->setSizeConstraint(QLayout::SetDefaultConstraint); // as large as the person likes
    setSizeGripEnabled(true);
    addField();
    addOptions();
    setOptions(options);
    addPages(details, widths);
    addState();
    QPushButton *done = addButton(localized("Done"));
    done->setDefault(false);
    done->setAutoDefault(false);
    connect(done, &QPushButton::clicked, this, &QDialog::accept);
}

void SpotlightSearchSheet::addField()
{
    auto *line = new QHBoxLayout;
    auto *label = new QLabel(marked(localized("Search for:")), this);
    label->setBuddy(searchField);
    searchField->setAccessibleName(localized("Search for:"));
    searchField->setClearButtonEnabled(true);
    searchField->installEventFilter(this);
    const auto newButton = [this](const QString &text) {
        auto *button = new QPushButton(marked(text), this);
        button->setAccessibleName(text);
        button->setAutoDefault(false);
        return button;
    };
    QPushButton *search = newButton(localized("Start search"));
    QPushButton *system = newButton(localized("Search of the desktop..."));
    line->addWidget(label);
    line->addWidget(searchField, 1);
    line->addWidget(search);
    line->addWidget(system);
    rows().addLayout(line);
    connect(searchField, &QLineEdit::textEdited, this, &SpotlightSearchSheet::textTyped);
    connect(search, &QPushButton::clicked, this, &SpotlightSearchSheet::searchAsked);
    connect(system, &QPushButton::clicked, this, &SpotlightSearchSheet::systemSearchAsked);
}

void SpotlightSearchSheet::addOptions()
{
    auto *line = new QHBoxLayout;
    const auto newBox = [this, line](const QString &text) {
        auto *box = new QCheckBox(marked(text), this);
        box->setAccessibleName(text);
        line->addWidget(box);
        connect(box, &QCheckBox::clicked, this, &SpotlightSearchSheet::optionsChanged);
        return box;
    };
    _searchContent = newBox(localized("Search content"));
    _ignoreCase = newBox(localized("Ignore case"));
    _ignoreMarks = newBox(localized("Ignore accents"));
    _wholeWords = newBox(localized("Whole words"));
    line->addStretch();
    rows().addLayout(line);
}

void SpotlightSearchSheet::addPages(QAbstractItemModel &details, const Widths &widths)
{
    using Model = SearchResultModel;
    resultTable->setAccessibleName(localized("Results"));
    const int name = widths.name > 0 ? widths.name : NameWidth;
    const int path = widths.path > 0 ? widths.path : PathWidth;
    resultTable->setColumnWidth(Model::NameColumn, name);
    resultTable->setColumnWidth(Model::PathColumn, path);
    const int width = resultTable->columnWidth(Model::IconColumn) + name + path;

    _details->setModel(&details);
    _details->setAccessibleName(localized("Details"));
    _details->setSelectionBehavior(QAbstractItemView::SelectRows);
    _details->setSelectionMode(QAbstractItemView::SingleSelection);
    _details->setShowGrid(false);
    _details->setTabKeyNavigation(false);
    _details->setWordWrap(false);
    _details->setTextElideMode(Qt::ElideRight);
    _details->verticalHeader()->setDefaultSectionSize(
        resultTable->verticalHeader()->defaultSectionSize());
    _details->verticalHeader()->hide();
    _details->horizontalHeader()->setHighlightSections(false);
    _details->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    _details->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch); // as the results
    _details->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    _details->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    _details->setColumnWidth(0, width - (widths.value > 0 ? widths.value : path));
    auto *centered = new QVBoxLayout(_details->viewport());
    centered->addWidget(_detailsPlaceholder);
    _detailsPlaceholder->setAlignment(Qt::AlignCenter);
    _detailsPlaceholder->setEnabled(false); // as a remark

    _pages->addTab(resultTable, marked(localized("Results")));
    _pages->addTab(_details, marked(localized("Details")));
    _details->setObjectName(DetailsIdentifier);
    resultTable->setObjectName("Results"_L1);
    const int frame = 2 * resultTable->frameWidth() + 40; // a scroll bar's, and the page's
    _pages->setMinimumHeight(6 * resultTable->verticalHeader()->defaultSectionSize());
    rows().addWidget(_pages, 1);
    resize(sizeHint().expandedTo(
        { width + frame, (ShownRows + 10) * resultTable->verticalHeader()->defaultSectionSize() }));
    connect(_pages, &QTabWidget::currentChanged, this,
            [this] { Q_EMIT tabViewDidSelect(selectedIdentifier()); });
    connect(resultTable, &SearchResultTable::leftUpwards, searchField,
            [this] { searchField->setFocus(); });
}

void SpotlightSearchSheet::addState()
{
    auto *state = new QWidget(this);
    auto *line = new QHBoxLayout(state);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(_spinner);
    line->addWidget(_status, 1);
    rows().addWidget(state);
}

QString SpotlightSearchSheet::selectedIdentifier() const
{
    return _pages->currentWidget()->objectName();
}

SearchOptions SpotlightSearchSheet::options() const
{
    return { .searchContent = _searchContent->isChecked(),
             .caseInsensitive = _ignoreCase->isChecked(),
             .insensitiveToDiacriticalMarks = _ignoreMarks->isChecked(),
             .wordBased = _wholeWords->isChecked() };
}

void SpotlightSearchSheet::setOptions(const SearchOptions &options)
{
    _searchContent->setChecked(options.searchContent);
    _ignoreCase->setChecked(options.caseInsensitive);
    _ignoreMarks->setChecked(options.insensitiveToDiacriticalMarks);
    _wholeWords->setChecked(options.wordBased);
}

void SpotlightSearchSheet::showSearching(bool searching)
{
    if (_searching == searching)
        return;
    _searching = searching;
    if (searching)
        _spinner->start();
    else
        _spinner->stop();
}

void SpotlightSearchSheet::showResults()
{
    _pages->setCurrentWidget(resultTable);
}

void SpotlightSearchSheet::showStatus(const QString &status, const QString &note)
{
    _status->setText(note.isEmpty() ? status : status + u"   "_s + note);
    _status->setAccessibleName(_status->text());
}

void SpotlightSearchSheet::setDetailsPlaceholder(const QString &text)
{
    _detailsPlaceholder->setText(text);
    _detailsPlaceholder->setVisible(!text.isEmpty());
}

void SpotlightSearchSheet::showEvent(QShowEvent *event)
{
    Sheet::showEvent(event);
    searchField->setFocus();
    searchField->selectAll();
}

bool SpotlightSearchSheet::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != searchField || event->type() != QEvent::KeyPress)
        return Sheet::eventFilter(watched, event);
    const auto &key = static_cast<const QKeyEvent &>(*event);
    if (key.modifiers() & ~Qt::KeypadModifier)
        return false;
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        Q_EMIT searchAsked();
        return true;
    }
    if (key.key() != Qt::Key_Down || resultTable->model()->rowCount() == 0)
        return false;
    showResults();
    resultTable->setFocus();
    if (resultTable->selectedRow() < 0)
        resultTable->selectRow(0);
    return true;
}

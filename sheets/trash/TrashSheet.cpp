#include "sheets/trash/TrashSheet.h"

#include "base/Localized.h"
#include "sheets/trash/TrashModel.h"
#include "sheets/trash/TrashTable.h"
#include "widgets/ElidedLabel.h"

#include <QHeaderView>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int Width = 760; // pixels
constexpr int ShownRows = 16;

} // namespace

TrashSheet::TrashSheet(TrashModel &model, QWidget *mainWindow)
    : Sheet(mainWindow)
    , table(new TrashTable(model, this))
    , _progress(new QProgressBar(this))
    , _state(new ElidedLabel(Qt::ElideRight, this))
    , _cancel(new QPushButton(marked(localized("Cancel")), this))
{
    setWindowTitle(localized("Trash"));
    setAccessibleName(windowTitle());
    layout()->setSizeConstraint(QLayout::SetDefaultConstraint); // as large as the person likes
    setSizeGripEnabled(true);
    rows().addWidget(table, 1);
    auto *below = new QWidget(this);
    auto *line = new QHBoxLayout(below);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(_state, 1);
    line->addWidget(_progress);
    line->addWidget(_cancel);
    _progress->setTextVisible(false);
    _progress->setAccessibleName(localized("Progress"));
    _cancel->setAccessibleName(localized("Cancel"));
    _cancel->setAutoDefault(false);
    rows().addWidget(below);
    below->setFixedHeight(_cancel->sizeHint().height());
    putBackButton = addButton(localized("Put Back"));
    removeButton = addButton(localized("Delete permanently..."));
    emptyButton = addButton(localized("Empty..."));
    QPushButton *close = addButton(localized("Close"));
    for (QPushButton *button : { removeButton, emptyButton, close })
        button->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &TrashSheet::reject);
    connect(_cancel, &QPushButton::clicked, this, &TrashSheet::cancelAsked);
    connect(table, &TrashTable::selectionAltered, this, &TrashSheet::enableButtons);
    connect(&model, &QAbstractItemModel::modelReset, this, &TrashSheet::enableButtons);
    showWorking(0);
    resize(sizeHint().expandedTo(
        { Width, (ShownRows + 6) * table->verticalHeader()->defaultSectionSize() }));
}

void TrashSheet::showWorking(qsizetype items)
{
    const bool hadKeyboard = _cancel->hasFocus();
    _working = items > 0;
    _progress->setRange(0, int(items));
    _progress->setValue(0);
    _progress->setVisible(_working);
    _cancel->setVisible(_working);
    _cancel->setEnabled(true);
    table->setEnabled(!_working);
    enableButtons();
    if (_working)
        _cancel->setFocus();
    else if (hadKeyboard)
        table->setFocus();
}

void TrashSheet::showProgress(qsizetype items)
{
    _progress->setValue(int(items));
}

void TrashSheet::showState(const QString &text)
{
    _state->setText(text);
    _state->setAccessibleName(text);
}

void TrashSheet::enableButtons()
{
    const bool any = !_working && table->selectionModel()->hasSelection();
    putBackButton->setEnabled(any);
    removeButton->setEnabled(any);
    emptyButton->setEnabled(!_working && table->model()->rowCount() > 0);
}

void TrashSheet::reject()
{
    if (!_working)
        return Sheet::reject();
    _cancel->setEnabled(false);
    Q_EMIT cancelAsked();
}

void TrashSheet::showEvent(QShowEvent *event)
{
    Sheet::showEvent(event);
    table->setFocus();
}

#include "window/QuickFilter.h"

#include "model/MainModel.h"
#include "views/TableViews.h"
#include "window/FilterBar.h"
#include "window/MainWindowLayout.h"

QuickFilter::QuickFilter(MainWindowLayout &layout, MainModel &model)
    : mainWindow(layout)
    , mainModel(model)
{
    for (const Side side : { Side::Left, Side::Right }) {
        const FilterField *field = mainWindow.filterBars[side]->field;
        connect(field, &FilterField::textChanged, this,
                [this, side](const QString &text) { mainModel.setFilter(side, text); });
        connect(field, &FilterField::ended, this, [this, side] { end(side); });
        connect(&mainWindow.fileList(side), &PaneTableView::allRowsRequested, this,
                [this, side] { end(side); });
    }
    connect(&mainModel, &MainModel::rowsChanged, this, &QuickFilter::follow);
}

void QuickFilter::show(Side side)
{
    FilterBar &bar = *mainWindow.filterBars[side];
    _folders[side] = mainModel.folder(side);
    bar.show();
    bar.field->setFocus(Qt::ShortcutFocusReason);
    bar.field->selectAll();
}

void QuickFilter::end(Side side)
{
    FilterBar &bar = *mainWindow.filterBars[side];
    // First, or the keyboard would go to whatever comes next.
    if (bar.field->hasFocus())
        mainWindow.fileList(side).setFocus();
    bar.hide();
    bar.field->clear();
}

void QuickFilter::follow(Side side)
{
    // Also when it was taken from the pane, to show what it left out.
    const bool isTyped = NameFilter(mainWindow.filterBars[side]->field->text()).isOn();
    if (mainModel.folder(side) != _folders[side] || (isTyped && !mainModel.isFiltered(side)))
        end(side);
}

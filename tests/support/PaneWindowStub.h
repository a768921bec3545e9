#pragma once

#include "files/PathText.h"
#include "model/PaneWindow.h"

// A pane's table without widgets: a selection and what was asked of it.
class PaneTableStub final : public PaneTable {
public:
    explicit PaneTableStub(Side side)
        : _side(side)
    {
    }

    Side side() const override { return _side; }
    int selectedRow() const override { return newest; }
    RowSet selectedRows() const override { return selected; }
    int rowCount() const override { return rows; }
    void selectRow(int row) override
    {
        newest = row >= 0 && row < rows ? row : -1;
        selected = newest < 0 ? RowSet {} : RowSet { newest };
    }
    void selectRows(const RowSet &set) override
    {
        selected = set;
        newest = set.isEmpty() ? -1 : set.last();
    }
    void scrollToRow(int row) override { scrolledTo = row; }
    ShownRows shownRows() const override { return { selected, newest, scrolledTo }; }
    void showRows(const ShownRows &shown) override
    {
        selectRows(shown.selected);
        scrolledTo = shown.first;
    }
    std::optional<Column> highlightedColumn() const override { return column; }
    void setSortIndicator(Column sorted, SortDirection towards) override
    {
        column = sorted;
        direction = towards;
    }
    void redraw() override { ++redraws; }

    int rows = 0;
    int newest = -1;
    RowSet selected;
    int scrolledTo = -1;
    std::optional<Column> column;
    std::optional<SortDirection> direction;
    int redraws = 0;

private:
    Side _side;
};

// A main window without widgets: two paths, a focus and the next typed text.
class PaneWindowStub : public PaneWindow {
public:
    PaneTable &getTableView(Side side) override { return tables[side]; }
    PaneTable *getFirstResponderTableView() override { return focus ? &tables[*focus] : nullptr; }
    PaneTable *getOtherResponderTableView() override
    {
        return focus ? &tables[otherSide(*focus)] : nullptr;
    }
    QString getCurrentPathFromSegmentedControl(Side side) const override { return paths[side]; }
    int getSelectedSegmentFromSegmentedControl(Side) const override { return segment; }
    QString completeNavigatorPath(Side side) const override { return paths[side]; }
    bool isItemInNavigatorPath(const QString &item, Side side) const override
    {
        return PathText::components(paths[side]).contains(item);
    }
    void setMenuItemShowHiddenItems(const QString &title) override { hiddenItemsTitle = title; }
    QString getStringFromInputSheet(const QString &prompt, const QString &text) override
    {
        prompts.append(prompt + QLatin1Char('|') + text);
        return typed;
    }
    void setProgressIndicator(bool spinning) override { spinners += spinning ? 1 : -1; }
    void updateMainWindow() override { ++updates; }
    void showNotice(const QString &line) override { notices.append(line); }

    PerSide<PaneTableStub> tables { PaneTableStub(Side::Left), PaneTableStub(Side::Right) };
    PerSide<QString> paths;
    std::optional<Side> focus = Side::Left;
    int segment = 0;
    QString typed;
    QStringList prompts;
    QString hiddenItemsTitle;
    int spinners = 0;
    int updates = 0;
    QStringList notices;
};

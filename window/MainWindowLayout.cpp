#include "window/MainWindowLayout.h"

#include "base/Localized.h"
#include "commands/CommandTable.h"
#include "views/TableViews.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Icons.h"
#include "widgets/MenuTextButton.h"
#include "widgets/SegmentedControl.h"
#include "window/ClassicButton.h"
#include "window/FilterBar.h"
#include "window/InfoBarTextField.h"
#include "window/NoticeLabel.h"

#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>
#include <QSplitter>
#include <QStyleOptionMenuItem>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 8;
constexpr int ButtonRowHeight = 45;
constexpr QSize InitialSize { 1120, 700 };
constexpr Command ButtonRow[] = { Command::Copy, Command::Move, Command::NewFolder, Command::Delete,
                                  Command::Rename };

// Anything higher in the bar, and its titles would hang above its middle.
int heightOfTitles(const QMenuBar &bar)
{
    const QSize text(0, bar.fontMetrics().height());
    const QStyleOptionMenuItem title;
    return bar.style()->sizeFromContents(QStyle::CT_MenuBarItem, &title, text, &bar).height();
}

} // namespace

MainWindowLayout::MainWindowLayout(MessageBus &bus, MainModel &mainModel, UserDefaults &defaults)
    : UnifiedWindow(defaults)
    , leftFileList(new TableViewLeft(bus, mainModel, defaults, this))
    , rightFileList(new TableViewRight(bus, mainModel, defaults, this))
    , splitView(new QSplitter(Qt::Horizontal))
    , classicButtons(buttonRow())
    , runsButton(new MenuTextButton(this))
    , progressIndicator(new ActivitySpinner(this))
    , notice(new NoticeLabel(this))
{
    setWindowTitle(u"Twinleaf"_s);
    QGuiApplication::setWindowIcon(themedIcon(u"org.twinleaf.Twinleaf"_s));
    splitView->setHandleWidth(Margin);
    splitView->setChildrenCollapsible(false);
    splitView->addWidget(pane(Side::Left));
    splitView->addWidget(pane(Side::Right));
    // The splitter puts each new one below the others, and readers go through them from below.
    splitView->widget(0)->lower();
    // Both panes grow alike.
    splitView->setStretchFactor(0, 1);
    splitView->setStretchFactor(1, 1);

    auto *content = new QWidget(this);
    auto *rows = new QVBoxLayout(content);
    rows->setContentsMargins(Margin, 0, Margin, 0);
    rows->setSpacing(0);
    rows->addWidget(splitView, 1);
    rows->addWidget(classicButtons);
    setCentralWidget(content);
    menuBar()->setCornerWidget(corner());
    _leastSize = minimumSizeHint();
    attachToolBar(nullptr);
    resize(InitialSize);
}

void MainWindowLayout::attachToolBar(QToolBar *bar)
{
    if (_toolBar) {
        _toolBar->hide();
        _toolBar->deleteLater(); // one of its own items may have asked for this
    }
    _toolBar = bar;
    QSize least = _leastSize;
    if (bar) {
        // Its own button has what finds no room, so it takes none from side to side.
        least.rheight() += bar->sizeHint().height();
        qobject_cast<QVBoxLayout *>(centralWidget()->layout())->insertWidget(0, bar);
        bar->lower(); // readers come to it before the panes
    }
    // The buttons of the row are never cut, unless the screen itself is smaller.
    setMinSize(least.boundedTo(screen()->availableSize()));
}

PaneTableView &MainWindowLayout::fileList(Side side) const
{
    if (side == Side::Left)
        return *leftFileList;
    return *rightFileList;
}

QWidget *MainWindowLayout::pane(Side side)
{
    auto *widget = new QWidget(splitView);
    auto *navigator = new SegmentedControl(widget);
    navigator->setAccessibleName(localized(side == Side::Left ? "Left path" : "Right path"));
    segmentedControls[side] = navigator;

    auto *rows = new QVBoxLayout(widget);
    rows->setContentsMargins(0, Margin, 0, 0);
    rows->setSpacing(Margin / 2);
    rows->addWidget(navigator);
    rows->addWidget(&fileList(side), 1);
    filterBars[side] = new FilterBar(fileList(side), widget);
    rows->addWidget(filterBars[side]);
    rows->addWidget(infoBar(side));
    rows->addWidget(statusLine(side));
    return widget;
}

QWidget *MainWindowLayout::infoBar(Side side)
{
    auto *bar = new QWidget(splitView);
    auto *columns = new QHBoxLayout(bar);
    columns->setContentsMargins(Margin / 2, 0, Margin / 2, Margin / 2);
    columns->setSpacing(2 * Margin);
    auto *name = new InfoBarTextField(Qt::ElideMiddle, bar);
    auto *size = new InfoBarTextField(Qt::ElideRight, bar);
    auto *date = new InfoBarTextField(Qt::ElideRight, bar);
    // Their name is what they show.
    name->setAccessibleDescription(localized("Name"));
    size->setAccessibleDescription(localized("Size"));
    date->setAccessibleDescription(localized("Date"));
    size->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    date->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    columns->addWidget(name, 1);
    columns->addWidget(size);
    columns->addWidget(date);
    infoBars[side] = { name, size, date };
    return bar;
}

QWidget *MainWindowLayout::statusLine(Side side)
{
    auto *line = new QWidget(splitView);
    auto *columns = new QHBoxLayout(line);
    columns->setContentsMargins(Margin / 2, 0, Margin / 2, Margin / 2);
    columns->setSpacing(2 * Margin);
    auto *contents = new ElidedLabel(Qt::ElideRight, line);
    auto *space = new ElidedLabel(Qt::ElideRight, line);
    contents->setAccessibleDescription(localized("Contents of folder"));
    space->setAccessibleDescription(localized("Free space"));
    space->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    columns->addWidget(contents, 1);
    columns->addWidget(space);
    folderStatus[side] = { contents, space };
    return line;
}

QWidget *MainWindowLayout::buttonRow()
{
    auto *row = new QWidget(this);
    row->setFixedHeight(ButtonRowHeight);
    auto *columns = new QHBoxLayout(row);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(Margin);
    for (const Command command : ButtonRow) {
        const CommandEntry &entry = entryOf(command);
        buttons[command] = new ClassicButton(localized(entry.text),
                                             shownKey(entry, leftFileList->classicKeys()), row);
        columns->addWidget(buttons[command]);
    }
    return row;
}

QWidget *MainWindowLayout::corner()
{
    auto *widget = new QWidget(this);
    widget->setFixedHeight(heightOfTitles(*menuBar()));
    runsButton->setMaximumHeight(widget->height());
    auto *columns = new QHBoxLayout(widget);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(0);
    runsRoom = new QWidget(widget);
    auto *room = new QHBoxLayout(runsRoom);
    room->setContentsMargins(0, 0, 0, 0);
    room->addStretch();
    room->addWidget(runsButton);
    runsRoom->hide();
    // The keyboard comes to its lines by the menu bar, and stays with the panes.
    runsButton->setFocusPolicy(Qt::NoFocus);
    runsButton->setAccessibleName(localized("Copy and move"));
    columns->addWidget(runsRoom);
    columns->addWidget(progressIndicator);
    return widget;
}

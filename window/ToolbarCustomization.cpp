#include "window/ToolbarCustomization.h"

#include "base/Localized.h"
#include "widgets/Colors.h"
#include "window/Toolbar.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int Gap = 8;
constexpr int IconSide = 24;
constexpr int ListWidth = 230;
constexpr int ListHeight = 340;
constexpr int FrameRoom = 48; // for what the desktop draws round the sheet
constexpr int LeastListWidth = 120; // on a small screen
constexpr int LeastListHeight = 120;

class ItemList final : public QListView {
public:
    using QListView::QListView;
    QSize sizeHint() const override { return { ListWidth, ListHeight }; }
};

// Of the two lists the one that has the keyboard is to be told from the other.
class ItemDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->widget && option->widget->hasFocus())
            return;
        const QPalette &palette = option->widget ? option->widget->palette() : option->palette;
        option->palette.setColor(QPalette::Highlight, palette.color(QPalette::Mid));
        option->palette.setColor(
            QPalette::HighlightedText,
            palette.color(isHighContrast() ? QPalette::HighlightedText : QPalette::Text));
    }
};

int rowOf(const QListView &list)
{
    return list.currentIndex().row();
}

void choose(QListView &list, int row)
{
    list.setCurrentIndex(list.model()->index(std::min(row, list.model()->rowCount() - 1), 0));
}

} // namespace

ToolbarCustomization::ToolbarCustomization(Toolbar &customized, QWidget *mainWindow)
    : Sheet(mainWindow)
    , toolbar(customized)
    , _bar(customized)
    , _palette(customized, _bar)
{
    setWindowTitle(localized("Customize Toolbar"));
    setAccessibleName(windowTitle());
    addText(accessibleName(), TextStyle::Headline);
    addText(localized("Drag items between the two lists; the toolbar follows."));
    auto *columns = new QHBoxLayout;
    columns->setSpacing(Gap);
    rows().addLayout(columns);
    _paletteList = addList(QT_TRANSLATE_NOOP("Twinleaf", "Available items"), _palette, *columns);
    columns->addLayout(moves());
    _barList = addList(QT_TRANSLATE_NOOP("Twinleaf", "In the toolbar"), _bar, *columns);
    rows().addLayout(display());

    connect(addButton(localized("Done")), &QPushButton::clicked, this, &QDialog::accept);
    auto *restore = new QPushButton(marked(localized("Restore defaults")), this);
    restore->setAccessibleName(localized("Restore defaults"));
    restore->setAutoDefault(false);
    addBesideButtons(*restore);
    connect(restore, &QPushButton::clicked, this, &ToolbarCustomization::restoreDefaults);

    connect(&_bar, &ToolbarBarModel::dropped, this, [this](int row) { choose(*_barList, row); });
    connect(_paletteList, &QListView::doubleClicked, this, &ToolbarCustomization::add);
    choose(*_paletteList, 0);
    choose(*_barList, 0);
    enableButtons();
    _paletteList->setFocus();
    // The lists give way where the screen is small.
    layout()->setSizeConstraint(QLayout::SetMinimumSize);
    resize(sizeHint().boundedTo(screen()->availableSize() - QSize(FrameRoom, FrameRoom)));
}

QListView *ToolbarCustomization::addList(const char *name, ToolbarItemModel &model,
                                         QLayout &columns)
{
    auto *list = new ItemList(this);
    list->setItemDelegate(new ItemDelegate(list));
    list->setModel(&model);
    list->setAccessibleName(localized(name));
    list->setIconSize({ IconSide, IconSide });
    list->setUniformItemSizes(true); // there may be thousands of favourites
    list->setTextElideMode(Qt::ElideMiddle);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setDragEnabled(true);
    list->setAcceptDrops(true);
    list->setDropIndicatorShown(true);
    list->setDefaultDropAction(Qt::MoveAction);
    list->setMinimumSize(LeastListWidth, LeastListHeight);
    list->installEventFilter(this);
    connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ToolbarCustomization::enableButtons);
    // Where a row was chosen, one stays so.
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, list,
            [this, list] { _rowBefore = rowOf(*list); });
    connect(&model, &QAbstractItemModel::modelReset, list, [this, list] {
        choose(*list, _rowBefore);
        enableButtons();
    });

    auto *title = new QLabel(marked(localized(name)), this);
    title->setBuddy(list);
    auto *column = new QVBoxLayout;
    column->addWidget(title);
    column->addWidget(list, 1);
    static_cast<QHBoxLayout &>(columns).addLayout(column, 1);
    return list;
}

QLayout *ToolbarCustomization::moves()
{
    auto *column = new QVBoxLayout;
    column->addStretch();
    const auto addMove = [&](const char *text, const auto &move) {
        auto *button = new QPushButton(marked(localized(text)), this);
        button->setAccessibleName(localized(text));
        button->setAutoDefault(false);
        column->addWidget(button);
        connect(button, &QPushButton::clicked, this, move);
        return button;
    };
    _add = addMove(QT_TRANSLATE_NOOP("Twinleaf", "Add"), [this] { add(); });
    _remove = addMove(QT_TRANSLATE_NOOP("Twinleaf", "Remove"), [this] { remove(); });
    column->addSpacing(2 * Gap);
    _moveUp = addMove(QT_TRANSLATE_NOOP("Twinleaf", "Move up"), [this] { move(-1); });
    _moveDown = addMove(QT_TRANSLATE_NOOP("Twinleaf", "Move down"), [this] { move(1); });
    column->addStretch();
    return column;
}

QLayout *ToolbarCustomization::display()
{
    _display = new QComboBox(this);
    _display->addItem(localized("Icon and label"), int(ToolbarDisplay::IconAndLabel));
    _display->addItem(localized("Icon only"), int(ToolbarDisplay::IconOnly));
    _display->setCurrentIndex(_display->findData(int(toolbar.display())));
    connect(_display, &QComboBox::activated, this,
            [this] { toolbar.setDisplay(ToolbarDisplay(_display->currentData().toInt())); });
    auto *title = new QLabel(marked(localized("Show")) + u':', this);
    title->setBuddy(_display);
    _display->setAccessibleName(localized("Show"));
    auto *row = new QHBoxLayout;
    row->setSpacing(Gap);
    row->addWidget(title);
    row->addWidget(_display);
    row->addStretch();
    return row;
}

void ToolbarCustomization::add()
{
    const int row = rowOf(*_paletteList);
    if (row < 0)
        return;
    const int before = rowOf(*_barList) < 0 ? _bar.rowCount() : rowOf(*_barList) + 1;
    choose(*_barList, _bar.add(_palette.identifier(row), before));
}

void ToolbarCustomization::remove()
{
    const QString shown = _palette.identifier(rowOf(*_paletteList));
    choose(*_barList, _bar.remove(rowOf(*_barList)));
    for (int row = 0; row < _palette.rowCount(); ++row)
        if (_palette.identifier(row) == shown)
            choose(*_paletteList, row);
}

void ToolbarCustomization::move(int rows)
{
    const int row = rowOf(*_barList);
    const int place = _bar.move(row, rows < 0 ? row - 1 : row + 2);
    if (place >= 0)
        choose(*_barList, place);
}

void ToolbarCustomization::restoreDefaults()
{
    toolbar.restoreDefaults();
    _display->setCurrentIndex(_display->findData(int(toolbar.display())));
    choose(*_paletteList, 0);
    choose(*_barList, 0);
}

void ToolbarCustomization::enableButtons()
{
    if (!_barList)
        return; // not all of them are there yet
    const int row = rowOf(*_barList);
    _add->setEnabled(rowOf(*_paletteList) >= 0);
    _remove->setEnabled(row >= 0);
    _moveUp->setEnabled(row > 0);
    _moveDown->setEnabled(row >= 0 && row + 1 < _bar.rowCount());
}

bool ToolbarCustomization::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return Sheet::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    return takesKey(watched, key->key(), key->modifiers() & ~Qt::KeypadModifier)
        || Sheet::eventFilter(watched, event);
}

bool ToolbarCustomization::takesKey(QObject *list, int key, Qt::KeyboardModifiers modifiers)
{
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (list == _paletteList && isReturn && !modifiers) {
        add();
        return true;
    }
    if (list != _barList)
        return false;
    if (!modifiers && (key == Qt::Key_Delete || key == Qt::Key_Backspace)) {
        remove();
        return true;
    }
    // Left and right too: it is where the item goes in the bar.
    const bool back = key == Qt::Key_Up || key == Qt::Key_Left;
    if (modifiers != Qt::AltModifier || !(back || key == Qt::Key_Down || key == Qt::Key_Right))
        return false;
    move(back ? -1 : 1);
    return true;
}

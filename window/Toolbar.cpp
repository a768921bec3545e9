#include "window/Toolbar.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "commands/Commands.h"
#include "files/FileName.h"
#include "model/Launching.h"
#include "widgets/Icons.h"
#include "widgets/MenuText.h"
#include "widgets/Mnemonics.h"
#include "widgets/PathIcons.h"
#include "window/MainWindowLayout.h"
#include "window/ToolbarItems.h"
#include "window/UnifiedToolBar.h"

#include <QAction>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

constexpr int LongestLabel = 24; // letters under a button

QString shortened(const QString &label)
{
    if (label.size() <= LongestLabel)
        return label;
    return label.left(LongestLabel / 2) + u'…' + label.right(LongestLabel / 2);
}

} // namespace

Toolbar::Toolbar(Commands &allCommands, const BookmarkStore &favorites, Launching &launcher,
                 PathIcons &applicationIcons, UserDefaults &defaults)
    : commands(allCommands)
    , store(favorites)
    , launching(launcher)
    , icons(applicationIcons)
    , _settings(defaults)
{
    for (const ToolbarItem &item : toolbarItems())
        connect(commands.action(item.command), &QAction::visibleChanged, this, [this] {
            showOffered();
            Q_EMIT changed();
        });
    connect(&icons, &PathIcons::arrived, this, &Toolbar::showIcon);
}

void Toolbar::setupToolbarForWindow(MainWindowLayout &window)
{
    _window = &window;
    setFavoriteApplications(store.getFavoriteApplicationsFromUserDefaults());
    icons.forget();
    showOrHide();
}

void Toolbar::showOrHide()
{
    const bool shown = _settings.isShown();
    commands.action(Command::ShowToolbar)
        ->setText(shown ? localized("Hide toolbar") : localized("Show toolbar"));
    commands.action(Command::ChooseInToolbar)->setVisible(shown);
    if (_bar)
        _bar->giveKeyboardBack();
    _items.clear();
    _bar = nullptr;
    if (shown) {
        _bar = new UnifiedToolBar(_window->centralWidget());
        _bar->setObjectName(u"Twinleaf Toolbar Identifier"_s);
        _bar->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(_bar, &QWidget::customContextMenuRequested, this, &Toolbar::popUpMenu);
        fill();
    }
    _window->attachToolBar(_bar);
}

void Toolbar::fill()
{
    if (!_bar)
        return;
    _bar->giveKeyboardBack();
    _bar->clear(); // the items go with it
    for (const auto &[identifier, item] : std::as_const(_items))
        item->deleteLater();
    _items.clear();
    _bar->setToolButtonStyle(_settings.display() == ToolbarDisplay::IconOnly
                                 ? Qt::ToolButtonIconOnly
                                 : Qt::ToolButtonTextUnderIcon);
    const QStringList identifiers = _settings.identifiers();
    for (const QString &identifier : identifiers)
        if (QAction *item = itemForItemIdentifier(identifier))
            _items.append({ identifier, item });
    showOffered();
    validate(commands.state());
}

QStringList Toolbar::toolbarAllowedItemIdentifiers() const
{
    QStringList identifiers;
    for (const ToolbarItem &item : toolbarItems())
        identifiers.append(QString::fromLatin1(item.identifier));
    for (const ToolbarGap *gap : toolbarGaps())
        identifiers.append(QString::fromLatin1(gap->identifier));
    for (const FavoriteApplication &favorite : _favorites)
        identifiers.append(favorite.name);
    identifiers.removeDuplicates();
    return identifiers;
}

QAction *Toolbar::itemForItemIdentifier(const QString &identifier)
{
    if (toolbarGapOf(identifier)) {
        if (identifier == QLatin1StringView(ToolbarSeparator.identifier))
            return _bar->addSeparator();
        return _bar->addSpace(identifier == QLatin1StringView(ToolbarFlexibleSpace.identifier));
    }
    const auto look = this->look(identifier);
    if (!look)
        return nullptr;
    auto *item = new QAction(icon(identifier), menuText(look->label), _bar);
    item->setToolTip(plainToolTip(look->toolTip));
    if (const ToolbarItem *known = toolbarItemOf(identifier)) {
        connect(item, &QAction::triggered, this, [this, command = known->command] {
            _bar->giveKeyboardBack(); // to the pane that the command is about
            commands.run(command);
        });
    } else {
        item->setIconText(shortened(look->label));
        connect(item, &QAction::triggered, this, [this, identifier] {
            _bar->giveKeyboardBack();
            Arrivals::afterWait(
                this, [this, identifier] { favoriteApplicationButtonClicked(identifier); });
        });
    }
    _bar->addAction(item);
    QWidget *button = _bar->widgetForAction(item);
    button->setAccessibleName(look->label);
    button->setAccessibleDescription(look->toolTip);
    return item;
}

void Toolbar::setFavoriteApplications(const QList<FavoriteApplication> &favorites)
{
    _favorites = favorites;
    _places.clear();
    for (qsizetype place = favorites.size() - 1; place >= 0; --place) // of one name, the first
        _places[favorites[place].name] = place;
}

void Toolbar::favoriteApplicationButtonClicked(const QString &label)
{
    const auto favorites = _favorites; // starting one may take a while
    for (const FavoriteApplication &favorite : favorites)
        if (favorite.name == label)
            launching.launchApp(favorite.realPath);
}

const FavoriteApplication *Toolbar::favoriteOf(const QString &name) const
{
    const auto place = _places.constFind(name);
    return place == _places.cend() ? nullptr : &_favorites[*place];
}

std::optional<Toolbar::Look> Toolbar::look(const QString &identifier) const
{
    if (const ToolbarItem *item = toolbarItemOf(identifier))
        return Look { localized(item->label), localized(item->toolTip),
                      commands.action(item->command)->isVisible() };
    if (const ToolbarGap *gap = toolbarGapOf(identifier))
        return Look { localized(gap->label), {} };
    if (favoriteOf(identifier))
        return Look { FileName::shown(identifier), FileName::shown(identifier) };
    return std::nullopt;
}

QIcon Toolbar::icon(const QString &identifier)
{
    if (const ToolbarItem *item = toolbarItemOf(identifier))
        return toolbarIcon(QString::fromLatin1(item->image));
    if (const ToolbarGap *gap = toolbarGapOf(identifier))
        return toolbarIcon(QString::fromLatin1(gap->image));
    const FavoriteApplication *favorite = favoriteOf(identifier);
    if (!favorite)
        return {};
    return applicationIcon(icons.look(favorite->realPath).icon);
}

void Toolbar::setIdentifiers(const QStringList &identifiers)
{
    _settings.setIdentifiers(identifiers);
    fill();
    Q_EMIT changed();
}

void Toolbar::setDisplay(ToolbarDisplay display)
{
    _settings.setDisplay(display);
    fill();
    Q_EMIT changed();
}

void Toolbar::restoreDefaults()
{
    _settings.restoreDefaults();
    fill();
    Q_EMIT changed();
}

void Toolbar::showOffered()
{
    for (const auto &[identifier, item] : std::as_const(_items))
        if (const ToolbarItem *known = toolbarItemOf(identifier))
            item->setVisible(commands.action(known->command)->isVisible());
    if (_bar)
        _bar->hideIdleSeparators();
}

void Toolbar::showIcon(const QString &application)
{
    for (const auto &[identifier, item] : std::as_const(_items))
        if (const FavoriteApplication *favorite = favoriteOf(identifier);
            favorite && favorite->realPath == application)
            item->setIcon(icon(identifier));
    for (const FavoriteApplication &favorite : std::as_const(_favorites))
        if (favorite.realPath == application)
            Q_EMIT iconArrived(favorite.name);
}

void Toolbar::showToolbarClicked()
{
    _settings.setShown(!_settings.isShown());
    showOrHide();
}

void Toolbar::validate(const MenuState &state)
{
    for (const auto &[identifier, item] : std::as_const(_items))
        if (const ToolbarItem *known = toolbarItemOf(identifier))
            item->setEnabled(entryOf(known->command).menuRule(state));
}

void Toolbar::takeKeyboard()
{
    if (_bar)
        _bar->takeKeyboard();
}

void Toolbar::popUpMenu(const QPoint &position)
{
    auto *menu = new QMenu(_bar);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    markWhenShown(*menu);
    menu->addAction(commands.action(Command::CustomizeToolbar));
    menu->addAction(commands.action(Command::ShowToolbar));
    menu->popup(_bar->mapToGlobal(position));
}

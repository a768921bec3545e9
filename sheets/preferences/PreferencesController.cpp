#include "sheets/preferences/PreferencesController.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "model/PaneSettings.h"
#include "model/PaneWindow.h"
#include "platform/OpenDialogs.h"
#include "platform/OpenPanel.h"
#include "sheets/preferences/InfoBarsPage.h"
#include "sheets/preferences/KeysPage.h"
#include "sheets/preferences/PreferencesSheet.h"
#include "sheets/preferences/SearchPage.h"
#include "sheets/preferences/StartFoldersPage.h"
#include "views/VirtualKeys.h"
#include "widgets/Colors.h"
#include "widgets/ColorWell.h"
#include "widgets/MenuText.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr Side Sides[] = { Side::Left, Side::Right };

const QColor DefaultFrameColor(120, 120, 120);
const QColor DefaultFontColor(Qt::black);

} // namespace

PreferencesController::PreferencesController(UserDefaults &settings, const Outlets &outlets,
                                             QWidget *window)
    : defaults(settings)
    , _outlets(outlets)
    , mainWindow(window)
{
}

PreferencesController::~PreferencesController() = default;

void PreferencesController::showPreferencesSheet()
{
    _listsToRead = false;
    const auto favorites = defaults.array(Settings::OpenWithFavoriteApplications);
    preferencesSheet = std::make_unique<PreferencesSheet>(defaults, _outlets.favorites, mainWindow);
    const StartFoldersPage &folders = *preferencesSheet->startFolders;
    connect(preferencesSheet.get(), &PreferencesSheet::settingWritten, this,
            &PreferencesController::settingWritten);
    connect(preferencesSheet->keys, &KeysPage::restoreAsked, this,
            &PreferencesController::restoreDefaults);
    connect(folders.saveLastPaths, &QCheckBox::clicked, this,
            &PreferencesController::saveLastPathsClicked);
    connect(folders.searchButton.left, &QPushButton::clicked, this,
            &PreferencesController::searchForLeftPathClicked);
    connect(folders.searchButton.right, &QPushButton::clicked, this,
            &PreferencesController::searchForRightPathClicked);
    connect(preferencesSheet->search->chooseButton, &QPushButton::clicked, this,
            &PreferencesController::chooseLeftOutClicked);
    for (const Side side : Sides)
        setRealPath(side, _outlets.windowController.getCurrentPathFromSegmentedControl(side));
    saveLastPathsClicked();
    restoreDefaults(); // what the lists come up with where nothing is stored
    readClassicKeys();
    readInfoBarColors();

    bool agreed = false;
    {
        const OpenDialogs::Guard guard(_outlets.openDialogs);
        agreed = preferencesSheet->run();
    }
    if (agreed) {
        okClicked();
    } else {
        if (_listsToRead)
            readLists();
        if (defaults.array(Settings::OpenWithFavoriteApplications) != favorites)
            showFavorites(); // stored already
    }
    preferencesSheet.reset();
}

void PreferencesController::saveLastPathsClicked()
{
    const StartFoldersPage &folders = *preferencesSheet->startFolders;
    const bool fixed = !folders.saveLastPaths->isChecked();
    for (const Side side : Sides) {
        folders.lastPath[side]->setEnabled(fixed);
        folders.searchButton[side]->setEnabled(fixed);
    }
}

void PreferencesController::searchForPathClicked(Side side)
{
    // The panel looks at where it starts before it shows itself: that must be there to answer.
    const QString path = _realPath[side];
    const bool isThere = !path.isEmpty() && _outlets.twinleaf.isDirectory(path);
    const auto chosen = _outlets.openPanel.chooseFolder(isThere ? path : PathText::homeFolder());
    if (chosen && preferencesSheet)
        setRealPath(side, *chosen);
}

void PreferencesController::chooseLeftOutClicked()
{
    const auto chosen = _outlets.openPanel.chooseFolder(PathText::homeFolder());
    if (chosen && preferencesSheet)
        preferencesSheet->search->add(*chosen);
}

void PreferencesController::setRealPath(Side side, const QString &path)
{
    _realPath[side] = path;
    QLineEdit &field = *preferencesSheet->startFolders->lastPath[side];
    field.setText(FileName::shown(_outlets.twinleaf.getLocalizedPath(path)));
    field.end(false); // of a long path the end says more
    field.setToolTip(plainToolTip(field.text()));
}

void PreferencesController::restoreDefaults()
{
    ClassicKeys::Choices choices;
    for (int i = 0; i < ClassicKeys::ActionCount; ++i) // from the fifth on: F5 to F10
        choices[i] = { VirtualKeys::FunctionKeys[4 + i], 0 };
    preferencesSheet->keys->select(choices);
}

void PreferencesController::readClassicKeys()
{
    preferencesSheet->keys->select(ClassicKeys::storedChoices(defaults));
}

void PreferencesController::writeClassicKeys()
{
    ClassicKeys::store(preferencesSheet->keys->choices(), defaults);
}

void PreferencesController::readInfoBarColors()
{
    const auto read = [this](ColorWell &well, Settings::Key key, const QColor &absent) {
        const auto stored = defaults.dictionary(key);
        well.setColor(stored ? colorOfDictionary(*stored) : absent);
    };
    const InfoBarsPage &bars = *preferencesSheet->infoBars;
    read(*bars.infoBarFrameColor, Settings::InfoBarFrameColor, DefaultFrameColor);
    read(*bars.infoBarFontColor, Settings::InfoBarFontColor, DefaultFontColor);
}

void PreferencesController::writeInfoBarColors()
{
    const InfoBarsPage &bars = *preferencesSheet->infoBars;
    defaults.setValue(Settings::InfoBarFrameColor,
                      dictionaryOfColor(bars.infoBarFrameColor->color()));
    defaults.setValue(Settings::InfoBarFontColor,
                      dictionaryOfColor(bars.infoBarFontColor->color()));
}

void PreferencesController::okClicked()
{
    for (const Side side : Sides)
        if (!_realPath[side].isEmpty()) // nobody answered for what the pane was to show
            defaults.setValue(paneSettings(side).lastPath, _realPath[side]);
    writeClassicKeys();
    _outlets.mainModel.setUserDefaultValues();
    Q_EMIT dateFormattersToSet();
    Q_EMIT pathNavigatorsToSetUp();
    writeInfoBarColors();
    Q_EMIT infoBarColorsToSet();
    readLists();
    showFavorites();
}

void PreferencesController::showFavorites()
{
    Q_EMIT openWithFavoriteApplicationsToSet();
    Q_EMIT toolbarToSetUp();
}

void PreferencesController::settingWritten(Settings::Key key)
{
    _outlets.mainModel.setUserDefaultValues();
    if (key == Settings::UseLongDateFormat || key == Settings::DateRightAlignment)
        Q_EMIT dateFormattersToSet();
    else if (key == Settings::ShowToolTips)
        Q_EMIT toolTipsToSet();
    else if (key == Settings::UseFlatUnifiedLook)
        Q_EMIT windowLookToSet();
    else if (key == Settings::PathNavigatorsSize || key == Settings::PathNavigatorsFontSize
             || key == Settings::PathNavigatorsFontStyle)
        Q_EMIT pathNavigatorsToSetUp();
    else if (key == Settings::ShowSpecifiedIcons || key == Settings::TraverseLinks)
        _listsToRead = true; // when the sheet has gone: no list changes under an open one
}

void PreferencesController::readLists()
{
    for (const Side side : Sides)
        if (const QString path = _outlets.windowController.getCurrentPathFromSegmentedControl(side);
            !path.isEmpty())
            _outlets.mainModel.showFolder(side, { .path = path });
}

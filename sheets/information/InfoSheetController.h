#pragma once

#include "files/Readings.h"
#include "model/ItemInformation.h"
#include "sheets/information/Accounts.h"
#include "sheets/information/FolderCount.h"
#include "sheets/information/ItemFacts.h"

#include <array>
#include <functional>
#include <optional>

class Alerts;
class Authentication;
class FileKinds;
class InfoSheet;
class OpenDialogs;
class OpenPanel;
class PathIcons;
class Twinleaf;
class Waiting;

// Shows everything about one item in a sheet, and writes what the person changed there. The sheet
// opens with what the request says; the rest arrives as it is read. Written is to the item that was
// shown, which is kept hold of until the sheet closes. Main thread.
class InfoSheetController final : public QObject, public ItemInformation {
    Q_OBJECT

public:
    InfoSheetController(Twinleaf &twinleaf, Authentication &authentication,
                        PathIcons &applicationIcons, const FileKinds &kinds, Alerts &alerts,
                        OpenPanel &openPanel, OpenDialogs &openDialogs, Waiting &waiting,
                        QWidget &mainWindow);
    ~InfoSheetController() override;

    // Where the names of users and groups come from, on worker threads: the user database.
    void setAccountSource(std::function<AccountNames()> source);
    void awakeFromNib(); // reads them
    bool isReadingAccounts() const { return _accountReading.anyWanted(); }

    // Returns when the sheet has closed. While it stands there it shows the other item instead.
    void showInfoSheet(const OperationRequest &request) override;

    // Gives up what is still being read; false when a thread does not come back.
    bool end(QDeadlineTimer deadline = QDeadlineTimer(Readings::Patience));

private:
    // What a person can change, as the controls have it.
    struct Choices {
        QString application; // its title
        QString owner;
        QString group;
        std::array<QString, 3> permissions; // of the owner, the group and others
        bool locked = false;
        friend bool operator==(const Choices &, const Choices &) = default;
    };

    InfoSheet &sheet();
    void setFileInformations(const QString &fullPath); // reads them, and then shows the item

    // InfoSheetShowing.cpp
    void showKnown();
    void showItem(const ItemFacts &facts);
    void showFacts(const ItemFacts &facts);
    void showChoices(const ItemFacts &facts);
    void showSizeOf(const ItemFacts &facts);
    enum class Size { SoFar, Whole };
    void showSize(qint64 bytes, Size size);
    void setWidgets(const QString &owner);
    Choices choices();
    void choose(const Choices &chosen, const Choices &before, const QString &application);

    void showPadlock();
    void LockButton_clicked();

    // InfoSheetApplications.cpp
    void OpenWithChanged();
    void addItemForLaunchApp(const QString &application);
    void setLaunchAppItems();
    QIcon iconOf(const QString &application);
    void showIconOf(const QString &application);
    QString getCurrentLaunchApp();
    static QString titleOf(const QString &application);

    // InfoSheetChanges.cpp
    void endInfoSheet();
    bool areAccountsKnown(); // those typed; else it says which is not
    // These answer whether all that the person changed is done.
    bool changeAll();
    bool changeLaunchApplication(const Choices &now);
    bool changeOwnerAndGroup(const Choices &now);
    bool changePermissions(const Choices &now);
    bool changeLockState(const Choices &now);
    bool isOwnerMe();
    // These answer false.
    bool complain(const QString &failure, const QString &why);
    bool complainOf(const QString &failure, const QString &subject);

    Twinleaf &twinleaf;
    Authentication &authentication;
    PathIcons &applicationIcons;
    const FileKinds &kinds;
    Alerts &alerts;
    OpenPanel &openPanel;
    OpenDialogs &openDialogs;
    Waiting &waiting;
    QWidget &mainWindow;

    bool lockButtonStatus = false; // the rights were gained by the padlock, and not given up since
    bool currentFileLocked = false;
    QStringList launchApplications; // behind the items of OpenWith, and the words for others
    QString currentFullPath;

    InfoSheet *_sheet = nullptr; // the main window's; made when it is first needed
    std::function<AccountNames()> _readAccounts = &readAccountNames;
    AccountNames _accounts;
    std::optional<ItemFacts> _facts; // of the item shown, once they are known
    Choices _shown; // of the item itself
    bool _changed = false; // a step succeeded since the sheet opened
    bool _saidReading = false; // by the note, until the item is there
    bool _written = false; // something was written by the last OK
    Readings _accountReading;
    Readings _itemReading;
    FolderCount _folderCount;
};

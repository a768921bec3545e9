#pragma once

#include "platform/desktop/DesktopTrashCan.h"
#include "platform/desktop/MountWatch.h"
#include "platform/desktop/SessionEnd.h"
#include "platform/Workspace.h"

// The services of the desktop this program runs on, or of the bare system where there is none.
class DesktopWorkspace final : public Workspace {
    Q_OBJECT

public:
    explicit DesktopWorkspace(QObject *parent = nullptr);

    bool launchApplication(const QString &path) override;
    bool isInstalledApplication(const QString &path) const override;
    QString foreignProgram(const QString &path) const override;
    bool openFile(const QString &path, const QString &application = {}) override;
    bool openInstallerPackage(const QString &path) override;
    QString applicationForFile(const QString &path) const override;
    QString textEditor() const override;
    FileApplications applicationsForFiles(const QStringList &paths) const override;
    bool setDefaultApplication(const QString &application, const QString &type,
                               QString *reason = nullptr) override;
    bool openTerminal(const QString &folder, QString *reason = nullptr) override;
    QString applicationForTool(Tool tool) const override;
    QIcon iconOfApplication(const QString &path) const override;
    bool showSearchWindow(const QString &text) override;
    bool clipboardAnswers() const override;
    bool openAddress(const QString &address) override;

    std::unique_ptr<TrashRun> trashRun(const QString &folder) override;
    bool moveToTrash(const QString &path, QString *reason, const QString &origin) override;

    TrashCan &trashCan() override { return _trashCan; }

    QStringList mountedLocalVolumePaths() const override;
    bool eject(const QString &volume, QString *reason = nullptr) override;
    QString volumesFolder() const override;

private:
    DesktopTrashCan _trashCan;
    MountWatch _mountWatch;
    SessionEnd _sessionEnd;
};

#pragma once

#include "sheets/terminal/CommandRuns.h"

#include <QObject>

#include <functional>
#include <memory>

class FileQueries;
class OpenDialogs;
class QWidget;
class TerminalSheet;

// The internal terminal: runs command lines in a current folder of its own, without a shell. What
// it printed stays when its sheet is closed. Main thread.
class TerminalController final : public QObject {
    Q_OBJECT

public:
    TerminalController(Programs &programs, const FileQueries &queries, OpenDialogs &openDialogs,
                       std::function<QString()> activeFolder, QWidget *mainWindow);
    ~TerminalController() override;

    void awakeFromNib(); // when the sheet is first shown
    void showTerminalSheet();
    void closeTerminalSheet();

    void setCurPath(const QString &path);
    const QString &currentPath() const { return _currentPath; }
    void setCurrentPath(const QString &path) { _currentPath = path; }

    void runCommand(); // what stands in the command field
    void deleteOutput();
    void reset();

    // No quoting: two blanks in a row stand around an empty word.
    static QStringList words(const QString &commandLine) { return commandLine.split(u' '); }

    bool end(QDeadlineTimer deadline); // false when a thread does not come back

Q_SIGNALS:
    // Commands have run while the sheet was open: the panes may show what is no more.
    void commandsHaveRun();

private:
    void changeFolder(const QStringList &words);
    void showEnd(const QStringList &words, const CommandEnd &end, const QString &shown);
    void greet();

    const FileQueries &queries;
    OpenDialogs &openDialogs;
    const std::function<QString()> _activeFolder;
    QWidget *mainWindow; // not owned
    std::unique_ptr<TerminalSheet> sheet; // from the first time on
    CommandRuns _runs;
    QString _currentPath;
    bool _haveRun = false; // since the sheet was opened
};

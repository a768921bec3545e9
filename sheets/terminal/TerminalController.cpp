#include "sheets/terminal/TerminalController.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "platform/OpenDialogs.h"
#include "settings/BundleInfo.h"
#include "sheets/terminal/CommandField.h"
#include "sheets/terminal/OutputText.h"
#include "sheets/terminal/OutputView.h"
#include "sheets/terminal/TerminalSheet.h"
#include "widgets/MenuText.h"

using namespace Qt::StringLiterals;

TerminalController::TerminalController(Programs &programs, const FileQueries &fileQueries,
                                       OpenDialogs &dialogs, std::function<QString()> activeFolder,
                                       QWidget *window)
    : queries(fileQueries)
    , openDialogs(dialogs)
    , _activeFolder(std::move(activeFolder))
    , mainWindow(window)
    , _runs(programs)
{
}

TerminalController::~TerminalController() = default;

void TerminalController::awakeFromNib()
{
    sheet = std::make_unique<TerminalSheet>(mainWindow);
    connect(sheet->commandField, &CommandField::entered, this, &TerminalController::runCommand);
    connect(sheet.get(), &TerminalSheet::activeFolderAsked, this, [this] {
        if (const QString folder = _activeFolder(); !folder.isEmpty())
            setCurPath(folder);
    });
    connect(sheet.get(), &TerminalSheet::stopAsked, &_runs, &CommandRuns::stop);
    connect(sheet.get(), &TerminalSheet::deleteAsked, this, &TerminalController::deleteOutput);
    connect(sheet.get(), &TerminalSheet::resetAsked, this, &TerminalController::reset);
    connect(&_runs, &CommandRuns::ended, this, &TerminalController::showEnd);
    connect(&_runs, &CommandRuns::runningChanged, sheet.get(),
            [this] { sheet->showRunning(_runs.running()); });
    setCurPath(PathText::homeFolder());
    greet();
}

void TerminalController::showTerminalSheet()
{
    const OpenDialogs::Guard guard(openDialogs);
    if (!sheet)
        awakeFromNib();
    if (sheet->isVisible())
        return;
    _haveRun = false;
    sheet->run();
    // Nothing goes on behind a person's back.
    _runs.stop();
    if (_haveRun)
        Q_EMIT commandsHaveRun();
}

void TerminalController::closeTerminalSheet()
{
    if (sheet)
        sheet->reject();
}

void TerminalController::setCurPath(const QString &path)
{
    setCurrentPath(path);
    const QString shown = FileName::shown(path);
    sheet->currentPathField->setText(shown);
    sheet->currentPathField->setToolTip(plainToolTip(shown));
}

void TerminalController::runCommand()
{
    const QStringList line = words(sheet->commandField->take());
    if (line == QStringList { QString() })
        return; // nothing was typed
    if (line.first() == u"cd"_s)
        return changeFolder(line);
    _haveRun = true;
    _runs.run(_currentPath, line);
}

void TerminalController::changeFolder(const QStringList &line)
{
    if (line.size() == 1)
        return setCurPath(PathText::homeFolder());
    const QString &word = line[1];
    if (word == u".."_s)
        return setCurPath(PathText::parent(_currentPath));
    const QString target =
        PathText::normalized(word.startsWith(u'/') ? word : PathText::joined(_currentPath, word));
    if (!target.isEmpty() && queries.isDirectory(target))
        setCurPath(target);
    else
        sheet->output->insertText(localized("Error: Directory does not exists!\n"));
}

void TerminalController::showEnd(const QStringList &line, const CommandEnd &end,
                                 const QString &shown)
{
    sheet->output->insertText(shown);
    sheet->showEnd(OutputText::ofEnd(end, line.join(u' ')));
    sheet->showRunning(_runs.running());
}

void TerminalController::deleteOutput()
{
    sheet->output->deleteAll();
}

void TerminalController::reset()
{
    setCurPath(PathText::homeFolder());
    deleteOutput();
    greet();
}

void TerminalController::greet()
{
    sheet->output->insertText(
        filled(localized("Twinleaf %@ internal terminal ready.\n"), BundleInfo::version()));
}

bool TerminalController::end(QDeadlineTimer deadline)
{
    return _runs.end(deadline);
}

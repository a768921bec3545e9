#include "commands/TextEditing.h"

#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "model/Launching.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "operations/SmallPrint.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"

#include <cerrno>
#include <system_error>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MostUnasked = 20; // files

struct Other {
    QString path;
    int error; // 0: it is there, but no file
};

struct Looked {
    QString editor;
    QStringList files; // to be edited
    QList<Other> others;
};

// An editor that opens a pipe waits for it for ever. Folders are passed over. Worker thread.
Looked lookAt(const QStringList &paths, const Workspace &desktop)
{
    Looked looked { .editor = desktop.textEditor() };
    for (const QString &path : paths) {
        const auto status = fileStatus(path, Links::Follow);
        if (!status)
            looked.others.append({ path, errno });
        else if (status->kind == FileKind::Regular)
            looked.files.append(path);
        else if (status->kind != FileKind::Directory)
            looked.others.append({ path, 0 });
    }
    return looked;
}

Alert whyNotEdited(const QList<Other> &others)
{
    const auto name = [](const Other &other) {
        return FileName::shown(PathText::lastComponent(other.path));
    };
    const auto reason = [](const Other &other) {
        return other.error == 0
            ? localized("It is no file with a content of its own.")
            : QString::fromStdString(std::generic_category().message(other.error));
    };
    if (others.size() == 1)
        return Alert::failure(filled(localized("'%@' cannot be edited!"), name(others.first())),
                              reason(others.first()));
    QStringList lines;
    for (const Other &other : others)
        lines.append(lineAbout(PathText::lastComponent(other.path), reason(other)));
    return Alert::failure(filled(localized("%i items cannot be edited!"), int(others.size())),
                          shortened(lines));
}

} // namespace

TextEditing::TextEditing(PaneWindow &paneWindow, const MainModel &model, const Services &services)
    : window(paneWindow)
    , mainModel(model)
    , _services(services)
{
}

void TextEditing::editClicked()
{
    const PaneTable *list = window.getFirstResponderTableView();
    if (!list || !isItemRow(list->selectedRow()))
        return;
    const Listing &rows = mainModel.rows(list->side());
    QStringList paths;
    const RowSet selected = list->selectedRows();
    for (const int row : selected)
        if (isItemRow(row) && rows.holds(row))
            paths.append(rows[row].path());
    const auto looked = _services.waiting.forAnswer(
        rows.folder(), [paths, desktop = &_services.workspace] { return lookAt(paths, *desktop); });
    if (!looked)
        return; // given up
    if (!looked->others.isEmpty())
        _services.alerts.ask(whyNotEdited(looked->others));
    if (looked->files.isEmpty())
        return;
    if (looked->editor.isEmpty()) {
        _services.alerts.ask(
            Alert::failure(localized("There is no editor of texts!"),
                           localized("No installed program is set up to edit plain texts.")));
        return;
    }
    // Each is one start of the editor.
    if (const auto count = looked->files.size(); count > MostUnasked
        && _services.alerts.ask(
               Alert::question(filled(localized("Open %i files in the editor?"), int(count))))
            != Alert::Yes)
        return;
    _services.launching.openFiles(looked->files, looked->editor);
}

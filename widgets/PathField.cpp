#include "widgets/PathField.h"

#include "files/DirectoryReader.h"
#include "files/DiskQuestions.h"
#include "files/FileName.h"
#include "files/MountTable.h"
#include "files/PathText.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QStringListModel>

#include <dirent.h>

#include <algorithm>

namespace {

constexpr qsizetype MostNames = 10'000; // nobody looks through more
constexpr int ShownNames = 12;

// A field is one line of text; a name with another character in it cannot be typed.
bool canBeTyped(const QString &name)
{
    return std::ranges::none_of(name,
                                [](QChar each) { return each.category() == QChar::Other_Control; });
}

QStringList foldersIn(const QString &path) // worker thread
{
    QStringList names;
    const MountTable mounts = MountTable::current();
    DirectoryReader folder;
    if (folder.open(path))
        return names;
    // A link to a server is offered unasked: that may be gone, and with it every later answer. A
    // folder on a server is asked itself for all that it holds.
    const bool distrusts = mounts.hasSlow() && !mounts.slowMountOnTheWay(path);
    const auto isOffered = [&](const DirectoryItem &item, const QString &name) {
        if (item.type != DT_LNK && item.type != DT_UNKNOWN)
            return item.type == DT_DIR;
        return (distrusts && mounts.slowMountOnTheWay(PathText::joined(path, name)))
            || isFolder(folder.status(item.name.toByteArray().constData(), Links::Follow));
    };
    folder.read([&](const DirectoryItem &item) {
        const QString name = FileName::fromBytes(item.name.toByteArray());
        if (canBeTyped(name) && isOffered(item, name))
            names.append(name);
        return names.size() < MostNames;
    });
    std::ranges::sort(names, [](const QString &a, const QString &b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    return names;
}

} // namespace

PathField::PathField(DiskQuestions &diskQuestions, QWidget *parent)
    : QLineEdit(parent)
    , questions(diskQuestions)
    , _offered(new QStringListModel(this))
{
    auto *completer = new QCompleter(_offered, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setMaxVisibleItems(ShownNames);
    setCompleter(completer);
    completer->popup()->installEventFilter(this); // before the completer sees its keys
    connect(this, &QLineEdit::textEdited, this, &PathField::complete);
}

QString PathField::path() const
{
    const QString typed = text();
    const auto *first = std::ranges::find_if_not(typed, [](QChar each) { return each.isSpace(); });
    return PathText::fromTyped(typed.sliced(first - typed.cbegin()));
}

// Return is about what is typed as long as none of the offers is chosen: the list would only go.
bool PathField::eventFilter(QObject *watched, QEvent *event)
{
    QAbstractItemView *offers = completer()->popup();
    if (watched != offers || event->type() != QEvent::KeyPress || offers->currentIndex().isValid())
        return QLineEdit::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return QLineEdit::eventFilter(watched, event);
    offers->hide();
    QCoreApplication::sendEvent(this, event);
    return true;
}

void PathField::complete(const QString &typed)
{
    const QString typedFolder = typed.left(typed.lastIndexOf(u'/') + 1);
    if (typedFolder == _typedFolder)
        return;
    _typedFolder = typedFolder;
    _offered->setStringList({});
    const QString folder = PathText::fromTyped(typedFolder);
    if (folder.isEmpty())
        return;
    questions.ask(
        folder, [folder] { return foldersIn(folder); },
        [field = QPointer(this), typedFolder](const QStringList &names) {
            if (field && field->_typedFolder == typedFolder)
                field->offer(typedFolder, names);
        });
}

void PathField::offer(const QString &typedFolder, const QStringList &names)
{
    QStringList texts;
    for (const QString &name : names)
        texts.append(typedFolder + name);
    _offered->setStringList(texts);
    if (hasFocus() && !text().isEmpty()) {
        completer()->setCompletionPrefix(text());
        completer()->complete();
    }
}

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
#include <utility>

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

bool PathField::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Tab
        && takeOffer())
        return true;
    return QLineEdit::event(event);
}

// Return is about what is typed as long as none of the offers is chosen: the list would only go.
bool PathField::eventFilter(QObject *watched, QEvent *event)
{
    QAbstractItemView *offers = completer()->popup();
    if (watched != offers || event->type() != QEvent::KeyPress)
        return QLineEdit::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Tab && takeOffer())
        return true;
    if ((key != Qt::Key_Return && key != Qt::Key_Enter) || offers->currentIndex().isValid())
        return QLineEdit::eventFilter(watched, event);
    offers->hide();
    QCoreApplication::sendEvent(this, event);
    return true;
}

void PathField::complete(const QString &typed)
{
    const qsizetype nameAt = typed.lastIndexOf(u'/') + 1;
    const QString typedFolder = typed.left(nameAt);
    const bool offersHidden = typed.sliced(nameAt).startsWith(u'.');
    if (typedFolder == _typedFolder) {
        if (std::exchange(_offersHidden, offersHidden) != offersHidden)
            setOffers();
        return;
    }
    _typedFolder = typedFolder;
    _offersHidden = offersHidden;
    _names.clear();
    _takesWhenAnswered = false;
    setOffers();
    const QString folder = PathText::fromTyped(typedFolder);
    _isAsking = !folder.isEmpty();
    if (!_isAsking)
        return;
    questions.ask(
        folder, [folder] { return foldersIn(folder); },
        [field = QPointer(this), typedFolder](const QStringList &names) {
            if (!field || field->_typedFolder != typedFolder)
                return;
            field->_isAsking = false;
            field->_names = names;
            field->setOffers();
            field->showOffers();
            if (std::exchange(field->_takesWhenAnswered, false))
                field->takeOffer();
        });
}

void PathField::setOffers()
{
    QStringList texts;
    for (const QString &name : std::as_const(_names))
        if (_offersHidden || !name.startsWith(u'.'))
            texts.append(_typedFolder + name);
    _offered->setStringList(texts);
}

void PathField::showOffers()
{
    if (hasFocus() && !text().isEmpty()) {
        completer()->setCompletionPrefix(text());
        completer()->complete();
    }
}

QStringList PathField::fitting() const
{
    QStringList texts = _offered->stringList();
    texts.removeIf([typed = text()](const QString &each) {
        return !each.startsWith(typed, Qt::CaseInsensitive);
    });
    return texts;
}

bool PathField::takeOffer()
{
    // A second one goes on to the next control: the disk may never answer.
    _takesWhenAnswered = _isAsking && !_takesWhenAnswered;
    if (_takesWhenAnswered)
        return true;
    QAbstractItemView *offers = completer()->popup();
    if (const QModelIndex chosen = offers->currentIndex();
        offers->isVisible() && chosen.isValid()) {
        take(chosen.data().toString() + u'/');
        return true;
    }
    const QStringList texts = fitting();
    if (texts.isEmpty())
        return false;
    // Of more than were read it is not known that there is no choice.
    if (_names.size() < MostNames) {
        if (texts.size() == 1) {
            take(texts.first() + u'/');
            return true;
        }
        QString common = texts.first();
        for (const QString &each : texts)
            common.truncate(std::ranges::mismatch(common, each).in1 - common.cbegin());
        if (common.size() > text().size()) {
            take(common);
            return true;
        }
    }
    // Where there is a choice it is the person's.
    if (!offers->isVisible())
        return false;
    offers->setCurrentIndex(completer()->completionModel()->index(0, 0));
    return true;
}

void PathField::take(const QString &taken)
{
    completer()->popup()->hide();
    setText(taken);
    complete(taken);
    if (!_isAsking)
        showOffers();
}

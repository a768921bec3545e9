#include "tests/operations/OperationWorld.h"

#include "operations/Undoing.h"
#include "tests/support/FolderTrashCan.h"
#include "tests/support/InterruptedRuns.h"
#include "tests/support/Ledger.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Watched.h"
#include "tests/support/WithoutRights.h"

#include <QRandomGenerator>
#include <QTest>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

namespace {

// Random trees, operations, answers and faults; other programs at work; and at times the process is
// killed. After each operation, and again after the next start, every byte string that was there or
// came still is, unless the person agreed to lose exactly it or another program overwrote it.
class Round {
public:
    explicit Round(quint32 seed)
        : _random(seed)
        , world({}, seed % 2 ? Device::Other : Device::Same)
    {
        makeTree(world.folder, u"alias->~/from, from/a/a/, to/a/b/, victim=0 victim"_s);
        if (_random.bounded(2))
            world.workspace.trashFolder = world.folder.path(u"to/trash"_s);
        world.folder.makeFolder(world.workspace.trashFolder.mid(world.folder.path().size() + 1));
        for (int count = 0; count < 24; ++count)
            makeItem();
        world.workspace.trash = &_trash;
        world.programs.before = [this](const QStringList &arguments) { return fail(arguments); };
        world.programs.onStart = [this](pid_t process) { atStart(process); };
        world.alerts.decide = [this](const Alert &alert) { return answer(alert); };
    }

    // One operation and the next start; answers what is wrong with what they left.
    QByteArray step()
    {
        _ledger.clear();
        world.workspace.trashWorks = _random.bounded(5) > 0;
        _before = FoundContents::placesBelow(tops()).keys();
        close();
        const int mood = _random.bounded(4);
        _faultsIn = QList { 0, 0, 100, 15 }[_random.bounded(4)];
        _othersIn = QList { 0, 0, 40, 8 }[_random.bounded(4)];
        _sick = _random.bounded(8) == 0 ? _random.bounded(15) : -1;
        _plain = _random.bounded(4) == 0;
        _killedAt = mood == 0 ? 1 + _random.bounded(1 << _random.bounded(9)) : 0;
        const bool killsProgram = mood == 1;
        _killsAtStart = killsProgram ? _random.bounded(3) : 0;
        const quint32 seed = _random.generate();
        const quint32 seedOfStart = _random.generate();

        QByteArray wrong = inChild([&] {
            _random.seed(seed);
            operate();
        });
        if (wrong.isEmpty() && !_wasKilled)
            wrong = FoundContents::losses(_before, _ledger, FoundContents::placesBelow(tops()));
        // The next start may have no luck either.
        _othersIn = 0;
        if (wrong.isEmpty() && seedOfStart % 3 == 0)
            wrong = inChild([&] {
                _random.seed(seedOfStart);
                const Watched watched(watch());
                settle();
            });
        settle();
        if (wrong.isEmpty())
            wrong = FoundContents::losses(_before, _ledger, FoundContents::placesBelow(tops()));
        if (const QByteArray hidden = FoundContents::leftHidden(tops());
            wrong.isEmpty() && !hidden.isEmpty())
            wrong = "\n  stays: " + hidden;
        if (wrong.isEmpty())
            return {};
        for (const auto &[kind, text] : _ledger.entries())
            wrong += QByteArray("\n    ") + char(kind) + ' ' + text;
        return wrong;
    }

private:
    QStringList tops() const { return { world.folder.path(), world.far.path() }; }
    static QStringList places()
    {
        return {
            u"from"_s, u"to"_s, u"from/a"_s, u"to/a"_s, u"to/a/b"_s, u"alias"_s, u"from/a/a"_s
        };
    }
    static QStringList names()
    {
        return { u"a"_s,
                 u"b"_s,
                 u"c"_s,
                 u"-m"_s,
                 u"x y"_s,
                 FileName::fromBytes("\xff"),
                 QString(255, u'l') };
    }
    QString one(const QStringList &of) { return of[_random.bounded(int(of.size()))]; }
    QStringList several()
    {
        QStringList some = names();
        while (some.size() > 3)
            some.removeAt(_random.bounded(int(some.size())));
        return some;
    }

    void makeItem()
    {
        const QString name = PathText::joined(one(places()), one(names()));
        if (exists(world.folder.path(name)))
            return;
        QByteArray content = QByteArray::number(++_contents) + " content";
        if (_random.bounded(8) == 0)
            content += QByteArray(300'000, 'c');
        switch (_random.bounded(8)) {
        case 0:
            world.folder.link(world.folder.path(one(places()) + u'/' + one(names())), name);
            break;
        case 1:
            world.folder.makeFolder(name);
            world.folder.write(PathText::joined(name, one(names())), content);
            break;
        case 2:
            world.folder.write(PathText::parent(name) + u"/pair"_s, content);
            world.folder.hardLink(PathText::parent(name) + u"/pair"_s, name);
            unlink(world.folder.bytes(PathText::parent(name) + u"/pair"_s));
            break;
        default:
            world.folder.write(name, content);
        }
    }

    // Some files may not be read, some folders not be changed.
    void close()
    {
        for (const int mode : { 0, 0555, 0 }) {
            const QByteArray path =
                FileName::toBytes(world.folder.path(PathText::joined(one(places()), one(names()))));
            if (_random.bounded(3) == 0)
                fchmodat(AT_FDCWD, path, mode_t(mode), AT_SYMLINK_NOFOLLOW);
        }
    }

    // A program may do nothing, half of its work or all of it before it says that it failed.
    std::optional<int> fail(const QStringList &arguments)
    {
        actOfOthers();
        switch (_random.bounded(8)) {
        case 0:
            return 1;
        case 1:
            if (!exists(arguments.last()) && !arguments.first().endsWith(u"ln"_s)
                && exists(PathText::parent(arguments.last())))
                std::ofstream(FileName::toBytes(arguments.last()).constData()) << "half";
            return 1;
        case 2:
            DesktopPrograms().run(arguments);
            return 137;
        default:
            return std::nullopt;
        }
    }

    void atStart(pid_t process)
    {
        if (_killsAtStart == 1)
            kill(process, SIGKILL);
        if (_killsAtStart == 2)
            kill(getpid(), SIGKILL);
        actOfOthers();
    }

    Alert::Answer answer(const Alert &alert)
    {
        _ledger.note(Ledger::Told, FileName::toBytes(alert.text + u' ' + alert.details));
        const bool question = alert.buttons.size() > 1;
        const auto given = question
            ? QList { Alert::No, Alert::Yes, Alert::Yes, Alert::All }[_random.bounded(4)]
            : Alert::Ok;
        _all = _all || given == Alert::All;
        for (const QString &name : std::as_const(_items)) {
            const bool named = alert.text.contains(u"'%1'"_s.arg(FileName::shown(name)));
            if (named && !question) // nobody agreed to lose it for nothing
                for (const QByteArray &content : _agreed.take(name))
                    _ledger.note(Ledger::Withdrawn, content);
            if (given != Alert::All && (given != Alert::Yes || !named))
                continue;
            const QString target = PathText::joined(world.destination, name);
            FoundContents::openAll(target);
            for (const QByteArray &content : FoundContents::contentsAt(target)) {
                _agreed[name] += content;
                _ledger.note(Ledger::Agreed, content);
            }
        }
        return given;
    }

    static quint64 inodeAt(const QString &path)
    {
        struct stat status { };
        return lstat(FileName::toBytes(path), &status) == 0 ? status.st_ino : 0;
    }
    // A path by one name, whatever links lead to it; its last component is not followed.
    static QString resolved(const QString &path)
    {
        std::error_code ignored;
        const fs::path at(FileName::toBytes(path).toStdString());
        return FileName::fromBytes(
            (fs::weakly_canonical(at.parent_path(), ignored) / at.filename()).c_str());
    }
    // Whether what another program writes there now belongs to what is to be replaced.
    bool mayGo(const QString &given)
    {
        const QString path = resolved(given);
        for (const QString &name : std::as_const(_items)) {
            // The two may be exchanged for a moment.
            for (const QString &folder : { world.destination, world.source }) {
                const QString target = resolved(PathText::joined(folder, name));
                const bool inside = path.startsWith(target + u'/');
                if ((inside || path == target) && _old.contains(inodeAt(target)))
                    return _all || (inside && _agreed.contains(name));
            }
        }
        return false;
    }

    void actOfOthers()
    {
        if (!_others || !_othersIn || _random.bounded(_othersIn) > 0)
            return;
        QStringList old;
        for (const QString &name : std::as_const(_items))
            if (const QString target = PathText::joined(world.destination, name);
                _old.contains(inodeAt(target)))
                old += { target, PathText::joined(world.source, name) }; // they may be exchanged
        _others->act({ world.source, world.destination, world.destination }, _items);
        for (const QString &target : std::as_const(old))
            _old += inodeAt(target);
    }

    SystemCalls::Watch watch()
    {
        return [this, worker = std::this_thread::get_id()](Call call, const char *,
                                                           unsigned flags) -> int {
            if (std::this_thread::get_id() != worker)
                return 0; // it counts what there is
            if (++_calls == _killedAt)
                kill(getpid(), SIGKILL);
            if (_calls > 100'000)
                qFatal("It goes on for ever");
            // Nobody can close the gap between a last look and a removal, nor that before a rename
            // where there is none but the plain one.
            if (call != Call::Remove && (call != Call::Rename || flags))
                actOfOthers();
            if (_plain && answerOfPlainFileSystem(call, flags))
                return answerOfPlainFileSystem(call, flags);
            const int errors[] = { EIO,    ENOSPC, EINTR,  EDQUOT,     EROFS, EPERM,
                                   EACCES, EBUSY,  ENOMEM, EOPNOTSUPP, EINVAL };
            if (int(call) == _sick || (_faultsIn && _random.bounded(_faultsIn) == 0))
                return errors[_random.bounded(int(std::size(errors)))];
            return 0;
        };
    }

    void operate()
    {
        giveUpRights();
        OtherProgram others(_random.generate(), _ledger,
                            [this](const QString &path) { return mayGo(path); });
        _others = &others;
        world.source = world.folder.path(one(places()));
        world.destination = world.folder.path(one(places()));
        _items = several();
        for (const QString &item : std::as_const(_items))
            _old += inodeAt(PathText::joined(world.destination, item));
        const QString name = one(names());
        const QString target = PathText::joined(world.destination, name);
        const int verb = _random.bounded(14);
        _ledger.note(
            Ledger::Act,
            FileName::toBytes(u"%1: %2 to %3: %4 or %5; kill %6, sick %7, plain %8"_s.arg(verb)
                                  .arg(world.source, world.destination, _items.join(u", "_s), name)
                                  .arg(_killedAt)
                                  .arg(_sick)
                                  .arg(_plain)));
        const Watched watched(watch());
        DoneItems done;
        if (verb < 10 && world.source != world.destination) // else refused at the door
            done = world.runHere(verb < 5 ? Operation::Copy : Operation::Move, _items);
        if (verb == 10)
            done = world.steps.deleteItems(world.request(_items));
        if (verb == 11)
            done = world.steps.createAlias(world.request(_items));
        if (verb == 12)
            done =
                world.steps.duplicateItem(PathText::joined(world.source, _items.first()), target);
        if (verb == 13) {
            AcceptedRequest request = world.request({});
            request.source = PathText::joined(world.destination, _items.first());
            request.destination = target;
            world.steps.renameItem(request, world.record);
            done = world.record.done;
        }
        if (_random.bounded(2))
            undo(done);
    }

    // Nobody agrees to lose anything by that.
    void undo(const DoneItems &done)
    {
        _old = { 0 };
        _all = false;
        _agreed.clear();
        actOfOthers();
        Undoing undoing({ world.programs, world.workspace, world.engine.journal(), {}, [this] {
                             return _random.bounded(10) == 0;
                         } });
        undoing.undo(done);
        for (const QString &line : undoing.told())
            _ledger.note(Ledger::Told, FileName::toBytes(line));
    }

    void settle()
    {
        const QStringList told = settleInterruptedRuns(world.engine.journal(), world.workspace);
        for (const QString &line : told)
            _ledger.note(Ledger::Told, FileName::toBytes(line));
    }

    // Does the work in a process that may be killed, and waits for those that it leaves.
    QByteArray inChild(const std::function<void()> &work) noexcept
    {
        const pid_t child = fork();
        if (child == 0) {
            alarm(30);
            work();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        while (waitpid(-1, nullptr, 0) > 0) { }
        _wasKilled = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        return _wasKilled || status == 0 ? QByteArray()
                                         : "ended with " + QByteArray::number(status);
    }

    QRandomGenerator _random;
    World world;
    Ledger _ledger;
    FolderTrashCan _trash { world.workspace };
    OtherProgram *_others = nullptr;
    QList<QByteArray> _before;
    QStringList _items;
    QHash<QString, QSet<QByteArray>> _agreed; // by the item that is to replace it
    QSet<quint64> _old { 0 }; // what may stand at the names until the new items do
    bool _all = false;
    int _contents = 0;
    int _calls = 0;
    int _faultsIn = 0; // one in so many calls
    int _othersIn = 0;
    int _sick = -1; // a kind of call that never works
    bool _plain = false; // a file system without anything
    int _killedAt = 0; // the call
    int _killsAtStart = 0; // of a program: 1 that, 2 the operation
    bool _wasKilled = false;
};

} // namespace

class tst_NothingIsLost : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prctl(PR_SET_CHILD_SUBREAPER, 1); }
    void butWhatTheUserAgreedToLose();
};

// TWINLEAF_SEEDS: "first-last", else a few hundred runs.
void tst_NothingIsLost::butWhatTheUserAgreedToLose()
{
    const QString seeds = qEnvironmentVariable("TWINLEAF_SEEDS", u"1-75"_s);
    int failures = 0;
    for (quint32 seed = seeds.section(u'-', 0, 0).toUInt();
         seed <= seeds.section(u'-', -1).toUInt(); ++seed) {
        Round round(seed);
        QByteArray wrong;
        for (int count = 1; count <= 4 && wrong.isEmpty(); ++count)
            wrong = round.step();
        if (wrong.isEmpty())
            continue;
        ++failures;
        qWarning("Seed %u: %s", seed, wrong.constData());
    }
    QCOMPARE(failures, 0);
}

QTEST_GUILESS_MAIN(tst_NothingIsLost)
#include "tst_NothingIsLost.moc"

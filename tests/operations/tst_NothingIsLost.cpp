#include "tests/operations/OperationWorld.h"

#include "files/FileSystem.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

// Random trees, operations, answers and failures. After each operation every byte string that was
// there still is, unless it lay in what the user agreed to replace.
class Round {
public:
    explicit Round(quint32 seed)
        : _random(seed)
    {
        makeTree(world.folder, u"alias->~/from, from/a/a/, to/a/b/"_s);
        for (int count = 0; count < 24; ++count)
            makeItem();
        world.programs.before = [this](const QStringList &arguments) { return fail(arguments); };
        world.alerts.decide = [this](const Alert &alert) { return answer(alert); };
    }

    // One operation; answers what it lost without leave.
    QSet<QByteArray> step()
    {
        _agreed.clear();
        world.workspace.trashWorks = _random.bounded(5) > 0;
        const QSet<QByteArray> before = contentsBelow(world.folder.path());
        operate();
        QSet<QByteArray> lost = before - contentsBelow(world.folder.path());
        for (const auto &agreed : std::as_const(_agreed))
            lost -= agreed;
        return lost;
    }

    QString told; // the operation, for the message of a failure

private:
    static QStringList places()
    {
        return {
            u"from"_s, u"to"_s, u"from/a"_s, u"to/a"_s, u"to/a/b"_s, u"alias"_s, u"from/a/a"_s
        };
    }
    static QStringList names()
    {
        return { u"a"_s, u"b"_s, u"c"_s, u"-m"_s, u"x y"_s, FileName::fromBytes("\xff") };
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
        const QByteArray content = "content " + QByteArray::number(++_contents);
        switch (_random.bounded(8)) {
        case 0:
            world.folder.link(world.folder.path(one(places()) + u'/' + one(names())), name);
            break;
        case 1:
            world.folder.makeFolder(name);
            world.folder.write(PathText::joined(name, one(names())), content);
            break;
        case 2:
            world.folder.write(u"pair"_s, content);
            world.folder.hardLink(u"pair"_s, name);
            FileSystem::removeTree(world.folder.path(u"pair"_s));
            break;
        default:
            world.folder.write(name, content);
        }
    }

    // A program may do nothing, half of its work or all of it before it says that it failed.
    std::optional<int> fail(const QStringList &arguments)
    {
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

    Alert::Answer answer(const Alert &alert)
    {
        const bool question = alert.buttons.size() > 1;
        const auto given = question
            ? QList { Alert::No, Alert::Yes, Alert::Yes, Alert::All }[_random.bounded(4)]
            : Alert::Ok;
        for (const QString &name : std::as_const(_items)) {
            const QString target = PathText::joined(world.destination, name);
            const bool named = alert.text.contains(u"'%1'"_s.arg(FileName::shown(name)));
            if (named && !question)
                _agreed.remove(name); // nobody agreed to lose it for nothing
            if (given == Alert::All || (given == Alert::Yes && named))
                _agreed[name] += contentsAt(target);
        }
        return given;
    }

    QSet<QByteArray> contentsAt(const QString &path)
    {
        if (const auto link = linkTarget(path))
            return { "-> " + FileName::toBytes(*link) };
        if (const auto status = fileStatus(path, Links::NoFollow);
            status && status->kind == FileKind::Regular)
            return { world.folder.read(path.mid(world.folder.path().size() + 1)) };
        return contentsBelow(path);
    }

    void operate()
    {
        world.source = world.folder.path(one(places()));
        world.destination = world.folder.path(one(places()));
        _items = several();
        const QString name = one(names());
        const QString target = PathText::joined(world.destination, name);
        const int verb = _random.bounded(10);
        told = u"%1: %2 to %3: %4 or %5"_s.arg(verb).arg(world.source, world.destination,
                                                         _items.join(u", "_s), name);
        if (verb < 6 && world.source != world.destination) // else refused at the door
            world.runHere(verb < 3 ? Operation::Copy : Operation::Move, _items);
        if (verb == 6)
            world.steps.deleteItems(world.request(_items));
        if (verb == 7)
            world.steps.createAlias(world.request(_items));
        if (verb == 8)
            world.steps.duplicateItem(PathText::joined(world.source, _items.first()), target);
        if (verb == 9) {
            AcceptedRequest request = world.request({});
            request.source = PathText::joined(world.destination, _items.first());
            request.destination = target;
            world.steps.renameItem(request, world.record);
        }
    }

    QRandomGenerator _random;
    World world;
    QStringList _items;
    QHash<QString, QSet<QByteArray>> _agreed; // by the item that is to replace it
    int _contents = 0;
};

} // namespace

class tst_NothingIsLost : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void butWhatTheUserAgreedToLose();
};

void tst_NothingIsLost::butWhatTheUserAgreedToLose()
{
    for (quint32 seed = 1; seed <= 100; ++seed) {
        Round round(seed);
        for (int count = 0; count < 4; ++count) {
            const QSet<QByteArray> lost = round.step();
            if (!lost.isEmpty())
                qWarning() << "Seed" << seed << "step" << count << round.told << lost;
            QVERIFY(lost.isEmpty());
        }
    }
}

QTEST_GUILESS_MAIN(tst_NothingIsLost)
#include "tst_NothingIsLost.moc"

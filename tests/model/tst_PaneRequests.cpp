#include "model/ItemInformation.h"
#include "tests/support/RecordedDesk.h"
#include "tests/support/World.h"

#include <unistd.h>

namespace {

const QList<Message<ItemRequest>> ItemCommands { CopyItem, MoveItem, DeleteItem, RenameItem,
                                                 ShowInfo };

struct RecordedInformation final : ItemInformation {
    void showInfoSheet(const OperationRequest &request) override { requests.append(request); }
    QList<OperationRequest> requests;
};

// What reaches the operations is written down, and not done. A person is asked, as nothing else is
// stored.
struct Requests : World {
    RecordedDesk desk;
    RecordedInformation information;

    explicit Requests(const QVariant &asks = {})
        : World(u"left/sub/, left/a=a, left/b=b, left/c=c"_s)
    {
        defaults.setValue(Settings::ConfirmationForFileOperations, asks);
        model.setTwinleaf(&desk);
        model.setInfoSheetController(&information);
        start();
    }
    QString left(const QString &name = {}) const { return folder.path(u"left"_s) + name; }
    ItemRequest request(const RowSet &rows) const
    {
        return { .side = Side::Left, .item = rows, .seen = model.rowsLeft() };
    }
    ItemRequest request(const QString &name) const { return request(RowSet { row(name) }); }
    bool nothingWasAskedFor() const
    {
        return desk.verbs.isEmpty() && information.requests.isEmpty() && prompts.isEmpty();
    }
    void post(const Message<ItemRequest> &command, const ItemRequest &request,
              const QString &newName)
    {
        answerSheet(newName);
        bus.post(command, request);
    }
    void makeFolder(const std::optional<Side> &side, const QString &name)
    {
        answerSheet(name);
        bus.post(NewFolder, { .side = side });
    }
};

OperationRequest expected(const QString &source, const QString &destination,
                          const QStringList &items, UpdateBoth updateBoth)
{
    return { source, destination, items, Side::Left, updateBoth };
}

} // namespace

class tst_PaneRequests : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void requests()
    {
        Requests world(false);
        const ItemRequest one = world.request(u"b"_s);
        const ItemRequest two = world.request(RowSet { world.row(u"sub"_s), world.row(u"b"_s) });
        for (const auto &command : { CopyItem, MoveItem, DeleteItem })
            world.bus.post(command, two);
        world.post(RenameItem, one, u"new"_s);
        world.makeFolder(Side::Left, u"new"_s);
        world.bus.post(ShowInfo, one);

        const QStringList names { u"sub"_s, u"b"_s };
        const QString right = world.folder.path(u"right"_s);
        const QList<OperationRequest> requests {
            expected(world.left(), right, names, UpdateBoth::Yes),
            expected(world.left(), right, names, UpdateBoth::Yes),
            expected(world.left(), u""_s, names, UpdateBoth::No),
            expected(world.left(u"/b"_s), world.left(u"/new"_s), {}, UpdateBoth::No),
            expected(world.left(), u""_s, { u"new"_s }, UpdateBoth::No),
        };
        QCOMPARE(world.desk.verbs.join(u", "_s), u"copy, move, delete, rename, new folder"_s);
        QCOMPARE(world.desk.requests, requests);
        QCOMPARE(world.information.requests,
                 { expected(world.left(), u""_s, { u"b"_s }, UpdateBoth::No) });
        QCOMPARE(world.prompts.join(u' '),
                 u"Please enter new name:|b Please input new folder name:|"_s);

        // A new name is needed.
        world.makeFolder(Side::Left, {});
        world.post(RenameItem, one, {});
        world.post(RenameItem, one, u"b"_s); // its own
        QCOMPARE(world.prompts.size(), 5);
        QCOMPARE(world.desk.requests, requests);
    }

    void aRenameIsAboutTheItemThatWasShown()
    {
        Requests world(false);
        const ItemRequest one = world.request(u"b"_s);
        whenSheetOpens(world.window, [&](QWidget &) {
            world.folder.shell(u"mv left/b left/away; echo another > left/b"_s);
        });
        world.answerSheet(u"new"_s);
        world.alerts.answer(Alert::Ok);
        world.bus.post(RenameItem, one);
        QCOMPARE(world.desk.requests.size(), 0);
        QVERIFY(world.alerts.last().details.endsWith(u"not the item any more that was shown."_s));
    }

    void bothPanesAreRefreshedWhenTheyShowOnePath()
    {
        Requests world(false);
        world.show(Side::Right, u"left"_s);
        world.bus.post(DeleteItem, world.request(u"b"_s));
        world.post(RenameItem, world.request(u"b"_s), u"new"_s);
        world.makeFolder(Side::Left, u"new"_s);
        // Without an active pane no name is asked for, and a request names no side, so that the
        // operations refuse it: a guessed one would act on a pane nobody chose.
        world.bus.post(NewFolder, {});
        world.bus.post(DeleteItem, { .item = { 1 }, .seen = world.model.rowsRight() });
        QCOMPARE(world.desk.requests.size(), 4);
        for (const OperationRequest &request : world.desk.requests) {
            QCOMPARE(request.updateBoth.value(), UpdateBoth::Yes);
            QCOMPARE(request.side.isMissing(), &request == &world.desk.requests[3]);
        }
    }

    void copyIntoTheSameFolderIsRefusedFirst()
    {
        Requests world;
        world.folder.link(u"left"_s, u"left by another name"_s);
        for (const QString &other : { u"left"_s, u"left by another name"_s }) {
            world.show(Side::Right, other);
            for (const auto &[command, text] :
                 { std::pair(CopyItem, u"Item(s) cannot copied in itself!"_s),
                   { MoveItem, u"Item(s) cannot moved in itself!"_s } }) {
                world.alerts.answer(Alert::Ok);
                world.bus.post(command, world.request(u"b"_s));
                QCOMPARE(world.alerts.last().text, text);
                QVERIFY(world.nothingWasAskedFor());
            }
        }
    }

    void parentRowIsRefusedAndRowsThatAreGoneAreDropped()
    {
        for (const auto &command : ItemCommands) {
            Requests world;
            const bool says =
                &command < &ItemCommands[3]; // the others are for one item, and silent
            for (const RowSet &rows : { RowSet { 0 }, RowSet { 0, world.row(u"b"_s) } }) {
                if (says)
                    world.alerts.answer(Alert::Ok);
                world.bus.post(command, world.request(rows));
                QCOMPARE(
                    world.alerts.last().text,
                    says ? u"The previous folder ('..') cannot be worked on with! Operation will "
                           u"be aborted!"_s
                         : QString());
            }
            const ItemRequest seen = world.request(u"b"_s);
            const int last = int(world.model.rowsLeft().size());
            for (const RowSet &rows : { RowSet {}, RowSet { -1 }, RowSet { last } })
                world.bus.post(command, world.request(rows));
            world.bus.post(command, { .side = Side::Left, .item = { last - 1 } });
            unlink(FileName::toBytes(world.left(u"/b"_s)));
            world.show(Side::Left, u"left"_s);
            world.bus.post(command, seen);
            QVERIFY(world.nothingWasAskedFor());
        }
    }

    void rowsAreFoundAgainByPath()
    {
        Requests world(false);
        const ItemRequest seen = world.request(RowSet { world.row(u"a"_s), world.row(u"c"_s) });
        world.folder.makeFolder(u"left/0 new"_s);
        world.model.sortRowEntries(Column::Name, Side::Left, SortDirection::Descending);
        world.show(Side::Left, u"left"_s);
        world.bus.post(CopyItem, seen);
        // In the order in which the pane shows them now.
        QCOMPARE(world.desk.requests.value(0).items, QStringList({ u"c"_s, u"a"_s }));
        world.bus.post(OpenFileWithApplication, { u"/app"_s, seen.item, Side::Left, seen.seen });
        QCOMPARE(world.workspace.calls.value(1),
                 QStringList({ u"open"_s, world.left(u"/a"_s), u"/app"_s }));
    }

    // ".." has the path of the folder it is listed in, which one level up is an item's path.
    void parentRowAndItsFolderAreNotMixedUp()
    {
        Requests world(false);
        const ItemRequest onParent = world.request(RowSet { 0 });
        world.open(u".."_s);
        const ItemRequest onFolder = world.request(u"left"_s);
        world.bus.post(DeleteItem, onParent);
        world.open(u"left"_s);
        world.bus.post(DeleteItem, onFolder);
        QVERIFY(world.desk.verbs.isEmpty());
        world.bus.post(GetRows.left, { onParent.item, onParent.seen });
        QCOMPARE(world.shown(), world.folder.path());
    }

    void confirmationDecides()
    {
        const std::tuple<Message<ItemRequest>, QString, QString> cases[] = {
            { CopyItem, u"Are you sure that you want to copy the item(s)?"_s, u" to right"_s },
            { MoveItem, u"Are you sure that you want to move the item(s)?"_s, u" to right"_s },
            { DeleteItem,
              u"Are you sure that you want to move the selected 2 item(s) to trash?"_s,
              {} },
        };
        for (const auto &[command, text, to] : cases) {
            Requests world;
            const ItemRequest request =
                world.request(RowSet { world.row(u"a"_s), world.row(u"b"_s) });
            world.alerts.answer(Alert::No);
            world.bus.post(command, request);
            QVERIFY(world.nothingWasAskedFor());
            QCOMPARE(world.alerts.shown().value(0).text, text);
            QCOMPARE(world.alerts.shown().value(0).details, u"2 items, 2 Bytes, from left"_s + to);
            // What is in a folder is not counted for a question.
            for (const QString &name : { u"sub"_s, u"b"_s }) {
                world.alerts.answer(Alert::No);
                world.bus.post(command, world.request(name));
                QCOMPARE(world.alerts.last().details,
                         name + (name == u"b" ? u", 1 Bytes"_s : QString()) + u", from left"_s
                             + to);
            }

            // What is listed anew under the question does not change what was asked about.
            world.alerts.decide = [&](const Alert &) {
                world.bus.post(DirectoryChanged.left, { .path = world.folder.path() });
                return Alert::Yes;
            };
            world.bus.post(command, request);
            const OperationRequest done = world.desk.requests.value(0);
            QCOMPARE(done.items, QStringList({ u"a"_s, u"b"_s }));
            QCOMPARE(done.source, world.left());
        }
    }
};

QTEST_MAIN(tst_PaneRequests)
#include "tst_PaneRequests.moc"

#include "base/MainThread.h"
#include "operations/UndoHistory.h"
#include "tests/operations/DeskWorld.h"
#include "tests/support/FolderTrashCan.h"
#include "widgets/Mnemonics.h"
#include "window/NoticeLabel.h"

namespace {

struct UndoDesk : Desk {
    explicit UndoDesk(const QString &words)
        : Desk(words)
    {
        workspace.trash = &trashCan;
    }

    void rename(const QString &name, const QString &newName)
    {
        operations.renameItem(
            { source + u'/' + name, source + u'/' + newName, {}, Side::Left, UpdateBoth::No });
        operations.drain();
    }
    OperationRequest request(const QStringList &items) const
    {
        return { source, destination, items, Side::Left, UpdateBoth::Yes };
    }
    void undoByKey()
    {
        QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
        operations.drain();
    }
    // As the menu has it; "" when it is not to be had.
    QString offered()
    {
        const QString text =
            isEnabled(Command::Undo) ? commands.action(Command::Undo)->text() : QString();
        closeMenus();
        return Mnemonics::unmarked(text);
    }

    FolderTrashCan trashCan { workspace };
};

} // namespace

class tst_UndoLast : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theMenuSaysWhatTheKeyUndoes()
    {
        UndoDesk desk(u"from/a=a, from/b=b"_s);
        desk.focus(Side::Left);
        QCOMPARE(desk.offered(), QString());
        desk.undoByKey(); // of nothing
        desk.rename(u"a"_s, u"x&y"_s);
        QCOMPARE(desk.offered(), u"Undo rename of 'x&&y'"_s);
        desk.operations.copyItems(desk.request({ u"b"_s, u"x&y"_s }));
        desk.operations.drain();
        QCOMPARE(desk.offered(), u"Undo copy of 2 items"_s);
        desk.alerts.answer({ Alert::No, Alert::Yes });
        desk.undoByKey();
        QCOMPARE(desk.alerts.last().buttons.first().answer, Alert::No);
        QCOMPARE(desk.offered(), u"Undo copy of 2 items"_s);
        desk.undoByKey();
        QCOMPARE(desk.alerts.last().text, u"Undo moves 2 item(s) to the Trash. Are you sure?"_s);
        QCOMPARE(desk.names(Side::Right), u".."_s);
        desk.undoByKey();
        QCOMPARE(desk.tree(), u"from/a=a, from/b=b, trash/b=b, trash/x&y=a"_s);
        QCOMPARE(desk.selected(), u"a"_s);
        QCOMPARE(desk.offered(), QString());
    }

    void whatMovesManyAsksAsOtherOperationsDo()
    {
        const QString given = u"from/a=a, from/b=b"_s;
        UndoDesk desk(given);
        for (const bool moves : { true, false }) {
            const auto request = desk.request({ u"a"_s, u"b"_s });
            moves ? desk.operations.moveItems(request) : desk.operations.deleteItems(request);
            desk.operations.drain();
            QVERIFY(desk.tree() != given);
            desk.alerts.answer({ Alert::No, Alert::Yes });
            desk.operations.undoLast();
            QVERIFY(desk.tree() != given);
            desk.operations.undoLast();
            desk.operations.drain();
            QCOMPARE(desk.tree(), given);
            QCOMPARE(desk.alerts.last().text,
                     moves ? u"Undo moves 2 item(s) back. Are you sure?"_s
                           : u"Undo puts 2 item(s) back from the Trash. Are you sure?"_s);
        }
    }

    void whatComesBackOutOfSightIsTold()
    {
        for (const bool isOne : { true, false }) {
            UndoDesk desk(u"from/a=a, from/b=b, away/"_s);
            desk.operations.deleteItems(
                desk.request(isOne ? QStringList { u"a"_s } : QStringList { u"a"_s, u"b"_s }));
            desk.operations.drain();
            desk.show(Side::Left, u"away"_s);
            desk.alerts.decide = [](const Alert &) { return Alert::Yes; };
            desk.operations.undoLast();
            desk.operations.drain();
            QCOMPARE(desk.window.notice->text(),
                     (isOne ? u"'a' is back in '%1'."_s : u"2 items are back in '%1'."_s)
                         .arg(desk.source));
            QCOMPARE(desk.tree(), u"from/a=a, from/b=b"_s);
        }
    }

    // The person would mean what is under way, and an older operation would be undone.
    void nothingIsUndoneUnderARun()
    {
        UndoDesk desk(u"from/a=a, from/f/x=x"_s);
        desk.rename(u"a"_s, u"b"_s);
        bool tried = false;
        desk.programs.before = [&](const QStringList &) -> std::optional<int> {
            onMainThread([&] { desk.operations.undoLast(); });
            tried = true;
            return std::nullopt;
        };
        desk.operations.copyItems(desk.request({ u"f"_s }));
        desk.operations.drain();
        QVERIFY(tried);
        QCOMPARE(desk.tree(), u"from/b=a, from/f/x=x, to/f/x=x"_s);
        QCOMPARE(desk.offered(), u"Undo copy of 'f'"_s);
    }

    // What was done before it would be taken for it.
    void nothingOlderIsUndoneInPlaceOfWhatWasMeant()
    {
        UndoDesk desk(u"from/a=a, from/b=b, to/"_s);
        desk.rename(u"a"_s, u"x"_s);
        desk.operations.moveItems(desk.request({ u"x"_s, u"b"_s }));
        desk.operations.drain();
        desk.folder.write(u"from/x"_s, "taken");
        desk.alerts.decide = [](const Alert &alert) {
            return alert.buttons.size() > 1 ? Alert::Yes : Alert::Ok;
        };
        desk.undoByKey();
        QCOMPARE(desk.tree(), u"from/b=b, from/x=taken, to/x=a"_s);
        QCOMPARE(desk.offered(), u"Undo move of 'x'"_s);
        desk.undoByKey(); // still
        QCOMPARE(desk.offered(), u"Undo rename of 'x'"_s);
        const auto seen = fileStatus(desk.folder.path(u"from/b"_s), Links::NoFollow)->identity;
        desk.operations.deletePermanently(desk.request({ u"b"_s }), { seen });
        desk.operations.drain();
        QCOMPARE(desk.offered(), QString());
        QCOMPARE(desk.tree(), u"from/x=taken, to/x=a"_s);
    }

    void oldAndHugeOperationsAreForgotten()
    {
        const auto deed = [](qsizetype count) {
            DoneItems done;
            for (; count > 0; --count)
                done.add({ .way = DoneItem::Moved, .to = { u"/"_s, QString::number(count) } });
            return done;
        };
        UndoHistory history;
        for (int count = 1; count <= UndoHistory::MostOperations + 1; ++count)
            history.add(deed(count));
        int left = 0;
        for (; !history.isEmpty(); ++left)
            QCOMPARE(history.takeLast().items().size(), UndoHistory::MostOperations + 1 - left);
        QCOMPARE(left, UndoHistory::MostOperations);
        history.add(deed(1));
        history.add(deed(DoneItems::Most));
        QCOMPARE(history.takeLast().items().size(), DoneItems::Most);
        QVERIFY(history.isEmpty()); // with the other there were too many
        history.add(deed(1));
        history.add(deed(DoneItems::Most + 1));
        QVERIFY(history.isEmpty());
    }
};

QTEST_MAIN(tst_UndoLast)
#include "tst_UndoLast.moc"

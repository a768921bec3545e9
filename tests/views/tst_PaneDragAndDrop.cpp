#include "views/PaneDragAndDrop.h"

#include "files/FileUrls.h"
#include "tests/support/RecordedDesk.h"
#include "tests/support/World.h"
#include "views/DropDecision.h"

#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>

namespace {

// Both panes on one folder of a file and a folder, with drops into the left one.
struct Drops : World {
    RecordedDesk desk;
    PaneDragAndDrop drops { list(), model, twinleaf, desk, alerts };

    Drops()
        : World(u"left/a file=a, left/a folder/"_s)
    {
        defaults.setValue(Settings::ConfirmationForFileOperations, false);
        startOnLeft();
    }
    QString path(const QString &name) const { return folder.path(u"left/"_s + name); }
    bool drop(const QStringList &paths, int mask, bool fromOutside = false)
    {
        return drops.acceptInto(shown(), paths, mask, fromOutside);
    }
    QString asked() const // of one drop: what to do and which panes to list again
    {
        QStringList words = desk.verbs;
        for (const OperationRequest &request : desk.requests)
            words.append(updateBothWord(*request.updateBoth.value()));
        return words.join(u' ');
    }
};

} // namespace

class tst_PaneDragAndDrop : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void heldKeysDecide()
    {
        using namespace DragOperation;
        using enum Qt::KeyboardModifier;
        const std::tuple<Qt::KeyboardModifiers, int, int> rows[] = {
            { {}, Move, Move },
            { AltModifier, Copy, Copy },
            { ControlModifier, Move, Move },
            { AltModifier | ControlModifier, Generic, Link },
            { ShiftModifier | ControlModifier, Copy, Copy }, // where Alt is not to be had
            { AltModifier | ShiftModifier, Move, Move }, // one key more moves
            { AltModifier | KeypadModifier, Copy, Copy }, // does not count
        };
        for (const auto &[held, offered, shown] : rows) {
            QCOMPARE(DropDecision::draggingSourceOperationMask(held), offered);
            QCOMPARE(DropDecision::draggingUpdated(held), shown);
        }
    }

    void theMaskDecidesTheWork()
    {
        using namespace DragOperation;
        const std::tuple<int, bool, QString> rows[] = {
            { Move, false, u"move DragDropMove"_s },
            { Move | Copy, false, u"copy DragDropCopy"_s },
            { Move | Copy | Generic | Link, false, u"alias DragDropCopy"_s },
            { Move, true, u"move DragDropFinder"_s }, // from outside
            { Link, true, {} }, // alone is refused
        };
        for (const auto &[mask, fromOutside, work] : rows) {
            Drops world;
            QCOMPARE(world.drop({ u"/elsewhere/x"_s }, mask, fromOutside), !work.isEmpty());
            QCOMPARE(world.asked(), work);
        }
    }

    void aDropIntoItsOwnFolderIsRefused()
    {
        using namespace DragOperation;
        const QString copy = u"Item(s) cannot copied in itself!"_s;
        const QString move = u"Item(s) cannot moved in itself!"_s;
        const std::pair<int, QStringList> rows[] = {
            { Copy, { copy } }, { Move, { move } }, { Copy | Move, { copy, move } }, { Generic, {} }
        };
        // Under another name it is the same folder.
        for (const QString &dropped : { u"a file"_s, u"a folder/link/a file"_s }) {
            for (const auto &[mask, told] : rows) {
                Drops world;
                world.folder.link(world.shown(), u"left/a folder/link"_s);
                QStringList texts;
                world.alerts.decide = [&](const Alert &alert) {
                    texts.append(alert.text);
                    return Alert::Ok;
                };
                QVERIFY(!world.drop({ world.path(dropped) }, mask));
                QCOMPARE(texts, told);
                QVERIFY(world.desk.requests.isEmpty());
            }
        }
    }

    void itemsOfSeveralFoldersAreSeveralRequests()
    {
        Drops world;
        world.drop({ u"/b/1"_s, u"/a/2"_s, u"/b/3"_s }, DragOperation::Copy, true);
        QStringList asked;
        for (const OperationRequest &request : std::as_const(world.desk.requests))
            asked +=
                sideWord(*request.side.value()) + request.source + u':' + request.items.join(u',');
        QCOMPARE(asked, QStringList({ u"Left/b:1,3"_s, u"Left/a:2"_s }));
    }

    void onlyYesGoesOn()
    {
        Drops world;
        world.defaults.setValue(Settings::ConfirmationForFileOperations, true);
        world.model.setUserDefaultValues();
        for (const auto answer : { Alert::No, Alert::All, Alert::Yes }) {
            world.alerts.answer(answer);
            QCOMPARE(world.drop({ u"/b/1"_s }, DragOperation::Generic), answer == Alert::Yes);
        }
        QCOMPARE(world.desk.requests.size(), 1);
        QCOMPARE(world.alerts.last().text,
                 u"Are you sure that you want to create an alias from this item(s)?"_s);
        QCOMPARE(world.alerts.last().details, u"1, from b to left"_s);
        // What a pane lists has its size told, but for a folder.
        const auto asked = [&](const QStringList &names) {
            QStringList paths;
            for (const QString &name : names)
                paths.append(world.path(name));
            world.alerts.answer(Alert::No);
            world.drops.acceptInto(u"/to"_s, paths, DragOperation::Copy, false);
            return world.alerts.last().details;
        };
        QCOMPARE(asked({ u"a file"_s }), u"a file, 1 Bytes, from left to to"_s);
        QCOMPARE(asked({ u"a file"_s, u"a folder"_s }), u"2 items, from left to to"_s);
        QCOMPARE(asked({ u"a file"_s, u"gone"_s }), u"2 items, from left to to"_s);
    }

    void rowsLeaveInTheirOrder()
    {
        Drops world;
        const int folder = world.row(u"a folder"_s);
        const int file = world.row(u"a file"_s);
        const std::unique_ptr<QMimeData> data(world.drops.writeRows({ folder, 0, file }));
        // Kept: ".." goes as the listed folder itself.
        QCOMPARE(
            FileUrls::pathsOf(data->data(u"text/uri-list"_s)),
            QStringList({ world.path(u"a folder"_s), world.shown(), world.path(u"a file"_s) }));
    }

    void eventsFromOutsideAreCopiedBeforeTheyAreMoved()
    {
        using enum Qt::DropAction;
        const QByteArray file = "file:///elsewhere/x\r\n";
        const struct {
            QByteArray urls;
            Qt::DropActions offered;
            Qt::DropAction shown, answered; // while held, and after the drop
            QString work;
            bool isOurs = false; // from another of these programs
        } rows[] = {
            { file, CopyAction | MoveAction | LinkAction, CopyAction, CopyAction,
              u"copy DragDropFinder"_s },
            { file, MoveAction, MoveAction, IgnoreAction,
              u"move DragDropFinder"_s }, // only we delete
            { file, LinkAction, IgnoreAction, IgnoreAction, {} },
            { file, LinkAction, LinkAction, IgnoreAction, u"alias DragDropFinder"_s, true },
            { file, CopyAction, CopyAction, CopyAction, u"copy DragDropFinder"_s, true },
            { "https://a/b\r\n", CopyAction, IgnoreAction, IgnoreAction, {} },
        };
        for (const auto &[urls, offered, shown, answered, work, isOurs] : rows) {
            Drops world;
            QMimeData data;
            data.setData(u"text/uri-list"_s, urls);
            if (isOurs)
                data.setData(u"application/x-twinleaf-items"_s, {});
            QDragEnterEvent over(QPoint(5, 5), offered, &data, Qt::LeftButton, {});
            over.setDropAction(IgnoreAction);
            // Not sent: the toolkit delivers a drop only to the widget that a drag entered before.
            world.drops.eventFilter(world.list().viewport(), &over);
            QCOMPARE(over.isAccepted() ? over.dropAction() : IgnoreAction, shown);
            QDropEvent event(QPointF(5, 5), offered, &data, Qt::LeftButton, {});
            event.setDropAction(IgnoreAction);
            event.ignore();
            world.drops.eventFilter(world.list().viewport(), &event);
            QCOMPARE(event.isAccepted(), !work.isEmpty());
            QCOMPARE(event.dropAction(), answered);
            QTRY_COMPARE(world.asked(), work);
        }
    }

    void overAFileThePaneIsTheTarget()
    {
        Drops world;
        QMimeData data;
        data.setData(u"text/uri-list"_s, "file:///elsewhere/x\r\n");
        for (const QString &name : { u"a file"_s, u"a folder"_s, u".."_s, QString() }) {
            const int row = world.row(name);
            const int y = row < 0 ? world.list().viewport()->height() - 5
                                  : world.list().rowViewportPosition(row) + 5;
            QDropEvent event(QPointF(5, y), Qt::CopyAction, &data, Qt::LeftButton, {});
            world.drops.eventFilter(world.list().viewport(), &event);
            const bool isFolder = name == u"a folder"_s;
            QTRY_VERIFY(!world.desk.requests.isEmpty());
            QCOMPARE(world.desk.requests.takeLast().destination,
                     isFolder ? world.path(name) : world.shown());
        }
    }

    void aDragHeldAtTheEdgeScrolls()
    {
        Drops world;
        for (int number = 0; number < 100; ++number)
            world.folder.write(u"left/"_s + QString::number(number));
        world.show(Side::Left, u"left"_s);
        world.window.resize(900, 500);
        QWidget *viewport = world.list().viewport();
        const QScrollBar &rows = *world.list().verticalScrollBar();
        QTRY_VERIFY(rows.maximum() > 50);
        QMimeData data;
        data.setData(u"text/uri-list"_s, "file:///elsewhere/x\r\n");
        const auto hold = [&](int y) {
            QDragEnterEvent over(QPoint(5, y), Qt::CopyAction, &data, Qt::LeftButton, {});
            world.drops.eventFilter(viewport, &over);
        };
        hold(viewport->height() - 2);
        QTRY_VERIFY(rows.value() >= 3);
        hold(2);
        QTRY_COMPARE(rows.value(), 0);
        hold(viewport->height() - 2);
        QSignalSpy scrolled(&rows, &QScrollBar::valueChanged);
        QDragLeaveEvent leaves;
        world.drops.eventFilter(viewport, &leaves);
        QVERIFY(!scrolled.wait(150));
    }
};

QTEST_MAIN(tst_PaneDragAndDrop)
#include "tst_PaneDragAndDrop.moc"

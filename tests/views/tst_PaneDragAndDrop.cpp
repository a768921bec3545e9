#include "views/PaneDragAndDrop.h"

#include "files/FileUrls.h"
#include "tests/views/PanesOnFolder.h"
#include "views/DropDecision.h"

#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

// Both panes on one folder of a file and a folder, with drops into the left one.
struct World : PanesOnFolder {
    RecordedDesk desk;
    PaneDragAndDrop drops { left, model, desk, alerts };

    World()
        : PanesOnFolder({ u"a file"_s })
    {
        folder.makeFolder(u"a folder"_s);
        defaults.setValue(Settings::ConfirmationForFileOperations, false);
        alerts.decide = {};
        start();
    }
    bool drop(const QStringList &paths, int mask, bool fromOutside = false)
    {
        return drops.acceptDrop(paths, -1, mask, fromOutside);
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
    void theMaskDecidesTheWork()
    {
        using namespace DragOperation;
        const struct {
            int mask;
            bool fromOutside;
            QString work;
        } rows[] = {
            { Move, false, u"move DragDropMove"_s },
            { Move | Copy, false, u"copy DragDropCopy"_s },
            { Move | Copy | Generic | Link, false, u"alias DragDropCopy"_s },
            { Move, true, u"move DragDropFinder"_s },
            { Link, true, {} }, // alone is refused
        };
        for (const auto &[mask, fromOutside, work] : rows) {
            World world;
            QCOMPARE(world.drop({ u"/elsewhere/x"_s }, mask, fromOutside), !work.isEmpty());
            QCOMPARE(world.asked(), work);
        }
    }

    void theRowDecidesTheDestination()
    {
        World world;
        const QString here = world.folder.path();
        const std::pair<int, QString> rows[] = {
            { world.row(u"a folder"_s), world.folder.path(u"a folder"_s) },
            { world.row(u"a file"_s), world.folder.path(u"a file"_s) },
            { 0, here },
            { 3, here },
            { -1, here },
        };
        for (const auto &[row, destination] : rows) {
            world.drops.acceptDrop({ u"/elsewhere/x"_s }, row, DragOperation::Copy, false);
            QCOMPARE(world.desk.requests.last().destination, destination);
        }
    }

    void aDropIntoItsOwnFolderIsRefused()
    {
        using namespace DragOperation;
        const QString copy = u"Item(s) cannot copied in itself!"_s;
        const QString move = u"Item(s) cannot moved in itself!"_s;
        World world;
        // Under another name it is the same folder.
        world.folder.link(world.folder.path(), u"a folder/link"_s);
        QStringList texts;
        for (const QString &dropped : { u"a file"_s, u"a folder/link/a file"_s }) {
            const auto refused = [&](int mask, const QStringList &told) {
                texts += told;
                for (qsizetype i = 0; i < told.size(); ++i)
                    world.alerts.answer(Alert::Ok);
                return !world.drop({ world.folder.path(dropped) }, mask);
            };
            QVERIFY(refused(Copy, { copy }));
            QVERIFY(refused(Move, { move }));
            QVERIFY(refused(Copy | Move, { copy, move }));
            QVERIFY(refused(Generic, {}));
        }
        QStringList shown;
        for (const Alert &alert : world.alerts.shown())
            shown.append(alert.text);
        QCOMPARE(shown, texts);
        QVERIFY(world.desk.requests.isEmpty());
    }

    void itemsOfSeveralFoldersAreSeveralRequests()
    {
        World world;
        world.drop({ u"/b/1"_s, u"/a/2"_s, u"/b/3"_s }, DragOperation::Copy, true);
        QStringList asked;
        for (const OperationRequest &request : std::as_const(world.desk.requests))
            asked +=
                sideWord(*request.side.value()) + request.source + u':' + request.items.join(u',');
        QCOMPARE(asked, QStringList({ u"Left/b:1,3"_s, u"Left/a:2"_s }));
    }

    void onlyYesGoesOn()
    {
        World world;
        world.defaults.setValue(Settings::ConfirmationForFileOperations, true);
        world.model.setUserDefaultValues();
        for (const auto answer : { Alert::No, Alert::All, Alert::Yes }) {
            world.alerts.answer(answer);
            QCOMPARE(world.drop({ u"/b/1"_s }, DragOperation::Generic), answer == Alert::Yes);
        }
        QCOMPARE(world.desk.requests.size(), 1);
        QCOMPARE(world.alerts.shown().last().text,
                 u"Are you sure that you want to create an alias from this item(s)?"_s);
    }

    void rowsLeaveWithEveryByte()
    {
        World world;
        const int folder = world.row(u"a folder"_s);
        const int file = world.row(u"a file"_s);
        const std::unique_ptr<QMimeData> data(world.drops.writeRows({ folder, 0, file }));
        // Kept: ".." goes as the listed folder itself; the order is that of the rows given.
        QCOMPARE(FileUrls::pathsOf(data->data(u"text/uri-list"_s)),
                 QStringList({ world.folder.path(u"a folder"_s), world.folder.path(),
                               world.folder.path(u"a file"_s) }));
    }

    void eventsFromOutsideAreCopiedBeforeTheyAreMoved()
    {
        const QByteArray file = "file:///elsewhere/x\r\n";
        const struct {
            QByteArray urls;
            Qt::DropActions offered;
            Qt::DropAction answered;
            QString work;
        } rows[] = {
            { file, Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::CopyAction,
              u"copy DragDropFinder"_s },
            { file, Qt::MoveAction, Qt::IgnoreAction,
              u"move DragDropFinder"_s }, // nobody else deletes
            { file, Qt::LinkAction, Qt::IgnoreAction, {} },
            { "https://a/b\r\n", Qt::CopyAction, Qt::IgnoreAction, {} },
        };
        for (const auto &[urls, offered, answered, work] : rows) {
            World world;
            QMimeData data;
            data.setData(u"text/uri-list"_s, urls);
            QDropEvent event(QPointF(5, 5), offered, &data, Qt::LeftButton, {});
            event.setDropAction(Qt::IgnoreAction);
            event.ignore();
            // Not sent: the toolkit delivers a drop only to the widget that a drag entered before.
            world.drops.eventFilter(world.left.viewport(), &event);
            QCOMPARE(event.isAccepted(), !work.isEmpty());
            QCOMPARE(event.dropAction(), answered);
            QTRY_COMPARE(world.asked(), work);
        }
    }

    void aDragHeldAtTheEdgeScrolls()
    {
        World world;
        for (int number = 0; number < 100; ++number)
            world.folder.write(QString::number(number));
        world.bus.post(DirectoryChanged.left, { .path = world.folder.path() });
        world.left.resize(400, 200);
        world.left.show();
        const QWidget &viewport = *world.left.viewport();
        const QScrollBar &rows = *world.left.verticalScrollBar();
        QTRY_VERIFY(rows.maximum() > 50);
        QMimeData data;
        data.setData(u"text/uri-list"_s, "file:///elsewhere/x\r\n");
        const auto drag = [&](QEvent &&event) {
            world.drops.eventFilter(world.left.viewport(), &event);
            return event.isAccepted();
        };
        const auto hold = [&](int y) {
            return drag(QDragEnterEvent(QPoint(5, y), Qt::CopyAction, &data, Qt::LeftButton,
                                        Qt::NoModifier));
        };
        QVERIFY(hold(viewport.height() - 2));
        QTRY_VERIFY(rows.value() >= 3);
        QVERIFY(hold(2));
        QTRY_COMPARE(rows.value(), 0);
        QVERIFY(hold(viewport.height() - 2));
        QSignalSpy scrolled(&rows, &QScrollBar::valueChanged);
        drag(QDragLeaveEvent());
        QVERIFY(!scrolled.wait(150));
    }
};

QTEST_MAIN(tst_PaneDragAndDrop)
#include "tst_PaneDragAndDrop.moc"

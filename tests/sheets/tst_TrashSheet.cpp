#include "platform/desktop/DesktopTrashCan.h"
#include "sheets/trash/TrashSheet.h"
#include "sheets/trash/TrashTable.h"
#include "tests/support/World.h"

#include <QPushButton>

// What a person does with the Trash, over a real one of the test's own.
class tst_TrashSheet : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_DATA_HOME", data.path().toUtf8()); } // read once

    void init()
    {
        data.shell(u"rm -rf ./*; mkdir -p Trash/files Trash/info"_s);
        world = std::make_unique<World>(u"left/there/, left/taken=new"_s);
        world->workspace.trash = &can;
        world->start();
    }
    void cleanup() { world.reset(); }

    void theNewestIsFirstAndTitlesSort()
    {
        put(u"b"_s, u"left/b"_s, 2, u"22"_s);
        put(u"a"_s, u"left/there/a"_s, 1, u"1"_s);
        put(u"c"_s, u"left/c"_s, 3, u"333"_s);
        data.write(u"Trash/files/stray"_s);
        open([&](TrashSheet &sheet) {
            QCOMPARE(names(sheet), u"c b a stray"_s);
            sheet.table->sortByColumn(0, Qt::AscendingOrder);
            QCOMPARE(names(sheet), u"a b c stray"_s);
            sheet.table->sortByColumn(3, Qt::DescendingOrder);
            QCOMPARE(names(sheet), u"c b a stray"_s);
            const auto text = [&](int column) {
                return sheet.table->model()->index(2, column).data().toString();
            };
            QCOMPARE(text(1), world->folder.path(u"left/there"_s));
            QCOMPARE(text(3), u"1 Bytes"_s);
            QTest::keyClicks(sheet.table, u"stray"_s); // typing finds it
            QCOMPARE(sheet.table->currentIndex().row(), 3);
        });
    }

    void returnPutsBackAndThePanesShowIt()
    {
        put(u"a"_s, u"left/a"_s, 2, u"a"_s);
        put(u"taken"_s, u"left/taken"_s, 1, u"old"_s);
        world->alerts.answer(Alert::Ok);
        open([&](TrashSheet &sheet) {
            QTest::keyClick(sheet.table, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(sheet.table, Qt::Key_Return);
            QTRY_COMPARE(names(sheet), u"taken"_s); // nothing is replaced
            QTRY_COMPARE(world->alerts.last().text, u"Put back failed!"_s);
        });
        QCOMPARE(world->alerts.last().details, u"taken: Something stands at its place now."_s);
        QCOMPARE(world->folder.read(u"left/a"_s), "a");
        QCOMPARE(world->folder.read(u"left/taken"_s), "new");
        QTRY_VERIFY(world->row(u"a"_s) > 0);
    }

    void aFolderThatIsGoneIsMadeWhenThePersonAgrees()
    {
        for (const auto answer : { Alert::No, Alert::Yes }) {
            put(u"a"_s, u"left/gone/deep/a"_s, 1, u"a"_s);
            world->alerts.answer(answer);
            open([&](TrashSheet &sheet) {
                QTest::mouseClick(sheet.putBackButton, Qt::LeftButton);
                QTRY_COMPARE(world->alerts.shown().size(), answer == Alert::No ? 1 : 2);
                QTRY_COMPARE(names(sheet), answer == Alert::No ? u"a"_s : QString());
            });
            QCOMPARE(world->folder.read(u"left/gone/deep/a"_s), answer == Alert::No ? "" : "a");
        }
    }

    void deleteAsksAndReturnMeansNo()
    {
        put(u"a"_s, u"left/a"_s, 2, u"a"_s);
        put(u"b"_s, u"left/b"_s, 1, u"b"_s);
        world->alerts.answer({ Alert::No, Alert::Yes });
        open([&](TrashSheet &sheet) {
            QTest::keyClick(sheet.table, Qt::Key_Delete);
            QCOMPARE(world->alerts.last().buttons.first().answer, Alert::No);
            QTest::keyClick(sheet.table, Qt::Key_Delete, Qt::ShiftModifier);
            QTRY_COMPARE(names(sheet), u"b"_s);
            // Its place is the next one's.
            QCOMPARE(sheet.table->selectedItems().size(), 1);
        });
        QCOMPARE(treeOf(data, { u"Trash/files"_s, u"Trash/info"_s }).count(u','), 1);
    }

    void emptyingCountsAsksAndLeavesWhatCameLater()
    {
        put(u"a"_s, u"left/a"_s, 2, u"123"_s);
        put(u"dir/x"_s, u"left/dir"_s, 1, QString(2000, u'x'));
        world->alerts.decide = [&](const Alert &alert) {
            if (alert.buttons.size() > 1) {
                put(u"late"_s, u"left/late"_s, 3, u"late"_s);
                return Alert::Yes;
            }
            return Alert::Ok;
        };
        open([&](TrashSheet &sheet) {
            QTest::mouseClick(sheet.emptyButton, Qt::LeftButton);
            QTRY_COMPARE(names(sheet), u"late"_s);
        });
        QCOMPARE(world->alerts.shown().size(), 1);
        QCOMPARE(world->alerts.last().text,
                 u"Are you sure that you want to remove the 2 item(s) (2 KB) in the Trash for "
                 "good?"_s);
        QCOMPARE(world->alerts.last().buttons.first().answer, Alert::No);
        QCOMPARE(treeOf(data, { u"Trash/files"_s }), u"Trash/files/late=late"_s);
    }

    void anEmptyOneSaysSo()
    {
        open([&](TrashSheet &sheet) {
            for (const QPushButton *button :
                 { sheet.putBackButton, sheet.removeButton, sheet.emptyButton })
                QVERIFY(!button->isEnabled());
        });
    }

private:
    // "dir/x": the item is the folder.
    void put(const QString &name, const QString &origin, int day, const QString &content) const
    {
        makeTree(data, u"Trash/files/%1=%2"_s.arg(name, content));
        const QByteArray path = QUrl::toPercentEncoding(world->folder.path(origin), "/");
        data.write(u"Trash/info/%1.trashinfo"_s.arg(name.section(u'/', 0, 0)),
                   "[Trash Info]\nPath=" + path + "\nDeletionDate=2026-01-0"
                       + QByteArray::number(day) + "T10:00:00\n");
    }
    static QString names(const TrashSheet &sheet)
    {
        QStringList names;
        for (int row = 0; row < sheet.table->model()->rowCount(); ++row)
            names += sheet.table->model()->index(row, 0).data().toString();
        return names.join(u' ');
    }
    // Acts once the Trash is read, and closes the sheet.
    void open(const std::function<void(TrashSheet &)> &act)
    {
        bool acted = false;
        whenSheetOpens(world->window, [&](QWidget &opened) {
            auto *sheet = qobject_cast<TrashSheet *>(&opened);
            QVERIFY(sheet);
            QTRY_COMPARE(sheet->table->model()->rowCount(), data.names(u"Trash/files"_s).size());
            act(*sheet);
            acted = true;
            QTest::keyClick(sheet, Qt::Key_Escape);
        });
        world->run(Command::Trash);
        QVERIFY(acted);
    }

    const TestFolder data; // of the Trash
    DesktopTrashCan can;
    std::unique_ptr<World> world;
};

QTEST_MAIN(tst_TrashSheet)
#include "tst_TrashSheet.moc"

#include "tests/support/StoppedDisk.h"
#include "tests/support/TestPictures.h"
#include "tests/support/WithoutRights.h"
#include "tests/support/World.h"

#include "sheets/images/PictureView.h"
#include "sheets/viewer/FindBar.h"
#include "sheets/viewer/TextArea.h"
#include "sheets/viewer/ViewerSheet.h"
#include "widgets/ElidedLabel.h"
#include "widgets/SegmentedControl.h"
#include "window/InfoBarTextField.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QShortcut>

namespace {

// The sheet's own keys work in an active window only, and not every display has one.
void press(const ViewerSheet &sheet, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    const auto shortcuts = sheet.findChildren<QShortcut *>();
    for (QShortcut *shortcut : shortcuts)
        if (shortcut->key() == QKeySequence(QKeyCombination(modifiers, key)))
            return Q_EMIT shortcut->activated();
    QTest::keyClick(sheet.focusWidget(), key, modifiers);
}

// Presses F3 on an item, has the sheet used, and closes it.
void view(World &world, const QString &name, const std::function<void(ViewerSheet &)> &act,
          Qt::Key end = Qt::Key_F3)
{
    world.focus(Side::Left);
    world.select(name);
    bool seen = false;
    QTimer look; // it stands when the disk has answered
    look.callOnTimeout(&world.window, [&] {
        auto *sheet = qobject_cast<ViewerSheet *>(QApplication::activeModalWidget());
        if (!sheet)
            return;
        look.stop();
        seen = true;
        act(*sheet);
        press(*sheet, end);
        const bool isClosed = !sheet->isVisible();
        sheet->done(0);
        QVERIFY(isClosed);
    });
    look.start(0);
    world.run(Command::View);
    QVERIFY(seen);
}

QString firstRow(const ViewerSheet &sheet)
{
    return sheet.textArea->shownText().section(u'\n', 0, 0);
}

QString lastRow(const ViewerSheet &sheet)
{
    return sheet.textArea->shownText().section(u'\n', -1);
}

QByteArray numbered(int lines)
{
    QByteArray text;
    for (int line = 0; line < lines; ++line)
        text += "line " + QByteArray::number(line) + '\n';
    return text;
}

} // namespace

class tst_Viewer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theContentChoosesTheMode()
    {
        StartedWorld world(u"left/empty="_s);
        world.folder.write(u"left/text"_s, "one\ntwo\n");
        world.folder.write(u"left/bytes"_s,
                           QByteArray("\x7F"
                                      "ELF\0\0\x01",
                                      7));
        world.folder.write(u"left/BMW.txt"_s, "BMW is a make of cars\n");
        world.folder.write(u"left/picture"_s,
                           TestPictures::encoded(TestPictures::plain({ 40, 20 }, Qt::red), "png"));
        world.commands.action(Command::Reload)->trigger();
        view(world, u"text"_s, [](ViewerSheet &sheet) {
            QCOMPARE(sheet.mode(), ViewMode::Text);
            QCOMPARE(sheet.textArea->shownText(), u"one\ntwo"_s);
            QCOMPARE(sheet.textArea->accessibleDescription(), u"one\ntwo"_s);
            press(sheet, Qt::Key_2, Qt::ControlModifier);
            QTRY_COMPARE(firstRow(sheet).left(21), u"00000000  6F 6E 65 0A"_s);
            press(sheet, Qt::Key_1, Qt::ControlModifier);
            QTRY_COMPARE(firstRow(sheet), u"one"_s);
        });
        view(world, u"bytes"_s, [](ViewerSheet &sheet) {
            QCOMPARE(sheet.mode(), ViewMode::Bytes);
            QVERIFY(firstRow(sheet).endsWith(u".ELF..."_s));
        });
        view(world, u"BMW.txt"_s,
             [](ViewerSheet &sheet) { QCOMPARE(sheet.mode(), ViewMode::Text); });
        view(world, u"empty"_s, [](ViewerSheet &sheet) {
            QCOMPARE(sheet.mode(), ViewMode::Text);
            press(sheet, Qt::Key_End);
            press(sheet, Qt::Key_A, Qt::ControlModifier);
            QCOMPARE(sheet.textArea->shownText(), QString());
        });
        view(
            world, u"picture"_s,
            [](ViewerSheet &sheet) {
                QCOMPARE(sheet.mode(), ViewMode::Picture);
                QTRY_COMPARE(sheet.status->text(), u"40 x 20"_s);
            },
            Qt::Key_Escape);
    }

    void aLongFileIsScrolledByWhatIsSeen()
    {
        StartedWorld world;
        world.folder.write(u"left/log"_s, numbered(200'000));
        world.commands.action(Command::Reload)->trigger();
        view(world, u"log"_s, [&](ViewerSheet &sheet) {
            QCOMPARE(firstRow(sheet), u"line 0"_s);
            press(sheet, Qt::Key_End);
            QTRY_COMPARE(lastRow(sheet), u"line 199999"_s);
            QVERIFY(sheet.status->text().startsWith(u"100 %"_s));
            const int rows = int(sheet.textArea->shownText().count(u'\n')) + 1;
            press(sheet, Qt::Key_PageUp);
            QCOMPARE(lastRow(sheet), u"line %1"_s.arg(200'000 - rows));
            // Faster than any disk.
            for (int i = 0; i < 500; ++i)
                press(sheet, Qt::Key_PageUp);
            QTRY_COMPARE(lastRow(sheet), u"line %1"_s.arg(200'000 - rows - 500 * (rows - 1)));
            QScrollBar &bar = *sheet.textArea->verticalScrollBar();
            bar.setSliderPosition(bar.maximum() / 2);
            bar.triggerAction(QAbstractSlider::SliderMove);
            QTRY_VERIFY(firstRow(sheet).startsWith(u"line 10"_s));
            bar.triggerAction(QAbstractSlider::SliderToMinimum);
            QTRY_COMPARE(firstRow(sheet), u"line 0"_s);
            bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
            QCOMPARE(firstRow(sheet), u"line 1"_s);
            // It is cut, and grows.
            world.folder.shell(u"truncate -s 14 left/log"_s);
            press(sheet, Qt::Key_End);
            QTRY_COMPARE(sheet.textArea->shownText(), u"line 0\nline 1"_s);
            world.folder.shell(u"printf 'and more' >> left/log && mv left/log left/other"_s);
            press(sheet, Qt::Key_Down);
            QTRY_COMPARE(lastRow(sheet), u"and more"_s);
        });
    }

    void whatIsFoundIsSelected()
    {
        StartedWorld world;
        world.folder.write(u"left/log"_s, numbered(50'000));
        world.commands.action(Command::Reload)->trigger();
        view(world, u"log"_s, [](ViewerSheet &sheet) {
            const TextArea &area = *sheet.textArea;
            const auto state = [&] { return sheet.findBar->state->text(); };
            press(sheet, Qt::Key_F, Qt::ControlModifier);
            QTest::keyClicks(sheet.focusWidget(), u"LINE 4999"_s);
            press(sheet, Qt::Key_Return);
            QTRY_COMPARE(area.selection().start(), numbered(4999).size());
            QTRY_VERIFY(sheet.textArea->shownText().contains(u"line 4999\n"_s));
            press(sheet, Qt::Key_Return);
            QTRY_COMPARE(area.selection().start(), numbered(49990).size());
            press(sheet, Qt::Key_Return, Qt::ShiftModifier);
            QTRY_COMPARE(area.selection().start(), numbered(4999).size());
            press(sheet, Qt::Key_Return, Qt::ShiftModifier);
            QTRY_COMPARE(state(), u"Found from the end on"_s);
            sheet.findBar->field->setText(u"no such line"_s);
            press(sheet, Qt::Key_Return);
            QTRY_COMPARE(state(), u"Not found"_s);
            press(sheet, Qt::Key_Escape); // of the field first
            QVERIFY(sheet.isVisible() && !sheet.findBar->isVisible());
            press(sheet, Qt::Key_2, Qt::ControlModifier);
            sheet.findBar->field->setText(u"39 39 0a"_s);
            press(sheet, Qt::Key_J, Qt::ControlModifier);
            QTRY_COMPARE(area.selection().start(), numbered(50'000).size() - 3);
        });
    }

    void whatIsSelectedIsCopied()
    {
        StartedWorld world;
        world.folder.write(u"left/text"_s,
                           "Gr\xC3\xBC\xC3\x9F"
                           "e\nto \xE2\x80\xAE you\n");
        world.commands.action(Command::Reload)->trigger();
        view(world, u"text"_s, [](ViewerSheet &sheet) {
            QGuiApplication::clipboard()->clear();
            const auto copied = [] { return QGuiApplication::clipboard()->text(); };
            for (int i = 0; i < 3; ++i)
                press(sheet, Qt::Key_Right, Qt::ShiftModifier);
            QCOMPARE(sheet.textArea->selection().end(), 4); // bytes
            press(sheet, Qt::Key_C, Qt::ControlModifier);
            QTRY_COMPARE(copied(), u"Grü"_s);
            press(sheet, Qt::Key_Down, Qt::ShiftModifier);
            press(sheet, Qt::Key_End, Qt::ShiftModifier);
            press(sheet, Qt::Key_C, Qt::ControlModifier);
            QTRY_COMPARE(copied(), u"Grüße\nto \u202E you"_s); // as it is, however it is shown
            sheet.encodings->setCurrentText(u"ISO-8859-1"_s);
            Q_EMIT sheet.encodings->activated(sheet.encodings->currentIndex());
            QTRY_COMPARE(firstRow(sheet), u"Gr\u00C3\u00BC\u00C3\\x9Fe"_s);
            press(sheet, Qt::Key_2, Qt::ControlModifier);
            press(sheet, Qt::Key_A, Qt::ControlModifier);
            QTRY_VERIFY(firstRow(sheet).startsWith(u"00000000"_s));
            press(sheet, Qt::Key_C, Qt::ControlModifier);
            QTRY_COMPARE(copied().first(11), u"47 72 C3 BC"_s);
        });
    }

    void whatIsNoFileIsSaid()
    {
        StartedWorld world(u"left/closed=x, left/folder/in=12345"_s);
        world.folder.shell(
            u"mkfifo left/pipe; ln -s nowhere left/dangling; ln -s /dev/zero left/zeros;"
            "chmod 0 left/closed"_s);
        world.commands.action(Command::Reload)->trigger();
        const WithoutRights none;
        const std::pair<QString, QString> items[] = {
            { u"pipe"_s, u"This is a pipe."_s },
            { u"zeros"_s, u"This is a device."_s },
            { u"closed"_s, u"This file cannot be read: Permission denied"_s },
            { u"dangling"_s, u"This file cannot be read: No such file or directory"_s },
        };
        for (const auto &[name, text] : items)
            view(world, name, [&, said = text](ViewerSheet &sheet) {
                QVERIFY2(sheet.textArea->accessibleDescription().startsWith(said),
                         qPrintable(sheet.textArea->accessibleDescription()));
                press(sheet, Qt::Key_1, Qt::ControlModifier);
                press(sheet, Qt::Key_F, Qt::ControlModifier);
                QVERIFY(!sheet.findBar->isVisible() && sheet.textArea->shownText().isEmpty());
            });
        // Of a folder the size is counted.
        world.focus(Side::Left);
        world.select(u"folder"_s);
        world.run(Command::View);
        QVERIFY(!QApplication::activeModalWidget());
        QTRY_COMPARE(world.window.infoBars.left.fileSize->text(), u"4 KB"_s);
    }

    void aDiskThatDoesNotAnswerHoldsNothingUp()
    {
        Disk disk;
        StartedWorld world(u"left/slow/a=a"_s);
        world.show(Side::Left, u"left/slow"_s);
        world.select(u"a"_s);
        disk.stopAt(world.folder.path(u"left/slow/a"_s));
        disk.askedByWindow.clear();
        whileWaiting(world, [&] {
            QTRY_VERIFY(world.application.waiting().isShown());
            press(world, { Qt::Key_Escape });
        });
        QTest::keyClick(&world.list(), Qt::Key_F3);
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(disk.askedByWindow, QByteArrayList());
        disk.answer();
    }

    void aClassicKeyComesFirst()
    {
        World world(u"left/file=x"_s);
        const QVariantMap f3 { { u"RenameKey"_s, 99 } };
        world.defaults.setValue(Settings::ClassicKeys, QVariantMap { { u"RenameKeys"_s, f3 } });
        world.start();
        world.focus(Side::Left);
        world.select(u"file"_s);
        world.answerSheet({});
        QTest::keyClick(&world.list(), Qt::Key_F3);
        QCOMPARE(world.prompts.size(), 1); // it was the sheet of renaming
    }

    void filesAreEditedWhateverTheyAre()
    {
        StartedWorld world(u"left/a.desktop=[Desktop Entry], left/b.txt=, left/folder/"_s);
        world.folder.shell(u"chmod +x left/a.desktop; ln -s b.txt left/link; mkfifo left/pipe"_s);
        world.commands.action(Command::Reload)->trigger();
        world.workspace.editor = u"/apps/editor.desktop"_s;
        world.focus(Side::Left);
        const auto edit = [&](const QStringList &names) {
            RowSet rows;
            for (const QString &name : names)
                rows.append(world.row(name));
            world.list().selectRows(rows);
            world.workspace.calls.clear();
            QTest::keyClick(&world.list(), Qt::Key_F4);
            QStringList files;
            for (const QStringList &call : std::as_const(world.workspace.calls))
                if (call.value(0) == u"open"_s && call.value(2) == world.workspace.editor)
                    files.append(PathText::lastComponent(call.value(1)));
            return world.workspace.calls.size() == files.size() ? files.join(u' ') : u"?"_s;
        };
        QCOMPARE(edit({ u"folder"_s, u"a.desktop"_s, u"b.txt"_s, u"link"_s }),
                 u"a.desktop b.txt link"_s);
        QCOMPARE(edit({ u"folder"_s }), QString());
        world.select(u"folder"_s);
        QVERIFY(!world.isEnabled(Command::Edit) && world.isEnabled(Command::View));
        world.closeMenus();
        world.alerts.answer({ Alert::Ok, Alert::Ok, Alert::Ok });
        QCOMPARE(edit({ u"pipe"_s }), QString());
        QCOMPARE(world.alerts.last().text, u"'pipe' cannot be edited!"_s);
        world.folder.shell(u"mkfifo left/pipe2"_s);
        world.commands.action(Command::Reload)->trigger();
        QCOMPARE(edit({ u"pipe"_s, u"pipe2"_s }), QString()); // told at once
        QCOMPARE(world.alerts.last().text, u"2 items cannot be edited!"_s);
        world.workspace.editor.clear();
        QCOMPARE(edit({ u"b.txt"_s }), QString());
        QCOMPARE(world.alerts.last().text, u"There is no editor of texts!"_s);
    }
};

QTEST_MAIN(tst_Viewer)

#include "tst_Viewer.moc"

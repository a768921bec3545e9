#include "tests/sheets/InfoSheetWorld.h"
#include "tests/support/StoppedDisk.h"

#include <QWheelEvent>

class tst_InfoSheet : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsWhatTheItemIs_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("shown"); // name|type|size|target|permissions
        QTest::newRow("text by its content") << "printf '#!/bin/sh\\n' > item; chmod 640 item"
                                             << "item"
                                             << "item|Shell script|10 Bytes (10 Bytes)||640";
        QTest::newRow("empty") << "touch a.txt; chmod 604 a.txt"
                               << "a.txt"
                               << "a.txt|Plain text document|0 Bytes (0 Bytes)||604";
        QTest::newRow("bytes are grouped")
            << "truncate -s 1234567 a.txt; chmod 44 a.txt"
            << "a.txt"
            << "a.txt|Plain text document|1.18 MB (1,234,567 Bytes)||044";
        QTest::newRow("set-id: the first three of four digits")
            << "touch a.txt; chmod 4751 a.txt"
            << "a.txt"
            << "a.txt|Plain text document|0 Bytes (0 Bytes)||475";
        QTest::newRow("application") << "mkdir -m 700 Tool.app"
                                     << "Tool.app"
                                     << "Tool|Application|0 Bytes (0 Bytes)||700";
        QTest::newRow("link") << "mkdir -m 750 to; ln -s to link"
                              << "link"
                              << "link|Folder|0 Bytes (0 Bytes)|to|750";
        QTest::newRow("dangling link") << "ln -s gone link"
                                       << "link"
                                       << "link|Symbolic link|4 Bytes (4 Bytes)|gone|777";
        QTest::newRow("alias") << "printf '[Desktop Entry]\\nType=Link\\nURL=file:///usr\\n' > "
                                  "a.desktop; chmod 600 a.desktop"
                               << "a.desktop"
                               << "a.desktop|Desktop entry|42 Bytes (42 Bytes)|/usr|600";
        QTest::newRow("FIFO") << "mkfifo -m 600 pipe"
                              << "pipe"
                              << "pipe|Pipe|0 Bytes (0 Bytes)||600";
        QTest::newRow("hostile name")
            << "touch $'a\\n\\xff'; chmod 600 $'a\\n\\xff'" << FileName::fromBytes("a\n\xff")
            << u"a\\n\uFFFD|Empty document|0 Bytes (0 Bytes)||600"_s;
    }
    void showsWhatTheItemIs()
    {
        QFETCH(const QString, script);
        QFETCH(const QString, name);
        QFETCH(const QString, shown);
        Information world({});
        world.folder.shell(u"cd left\n"_s + script);
        world.showRead(name, [&](InfoSheet &sheet) {
            const auto all = [&] {
                return QStringList { sheet.Name->text(), sheet.Type->text(), sheet.FileSize->text(),
                                     sheet.Target->text(), permissions(sheet) }
                    .join(u'|');
            };
            QTRY_COMPARE(all(), shown);
            QVERIFY(sheet.Path->text().endsWith(world.folder.path(u"left"_s)));
            QCOMPARE(sheet.Owner->title(), currentUser());
            QCOMPARE(note(sheet), QString());
        });
    }

    void theApplicationIsKnownByItsTitle()
    {
        Information world(
            u"left/a=a, apps/view.desktop, apps/org.viewer.desktop, apps/edit.desktop"_s);
        world.workspace.application = world.folder.path(u"apps/org.viewer.desktop"_s);
        const auto titles = [](const InfoSheet &sheet) {
            QString all;
            for (int item = 0; item < sheet.OpenWith->count(); ++item)
                all += sheet.OpenWith->itemText(item) + u'|';
            return all + sheet.OpenWith->currentText();
        };
        const auto chooseOther = [](InfoSheet &sheet) {
            const int other = sheet.OpenWith->findText(u"Other..."_s);
            sheet.OpenWith->setCurrentIndex(other);
            Q_EMIT sheet.OpenWith->activated(other);
        };
        world.showRead(u"a"_s, [&](InfoSheet &sheet) {
            QCOMPARE(titles(sheet), u"org.viewer|Other...|org.viewer"_s);
            chooseOther(sheet); // cancelled
            QCOMPARE(titles(sheet), u"org.viewer|Other...|org.viewer"_s);
            world.openPanel.application = world.folder.path(u"apps/edit.desktop"_s);
            chooseOther(sheet);
            QCOMPARE(titles(sheet), u"org.viewer|Other...|edit|edit"_s);
            QVERIFY(
                !sheet.OpenWith->itemIcon(2).isNull()); // the general one, till the disk answers
            QTRY_COMPARE(world.workspace.iconLoads.count(world.openPanel.application), 1);
            ok(sheet);
        });
        const QByteArray edits = world.folder.attribute(u"left/a"_s, "user.twinleaf.creator");
        QCOMPARE(edits.size(), 4);
        // Part of an earlier one's path: it is taken for that.
        world.openPanel.application = world.folder.path(u"apps/view.desktop"_s);
        world.showRead(u"a"_s, [&](InfoSheet &sheet) {
            chooseOther(sheet);
            ok(sheet);
        });
        const QByteArray views = world.folder.attribute(u"left/a"_s, "user.twinleaf.creator");
        world.showRead(u"a"_s, [&](InfoSheet &sheet) {
            sheet.LockState->click();
            ok(sheet); // the application was not touched
        });
        QCOMPARE(world.folder.attribute(u"left/a"_s, "user.twinleaf.creator"), views);
        QVERIFY(views != edits);
        // By the title as it is shown: of a name that is no text, too.
        world.openPanel.application = world.folder.path(FileName::fromBytes("apps/\xFF.desktop"));
        world.folder.write(FileName::fromBytes("apps/\xFF.desktop"));
        world.showRead(u"a"_s, [&](InfoSheet &sheet) {
            chooseOther(sheet);
            ok(sheet);
            QVERIFY(!sheet.isVisible());
        });
        QVERIFY(world.folder.attribute(u"left/a"_s, "user.twinleaf.creator") != views);
    }

    void accountsAreFoundByTyping()
    {
        Information world(u"left/a=a"_s);
        world.accounts.users.clear();
        for (int number = 0; number < 5000; ++number)
            world.accounts.users.append(u"user%1"_s.arg(number));
        world.showRead(u"a"_s, [&](InfoSheet &sheet) {
            sheet.LockButton->click();
            QTRY_VERIFY(sheet.Owner->isEnabled());
            QTRY_COMPARE(sheet.Owner->count(), 5001); // the item's own is none of them
            sheet.Owner->setFocus();
            for (const auto &[typed, title] :
                 { std::pair(u"User4321"_s, u"user4321"_s), { QString(), u"user4321"_s } }) {
                sheet.Owner->setEditText(typed);
                sheet.Group->setFocus();
                QCOMPARE(sheet.Owner->title(), title);
                QCOMPARE(sheet.Owner->currentText(), title);
                sheet.Owner->setFocus();
            }
            sheet.Owner->setTitle(currentUser());
            for (const auto &[box, told] :
                 { std::pair(sheet.Owner, u"There is no user 'no such'."_s),
                   { sheet.Group, u"There is no group 'no such'."_s } }) {
                const QString before = box->title();
                box->setFocus();
                box->setEditText(u"no such"_s);
                box->setNames({ u"late"_s }); // while it is typed
                QCOMPARE(box->currentText(), u"no such"_s);
                ok(sheet);
                QVERIFY(sheet.isVisible());
                QCOMPARE(note(sheet), told);
                QCOMPARE(box->title(), before);
                QVERIFY(box->hasFocus());
                box->setEditText({});
            }
            ok(sheet);
            QVERIFY(!sheet.isVisible());
            QVERIFY(world.authorization.executed.isEmpty());
        });
    }

    void aFolderIsCountedUntilTheSheetCloses()
    {
        Information world(
            u"left/tree/file=a, left/tree/inner/file=b, left/tree/inner/more/file=c"_s);
        Disk disk;
        disk.stopAt(u"inner"_s);
        world.showRead(u"tree"_s, [&](InfoSheet &sheet) {
            QCOMPARE(sheet.FileSize->text(), u"Calculating..."_s);
            QTRY_COMPARE(sheet.FileSize->text(), u"4 KB (4,096 Bytes) \u2026"_s);
            disk.answer();
            QTRY_COMPARE(sheet.FileSize->text(), u"12 KB (12,288 Bytes)"_s);
        });
        disk.stopAt(u"inner"_s);
        world.showRead(u"tree"_s, [&](InfoSheet &sheet) {
            QTRY_VERIFY(sheet.FileSize->text().endsWith(u'\u2026'));
        });
        const auto after = disk.asked().size();
        disk.answer();
        QVERIFY(world.application.infoSheetController().end());
        QCOMPARE(disk.asked().size(), after); // it went no further
    }

    void opensForAnItemThatDoesNotAnswer()
    {
        Information world(u"left/slow/item=a, left/b=b"_s);
        mountServer(world, u"left/slow"_s);
        Disk disk;
        disk.stopAt(world.folder.path(u"left/slow"_s));
        disk.askedByWindow.clear();
        world.show(u"slow/item"_s, [&](InfoSheet &sheet) {
            QCOMPARE(sheet.Name->text(), u"item"_s);
            QVERIFY(sheet.Path->text().endsWith(u"left/slow"_s));
            QVERIFY(!sheet.OpenWith->isEnabled());
            // Another one in its place; the first is given up.
            world.application.infoSheetController().showInfoSheet(
                { .source = world.folder.path(u"left"_s), .items = { u"b"_s } });
            QTRY_COMPARE(sheet.FileSize->text(), u"1 Bytes (1 Bytes)"_s);
            disk.answer();
            QTRY_VERIFY(disk.asked().contains(world.folder.bytes(u"left/slow/item"_s)));
            QCOMPARE(sheet.Name->text(), u"b"_s);
        });
        QVERIFY(disk.askedByWindow.isEmpty());
        world.show(u"gone"_s, [](InfoSheet &sheet) {
            QTRY_COMPARE(note(sheet), u"The item is no longer there."_s);
            QVERIFY(!sheet.OpenWith->isEnabled());
            ok(sheet);
            QVERIFY(!sheet.isVisible());
        });
    }

    void staysWhileThePersonIsAsked()
    {
        Information world(u"left/a=a"_s);
        world.showRead(u"a"_s, [&](InfoSheet &sheet) {
            int asked = 0;
            world.authorization.whileAsking = [&] {
                ++asked;
                QTest::keyClick(&sheet, Qt::Key_Escape);
                ok(sheet);
                sheet.LockButton->click();
                sheet.close();
                QVERIFY(sheet.isVisible());
            };
            sheet.LockButton->click();
            QCOMPARE(asked, 1);
            QTRY_VERIFY(sheet.Owner->isEnabled());
        });
    }

    void theWheelChangesNothing()
    {
        Information world(u"left/a=a"_s);
        world.showRead(u"a"_s, [](InfoSheet &sheet) {
            for (QComboBox *box : std::initializer_list<QComboBox *> { sheet.OpenWith, sheet.Owner,
                                                                       sheet.OwnerPermissions }) {
                box->setEnabled(true);
                box->setCurrentIndex(0);
                const QPointF place = box->rect().center();
                QWheelEvent turned(place, box->mapToGlobal(place), {}, QPoint(0, -120),
                                   Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(box, &turned);
                QCOMPARE(box->currentIndex(), 0);
            }
        });
    }

    // Each control can be told by a screen reader, and most are a letter away.
    void everyControlHasAName()
    {
        InfoSheet sheet(nullptr);
        const auto labels = sheet.findChildren<QLabel *>();
        int buddies = 0;
        QStringList keys;
        for (const QLabel *label : labels)
            if (label->buddy()) {
                ++buddies;
                if (label->buddy()->inherits("TextField"))
                    continue;
                keys.append(QKeySequence::mnemonic(label->text()).toString());
            }
        QCOMPARE(buddies, 10);
        QCOMPARE(keys.removeDuplicates(), 0);
        QVERIFY(!keys.contains(QString()));
        for (QWidget *control = sheet.nextInFocusChain(); control != &sheet;
             control = control->nextInFocusChain())
            if ((control->focusPolicy() & Qt::TabFocus) != 0 && !control->focusProxy())
                QVERIFY2(!control->accessibleName().isEmpty(), control->metaObject()->className());
    }
};

QTEST_MAIN(tst_InfoSheet)
#include "tst_InfoSheet.moc"

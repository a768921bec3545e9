#include "window/ToolbarCustomization.h"

#include "tests/window/ToolbarWorld.h"

#include <QComboBox>
#include <QListView>
#include <QMimeData>
#include <QPushButton>

#include <memory>

class tst_ToolbarCustomization : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatCannotBeSeenKeepsItsPlace_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("before"); // -1: it is taken out
        QTest::addColumn<QString>("after");
        QTest::newRow("to the front") << 2 << 0 << u"DCxiMyR"_s;
        QTest::newRow("before the next but one") << 0 << 2 << u"xiMCDyR"_s;
        QTest::newRow("to the end") << 0 << 4 << u"xiMDyRC"_s;
        QTest::newRow("back by one") << 1 << 0 << u"MCxiDyR"_s;
        QTest::newRow("onto itself") << 1 << 1 << u"CxiMDyR"_s;
        QTest::newRow("behind itself") << 1 << 2 << u"CxiMDyR"_s;
        QTest::newRow("out") << 1 << -1 << u"CxiDyR"_s;
        QTest::newRow("no such row") << 9 << 0 << u"CxiMDyR"_s;
    }
    void whatCannotBeSeenKeepsItsPlace()
    {
        QFETCH(int, from);
        QFETCH(int, before);
        const std::pair<QChar, QString> names[] = {
            { u'C', u"Copy Identifier"_s },
            { u'M', u"Move Identifier"_s },
            { u'D', u"Delete Identifier"_s },
            { u'R', u"Rename Identifier"_s },
            { u'i', u"Console Identifier"_s },
            { u'x', u"x"_s },
            { u'y', u"y"_s },
        };
        QStringList identifiers;
        for (const QChar letter : u"CxiMDyR"_s)
            for (const auto &[name, identifier] : names)
                if (name == letter)
                    identifiers.append(identifier);
        ToolbarWorld world;
        world.defaults.setValue(Settings::Toolbar, items(identifiers));
        world.start();
        ToolbarBarModel bar(world.application.toolbar());
        QCOMPARE(bar.rowCount(), 4);
        if (before < 0)
            bar.remove(from);
        else
            bar.move(from, before);
        QString after;
        const QStringList stored = world.storedItems();
        for (const QString &each : stored)
            for (const auto &[name, identifier] : names)
                if (identifier == each)
                    after += name;
        QTEST(after, "after");
    }

    void whatAnotherProgramArrangedIsNotUndone()
    {
        const QStringList theirs { u"Move Identifier"_s, u"New Folder Identifier"_s,
                                   u"Rename Identifier"_s };
        ToolbarWorld world;
        world.defaults.setValue(Settings::Toolbar,
                                items({ u"Copy Identifier"_s, u"New Folder Identifier"_s }));
        world.start();
        const auto theyStore = [&] { world.defaults.setValue(Settings::Toolbar, items(theirs)); };
        ToolbarBarModel bar(world.application.toolbar());
        theyStore();
        QCOMPARE(bar.remove(0), -1); // another item stands there now
        QCOMPARE(world.storedItems(), theirs);
        QCOMPARE(bar.remove(1), 1);
        QCOMPARE(world.storedItems(), QStringList({ theirs[0], theirs[2] }));
        theyStore();
        QCOMPARE(bar.add(u"Delete Identifier"_s, 3), 3);
        QCOMPARE(world.storedItems(), theirs + QStringList(u"Delete Identifier"_s));
    }

    void aPersonArrangesTheBar()
    {
        StartedToolbarWorld world;
        // Without what ends the usual bar.
        world.application.toolbar().setIdentifiers(
            { u"Copy Identifier"_s, u"Move Identifier"_s, u"New Folder Identifier"_s,
              u"Delete Identifier"_s, u"Rename Identifier"_s, Separator, u"Console Identifier"_s,
              u"Terminal Identifier"_s });
        ToolbarCustomization sheet(world.application.toolbar(), &world.window);
        sheet.show();
        QVERIFY(QTest::qWaitForWindowActive(&sheet));
        const auto lists = sheet.findChildren<QListView *>();
        QListView *palette = lists[0], *bar = lists[1];
        const auto current = [](QListView *list) { return list->currentIndex().data().toString(); };
        QCOMPARE(sheet.focusWidget(), palette);
        QCOMPARE(current(palette), u"Image browser"_s);

        // By keyboard.
        QTest::keyClick(bar, Qt::Key_Delete);
        QCOMPARE(world.shown(), u"Move New_folder Delete Rename"_s);
        QTest::keyClick(bar, Qt::Key_End);
        QTest::keyClick(bar, Qt::Key_Up); // past the separator
        QCOMPARE(current(bar), u"Rename"_s);
        QTest::keyClick(bar, Qt::Key_Up, Qt::AltModifier);
        QTest::keyClick(bar, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(current(bar), u"Rename"_s);
        QCOMPARE(world.shown(), u"Move Rename New_folder Delete"_s);
        while (current(palette) != u"Separator"_s)
            QTest::keyClick(palette, Qt::Key_Down);
        QTest::keyClick(palette, Qt::Key_Return); // the separator stands behind what was chosen
        QVERIFY(sheet.isVisible());
        QCOMPARE(world.shown(), u"Move Rename | New_folder Delete"_s);
        QTest::keyClick(palette, Qt::Key_Home);
        QCOMPARE(current(palette), u"Copy"_s);
        QTest::keyClick(palette, Qt::Key_Enter);
        QCOMPARE(world.shown(), u"Move Rename | Copy New_folder Delete"_s);

        // By drag: in, along, out.
        const auto drag = [](QListView *from, int row, QListView *to, int before) {
            const std::unique_ptr<QMimeData> data(
                from->model()->mimeData({ from->model()->index(row, 0) }));
            return to->model()->dropMimeData(data.get(), Qt::MoveAction, before, 0, {});
        };
        QVERIFY(drag(bar, 5, bar, 0));
        QCOMPARE(world.shown(), u"Delete Move Rename | Copy New_folder"_s);
        QCOMPARE(current(bar), u"Delete"_s);
        QVERIFY(drag(bar, 4, palette, 0));
        QCOMPARE(world.shown(), u"Delete Move Rename | New_folder"_s);
        QVERIFY(drag(palette, 0, bar, 1));
        QCOMPARE(world.shown(), u"Delete Copy Move Rename | New_folder"_s);
        QVERIFY(!drag(palette, 0, palette, 0));
        QMimeData foreign;
        foreign.setText(u"Copy Identifier"_s);
        QVERIFY(!bar->model()->dropMimeData(&foreign, Qt::MoveAction, 0, 0, {}));
        QCOMPARE(world.storedItems().size(), 9); // with what cannot be seen

        auto *display = sheet.findChild<QComboBox *>();
        QTest::keyClick(display, Qt::Key_Down);
        QCOMPARE(world.bar()->toolButtonStyle(), Qt::ToolButtonIconOnly);
        QCOMPARE(world.stored().toMap().value(u"TB Display Mode"_s), QVariant(2LL));

        const auto buttons = sheet.findChildren<QPushButton *>();
        for (QPushButton *button : buttons)
            if (button->accessibleName() == u"Restore defaults"_s)
                button->click();
        QCOMPARE(world.shown(), Default);
        QCOMPARE(world.bar()->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
        QCOMPARE(display->currentIndex(), 0);
        QTest::keyClick(&sheet, Qt::Key_Return);
        QVERIFY(!sheet.isVisible());
    }

private:
    struct StartedToolbarWorld : ToolbarWorld {
        StartedToolbarWorld() { start(); }
    };
};

QTEST_MAIN(tst_ToolbarCustomization)
#include "tst_ToolbarCustomization.moc"

#include "sheets/information/AccountBox.h"
#include "sheets/information/InfoSheet.h"
#include "sheets/information/TextField.h"
#include "tests/support/StoppedDisk.h"
#include "tests/support/World.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QWheelEvent>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr uid_t Nobodys = 54321; // no account has this number

// The sheet over the real files of the left pane.
struct Information : StartedWorld {
    explicit Information(const QString &words)
        : StartedWorld(words)
    {
        auto &controller = application.infoSheetController();
        controller.setAccountSource([this] { return accounts; });
        authorization.personAgrees = true;
    }

    // Opens it for the item, and closes it when `act` has not.
    void show(const QString &name, const std::function<void(InfoSheet &)> &act)
    {
        QTimer::singleShot(0, &window, [this, act] {
            InfoSheet *sheet = window.findChild<InfoSheet *>();
            QVERIFY(sheet && sheet->isVisible());
            act(*sheet);
            if (sheet->isVisible())
                sheet->reject();
        });
        const QString path = folder.path(u"left/"_s + name);
        application.infoSheetController().showInfoSheet(
            { .source = PathText::parent(path),
              .items = { PathText::lastComponent(path) },
              .side = Side::Left,
              .updateBoth = UpdateBoth::No });
    }
    // The same once the item has been read.
    void showRead(const QString &name, const std::function<void(InfoSheet &)> &act)
    {
        show(name, [act](InfoSheet &sheet) {
            QTRY_VERIFY(!sheet.Modified->text().isEmpty());
            act(sheet);
        });
    }

    struct stat status(const QString &name) const
    {
        struct stat status { };
        if (lstat(folder.bytes(u"left/"_s + name), &status) != 0)
            qFatal("%s", qPrintable(name));
        return status;
    }
    void setMode(const QString &name, mode_t mode) const
    {
        if (chmod(folder.bytes(u"left/"_s + name), mode) != 0)
            qFatal("chmod");
    }

    AccountNames accounts { { u"root"_s, u"ann"_s, u"bob"_s }, { u"root"_s, u"staff"_s } };
};

void ok(InfoSheet &sheet)
{
    QTest::keyClick(&sheet, Qt::Key_Return);
}

QString note(const InfoSheet &sheet)
{
    QStringList texts;
    const auto labels = sheet.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        if (label->wordWrap())
            texts.append(label->text());
    return texts.join(u'|');
}

QString permissions(const InfoSheet &sheet)
{
    QString digits;
    for (const QComboBox *box : sheet.permissions())
        digits += box->currentIndex() < 0 ? u'-' : QChar(u'0' + box->currentIndex());
    return digits;
}

QString currentUser()
{
    return userName(geteuid());
}

} // namespace

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

    void whatWasNotTouchedIsNotWritten_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QList<int>>("chosen"); // of the three classes; -1: left alone
        QTest::addColumn<int>("result");
        using Chosen = QList<int>;
        QTest::newRow("nothing") << 0644 << Chosen { -1, -1, -1 } << 0644;
        QTest::newRow("nothing of a set-id item") << 06755 << Chosen { -1, -1, -1 } << 06755;
        QTest::newRow("what is shown") << 04755 << Chosen { 4, 7, 5 } << 04755;
        QTest::newRow("one class") << 0644 << Chosen { -1, 6, -1 } << 0664;
        QTest::newRow("all classes") << 0044 << Chosen { 7, 1, 0 } << 0710;
        QTest::newRow("one class of a set-id item") << 04755 << Chosen { -1, -1, 0 } << 04750;
        QTest::newRow("the first of a sticky item") << 01777 << Chosen { 6, -1, -1 } << 01677;
    }
    void whatWasNotTouchedIsNotWritten()
    {
        QFETCH(const int, mode);
        QFETCH(const QList<int>, chosen);
        QFETCH(const int, result);
        Information world(u"left/a=a"_s);
        world.setMode(u"a"_s, mode_t(mode));
        const struct stat before = world.status(u"a"_s);
        const bool writes = mode != result;
        int listed = 0;
        connect(&world.model, &MainModel::rowsChanged, this, [&] { ++listed; });
        world.showRead(u"a"_s, [&](InfoSheet &sheet) {
            for (size_t place = 0; place < 3; ++place)
                if (chosen[qsizetype(place)] >= 0)
                    sheet.permissions()[place]->setCurrentIndex(chosen[qsizetype(place)]);
            ok(sheet);
            QVERIFY(!sheet.isVisible());
            QCOMPARE(listed, 0); // not behind the sheet
        });
        const struct stat after = world.status(u"a"_s);
        QCOMPARE(int(after.st_mode & 07777), result);
        QCOMPARE(after.st_ctim.tv_sec == before.st_ctim.tv_sec
                     && after.st_ctim.tv_nsec == before.st_ctim.tv_nsec,
                 !writes);
        // A step with nothing to write is a success: the panes are listed again.
        QVERIFY(listed > 0);
        QCOMPARE(world.selected(), u"a"_s);
        QVERIFY(world.authorization.executed.isEmpty());
    }

    // A file of somebody else's, and what the padlock makes of it.
    void rightsDecideWhatCanBeChanged()
    {
        Information world(u"left/a=a"_s);
        const bool isRoot = geteuid() == 0;
        const QString name = isRoot ? u"a"_s : u"../../../etc/passwd"_s;
        if (isRoot)
            QCOMPARE(chown(world.folder.bytes(u"left/a"_s), Nobodys, Nobodys), 0);
        world.authorization.personAgrees = false;
        int listed = 0;
        connect(&world.model, &MainModel::rowsChanged, this, [&] { ++listed; });
        const auto enabled = [](const InfoSheet &sheet) {
            QString all;
            for (const QWidget *control : std::initializer_list<QWidget *> {
                     sheet.OpenWith, sheet.Owner, sheet.OwnerPermissions, sheet.Group,
                     sheet.GroupPermissions, sheet.Other, sheet.LockState })
                all += control->isEnabled() ? u'x' : u'-';
            return all;
        };
        world.showRead(name, [&](InfoSheet &sheet) {
            if (isRoot)
                QCOMPARE(sheet.Owner->title(), QString::number(Nobodys));
            QCOMPARE(enabled(sheet), u"-------"_s);
            sheet.LockButton->click(); // the person refuses
            QCOMPARE(note(sheet), u"The administrator's rights were not granted."_s);
            QCOMPARE(enabled(sheet), u"-------"_s);
            ok(sheet);
        });
        QCOMPARE(listed, 0); // nothing could have been changed

        world.authorization.personAgrees = true;
        world.showRead(name, [&](InfoSheet &sheet) {
            sheet.LockButton->click();
            QTRY_COMPARE(enabled(sheet), u"xxxxxxx"_s);
        });
        world.folder.write(u"left/mine"_s, "m");
        world.showRead(u"mine"_s, [&](InfoSheet &sheet) { // held on to
            QCOMPARE(enabled(sheet), u"xxxxxxx"_s);
            sheet.Owner->setTitle(u"ann"_s);
            sheet.LockButton->click(); // given up
            QTRY_COMPARE(enabled(sheet), u"x-x-xxx"_s);
            QCOMPARE(sheet.Owner->title(), currentUser());
            QVERIFY(!world.authorization.holds);
        });
        // It says what a press does, whether rights came by another way or ran out.
        for (const auto &[pressed, press] :
             { std::pair(false, u"Administrator..."_s), { true, u"Give up rights"_s } }) {
            if (pressed)
                world.showRead(u"mine"_s, [](InfoSheet &sheet) { sheet.LockButton->click(); });
            for (const bool holds : { true, false }) {
                world.authorization.holds = holds;
                world.showRead(u"mine"_s, [&](InfoSheet &sheet) {
                    QCOMPARE(sheet.LockButton->text().remove(u'&'), press);
                    QCOMPARE(sheet.LockButton->accessibleName(), press);
                    QCOMPARE(sheet.LockButton->toolTip().startsWith(u"Give up"_s), pressed);
                });
            }
        }
    }

    void ownerAndGroupGoThroughTheRights_data()
    {
        QTest::addColumn<QString>("owner");
        QTest::addColumn<QString>("group");
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("agrees");
        QTest::newRow("owner") << "ann"
                               << "" << 0 << true;
        QTest::newRow("group") << ""
                               << "staff" << 0 << true;
        QTest::newRow("both") << "bob"
                              << "staff" << 0 << true;
        QTest::newRow("neither") << ""
                                 << "" << 0 << true;
        QTest::newRow("it fails") << "ann"
                                  << "" << 1 << true;
        QTest::newRow("rights ran out") << "ann"
                                        << "" << 0 << false;
    }
    void ownerAndGroupGoThroughTheRights()
    {
        QFETCH(const QString, owner);
        QFETCH(const QString, group);
        QFETCH(const int, status);
        QFETCH(const bool, agrees);
        Information world(u"left/b=b"_s);
        world.folder.link(u"b"_s, u"left/link"_s);
        world.authorization.status = status;
        const bool touched = !owner.isEmpty() || !group.isEmpty();
        const bool succeeds = status == 0 && agrees;
        if (!succeeds)
            world.alerts.answer(Alert::Ok);
        if (status != 0)
            QTest::ignoreMessage(QtWarningMsg, "Error 1 in AuthorizationExecuteWithPrivileges");
        world.showRead(u"link"_s, [&](InfoSheet &sheet) {
            sheet.LockButton->click();
            QTRY_VERIFY(sheet.Owner->isEnabled());
            world.authorization.holds = world.authorization.personAgrees = agrees;
            // By typing a part of the name, as a person does.
            for (const auto &[box, name] :
                 { std::pair(sheet.Owner, owner), { sheet.Group, group } })
                if (!name.isEmpty()) {
                    box->setFocus();
                    box->setEditText(name.toUpper());
                }
            ok(sheet);
            QCOMPARE(sheet.isVisible(), !succeeds);
            if (succeeds)
                return;
            // It stays as the person left it.
            QTRY_VERIFY(sheet.Owner->isEnabled());
            QCOMPARE(sheet.Owner->title(), owner);
        });
        if (!succeeds)
            QCOMPARE(world.alerts.last().text, u"Cannot set owner and group!"_s);
        const QString account = (owner.isEmpty() ? u'+' + QString::number(geteuid()) : owner) + u':'
            + (group.isEmpty() ? u'+' + QString::number(getegid()) : group);
        const QStringList command { u"/usr/sbin/chown"_s, account,
                                    world.folder.path(u"left/b"_s) }; // not the link
        QCOMPARE(world.authorization.executed,
                 touched && agrees ? QList<QStringList> { command } : QList<QStringList>());
        if (touched && agrees)
            QCOMPARE(std::get<FileIdentity>(world.authorization.subjects.last()).inode,
                     world.status(u"b"_s).st_ino);
    }

    void nothingIsWrittenToAnotherItem_data()
    {
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("meanwhile");
        QTest::addColumn<QString>("note");
        QTest::addColumn<QString>("result"); // mode of each item
        const QString other = u"Another item has taken its place. Nothing was changed."_s;
        const QString gone = u"The item is no longer there."_s;
        QTest::newRow("replaced") << "a"
                                  << "mv b a" << other << "a 600";
        QTest::newRow("replaced by a link to it") << "a"
                                                  << "mv a c; ln -s c a" << other << "b 600, c 600";
        QTest::newRow("vanished") << "a"
                                  << "rm a" << gone << "b 600";
        QTest::newRow("renamed") << "a"
                                 << "mv a c" << gone << "b 600, c 600";
        QTest::newRow("a link leads elsewhere by now")
            << "link"
            << "ln -sfn b link" << QString() << "a 640, b 600";
        QTest::newRow("a link has gone") << "link"
                                         << "rm link" << QString() << "a 640, b 600";
        QTest::newRow("what it leads to has gone") << "link"
                                                   << "rm a" << gone << "b 600";
    }
    void nothingIsWrittenToAnotherItem()
    {
        QFETCH(const QString, shown);
        QFETCH(const QString, meanwhile);
        QFETCH(const QString, note);
        QFETCH(const QString, result);
        Information world(u"left/a=a, left/b=b"_s);
        world.folder.shell(u"cd left; chmod 600 a b; ln -s a link"_s);
        world.showRead(shown, [&](InfoSheet &sheet) {
            world.folder.shell(u"cd left; "_s + meanwhile);
            sheet.GroupPermissions->setCurrentIndex(4);
            ok(sheet);
            QCOMPARE(sheet.isVisible(), !note.isEmpty());
            QTRY_COMPARE(::note(sheet), note);
        });
        QStringList modes;
        const auto names = world.folder.names(u"left"_s);
        for (const QString &name : names)
            if (const auto status = world.status(name); S_ISREG(status.st_mode))
                modes.append(name + u' ' + QString::number(status.st_mode & 07777, 8));
        QCOMPARE(modes.join(u", "_s), result);
    }

    void whatWasWrittenBeforeIsNotDenied()
    {
        Information world(u"left/a=a, left/b=b"_s);
        world.alerts.answer(Alert::Ok);
        world.authorization.status = 1; // the owner stays
        QTest::ignoreMessage(QtWarningMsg, "Error 1 in AuthorizationExecuteWithPrivileges");
        world.showRead(u"a"_s, [&](InfoSheet &sheet) {
            sheet.LockButton->click();
            QTRY_VERIFY(sheet.Owner->isEnabled());
            sheet.Owner->setTitle(u"ann"_s);
            sheet.OwnerPermissions->setCurrentIndex(7);
            world.authorization.holds = false;
            world.authorization.whileAsking = [&] {
                world.folder.shell(u"cd left; mv a c; mv b a"_s);
            };
            ok(sheet);
            QTRY_COMPARE(note(sheet), u"Another item has taken its place."_s);
        });
        QCOMPARE(int(world.status(u"c"_s).st_mode & 0700), 0700);
    }

    void aLockedItemKeepsItsPermissions()
    {
        Information world(u"left/a=a"_s);
        world.setMode(u"a"_s, 0600);
        world.folder.setAttribute(u"left/a"_s, "user.twinleaf.locked", "1");
        world.showRead(u"a"_s, [](InfoSheet &sheet) {
            QVERIFY(sheet.LockState->isChecked());
            sheet.Other->setCurrentIndex(4);
            sheet.LockState->click();
            ok(sheet);
            // Said, for it was asked for; and now that the lock is off it can be done.
            QCOMPARE(note(sheet), u"While the item is locked its permissions stay as they are."_s);
            QTRY_VERIFY(!sheet.LockState->isChecked() && sheet.Other->isEnabled());
        });
        QCOMPARE(int(world.status(u"a"_s).st_mode & 0777), 0600);
        QCOMPARE(world.folder.attribute(u"left/a"_s, "user.twinleaf.locked"), QByteArray());
    }

    void aFailureIsToldWithItsReason()
    {
        Information world(u"left/a=a"_s);
        world.folder.link(u"gone"_s, u"left/link"_s); // has no permissions, nor a lock
        world.alerts.answer({ Alert::Ok, Alert::Ok, Alert::Ok });
        world.openPanel.application = world.folder.path(u"uninstalled.desktop"_s);
        world.showRead(u"link"_s, [](InfoSheet &sheet) {
            sheet.OpenWith->setCurrentIndex(1);
            Q_EMIT sheet.OpenWith->activated(1);
            sheet.Other->setCurrentIndex(0);
            sheet.LockState->click();
            ok(sheet);
            QVERIFY(sheet.isVisible());
            QTRY_VERIFY(sheet.LockState->isEnabled());
            QVERIFY(sheet.LockState->isChecked());
            QCOMPARE(sheet.Other->currentIndex(), 0);
            QCOMPARE(sheet.OpenWith->currentText(), u"uninstalled"_s);
        });
        QStringList told;
        const auto alerts = world.alerts.shown();
        for (const Alert &alert : alerts) {
            QVERIFY(!alert.details.isEmpty());
            QCOMPARE(alert.title, u"Twinleaf - Error"_s);
            told.append(alert.text);
        }
        QCOMPARE(told,
                 QStringList({ u"Cannot change launch application!"_s, u"Cannot set permissions!"_s,
                               u"Cannot set lock state!"_s }));
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
        world.workspace.iconLoads.clear();
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
            QTRY_COMPARE(world.workspace.iconLoads.size(), 2); // each once
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

#include "tests/sheets/InfoSheetWorld.h"

// What OK writes, and what it does not.
class tst_InfoSheetChanges : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        const QString name = isRoot ? u"a"_s : u"/etc/passwd"_s;
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
};

QTEST_MAIN(tst_InfoSheetChanges)
#include "tst_InfoSheetChanges.moc"

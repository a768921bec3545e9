#include "tests/operations/OperationWorld.h"

class tst_SingleSteps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsReplacedByAStep()
    {
        const QString two = u"from/a=a, from/taken=taken"_s;
        const std::tuple<Verb, QString, QString, QString> cases[] = {
            // what is left: all, if none
            { Verb::Rename, two, u"A"_s, u"from/A=a, from/taken=taken"_s },
            { Verb::Rename, two, u"taken"_s, {} },
            { Verb::Rename, two, u"../trash/x"_s, {} },
            { Verb::Rename, two, u"."_s, {} },
            { Verb::Rename, two, u".."_s, {} },
            { Verb::Rename, two, QString(256, u'n'), {} },
            { Verb::Rename, u"from/a=!a"_s, u"b"_s, {} },
            { Verb::Duplicate, u"from/a=new, from/b=old"_s, u"b"_s,
              u"from/a=new, from/b=new, trash/b=old"_s },
            { Verb::Duplicate, u"from/a/x=new, from/b/a/x=old, from/b/y=y"_s, u"b"_s,
              u"from/a/x=new, from/b/a/x=new, from/b/y=y, trash/a/x=old"_s },
            { Verb::Duplicate, u"from/a=new, from/b=!old"_s, u"b"_s, {} },
        };
        for (const auto &[verb, given, newName, left] : cases) {
            World world(given);
            if (left.isEmpty())
                world.alerts.answer({ Alert::Ok });
            world.perform(verb, u"a"_s, newName);
            QCOMPARE(newName + u": "_s + world.tree(),
                     newName + u": "_s + (left.isEmpty() ? given : left));
            const QString failed =
                verb == Verb::Rename ? u"Rename failed!"_s : u"Duplicate failed!"_s;
            QCOMPARE(world.alerts.last().text, left.isEmpty() ? failed : QString());
            QCOMPARE(world.record.refused.has_value(), verb == Verb::Rename && left.isEmpty());
            if (newName == u"taken")
                QCOMPARE(world.alerts.last().details, u"taken: File exists"_s);
            if (verb == Verb::Rename)
                QCOMPARE(world.record.item,
                         PathText::joined(world.source, left.isEmpty() ? u"a"_s : newName));
        }
    }

    void aNewFileReplacesNothing()
    {
        const QString given = u"from/file=old, from/link->~/from/not there, from/folder/"_s;
        World world(given);
        for (const QString &name : { u"file"_s, u"link"_s, u"folder"_s, u"."_s, u".."_s, QString(),
                                     u"../to/x"_s, QString(256, u'n'), QString(QChar(0)) }) {
            world.record = {};
            world.alerts.answer(Alert::Ok);
            world.perform(Verb::NewFile, name);
            QCOMPARE(world.alerts.last().text, u"Cannot create file!"_s);
            QVERIFY(world.record.refused);
        }
        world.perform(Verb::NewFile, u"free"_s);
        QCOMPARE(world.record.item, world.folder.path(u"from/free"_s));
        QCOMPARE(world.tree(),
                 u"from/file=old, from/folder/, from/free=, from/link->~/from/not there"_s);
    }

    void duplicatesStandBesideOneAnother()
    {
        World world(u"from/a.b=1, from/a Copy.b=2, from/d.e/x=3, from/l->a.b"_s);
        const auto duplicate = [&](const QStringList &items) {
            world.steps.duplicateItems(world.request(items),
                                       world.engine.queue().enqueue(u"run"_s));
        };
        world.alerts.answer(Alert::Ok);
        duplicate({ u"a.b"_s, u"gone"_s, u".."_s, u"d.e"_s, u"l"_s });
        QCOMPARE(world.alerts.last().text, u"Duplicate failed!"_s);
        QCOMPARE(world.alerts.last().details.count(u'\n'), 1);
        QCOMPARE(
            world.tree(),
            u"from/a Copy 2.b=1, from/a Copy.b=2, from/a.b=1, from/d.e/x=3, from/d.e Copy/x=3, "
            "from/l->a.b, from/l Copy->a.b"_s);
        QVERIFY(world.engine.queue().runs().isEmpty());
    }

    void aSetGoesOnWithOneAlertAtMost()
    {
        World world(u"from/a=a, from/b=b, from/locked=!c"_s);
        world.perform(Verb::Delete, u"a"_s);
        world.alerts.answer({ Alert::Ok, Alert::Ok });
        world.steps.deleteItems(world.request({ u"b"_s, u"locked"_s }));
        QCOMPARE(world.alerts.last().details, u"locked: The item is locked."_s);
        world.workspace.trashWorks = false;
        world.steps.deleteItems(world.request({ u"b"_s, u"gone"_s }));
        QCOMPARE(world.alerts.last().text, u"Delete failed!"_s);
        QCOMPARE(world.alerts.last().details, u"b: The Trash is out of order."_s);
        world.workspace.trashWorks = true;
        world.workspace.refusals[world.source + u"/long\n"_s] = u"Too long."_s;
        world.alerts.answer({ Alert::Ok });
        world.steps.deleteItems(world.request({ u"b"_s, u"long\n"_s, u"locked"_s }));
        QCOMPARE(world.alerts.last().details,
                 FileName::shown(u"long\n"_s) + u": Too long.\nlocked: The item is locked."_s);
        QCOMPARE(world.tree(), u"from/b=b, from/locked=!c, trash/a=a"_s);

        World aliases(u"from/elsewhere/, to/b->~/from/elsewhere"_s);
        aliases.alerts.answer({ Alert::Ok });
        aliases.steps.createAlias(aliases.request({ u"a"_s, u"b"_s, u"c"_s }));
        QCOMPARE(aliases.alerts.last().text, u"Create alias for 'b' failed!"_s);
        QVERIFY(aliases.alerts.last().details.endsWith(u"File exists"));
        QCOMPARE(aliases.tree(),
                 u"from/elsewhere/, to/a->~/from/a, to/b->~/from/elsewhere, to/c->~/from/c"_s);
    }

    // Names are data: no operation reads a name as an option, a command or markup.
    void everyOperationTakesEveryName()
    {
        for (const QString &name :
             { u"-m"_s, u"--"_s, u"..."_s, u"$(rm -rf other) `rm other`; rm other"_s,
               u"it's \"so\" \\"_s, u"a\nother"_s, FileName::fromBytes("\xff\xfe.txt"),
               QString(255, u'n'), u"<b>%@ %i &amp;"_s, u"*"_s })
            everyOperationTakes(name);
    }

    void alertsShowNamesAsOneLineOfText()
    {
        World world;
        world.alerts.answer({ Alert::Ok });
        world.run(Operation::Copy, { u"<b>%@\n"_s });
        QCOMPARE(world.alerts.last().text, u"Copy progress of '<b>%@\\n' failed!"_s);
    }

private:
    static void everyOperationTakes(const QString &name)
    {
        const struct {
            const char *what;
            Verb verb;
            QString item;
            QString newName;
            QStringList left; // in the source
            QStringList made {}; // in the destination
        } cases[] = {
            { "copy", Verb::Copy, name, {}, { name }, { name } },
            { "overwrite", Verb::Copy, name, name, { name }, { name } },
            { "move", Verb::Move, name, {}, {}, { name } },
            { "delete", Verb::Delete, name, {}, {} },
            { "new folder", Verb::NewFolder, name, {}, { name } },
            { "new file", Verb::NewFile, name, {}, { name } },
            { "rename to", Verb::Rename, u"plain"_s, name, { name } },
            { "rename from", Verb::Rename, name, u"plain"_s, { u"plain"_s } },
            { "alias", Verb::Alias, name, {}, { name }, { name } },
            { "duplicate", Verb::Duplicate, u"plain"_s, name, { u"plain"_s, name } },
        };
        for (const auto &[what, verb, item, newName, left, made] : cases) {
            World world(u"from/other=other, to/other=other"_s);
            const bool isNew = verb == Verb::NewFolder || verb == Verb::NewFile;
            const QByteArray content = isNew ? "" : "kept";
            if (!isNew)
                world.folder.write(u"from/"_s + item, content);
            if (verb == Verb::Copy && newName == name) {
                world.folder.write(u"to/"_s + name, "old");
                world.alerts.answer({ Alert::Yes });
            }
            world.perform(verb, item, newName);
            const QByteArray row = what + (" of " + name.toUtf8());
            const auto holds = [&](const QString &folder, QStringList names) {
                names.append(u"other"_s);
                names.sort();
                QVERIFY2(world.folder.names(folder) == names, row);
                for (const QString &each : std::as_const(names))
                    QVERIFY2(world.folder.read(folder + u'/' + each)
                                 == (each == u"other"_s ? "other" : content),
                             row);
            };
            holds(u"from"_s, left);
            holds(u"to"_s, made);
            QCOMPARE(world.folder.names(u"trash"_s), QStringList(verb == Verb::Delete, name));
        }
    }
};

QTEST_MAIN(tst_SingleSteps)
#include "tst_SingleSteps.moc"

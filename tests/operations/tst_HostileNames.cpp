#include "tests/operations/OperationWorld.h"

#include <QTest>

// Names are data: no operation reads a name as an option, a command or markup.
class tst_HostileNames : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyOperationTakesEveryName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("option") << u"-m"_s;
        QTest::newRow("options' end") << u"--"_s;
        QTest::newRow("dots") << u"..."_s;
        QTest::newRow("command") << u"$(rm -rf other) `rm other`; rm other"_s;
        QTest::newRow("quotes") << u"it's \"so\" \\"_s;
        QTest::newRow("newline") << u"a\nother"_s;
        QTest::newRow("no UTF-8") << FileName::fromBytes("\xff\xfe.txt");
        QTest::newRow("255 bytes") << QString(255, u'n');
        QTest::newRow("markup") << u"<b>%@ %i &amp;"_s;
        QTest::newRow("pattern") << u"*"_s;
    }

    void everyOperationTakesEveryName()
    {
        QFETCH(QString, name);
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
            { "rename to", Verb::Rename, u"plain"_s, name, { name } },
            { "rename from", Verb::Rename, name, u"plain"_s, { u"plain"_s } },
            { "alias", Verb::Alias, name, {}, { name }, { name } },
            { "duplicate", Verb::Duplicate, u"plain"_s, name, { u"plain"_s, name } },
        };
        for (const auto &[what, verb, item, newName, left, made] : cases) {
            World world(u"from/other=other, to/other=other"_s);
            const QByteArray content = verb == Verb::NewFolder ? "" : "kept";
            if (verb != Verb::NewFolder)
                world.folder.write(u"from/"_s + item, content);
            if (verb == Verb::Copy && newName == name) {
                world.folder.write(u"to/"_s + name, "old");
                world.answer({ Alert::Yes });
            }
            world.perform(verb, item, newName);
            const auto holds = [&, row = what](const QString &folder, QStringList names) {
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

    void alertsShowNamesAsOneLineOfText()
    {
        World world;
        world.answer({ Alert::Ok });
        world.run(Operation::Copy, { u"<b>%@\n"_s });
        QCOMPARE(world.lastAlert().text, u"Copy progress of '<b>%@\\n' failed!"_s);
    }
};

QTEST_MAIN(tst_HostileNames)
#include "tst_HostileNames.moc"

#include "tests/operations/OperationWorld.h"

#include <QTest>

namespace {

enum Verb { Copy, Overwrite, Move, Delete, NewFolder, RenameTo, RenameFrom, MakeAlias, Duplicate };

} // namespace

// Names are data: no operation reads a name as an option, a command or markup.
class tst_HostileNames : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyOperationTakesEveryName_data();
    void everyOperationTakesEveryName();
    void alertsShowNamesAsOneLineOfText();
};

void tst_HostileNames::everyOperationTakesEveryName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("verb");
    const QList<std::pair<const char *, QString>> names {
        { "option", u"-m"_s },
        { "options' end", u"--"_s },
        { "command", u"$(rm -rf other) `rm other`; rm other"_s },
        { "quotes", u"it's \"so\" \\"_s },
        { "newline", u"a\nother"_s },
        { "no UTF-8", FileName::fromBytes("\xff\xfe.txt") },
        { "255 bytes", QString(255, u'n') },
        { "markup", u"<b>%@ %i &amp;"_s },
        { "pattern", u"*"_s },
    };
    const char *verbs[] = { "copy",      "overwrite",   "move",  "delete",   "new folder",
                            "rename to", "rename from", "alias", "duplicate" };
    for (const auto &[what, name] : names) {
        for (int verb = Copy; verb <= Duplicate; ++verb)
            QTest::addRow("%s: %s", what, verbs[verb]) << name << verb;
    }
}

void tst_HostileNames::everyOperationTakesEveryName()
{
    QFETCH(QString, name);
    QFETCH(int, verb);
    World world;
    const QString source = PathText::joined(world.source, name);
    const QString target = PathText::joined(world.destination, name);
    for (const QString &folder : { u"from/"_s, u"to/"_s })
        world.folder.write(folder + u"other"_s, "other");
    const bool takes = verb != NewFolder && verb != RenameTo && verb != Duplicate;
    world.folder.write(u"from/"_s + (takes ? name : u"plain"_s), "kept");
    QStringList left { u"other"_s, takes ? name : u"plain"_s };
    QStringList made { u"other"_s };
    switch (verb) {
    case Overwrite:
        world.folder.write(u"to/"_s + name, "old");
        world.alerts.answer(Alert::Yes);
        [[fallthrough]];
    case Copy:
    case Move:
        world.run(verb == Move ? Operation::Move : Operation::Copy, { name });
        QCOMPARE(world.to(name), "kept");
        made.append(name);
        if (verb == Move)
            left.removeLast();
        break;
    case Delete:
        world.steps.deleteItems(world.request({ name }));
        QVERIFY(world.inTrash(name));
        left.removeLast();
        break;
    case NewFolder:
        world.steps.newFolder(world.request({ name }), world.record);
        left.append(name);
        break;
    case RenameTo:
    case RenameFrom: {
        const QString plain = PathText::joined(world.source, u"plain"_s);
        AcceptedRequest request = world.request({});
        request.source = takes ? source : plain;
        request.destination = takes ? plain : source;
        world.steps.renameItem(request, world.record);
        left.last() = takes ? u"plain"_s : name;
        QCOMPARE(world.from(left.last()), "kept");
        break;
    }
    case MakeAlias:
        world.steps.createAlias(world.request({ name }));
        QCOMPARE(linkTarget(target), source);
        made.append(name);
        break;
    case Duplicate:
        world.steps.duplicateItem(PathText::joined(world.source, u"plain"_s), source);
        QCOMPARE(world.from(name), "kept");
        left.append(name);
        break;
    }
    left.sort();
    made.sort();
    QCOMPARE(world.folder.names(u"from"_s), left);
    QCOMPARE(world.folder.names(u"to"_s), made);
    QCOMPARE(world.from(u"other"_s), "other");
    QCOMPARE(world.to(u"other"_s), "other");
}

void tst_HostileNames::alertsShowNamesAsOneLineOfText()
{
    World world;
    world.alerts.answer(Alert::Ok);
    world.run(Operation::Copy, { u"<b>%@\n"_s });
    QCOMPARE(world.alerts.shown().last().text, u"Copy progress of '<b>%@\\n' failed!"_s);
}

QTEST_MAIN(tst_HostileNames)
#include "tst_HostileNames.moc"

#include "tests/operations/OperationWorld.h"

#include <QTest>

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
    QTest::addColumn<Verb>("verb");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("newName");
    QTest::addColumn<QStringList>("left"); // in the source
    QTest::addColumn<QStringList>("made"); // in the destination
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
    for (const auto &[kind, name] : names) {
        const auto row = [&](const char *what, Verb verb, const QString &item,
                             const QString &newName, const QStringList &left,
                             const QStringList &made = {}) {
            QTest::addRow("%s: %s", kind, what) << name << verb << item << newName << left << made;
        };
        row("copy", Verb::Copy, name, {}, { name }, { name });
        row("overwrite", Verb::Copy, name, name, { name }, { name });
        row("move", Verb::Move, name, {}, {}, { name });
        row("delete", Verb::Delete, name, {}, {});
        row("new folder", Verb::NewFolder, name, {}, { name });
        row("rename to", Verb::Rename, u"plain"_s, name, { name });
        row("rename from", Verb::Rename, name, u"plain"_s, { u"plain"_s });
        row("alias", Verb::Alias, name, {}, { name }, { name });
        row("duplicate", Verb::Duplicate, u"plain"_s, name, { u"plain"_s, name });
    }
}

void tst_HostileNames::everyOperationTakesEveryName()
{
    QFETCH(QString, name);
    QFETCH(Verb, verb);
    QFETCH(QString, item);
    QFETCH(QString, newName);
    QFETCH(QStringList, left);
    QFETCH(QStringList, made);
    World world(u"from/other=other, to/other=other"_s);
    const QByteArray content = verb == Verb::NewFolder ? "" : "kept";
    if (verb != Verb::NewFolder)
        world.folder.write(u"from/"_s + item, content);
    if (verb == Verb::Copy && newName == name) {
        world.folder.write(u"to/"_s + name, "old");
        world.answer({ Alert::Yes });
    }
    world.perform(verb, item, newName);
    const auto holds = [&](const QString &folder, QStringList names) {
        names.append(u"other"_s);
        names.sort();
        QCOMPARE(world.folder.names(folder), names);
        for (const QString &each : std::as_const(names))
            QCOMPARE(world.folder.read(folder + u'/' + each),
                     each == u"other"_s ? "other" : content);
    };
    holds(u"from"_s, left);
    holds(u"to"_s, made);
    QCOMPARE(world.folder.names(u"trash"_s), QStringList(verb == Verb::Delete ? 1 : 0, name));
}

void tst_HostileNames::alertsShowNamesAsOneLineOfText()
{
    World world;
    world.answer({ Alert::Ok });
    world.run(Operation::Copy, { u"<b>%@\n"_s });
    QCOMPARE(world.lastAlert().text, u"Copy progress of '<b>%@\\n' failed!"_s);
}

QTEST_MAIN(tst_HostileNames)
#include "tst_HostileNames.moc"

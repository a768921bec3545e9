#include "window/MenuValidation.h"

#include "platform/FileKinds.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/FileQueries.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Which items of the menus apply to which row.
class tst_MenuValidation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itemsFollowTheRow_data();
    void itemsFollowTheRow();
};

namespace {

using enum CommandItem;
const QList<CommandItem> Always { NewFolder, Reload, ShowClassicButtons };
const QList<CommandItem> OnRows { Open, Copy, Move, Delete, Rename, Duplicate, CreateArchive };

} // namespace

void tst_MenuValidation::itemsFollowTheRow_data()
{
    QTest::addColumn<int>("row"); // -2: no active pane
    QTest::addColumn<QString>("name");
    QTest::addColumn<QList<CommandItem>>("enabled");
    QTest::newRow("no active pane") << -2 << QString() << Always;
    QTest::newRow("nothing selected") << -1 << QString() << Always;
    QTest::newRow("the parent row") << 0 << u"."_s << Always;
    QTest::newRow("a file") << 1 << u"file"_s << Always + OnRows + QList { OpenWith };
    QTest::newRow("a folder") << 1 << u"folder"_s << Always + OnRows;
    QTest::newRow("a volume") << 1 << u"volume"_s << Always + OnRows + QList { Eject };
    QTest::newRow("a package") << 1 << u"bundle.app"_s
                               << Always + OnRows + QList { OpenWith, PackageContent };
    QTest::newRow("an archive") << 1 << u"a.zip"_s << Always + OnRows + QList { OpenWith, Unpack };
    // Kept: the command itself would unpack it.
    QTest::newRow("a cpgz archive") << 1 << u"a.cpgz"_s << Always + OnRows + QList { OpenWith };
}

void tst_MenuValidation::itemsFollowTheRow()
{
    QFETCH(int, row);
    QFETCH(QString, name);
    QFETCH(QList<CommandItem>, enabled);
    const TestFolder folder;
    for (const QString &each : { u"folder"_s, u"volume"_s, u"bundle.app"_s })
        folder.makeFolder(each);
    for (const QString &each : { u"file"_s, u"a.zip"_s, u"a.cpgz"_s })
        folder.write(each);
    RecordedWorkspace workspace;
    workspace.volumes.append(folder.path(u"volume"_s));
    const FileKinds kinds;
    const FileQueries queries(workspace, kinds);
    const MenuState state { row == -2 ? std::nullopt : std::optional(row),
                            name.isEmpty() ? QString() : folder.path(name) };
    for (int item = 0; item <= int(ShowClassicButtons); ++item)
        QCOMPARE(validateMenuItem(CommandItem(item), state, queries),
                 enabled.contains(CommandItem(item)));
}

QTEST_MAIN(tst_MenuValidation)
#include "tst_MenuValidation.moc"

#include "commands/MenuValidation.h"

#include "model/FileQueries.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "widgets/FileKinds.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_MenuValidation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itemsFollowTheRow();
};

void tst_MenuValidation::itemsFollowTheRow()
{
    using enum CommandItem;
    const QList<CommandItem> always { NewFolder, Reload, ShowClassicButtons };
    const auto onRow =
        always + QList { Open, Copy, Move, Delete, Rename, Duplicate, CreateArchive };
    const struct {
        std::optional<int> row; // of the active pane
        QString name;
        QList<CommandItem> enabled;
    } rows[] = {
        { {}, {}, always },
        { -1, {}, always },
        { 0, u"."_s, always },
        { 1, u"file"_s, onRow + QList { OpenWith } },
        { 1, u"folder"_s, onRow },
        { 1, u"volume"_s, onRow + QList { Eject } },
        { 1, u"bundle.app"_s, onRow + QList { OpenWith, PackageContent } },
        { 1, u"a.zip"_s, onRow + QList { OpenWith, Unpack } },
        { 1, u"a.cpgz"_s, onRow + QList { OpenWith } }, // Kept: the command would unpack it
    };
    const TestFolder folder;
    for (const QString &each : { u"folder"_s, u"volume"_s, u"bundle.app"_s })
        folder.makeFolder(each);
    for (const QString &each : { u"file"_s, u"a.zip"_s, u"a.cpgz"_s })
        folder.write(each);
    RecordedWorkspace workspace;
    workspace.volumes.append(folder.path(u"volume"_s));
    const FileKinds kinds;
    const FileQueries queries(workspace, kinds);
    for (const auto &[row, name, enabled] : rows) {
        const MenuState state { row, name.isEmpty() ? QString() : folder.path(name) };
        QList<CommandItem> valid, expected = enabled;
        for (int item = 0; item <= int(ShowClassicButtons); ++item)
            if (validateMenuItem(CommandItem(item), state, queries))
                valid.append(CommandItem(item));
        std::ranges::sort(expected);
        QVERIFY2(valid == expected, qPrintable(name));
    }
}

QTEST_MAIN(tst_MenuValidation)
#include "tst_MenuValidation.moc"

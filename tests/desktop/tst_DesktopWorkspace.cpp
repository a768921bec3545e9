#include "platform/desktop/DesktopWorkspace.h"

#include "files/FileName.h"
#include "files/FileStatus.h"
#include "tests/support/TestFolder.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_DesktopWorkspace : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSystemsTerminalStartsAndOtherProgramsAreFiles();
};

void tst_DesktopWorkspace::theSystemsTerminalStartsAndOtherProgramsAreFiles()
{
    const TestFolder folder;
    for (const QString &name : { u"x-terminal-emulator"_s, u"program"_s }) {
        folder.write(name, "#!/bin/sh\n: > \"$0.started\"\n");
        chmod(FileName::toBytes(folder.path(name)), 0755);
    }
    qputenv("XDG_DATA_DIRS", FileName::toBytes(folder.path(u"no applications"_s)));
    qputenv("PATH", FileName::toBytes(folder.path()));
    DesktopWorkspace workspace;
    const QString terminal = workspace.applicationForTool(Tool::Terminal);
    QCOMPARE(terminal, folder.path(u"x-terminal-emulator"_s));
    QVERIFY(workspace.openFile(terminal));
    QTRY_VERIFY(exists(terminal + u".started"_s));
    QVERIFY(!workspace.openFile(folder.path(u"program"_s)));
    QVERIFY(!exists(folder.path(u"program.started"_s)));
}

QTEST_MAIN(tst_DesktopWorkspace)
#include "tst_DesktopWorkspace.moc"

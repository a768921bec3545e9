#include "platform/desktop/TypeApplications.h"

#include "platform/desktop/TerminalInFolder.h"
#include "tests/support/TestFolder.h"

#include <QDir>

namespace {

// The applications of a person, in the home folder of the test, for types that nothing else opens.
struct Applications {
    QString folder = QDir::homePath() + u"/.local/share/applications/"_s;

    Applications()
    {
        QDir().mkpath(folder);
        QDir().mkpath(QDir::homePath() + u"/.config"_s);
        for (const QString &name : { u"both"_s, u"one"_s, u"two"_s, u"gone"_s })
            write(folder + name + u".desktop"_s,
                  "[Desktop Entry]\nType=Application\nName=" + name.toUtf8()
                      + "\nExec=" + (name == u"gone" ? "/proc/none" : "/bin/true") + " %U\n");
        write(folder + u"mimeinfo.cache"_s,
              "[MIME Cache]\napplication/x-nes-rom=both.desktop;one.desktop;gone.desktop;\n"
              "application/x-gameboy-rom=both.desktop;two.desktop;never.desktop;\n");
        // Defaults, one of which is not installed any more.
        write(QDir::homePath() + u"/.config/mimeapps.list"_s,
              "[Default Applications]\napplication/x-nes-rom=removed.desktop;one.desktop;\n"
              "application/x-gameboy-rom=two.desktop\n[Added "
              "Associations]\napplication/x-nes-rom=removed.desktop;\n");
    }
    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    // The names of what opens these files, the default one with a star, then the type.
    static QString names(const TestFolder &files, const QStringList &names)
    {
        QStringList paths, words;
        for (const QString &name : names)
            paths.append(files.path(name));
        const auto found = TypeApplications::forFiles(paths);
        for (const auto &[path, name] : found.all)
            words.append(name + (path == found.standard ? u"*"_s : QString()));
        if (words.size() > 1) // beyond the default one the order is the desktop's
            std::sort(words.begin() + 1, words.end());
        return (words + QStringList { found.type }).join(u' ').trimmed();
    }
};

} // namespace

class tst_TypeApplications : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { const Applications applications; }

    void whatOpensAllOfTheFiles()
    {
        TestFolder files;
        for (const QString &name : { u"a.nes"_s, u"b.nes"_s, u"c.gb"_s, u"unknown"_s })
            files.write(name, name == u"unknown" ? QByteArray("\0\1\2\3", 4) : QByteArray("x"));
        files.makeFolder(u"folder.nes"_s);
        const QString odd = FileName::fromBytes("\xff.nes");
        files.write(odd, "x");
        const std::pair<QStringList, QString> rows[] = {
            { { u"a.nes"_s }, u"one* both application/x-nes-rom"_s },
            { { u"a.nes"_s, u"b.nes"_s, odd }, u"one* both application/x-nes-rom"_s },
            { { u"c.gb"_s }, u"two* both application/x-gameboy-rom"_s },
            { { u"a.nes"_s, u"c.gb"_s }, u"both"_s },
            { { u"unknown"_s }, {} },
            { { u"a.nes"_s, u"unknown"_s }, {} },
            { { u"folder.nes"_s }, {} },
            { { u"not there"_s }, {} },
            { {}, {} },
            { QStringList(100, u"a.nes"_s) + QStringList { u"not read.gb"_s }, u"both"_s },
        };
        for (const auto &[names, found] : rows)
            QCOMPARE(Applications::names(files, names).section(u' ', 0), found);
    }

    void theDefaultIsSetForTheTypeAlone()
    {
        TestFolder files;
        files.write(u"a.nes"_s, "x");
        QString reason;
        const Applications applications;
        const auto set = [&](const QString &name) {
            return TypeApplications::setDefault(applications.folder + name,
                                                u"application/x-nes-rom"_s, &reason);
        };
        QVERIFY(!set(u"two.desktop"_s)); // does not open such files
        QVERIFY(!set(u"gone.desktop"_s));
        QVERIFY(set(u"both.desktop"_s));
        QTRY_COMPARE(Applications::names(files, { u"a.nes"_s }),
                     u"both* one application/x-nes-rom"_s);
        files.write(u"c.gb"_s, "x");
        QCOMPARE(Applications::names(files, { u"c.gb"_s }),
                 u"two* both application/x-gameboy-rom"_s);
    }

    void aTerminalStartsInAnyFolder()
    {
        TestFolder folder;
        folder.write(u"x-terminal-emulator"_s,
                     "#!/bin/sh\nprintf '%s|%s' \"$(pwd -P)\" \"$PWD\" > \"$SAW.new\"\n"
                     "mv \"$SAW.new\" \"$SAW\"\n");
        folder.shell(u"chmod +x x-terminal-emulator"_s);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", folder.bytes(u"."_s) + ':' + path);
        qputenv("SAW", folder.bytes(u"saw"_s));
        QString reason;
        for (const QString &name :
             { u"a b"_s, u"-x"_s, u"$(touch x)"_s, FileName::fromBytes("\xff\n.") }) {
            folder.makeFolder(name);
            QVERIFY(TerminalInFolder::open(folder.path(name), &reason));
            QTRY_COMPARE(folder.read(u"saw"_s), folder.bytes(name) + '|' + folder.bytes(name));
        }
        QVERIFY(!TerminalInFolder::open(folder.path(u"not there"_s), &reason));
        QVERIFY2(reason.contains(u"No such file"), qPrintable(reason));
        qputenv("PATH", path);
    }
};

QTEST_GUILESS_MAIN(tst_TypeApplications)
#include "tst_TypeApplications.moc"

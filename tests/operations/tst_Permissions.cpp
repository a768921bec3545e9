#include "operations/Permissions.h"

#include "files/Descriptor.h"
#include "files/FileFlags.h"
#include "files/FileStatus.h"
#include "files/ItemMarks.h"
#include "files/Waiting.h"
#include "model/MessageBus.h"
#include "operations/Authentication.h"
#include "tests/support/AlertScript.h"
#include "tests/support/RecordedPrograms.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/TestTree.h"
#include "tests/support/WithoutRights.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>

class tst_Permissions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wordsOfDigits()
    {
        QSet<QString> words;
        for (char16_t digit = u'0'; digit <= u'7'; ++digit) {
            const auto text = Permissions::permissionToString(digit);
            QVERIFY(text);
            words.insert(*text);
            QCOMPARE(Permissions::stringToPermission(*text), QChar(digit));
        }
        QCOMPARE(words.size(), 8);
        QCOMPARE(Permissions::permissionToString(u'6'), u"Read & Write"_s);
        for (const QChar none : u"8a/ "_s)
            QVERIFY(!Permissions::permissionToString(none));
        for (const QString &none : { u"read only"_s, u""_s, u" Read only"_s })
            QCOMPARE(Permissions::stringToPermission(none), QChar(u' '));
        const std::pair<const char *, int> numbers[] = { { "755", 493 }, { "0644", 420 },
                                                         { "", 0 },      { "8", 8 },
                                                         { "/", 65535 }, { "1 0", 65528 * 8 } };
        for (const auto &[digits, number] : numbers)
            QCOMPARE(Permissions::octalToDecimal(QString::fromLatin1(digits)), number);
    }

    void modeIsSetBesideTheSpecialBits()
    {
        makeTree(folder, u"file, folder/, link->file, dangling->none"_s);
        QCOMPARE(chmod(folder.bytes(u"file"_s), 04711), 0);
        QCOMPARE(chmod(folder.bytes(u"folder"_s), 03777), 0);
        const Held held(folder.bytes(u"file"_s));
        const std::tuple<QString, mode_t, QString, mode_t> cases[] = {
            { folder.path(u"file"_s), 0640, u"file"_s, 04640 },
            { folder.path(u"folder"_s), 0700, u"folder"_s, 03700 },
            { folder.path(u"link"_s), 0600, u"file"_s, 04600 },
            { held.path, 0, u"file"_s, 04000 },
        };
        for (const auto &[path, mode, changed, expected] : cases) {
            QVERIFY(Permissions::setPosixPermissions(mode, path));
            QCOMPARE(modeOf(changed), expected);
        }
        QVERIFY(!Permissions::setPosixPermissions(0644, folder.path(u"dangling"_s)));
        QVERIFY(Permissions::setPosixPermissions(0555, u"/proc/self"_s)); // as it is: not written
        QVERIFY(!Permissions::setPosixPermissions(0777, u"/proc/self"_s));
    }

    void ownerIsSetOnlyByWhoMay()
    {
        folder.write(u"mine"_s);
        QCOMPARE(chmod(folder.bytes(u"mine"_s), 06755), 0);
        const QString file = folder.path(u"mine"_s);
        const QString owner = QString::number(geteuid());
        const QString group = QString::number(getegid());
        QVERIFY(Permissions::setOwnerAndGroup(file, owner, group));
        QVERIFY(Permissions::setOwnerAndGroup(
            file, QString::fromLocal8Bit(getpwuid(geteuid())->pw_name),
            QString::fromLocal8Bit(getgrgid(getegid())->gr_name)));
        for (const QString &unknown :
             { u"twinleaf-nobody"_s, u"-1"_s, u"4294967295"_s, QString() }) {
            QVERIFY(!Permissions::setOwnerAndGroup(file, unknown, group));
            QVERIFY(!Permissions::setOwnerAndGroup(file, owner, unknown));
        }
        const bool may = geteuid() == 0;
        QCOMPARE(Permissions::setOwnerAndGroup(file, u"daemon"_s, u"daemon"_s), may);
        QCOMPARE(fileStatus(file, Links::Follow)->owner,
                 may ? getpwnam("daemon")->pw_uid : geteuid());
        QCOMPARE(modeOf(u"mine"_s), mode_t(06755));
    }

    void lockIsTheOneThatOperationsGoBy()
    {
        makeTree(folder, u"lock, folder/"_s);
        for (const QString &name : { u"lock"_s, u"folder"_s }) {
            const Held held(folder.bytes(name));
            for (const mode_t mode : { 0755, 0444, 0200, 0, 04555 }) {
                QCOMPARE(chmod(folder.bytes(name), mode), 0);
                const WithoutRights person;
                for (const bool locked : { true, true, false, false }) {
                    QVERIFY(permissions.setLockState(held.path, locked));
                    QCOMPARE(FileFlags::isLocked(folder.path(name)), locked);
                    QCOMPARE(ItemMarks::lockOf(held.item.number()).marked, locked);
                    QCOMPARE(modeOf(name), mode);
                }
            }
        }
        QVERIFY(!permissions.setLockState(folder.path(u"none"_s), true));
        // It keeps no mark, and must not be opened for the flag.
        QCOMPARE(mkfifo(folder.bytes(u"fifo"_s), 0644), 0);
        QVERIFY(!permissions.setLockState(folder.path(u"fifo"_s), true));
        QVERIFY(permissions.setLockState(folder.path(u"fifo"_s), false));
        QVERIFY(services.executed.isEmpty());
    }

    void withRightsTheFileSystemsOwnLockIsSet()
    {
        makeTree(folder, u"a\n-file=x, marked=!"_s);
        const Held held(folder.bytes(u"a\n-file"_s));
        const auto status = fileStatus(folder.path(u"a\n-file"_s), Links::NoFollow);
        services.holds = true;
        if (!ItemMarks::lockOf(held.item.number()).canBeImmutable) { // then there is only the mark
            QVERIFY(permissions.setLockState(held.path, true));
            QVERIFY(FileFlags::isLocked(folder.path(u"a\n-file"_s)));
            QVERIFY(services.executed.isEmpty());
            services.holds = false;
            return;
        }
        QVERIFY(permissions.setLockState(held.path, true));
        QCOMPARE(services.executed.last(),
                 (QStringList { u"/usr/bin/chattr"_s, u"+i"_s, folder.path(u"a\n-file"_s) }));
        QCOMPARE(services.subjects.last(), CommandSubject(status->identity));
        QVERIFY(permissions.setLockState(folder.path(u"marked"_s), true)); // it is
        QCOMPARE(services.executed.size(), 1);
        services.status = 1;
        QTest::ignoreMessage(QtWarningMsg, "Error 1 in AuthorizationExecuteWithPrivileges");
        QVERIFY(!permissions.setLockState(held.path, true));
        services.status = 0;
        services.holds = false;
    }

    void codesOfApplications_data()
    {
        QTest::addColumn<QString>("application");
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QByteArray>("creator");
        QTest::addColumn<int>("alerts");
        const auto info = [&](const QString &name, const char *content) {
            folder.makeFolder(name + u"/Contents"_s);
            folder.write(name + u"/Contents/Info.plist"_s,
                         "<plist><dict>" + QByteArray(content) + "</dict></plist>");
        };
        info(u"Full.app"_s,
             "<key>CFBundleSignature</key><string>FULL</string><key>CFBundleDocumentTypes</key>"
             "<array><dict/><dict><key>CFBundleTypeOSTypes</key><array><string>TEXT</string>"
             "<string>****</string></array></dict><dict><key>CFBundleTypeOSTypes</key><array>"
             "<string>LAST</string></array></dict></array>");
        info(u"Half.app"_s, "<key>CFBundleSignature</key><string>HALF</string>");
        info(u"Odd.app"_s,
             "<key>CFBundleSignature</key><string>no code</string><key>CFBundleDocumentTypes</key>"
             "<array><dict><key>CFBundleTypeOSTypes</key><array/></dict></array>");
        folder.write(u"stated.desktop"_s,
                     "[Desktop Entry]\nX-Twinleaf-OSType=PICT\nX-Twinleaf-Signature=tool\n"
                     "[Desktop Action x]\nX-Twinleaf-Signature=none\n");
        const QByteArray old("OLD!");
        QTest::newRow("bundle") << folder.path(u"Full.app"_s) << QByteArray("TEXT")
                                << QByteArray("FULL") << 0;
        QTest::newRow("no types") << folder.path(u"Half.app"_s) << QByteArray()
                                  << QByteArray("HALF") << 1;
        QTest::newRow("no codes") << folder.path(u"Odd.app"_s) << QByteArray() << QByteArray() << 1;
        QTest::newRow("gone") << folder.path(u"Gone.app"_s) << QByteArray() << QByteArray() << 2;
        QTest::newRow("entry") << folder.path(u"stated.desktop"_s) << QByteArray("PICT")
                               << QByteArray("tool") << 0;
        QTest::newRow("none") << u"Not available"_s << old << old << 0;
    }
    void codesOfApplications()
    {
        QFETCH(QString, application);
        QFETCH(int, alerts);
        folder.write(u"document"_s);
        for (const char *code : { "user.twinleaf.type", "user.twinleaf.creator" })
            folder.setAttribute(u"document"_s, code, "OLD!");
        person.answer(QList<Alert::Answer>(alerts, Alert::Ok));
        const Held held(folder.bytes(u"document"_s));
        QVERIFY(permissions.setCreatorAndTypeCode(held.path, application));
        QTEST(folder.attribute(u"document"_s, "user.twinleaf.type"), "type");
        QTEST(folder.attribute(u"document"_s, "user.twinleaf.creator"), "creator");
    }

    void codesAreMadeWhereNoneAreStated()
    {
        const QString type = permissions.getBundleOSType(u"/usr/share/applications/a.desktop"_s);
        QCOMPARE(type.size(), 6);
        QCOMPARE(type, permissions.getBundleOSType(u"/home/x/a.desktop"_s));
        QVERIFY(type != permissions.getBundleSignature(u"/home/x/a.desktop"_s));
        QVERIFY(type != permissions.getBundleOSType(u"/home/x/b.desktop"_s));
        person.answer(Alert::Ok);
        QCOMPARE(permissions.getBundleSignature(u"/none.app"_s), u"'(null)'"_s);
        QCOMPARE(person.last().text, u"Cannot read bundle signature of launch application!"_s);
        // What is so already is not written, and what cannot keep any is no failure.
        folder.write(u"once"_s);
        QVERIFY(permissions.setCreatorAndTypeCode(folder.path(u"once"_s), u"/a.desktop"_s));
        QCOMPARE(chmod(folder.bytes(u"once"_s), 0444), 0);
        const auto before = fileStatus(folder.path(u"once"_s), Links::Follow);
        QVERIFY(permissions.setCreatorAndTypeCode(folder.path(u"once"_s), u"/b/a.desktop"_s));
        QCOMPARE(fileStatus(folder.path(u"once"_s), Links::Follow)->changed, before->changed);
        QVERIFY(permissions.setCreatorAndTypeCode(u"/proc/self/status"_s, u"/a.desktop"_s));
        QVERIFY(permissions.setCreatorAndTypeCode(u"/dev/null"_s, u"/a.desktop"_s));
        QVERIFY(!permissions.setCreatorAndTypeCode(folder.path(u"none"_s), u"/a.desktop"_s));
    }

private:
    // As the information sheet holds what it shows.
    struct Held {
        explicit Held(const QByteArray &bytes)
            : item(::open(bytes, O_PATH | O_CLOEXEC))
        {
        }
        Descriptor item;
        QString path = u"/proc/self/fd/%1"_s.arg(item.number());
    };
    mode_t modeOf(const QString &name) const
    {
        return fileStatus(folder.path(name), Links::NoFollow)->mode;
    }

    const TestFolder folder;
    AlertScript person;
    MessageBus bus;
    RecordedPrograms programs;
    RecordedAuthorization services;
    Waiting waiting;
    Authentication authentication { services, programs, person, bus };
    const Permissions permissions { person, authentication, waiting };
};

QTEST_MAIN(tst_Permissions)
#include "tst_Permissions.moc"

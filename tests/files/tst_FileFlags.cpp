#include "files/FileFlags.h"
#include "files/HiddenRule.h"
#include "tests/support/TestTree.h"

#include <QtEndian>

#include <sys/stat.h>

class tst_FileFlags : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void marksComeFromTheFirstThatAnswers()
    {
        using FileFlags::Alias, FileFlags::Invisible;
        constexpr auto Tags = "user.xdg.tags";
        constexpr auto Netatalk = "user.org.netatalk.Metadata";
        const auto finder = &TestFolder::finderInfo;
        const struct {
            const char *name;
            QList<std::pair<const char *, QByteArray>> attributes;
            int marks;
        } cases[] = {
            { "none", {}, 0 },
            { "red", { { Label, "1" } }, 0x0C },
            { "grey", { { Label, "7" } }, 0x02 },
            { "no label hides", { { Label, "0" }, { Tags, "Red" }, { Finder, finder(0x06) } }, 0 },
            { "a label that is none", { { Label, "8" }, { Tags, "red" } }, 0x0C },
            { "first colour", { { Tags, "holiday, GRAY ,Red" }, { Finder, finder(0x06) } }, 0x02 },
            { "no colour", { { Tags, "holiday,Reddish" }, { Finder, finder(0x06) } }, 0x06 },
            { "flags beside a label", { { Label, "7" }, { Finder, finder(0xC00C) } }, 0xC002 },
            { "flags beyond the label", { { Finder, finder(0x3FF1) } }, 0 },
            { "cut off", { { Finder, "12345678\xFF" } }, 0 },
            { "AppleDouble", { { Netatalk, appleDouble(1, 9, 38) } }, 0x8004 },
            { "other entry", { { Netatalk, appleDouble(1, 8, 38) } }, 0 },
            { "past the end", { { Netatalk, appleDouble(1, 9, 0xFFFFFFF0) } }, 0 },
            { "entries past the end", { { Netatalk, appleDouble(0xFFFF, 8, 38) } }, 0 },
        };
        for (const auto &[name, attributes, expected] : cases) {
            const QString file = QString::fromUtf8(name);
            folder.write(file);
            for (const auto &[attribute, value] : attributes)
                folder.setAttribute(file, attribute, value);
            const auto marks = FileFlags::marks(folder.path(file));
            const int flags = (marks.invisible ? Invisible : 0) | (marks.alias ? Alias : 0);
            QVERIFY2((marks.labelBits | flags) == expected, name);
        }
    }

    void marksFollowLinksAndLocksDoNot()
    {
        makeTree(folder, u"marked=!, link->marked"_s);
        folder.setAttribute(u"marked"_s, Label, "1");
        QCOMPARE(FileFlags::marks(folder.path(u"link"_s)).labelBits, quint8(0x0C));
        QVERIFY(FileFlags::isLocked(folder.path(u"marked"_s)));
        QVERIFY(!FileFlags::isLocked(folder.path(u"link"_s)));
        QVERIFY(!FileFlags::isLocked(folder.path(u"missing"_s)));
    }

    void hiddenNamesAreBytesOfAFile()
    {
        makeTree(folder, u"hiding/, waiting/"_s);
        folder.write(u"hiding/.hidden"_s, "one\n\n two \n\xFF\nlast");
        QCOMPARE(mkfifo(folder.bytes(u"waiting/.hidden"_s), 0600), 0);
        HiddenRule rule(folder.path(u"hiding"_s));
        for (const char *hidden : { "one", " two ", "\xFF", "last", ".dot", "Temporary Items" })
            QVERIFY2(rule.hidesName(hidden), hidden);
        for (const char *shown : { "two", "", "las", "temporary items" })
            QVERIFY2(!rule.hidesName(shown), shown);
        for (const QString &name : { u"missing"_s, u"waiting"_s })
            QVERIFY(!HiddenRule(folder.path(name)).hidesName("one"));
    }

private:
    static constexpr auto Label = "user.twinleaf.label";
    static constexpr auto Finder = "user.com.apple.FinderInfo";

    // An AppleDouble header, and the Finder's information behind it.
    static QByteArray appleDouble(quint16 entries, quint32 id, quint32 offset)
    {
        QByteArray header(38, '\0');
        qToBigEndian(entries, header.data() + 24);
        qToBigEndian(id, header.data() + 26);
        qToBigEndian(offset, header.data() + 30);
        return header + TestFolder::finderInfo(0x8004);
    }

    TestFolder folder;
};

QTEST_GUILESS_MAIN(tst_FileFlags)
#include "tst_FileFlags.moc"

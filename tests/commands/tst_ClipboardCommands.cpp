#include "commands/ClipboardCommands.h"

#include "base/MainThread.h"
#include "tests/support/World.h"
#include "window/NoticeLabel.h"

#include <QClipboard>
#include <QMimeData>
#include <QSemaphore>

namespace {

const QString UriList = u"text/uri-list"_s;

struct Panes : StartedWorld {
    explicit Panes(const QString &words)
        : StartedWorld(words)
    {
        QGuiApplication::clipboard()->clear();
        confirm(false);
    }
    void confirm(bool asks)
    {
        defaults.setValue(Settings::ConfirmationForFileOperations, asks);
        model.setUserDefaultValues();
    }
    void selectAll(Command command)
    {
        focus(Side::Left);
        run(Command::SelectAll);
        run(command);
    }
    void paste(Side side)
    {
        focus(side);
        run(Command::Paste);
    }
    QString tree() const { return treeOf(folder, { u"left"_s, u"right"_s, u"else"_s }); }
};

// What another program has put there; "~" is the test's folder.
void hold(const World &world, const QString &format, QByteArray bytes, bool isMarked = false)
{
    auto *data = new QMimeData;
    data->setData(format, bytes.replace("~", "file://" + world.folder.bytes(u"."_s)));
    if (isMarked)
        data->setData(u"application/x-kde-cutselection"_s, "1");
    QGuiApplication::clipboard()->setMimeData(data);
}

// Names its formats at once and then takes long to give nothing.
struct Hanging : QMimeData {
    explicit Hanging(int &count)
        : asked(count)
    {
    }
    QStringList formats() const override
    {
        return { UriList, u"application/x-kde-cutselection"_s };
    }
    QVariant retrieveData(const QString &, QMetaType) const override
    {
        ++asked;
        QSemaphore().tryAcquire(1, 1100); // an answer that does not come
        return {};
    }
    int &asked;
};

bool isEmpty()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return !data || data->formats().isEmpty();
}

} // namespace

class tst_ClipboardCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itemsGoFromPaneToPane()
    {
        const QString given = u"left/a.txt=a, left/d/x=x"_s;
        const struct {
            Command command;
            Side target;
            QString left; // of the tree, pasted twice
        } rows[] = {
            { Command::CopyToClipboard, Side::Right, given + u", right/a.txt=a, right/d/x=x"_s },
            { Command::Cut, Side::Right, u"right/a.txt=a, right/d/x=x"_s },
            { Command::CopyToClipboard, Side::Left,
              u"left/a Copy 2.txt=a, left/a Copy.txt=a, left/a.txt=a, left/d/x=x, "
              "left/d Copy/x=x, left/d Copy 2/x=x"_s },
            { Command::Cut, Side::Left, given },
        };
        for (const auto &[command, target, left] : rows) {
            Panes panes(given);
            panes.selectAll(command);
            panes.paste(target);
            QCOMPARE(isEmpty(), command == Command::Cut && target == Side::Right);
            panes.alerts.decide = [](const Alert &alert) { // of a copy over the first one
                return alert.text.contains(u"Overwrite") ? Alert::All : Alert::Ok;
            };
            panes.paste(target);
            QCOMPARE(panes.tree(), left);
            QVERIFY(panes.names(target).contains(u"a.txt")); // is seen
            if (command == Command::Cut)
                QCOMPARE(panes.window.notice->text(),
                         target == Side::Left ? u"What was cut is in this folder already."_s
                                              : u"There are no files on the clipboard."_s);
        }
    }

    void whatOtherProgramsHoldIsPasted_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("left"); // of the tree
        QTest::addColumn<QString>("told"); // by alerts, or by the notice
        const QString given = u"left/a=a, else/b=b, else/\uFFFD=c"_s;
        const QString gnome = u"x-special/gnome-copied-files"_s;
        const QString elsewhere = u"What lies on no disk of this computer cannot be pasted:"_s;
        const auto row = [](const char *name, const QString &format, const QByteArray &bytes,
                            const QString &left, const QString &told = {}) {
            QTest::newRow(name) << format << bytes << left << told;
        };
        row("several folders", UriList, "~/left/a\n~/else/b\n~/else/%FF",
            u"left/a=a, right/a=a, right/b=b, right/\uFFFD=c, else/b=b, else/\uFFFD=c"_s);
        row("cut", gnome, "cut\n~/else/b", u"left/a=a, right/b=b, else/\uFFFD=c"_s);
        row("some elsewhere", UriList, "sftp://host/x\n~/left/a\n~/b%00",
            u"left/a=a, right/a=a, else/b=b, else/\uFFFD=c"_s,
            elsewhere + u"sftp://host/x\nfile://"_s);
        row("all elsewhere", gnome, "cut\nsmb://host/x\n", given, elsewhere + u"smb://host/x"_s);
        row("text", u"text/plain"_s, "/etc/passwd", given,
            u"There are no files on the clipboard."_s);
        row("vanished", UriList, "~/else/gone", given, u"Copy progress of 'gone' failed!"_s);
        row("a folder into itself", UriList, "~/right/../left/a\n~/right",
            u"left/a=a, right/a=a, else/b=b, else/\uFFFD=c"_s,
            u"Copy progress of 'right' failed!"_s);
    }
    void whatOtherProgramsHoldIsPasted()
    {
        QFETCH(QString, format);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, left);
        QFETCH(QString, told);
        Panes panes(u"left/a=a, else/b=b, else/"_s + FileName::fromBytes("\xff") + u"=c"_s);
        QString said;
        panes.alerts.decide = [&](const Alert &alert) {
            said += alert.text + alert.details;
            return Alert::Ok;
        };
        hold(panes, format, bytes);
        panes.paste(Side::Right);
        QCOMPARE(FileName::shown(panes.tree()), left);
        if (said.isEmpty())
            said = panes.window.notice->text();
        QVERIFY2(said.startsWith(told), qPrintable(said));
        QCOMPARE(isEmpty(), told.isEmpty() && bytes.startsWith("cut"));
    }

    void aProgramThatHangsIsAskedOnce()
    {
        int asked = 0;
        Panes panes(u"left/a=a"_s);
        QGuiApplication::clipboard()->setMimeData(new Hanging(asked));
        for (int paste = 0; paste < 2; ++paste) {
            panes.paste(Side::Right);
            QCOMPARE(panes.window.notice->text(),
                     u"The program that holds the clipboard does not answer."_s);
        }
        QCOMPARE(asked, 1);
    }

    void aPasteAsksAndTakesOnlyWhatItAskedAbout()
    {
        Panes panes(u"else/a=a, else/b=b"_s);
        panes.confirm(true);
        const auto cut = [&] { hold(panes, UriList, "~/else/a\n~/else/b", true); };
        cut();
        panes.alerts.answer(Alert::No);
        panes.paste(Side::Left);
        QCOMPARE(panes.alerts.last().text, u"Are you sure that you want to move the item(s)?"_s);
        QCOMPARE(panes.alerts.last().details, u"2 items, from else to left"_s);
        QVERIFY(!isEmpty());
        // Under the question the clipboard went over to another program.
        panes.alerts.decide = [&](const Alert &) {
            hold(panes, u"text/plain"_s, "of another");
            return Alert::Yes;
        };
        panes.paste(Side::Left);
        QCOMPARE(panes.tree(), u"left/a=a, left/b=b"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"of another"_s);
    }

    void aCutIsHeldUntilItHasMoved()
    {
        Panes panes(u"left/a=new, right/a=old"_s);
        panes.selectAll(Command::Cut);
        for (const Alert::Answer answer : { Alert::No, Alert::Yes }) {
            bool isHeld = false;
            panes.alerts.decide = [&](const Alert &) { // under the move
                onMainThread([&] {
                    isHeld = !isEmpty();
                    panes.commands.action(Command::Paste)->trigger();
                });
                return answer;
            };
            panes.paste(Side::Right);
            QVERIFY(isHeld);
            QCOMPARE(panes.window.notice->text(), u"What was cut is being moved already."_s);
            QCOMPARE(isEmpty(), answer == Alert::Yes);
        }
        QCOMPARE(panes.tree(), u"right/a=new"_s);
    }

    void cutItemsArePaleAsLongAsTheyAreHeld()
    {
        Panes panes(u"left/a=a, left/b=b"_s);
        panes.show(Side::Right, u"left"_s);
        const auto look = [&](Side side) {
            panes.list(side).selectRow(NoRow);
            panes.list(side).setCurrentIndex({});
            return panes.list(side).viewport()->grab().toImage();
        };
        for (const Side side : { Side::Left, Side::Right }) {
            panes.focus(Side::Left);
            const QImage plain = look(side);
            const auto isPale = [&] { return look(side) != plain; };
            const auto begin = [&](Command command) {
                panes.select(u"b"_s);
                panes.run(command);
            };
            begin(Command::CopyToClipboard);
            QVERIFY(!isPale());
            begin(Command::Cut);
            QVERIFY(isPale());
            const QImage cut = look(side);
            panes.show(side, u"left"_s); // again
            QCOMPARE(look(side), cut);
            begin(Command::CopyToClipboard);
            QVERIFY(!isPale());
            begin(Command::Cut);
            begin(Command::Cut);
            QCOMPARE(look(side), cut);
            QGuiApplication::clipboard()->setText(u"of another"_s);
            QVERIFY(!isPale());
        }
    }

    void namesAndPathsAreCopiedAsTheyStand()
    {
        const QString odd = FileName::fromBytes("b\xff c");
        Panes panes(u"left/a=a, left/"_s + odd + u"=b"_s);
        const auto copied = [&](Command command) {
            panes.selectAll(command);
            return QGuiApplication::clipboard()->mimeData()->data(u"text/plain"_s);
        };
        const QByteArray left = panes.folder.bytes(u"left/"_s);
        QCOMPARE(copied(Command::CopyItemName), "a\nb\xff c");
        QCOMPARE(copied(Command::CopyItemPath), left + "a\n" + left + "b\xff c");
        QCOMPARE(copied(Command::CopyToClipboard), left + "a\n" + left + "b\xff c");
        // On nothing but ".." nothing happens.
        panes.list().selectRow(0);
        for (const Command command : { Command::Cut, Command::CopyItemName, Command::CopyItemPath })
            panes.run(command);
        QCOMPARE(QGuiApplication::clipboard()->mimeData()->formats().size(), 4);
    }
};

QTEST_MAIN(tst_ClipboardCommands)
#include "tst_ClipboardCommands.moc"

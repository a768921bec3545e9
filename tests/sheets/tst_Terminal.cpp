#include "sheets/terminal/CommandField.h"
#include "sheets/terminal/OutputText.h"
#include "sheets/terminal/OutputView.h"
#include "sheets/terminal/TerminalSheet.h"
#include "tests/support/World.h"

#include <QLabel>
#include <QPushButton>
#include <QTextBlock>

using namespace Qt::StringLiterals;

namespace {

// The terminal as a person finds it, while its sheet is open.
struct Shown {
    void run(const QString &line) const
    {
        field.setText(line);
        QTest::keyClick(&field, Qt::Key_Return);
    }
    void click(const QString &name) const
    {
        const auto buttons = sheet.findChildren<QPushButton *>();
        for (QPushButton *button : buttons)
            if (button->accessibleName() == name)
                return QTest::mouseClick(button, Qt::LeftButton);
        QFAIL(qPrintable(name));
    }
    QString folder() const { return sheet.currentPathField->text(); }
    QString output() const { return sheet.output->toPlainText(); }
    QString state() const
    {
        QStringList texts;
        for (const QLabel *label : sheet.findChildren<QLabel *>())
            texts.append(label->text());
        return texts.join(u'|');
    }

    TerminalSheet &sheet = *qobject_cast<TerminalSheet *>(QApplication::activeModalWidget());
    CommandField &field = *sheet.commandField;
};

void terminal(World &world, const std::function<void(const Shown &)> &act)
{
    bool seen = false;
    whenSheetOpens(world.window, [&](QWidget &sheet) {
        QVERIFY(qobject_cast<TerminalSheet *>(&sheet));
        seen = true;
        act(Shown());
        if (QApplication::activeModalWidget())
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    });
    world.run(Command::InternalTerminal);
    QVERIFY(seen);
}

} // namespace

class tst_Terminal : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theCurrentFolderIsChangedByCdAlone()
    {
        StartedWorld world(u"left/a b/, left/sub/deep/, left/file=x, left/link->sub"_s);
        const QString left = world.folder.path(u"left"_s);
        const QString home = PathText::homeFolder();
        const struct {
            QString from, line, to; // "": it stays, and that is said
        } rows[] = {
            { left, u"cd sub"_s, left + u"/sub"_s },
            { left, u"cd sub/deep/"_s, left + u"/sub/deep"_s },
            { left, u"cd link"_s, left + u"/link"_s },
            { left + u"/link"_s, u"cd .."_s, left },
            { left, u"cd /proc/self"_s,
              u"/proc/self"_s }, // what the test made may lie below a blank
            { left, u"cd"_s, home },
            { u"/"_s, u"cd .."_s, u"/"_s },
            { left, u"cd file"_s, {} },
            { left, u"cd a b"_s, {} }, // the second word is "a"
            { left, u"cd missing"_s, {} },
            { left, u"cd /proc/self/missing"_s, {} },
        };
        terminal(world, [&](const Shown &shown) {
            QCOMPARE(shown.folder(), home);
            for (const auto &[from, line, to] : rows) {
                world.application.terminalController().setCurPath(from);
                shown.click(u"Clear"_s);
                shown.run(line);
                QCOMPARE(shown.folder(), to.isEmpty() ? from : to);
                QCOMPARE(shown.output(),
                         to.isEmpty() ? u"Error: Directory does not exists!\n"_s : QString());
            }
            shown.click(u"Folder of the active pane"_s);
            QCOMPARE(shown.folder(), left);
            shown.click(u"Reset"_s);
            QCOMPARE(shown.folder(), home);
            QCOMPARE(shown.output(), u"Twinleaf 0.1.0 internal terminal ready.\n"_s);
        });
    }

    void whatACommandWritesIsShownAsIsSaid()
    {
        const std::pair<QString, QString> rows[] = {
            { u"printf %s|%s a "_s, u"a|"_s },
            { u"xyz a b"_s, u"xyz: Command not found"_s },
            { u"ls missing"_s, {} },
            { u"sh not-found"_s, u"sh: Command not found"_s },
            { u"sh no-directory"_s, u"out\nError: Error: Directory does not exists!"_s },
        };
        StartedWorld world;
        world.folder.write(u"left/not-found"_s, "echo xyz: command not found >&2\n");
        world.folder.write(u"left/no-directory"_s,
                           "echo out; echo 'Directory does not exists!' >&2\n");
        terminal(world, [&](const Shown &shown) {
            for (const auto &[line, output] : rows) {
                world.application.terminalController().setCurPath(world.folder.path(u"left"_s));
                shown.click(u"Clear"_s);
                shown.run(line);
                QTRY_VERIFY2(shown.state().contains(line + u": "_s), qPrintable(line));
                QCOMPARE(shown.output(), output);
            }
            QVERIFY(shown.field.text().isEmpty());
        });
    }

    void bytesStandAsText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("UTF-8") << QByteArray("a\tä\r\nb\n") << u"a\tä\nb\n"_s;
        QTest::newRow("orders to a terminal")
            << QByteArray("\x1B[31mred\a\r") << u"\\x1B[31mred\\x07\\r"_s;
        QTest::newRow("NUL") << QByteArray("a\0b", 3) << u"a\\x00b"_s;
        QTest::newRow("not UTF-8") << QByteArray("\xE4\xFF") << u"\\xE4\\xFF"_s;
        QTest::newRow("direction") << QByteArray("\xE2\x80\xAE") << u"\\u202E"_s;
        QTest::newRow("pairs") << QByteArray("\xF0\x9F\x8D\x83") << u"\U0001F343"_s;
    }
    void bytesStandAsText()
    {
        QFETCH(QByteArray, bytes);
        QTEST(OutputText::shown(bytes, false), "text");
    }

    void aViewIsNotGivenMoreThanItCanHold()
    {
        const QString cut = u"[The output is cut here: there was more.]\n"_s;
        QCOMPARE(OutputText::shown("a", true), u"a\n"_s + cut);
        const QStringList wrapped = OutputText::shown(QByteArray(150'000, 'x'), false).split(u'\n');
        QCOMPARE(wrapped.size(), 3);
        QCOMPARE(wrapped.join(QString()).size(), 150'000);
        QCOMPARE(OutputText::shown(QByteArray(1 << 20, '\n'), false).size(), 1 << 20);
        const QString lines = OutputText::shown(QByteArray(2 << 20, '\n'), false);
        QVERIFY(lines.size() < (2 << 20) && lines.endsWith(cut));
        const QString escapes = OutputText::shown(QByteArray(16 << 20, '\0'), false);
        QVERIFY(escapes.size() < (17 << 20) && escapes.endsWith(cut));
        OutputView view;
        view.show();
        const QString large = (QString(4000, u'x') + u'\n').repeated(1300);
        for (int i = 0; i < 4; ++i)
            view.insertText(large + u"last\n"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!view.isFilling(), 60'000);
        QVERIFY(view.document()->characterCount() <= (17 << 20));
        QVERIFY(view.toPlainText().startsWith(u"[Older output was removed.]\nxxx"_s));
        QVERIFY(view.toPlainText().endsWith(u"last\n"_s));
    }

    void severalRunAtOnceAndStopEndsThemAll()
    {
        StartedWorld world;
        terminal(world, [](const Shown &shown) {
            shown.run(u"sleep 1001"_s);
            shown.run(u"sleep 1002"_s);
            shown.run(u"echo beside"_s);
            QTRY_VERIFY(shown.output().contains(u"beside"_s));
            QTRY_VERIFY(shown.state().contains(u"Running: 2"_s));
            shown.click(u"Stop"_s);
            QTRY_VERIFY(!shown.state().contains(u"Running"_s));
            QVERIFY(shown.state().contains(u"Ended by signal 15"_s));
        });
    }

    void closingTheSheetEndsWhatRuns()
    {
        StartedWorld world;
        terminal(world, [](const Shown &shown) { shown.run(u"sleep 1003"_s); });
        terminal(world, [](const Shown &shown) { // what was printed is still there
            QVERIFY(shown.output().startsWith(u"Twinleaf"_s));
            QTRY_VERIFY(!shown.state().contains(u"Running"_s));
            QVERIFY(shown.state().contains(u"sleep 1003: "_s));
            shown.run(u"touch new"_s);
            QTRY_VERIFY(shown.state().contains(u"touch new: Exit status 0"_s));
        });
    }

    void thePanesShowWhatCommandsDid()
    {
        StartedWorld world;
        terminal(world, [&](const Shown &shown) {
            shown.click(u"Folder of the active pane"_s);
            shown.run(u"touch new"_s);
            QTRY_VERIFY(shown.state().contains(u"Exit status 0"_s));
        });
        QVERIFY(world.row(u"new"_s) > 0);
    }

    void linesCanBeCalledUpAgain()
    {
        CommandField field;
        for (const QString &line : { u"a"_s, u"b"_s, u"b"_s, u"  c"_s }) {
            field.setText(line);
            QCOMPARE(field.take(), line);
        }
        field.setText(u"half"_s);
        QStringList seen;
        for (const Qt::Key key : { Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down,
                                   Qt::Key_Down, Qt::Key_Down, Qt::Key_Down }) {
            QTest::keyClick(&field, key);
            seen.append(field.text());
        }
        QCOMPARE(seen.join(u'|'), u"  c|b|a|a|b|  c|half|half"_s);
    }
};

QTEST_MAIN(tst_Terminal)
#include "tst_Terminal.moc"

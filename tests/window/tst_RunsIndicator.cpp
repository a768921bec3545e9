#include "window/RunsIndicator.h"

#include "sheets/WorkingSheet.h"
#include "tests/support/World.h"
#include "widgets/MenuTextButton.h"
#include "widgets/Mnemonics.h"

namespace {

struct RunsWorld : StartedWorld {
    QStringList lines() const // of the menu, as it opens
    {
        Q_EMIT menu.aboutToShow();
        QStringList texts;
        for (const QAction *action : menu.actions())
            texts.append(Mnemonics::unmarked(action->text()));
        return texts;
    }
    void choose(const QString &line)
    {
        const qsizetype at = lines().indexOf(line); // first, as it makes the menu anew
        menu.actions().at(at)->trigger();
    }
    QString runs() const
    {
        QString texts;
        for (const ShownRun &run : queue.runs())
            texts += run.text;
        return texts;
    }

    RunQueue &queue = twinleaf.runQueue();
    MenuTextButton &button = *window.runsButton;
    QMenu &menu = *button.menu();
    WorkingSheet &sheet = *window.findChild<WorkingSheet *>();
    MenuTextButton &inSheet = *sheet.findChild<MenuTextButton *>();
};

} // namespace

class tst_RunsIndicator : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFastRunIsNotShown()
    {
        RunsWorld world;
        world.queue.end(world.queue.enqueue(u"fast"_s));
        QVERIFY(!world.button.isVisible());
        const auto slow = world.queue.enqueue(u"slow"_s);
        QVERIFY(!world.button.isVisible());
        QTRY_VERIFY(world.button.isVisible());
        QCOMPARE(world.button.accessibleName(), u"slow"_s);
        QVERIFY(world.menu.menuAction()->isVisible());
        world.queue.end(slow);
        QVERIFY(!world.button.isVisible());
        QVERIFY(!world.menu.menuAction()->isVisible());
    }

    void whatWaitsIsShownAndCancelledOneByOne()
    {
        RunsWorld world;
        world.sheet.showWorkingSheet();
        const auto first = world.queue.enqueue(u"A"_s);
        for (const QString &text : { u"B"_s, u"C"_s, u"D"_s })
            world.queue.enqueue(text);
        QCOMPARE(world.button.accessibleName(), u"A  \u00b7  3 waiting"_s); // at once
        QTRY_VERIFY(world.inSheet.isVisible());
        QCOMPARE(world.inSheet.accessibleName(), u"3 waiting"_s);
        QCOMPARE(world.inSheet.menu(), &world.menu);
        QCOMPARE(world.lines().join(u'|'),
                 u"Cancel 'A'||Cancel 'B'|Cancel 'C'|Cancel 'D'||Cancel all that wait"_s);
        world.choose(u"Cancel 'C'"_s);
        QCOMPARE(world.runs(), u"ABD"_s);
        QVERIFY(!world.queue.isCancelled());
        world.choose(u"Cancel all that wait"_s);
        QCOMPARE(world.runs(), u"A"_s);
        QVERIFY(!world.inSheet.isVisible());
        QVERIFY(!world.queue.isCancelled());
        world.bus.post(CancelThread);
        QVERIFY(world.queue.isCancelled());

        // A line chosen as its run ends reaches no other.
        QCOMPARE(world.lines(), QStringList { u"Cancel 'A'"_s });
        QAction *line = world.menu.actions().first();
        world.queue.end(first);
        const auto next = world.queue.enqueue(u"E"_s);
        QVERIFY(!line->isEnabled());
        line->trigger();
        QVERIFY(!world.queue.isCancelled());
        world.choose(u"Cancel 'E'"_s);
        QVERIFY(world.queue.isCancelled());
        world.queue.end(next);
        world.sheet.closeWorkingSheet();
    }

    void aLongTextGivesWayAndANameIsNoMarkup()
    {
        RunsWorld world;
        const auto ticket = world.queue.enqueue(QString(300, u'n') + u"<b>&x"_s);
        world.queue.enqueue(u"B"_s);
        QVERIFY(world.button.text().endsWith(u"<b>&&x  \u00b7  1 waiting \u25be"_s));
        QTRY_VERIFY(world.button.sizeHint().width() <= world.button.width());
        QVERIFY(world.button.width() <= world.window.width() / 2);
        QVERIFY(world.button.toolTip().contains(u"&lt;b&gt;"_s));
        world.window.findChild<RunsIndicator *>()->showRunDetail(u"1 of 2 GB"_s);
        QCOMPARE(world.button.accessibleName(), u"1 of 2 GB  \u00b7  1 waiting"_s);
        world.queue.end(ticket);
        QTRY_COMPARE(world.button.accessibleName(), u"B"_s);
    }
};

QTEST_MAIN(tst_RunsIndicator)
#include "tst_RunsIndicator.moc"

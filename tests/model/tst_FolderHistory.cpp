#include "model/FolderHistory.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Way = FolderHistory::Way;

class tst_FolderHistory : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whereAPaneCanGo_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("back"); // what is met, one after the other
        QTest::addColumn<QString>("forward");
        QTest::newRow("nowhere at first") << u""_s << u""_s << u""_s;
        QTest::newRow("the start is no way back") << u"a"_s << u""_s << u""_s;
        QTest::newRow("reloads add nothing") << u"a b b b"_s << u"a"_s << u""_s;
        QTest::newRow("there and back") << u"a b c < <"_s << u""_s << u"b c"_s;
        QTest::newRow("to and fro") << u"a b c < < >"_s << u"a"_s << u"c"_s;
        QTest::newRow("a reload keeps what lies ahead") << u"a b < a"_s << u""_s << u"b"_s;
        QTest::newRow("another folder ends it") << u"a b c < < d"_s << u"a"_s << u""_s;
        QTest::newRow("nothing beyond the ends") << u"a < b > >"_s << u"a"_s << u""_s;
        QTest::newRow("the nearest stands for what is gone") << u"a b c <n"_s << u"a"_s << u"c"_s;
        QTest::newRow("the pane's own is no place of its own") << u"a b c <c"_s << u"a"_s << u""_s;
        QTest::newRow("nor is the one beyond") << u"a b c <a"_s << u""_s << u"c"_s;
        QTest::newRow("forward too") << u"a b c < < >a"_s << u""_s << u"c"_s;
    }
    void whereAPaneCanGo()
    {
        QFETCH(QString, steps);
        FolderHistory history;
        const auto go = [&](Way way, const QString &shown) {
            if (const auto *next = history.next(way))
                history.travelled(way, shown.isEmpty() ? next->folder : shown);
        };
        const auto words = steps.split(u' ', Qt::SkipEmptyParts);
        for (const QString &step : words) {
            if (step.startsWith(u'<') || step.startsWith(u'>'))
                go(step.startsWith(u'<') ? Way::Back : Way::Forward, step.mid(1));
            else
                history.arrive(step);
        }
        const auto met = [](FolderHistory onTheWay, Way way) {
            QStringList folders;
            while (const auto *next = onTheWay.next(way)) {
                folders.append(next->folder);
                onTheWay.travelled(way, next->folder);
            }
            return folders.join(u' ');
        };
        QTEST(met(history, Way::Back), "back");
        QTEST(met(history, Way::Forward), "forward");
    }

    void theOldestIsForgotten()
    {
        FolderHistory history;
        for (int i = 0; i < 2 * FolderHistory::MostPlaces; ++i)
            history.arrive(QString::number(i));
        qsizetype places = 1;
        for (; const auto *next = history.next(Way::Back); ++places)
            history.travelled(Way::Back, QString(next->folder));
        QCOMPARE(places, FolderHistory::MostPlaces);
        QCOMPARE(history.next(Way::Forward)->folder,
                 QString::number(FolderHistory::MostPlaces + 1));
    }
};

QTEST_MAIN(tst_FolderHistory)
#include "tst_FolderHistory.moc"

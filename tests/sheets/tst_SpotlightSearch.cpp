#include "sheets/search/SearchQuery.h"
#include "sheets/search/SearchResultTable.h"
#include "sheets/search/SpotlightSearchSheet.h"
#include "tests/support/World.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

// The search as a person finds it, while its sheet is open.
struct Shown {
    explicit Shown(World &shownWorld)
        : world(shownWorld)
    {
    }
    ScriptedQuery &query() const { return *world.metadataIndex.query; }
    // Results /r/<name> for each name, as the query finds or loses them.
    void find(const QStringList &names, void (MetadataQuery::*signal)()) const
    {
        query().results.clear();
        for (const QString &name : names)
            query().results.append({ u"/r/"_s + name, name });
        Q_EMIT(query().*signal)();
    }
    void type(const QString &text) const
    {
        field.clear();
        QTest::keyClicks(&field, text);
    }
    QString status() const
    {
        QStringList texts;
        for (const QLabel *label : sheet.findChildren<QLabel *>())
            texts.append(label->text());
        return texts.join(u'|');
    }

    World &world;
    SpotlightSearchSheet &sheet =
        *qobject_cast<SpotlightSearchSheet *>(QApplication::activeModalWidget());
    QLineEdit &field = *sheet.searchField;
    SearchResultTable &table = *sheet.resultTable;
};

// Opens the sheet, for a text or as a person left it; closes it again.
void search(World &world, const std::optional<QString> &text,
            const std::function<void(const Shown &)> &act)
{
    bool seen = false;
    whenSheetOpens(world.window, [&](QWidget &sheet) {
        QVERIFY(qobject_cast<SpotlightSearchSheet *>(&sheet));
        seen = true;
        const Shown shown(world);
        act(shown);
        if (shown.sheet.isVisible())
            QTest::keyClick(&shown.field, Qt::Key_Escape);
    });
    world.bus.post(SpotlightSearch, { text });
    QVERIFY(seen);
}

QStringList numbered(int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i)
        names.append(QString::number(i).rightJustified(6, u'0'));
    return names;
}

} // namespace

class tst_SpotlightSearch : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aQueryIsBuiltFromTextAndOptions()
    {
        const struct {
            SearchOptions options; // content, case, marks, words
            QString text;
            QString query;
        } rows[] = {
            { {}, u"report"_s, u"* == \"report\"cdw || kMDItemTextContent == \"report\"cdw"_s },
            { { false, true, true, true }, u"report"_s, u"* == \"report\"cdw"_s },
            { { false, true, false, false }, u"a b"_s, u"* == \"a b\"c"_s },
            { { true, false, false, false },
              u"x"_s,
              u"* == \"x\" || kMDItemTextContent == \"x\""_s },
            { { false, false, true, false }, u"say \"%@\""_s, u"* == \"say \"%@\"\"d"_s },
        };
        for (const auto &[options, text, query] : rows)
            QCOMPARE(searchQuery(text, options), query);
    }

    void aSearchStartsAsAPersonExpects()
    {
        StartedWorld world;
        const auto &searches = world.metadataIndex.searches;
        search(world, {}, [&](const Shown &shown) { // from the menu, for nothing yet
            QTest::keyClick(&shown.field, Qt::Key_Return);
            QVERIFY(searches.isEmpty());
            shown.type(u"ab"_s);
            QVERIFY(searches.isEmpty()); // more may come
            QTRY_COMPARE(searches.size(), 1);
            QCOMPARE(searches.last().query, u"* == \"ab\"cdw || kMDItemTextContent == \"ab\"cdw"_s);
            QCOMPARE(searches.last().text, u"ab"_s);
            QTest::keyClick(&shown.field, Qt::Key_Return);
            QCOMPARE(searches.size(), 2); // at once
            shown.find({ u"abc"_s }, &MetadataQuery::queryDidFinish);
            const auto boxes = shown.sheet.findChildren<QCheckBox *>();
            for (QCheckBox *box : boxes)
                box->click();
            QCOMPARE(searches.last().query, u"* == \"ab\""_s);
            QCOMPARE(shown.table.model()->rowCount(), 0);
            world.application.spotlightSearchController().setWordBased(true);
            QVERIFY(boxes.last()->isChecked());
            shown.find({ u"abc"_s, u"abd"_s }, &MetadataQuery::queryDidFinish);
            QVERIFY(shown.query().shown);
        });
        // Who comes back finds what it has found meanwhile.
        QVERIFY(!world.metadataIndex.query->shown);
        const qsizetype before = searches.size();
        search(world, {}, [&](const Shown &shown) {
            QCOMPARE(searches.size(), before);
            QVERIFY(shown.query().shown);
            QCOMPARE(shown.table.model()->rowCount(), 2);
            QCOMPARE(shown.field.text(), u"ab"_s);
        });
        search(world, u"other"_s,
               [&](const Shown &) { QCOMPARE(searches.last().text, u"other"_s); });
        QCOMPARE(searches.size(), before + 1);
    }

    void theStatusSaysHowManyAndWhetherThereMayBeMore()
    {
        StartedWorld world;
        search(world, u"x"_s, [](const Shown &shown) {
            shown.query().complete = false;
            shown.find({ u"x1"_s, u"x2"_s }, &MetadataQuery::queryProgress);
            QVERIFY(shown.status().contains(u"Found 2 items"_s));
            QVERIFY(shown.status().contains(u"Not complete yet"_s));
            shown.find({ u"x1"_s }, &MetadataQuery::queryDidFinish);
            shown.query().complete = true;
            shown.find({ u"x1"_s }, &MetadataQuery::queryDidUpdate);
            QVERIFY(shown.status().contains(u"Found 1 items"_s));
            QVERIFY(!shown.status().contains(u"Not complete yet"_s));
            shown.query().cut = true;
            for (const bool complete : { true, false }) {
                shown.query().complete = complete;
                shown.find({ u"x1"_s }, &MetadataQuery::queryDidUpdate);
                QVERIFY(shown.status().endsWith(u"the list is cut here."_s));
            }
        });
    }

    // The selected one by its path, and what is seen of the rows where it was.
    void updatesKeepTheSelectionAndThePlace()
    {
        StartedWorld world;
        search(world, u"x"_s, [](const Shown &shown) {
            QStringList names = numbered(1000);
            shown.find(names, &MetadataQuery::queryDidFinish);
            QScrollBar &bar = *shown.table.verticalScrollBar();
            bar.setValue(500);
            names.prepend(u"0"_s);
            names.prepend(u"00"_s);
            shown.find(names, &MetadataQuery::queryDidUpdate); // nothing is selected
            QCOMPARE(bar.value(), 502);
            shown.table.selectRow(505);
            const QString selected = shown.table.selectedPath();
            QCOMPARE(selected, u"/r/000503"_s);
            names.removeFirst();
            shown.find(names, &MetadataQuery::queryDidUpdate);
            QCOMPARE(shown.table.selectedRow(), 504);
            QCOMPARE(shown.table.selectedPath(), selected);
            QCOMPARE(bar.value(), 501);
            names.removeAll(u"000503"_s);
            shown.find(names, &MetadataQuery::queryDidUpdate);
            QCOMPARE(shown.table.selectedRow(), -1);
            QCOMPARE(shown.table.selectedPath(), QString());
            QCOMPARE(bar.value(), 501);
        });
    }

    void aHundredThousandRowsAskForTheVisibleOnes()
    {
        StartedWorld world;
        search(world, u"x"_s, [](const Shown &shown) {
            shown.find(numbered(100'000), &MetadataQuery::queryDidFinish);
            shown.table.verticalScrollBar()->setValue(50'000);
            QTRY_COMPARE(shown.table.horizontalHeader()->length(), shown.table.viewport()->width());
            shown.table.selectRow(50'001);
            shown.query().asked = 0;
            shown.table.verticalScrollBar()->setValue(70'000);
            shown.table.viewport()->repaint();
            shown.find(numbered(50'000), &MetadataQuery::queryDidUpdate); // neither is left
            QVERIFY(shown.query().asked > 0);
            QVERIFY(shown.query().asked < 1000);
        });
    }

    void aChosenResultIsPostedAndAFolderLeadsThere()
    {
        StartedWorld world(u"left/folder/inner, left/file"_s);
        world.focus(Side::Left);
        const auto item = [&](const QString &name) {
            return MetadataQuery::Result { world.folder.path(name), name };
        };
        search(world, u"x"_s, [&](const Shown &shown) {
            shown.query().results = { item(u"left/file"_s), item(u"left/folder"_s) };
            Q_EMIT shown.query().queryDidFinish();
            const auto below = QPoint(20, shown.table.rowViewportPosition(1) + 200);
            QTest::mouseDClick(shown.table.viewport(), Qt::LeftButton, {}, below);
            QVERIFY(world.workspace.calls.isEmpty()); // nothing is there
            QTest::keyClick(&shown.field, Qt::Key_Down);
            QCOMPARE(shown.table.selectedRow(), 0);
            QTest::mouseDClick(shown.table.viewport(), Qt::LeftButton, {}, below);
            QVERIFY(world.workspace.calls.isEmpty());
            QTest::keyClick(&shown.table, Qt::Key_Return);
            QCOMPARE(world.workspace.calls.value(0).value(1), world.folder.path(u"left/file"_s));
            QVERIFY(shown.sheet.isVisible()); // for the next one
            const QPoint second(20, shown.table.rowViewportPosition(1) + 3);
            QTest::mouseClick(shown.table.viewport(), Qt::LeftButton, {}, second);
            QTest::mouseDClick(shown.table.viewport(), Qt::LeftButton, {}, second);
            QVERIFY(!shown.sheet.isVisible());
        });
        QCOMPARE(world.shown(), world.folder.path(u"left/folder"_s));
        search(world, {}, [&](const Shown &shown) {
            shown.table.selectRow(0);
            QTest::keyClick(&shown.table, Qt::Key_Return, Qt::ControlModifier);
            QVERIFY(!shown.sheet.isVisible());
        });
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        QCOMPARE(world.selected(), u"file"_s);
    }

    void theNameOfTheRowIsSearchedFor()
    {
        StartedWorld world(u"left/some name"_s);
        world.focus(Side::Left);
        world.select(u"some name"_s);
        whenSheetOpens(world.window, [&](QWidget &) {
            QCOMPARE(Shown(world).field.text(), u"some name"_s);
            Shown(world).sheet.reject();
        });
        world.run(Command::SpotlightSearchForItem);
        QCOMPARE(world.metadataIndex.searches.value(0).text, u"some name"_s);
    }

    void detailsStandOnOneLineEach()
    {
        StartedWorld world;
        search(world, u"x"_s, [](const Shown &shown) {
            shown.find({ u"x"_s }, &MetadataQuery::queryDidFinish);
            shown.table.selectRow(0);
            auto &pages = *shown.sheet.findChild<QTabWidget *>();
            pages.setCurrentIndex(1);
            QCOMPARE(shown.sheet.selectedIdentifier(), u"Details"_s);
            const QAbstractItemModel &rows =
                *shown.sheet.findChild<QTableView *>(u"Details"_s)->model();
            QTRY_COMPARE(rows.rowCount(), 3);
            const std::pair<QString, QString> expected[] = {
                { u"kMDItemPath"_s, u"/r/x"_s },
                { u"kMDItemComment"_s, u"twolinesand a tab"_s },
                { u"kMDItemNumberOfPages"_s, u"12"_s },
            };
            for (int row = 0; row < 3; ++row) {
                QCOMPARE(rows.index(row, 0).data().toString(), expected[row].first);
                QCOMPARE(rows.index(row, 1).data().toString(), expected[row].second);
            }
            QTest::keyClick(&shown.field, Qt::Key_Return); // what is found next is to be seen
            QCOMPARE(shown.sheet.selectedIdentifier(), u"Results"_s);
            QCOMPARE(rows.rowCount(), 0);
        });
    }

    void theDesktopsOwnSearchOpensOrItIsSaid()
    {
        StartedWorld world;
        auto &controller = world.application.spotlightSearchController();
        search(world, {}, [&](const Shown &shown) {
            controller.showSpotlightSearchWindowClicked();
            QVERIFY(world.workspace.calls.isEmpty()); // for nothing
            shown.field.setText(u"plan"_s);
            controller.showSpotlightSearchWindowClicked();
            QCOMPARE(world.workspace.calls.value(0), QStringList({ u"search"_s, u"plan"_s }));
            world.workspace.succeeds = false;
            world.alerts.answer(Alert::Ok);
            controller.showSpotlightSearchWindowClicked();
        });
        const Alert alert = world.alerts.last();
        QCOMPARE(alert.title, u"Twinleaf - Error"_s);
        QCOMPARE(alert.text, u"Spotlight search failed!"_s);
        QCOMPARE(alert.style, Alert::Style::Critical);
        QCOMPARE(alert.buttons.size(), 1);
        QCOMPARE(alert.buttons.first().text, u"Ok"_s);
    }
};

QTEST_MAIN(tst_SpotlightSearch)
#include "tst_SpotlightSearch.moc"

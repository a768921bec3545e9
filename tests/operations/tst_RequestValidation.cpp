#include "operations/RequestValidation.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_RequestValidation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstFaultIsLoggedAndRefuses_data();
    void theFirstFaultIsLoggedAndRefuses();
    void everyWordOfAnEntryIsAccepted();
};

namespace {

const OperationRequest valid { u"/a"_s, u"/b"_s, { u"x"_s }, Side::Left, UpdateBoth::Yes };

OperationRequest with(const QString &source, const QString &destination)
{
    return { source, destination, valid.items, valid.side, valid.updateBoth };
}

OperationRequest with(const SideEntry &side, const UpdateBothEntry &updateBoth)
{
    return { valid.source, valid.destination, valid.items, side, updateBoth };
}

} // namespace

void tst_RequestValidation::theFirstFaultIsLoggedAndRefuses_data()
{
    QTest::addColumn<OperationRequest>("request");
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char *name, const OperationRequest &request, const char *line) {
        QTest::newRow(name) << request << QByteArray("performFileOperation dictionary ") + line;
    };
    row("no side", with(SideEntry(), UpdateBoth::Yes), "count != 5!");
    row("nothing at all", {}, "count != 5!");
    row("empty source", with(u""_s, u"/b"_s), "value for key 'Source' is empty!");
    row("source is destination", with(u"/a"_s, u"/a"_s),
        "value for key 'Source' is equal to value for key 'Destination'!");
    row("empty side", with(SideEntry(u""_s), UpdateBoth::Yes), "value for key 'Side' is empty!");
    row("capitals", with(SideEntry(u"LEFT"_s), UpdateBoth::Yes),
        "value for key 'Side' is not 'Left', 'left' or 'Right', 'right'!");
    row("empty update", with(Side::Left, UpdateBothEntry(u""_s)),
        "value for key 'UpdateBoth' is empty!");
    row("unknown update", with(Side::Left, UpdateBothEntry(u"yes"_s)),
        "value for key 'UpdateBoth' is not 'YES', 'NO', 'DragDropCopy', 'DragDropMove' or "
        "'DragDropFinder'!");
}

void tst_RequestValidation::theFirstFaultIsLoggedAndRefuses()
{
    QFETCH(OperationRequest, request);
    QFETCH(QByteArray, line);
    QTest::ignoreMessage(QtWarningMsg, line.constData());
    QVERIFY(!isPerformFileOperationDictionaryValid(request));
}

void tst_RequestValidation::everyWordOfAnEntryIsAccepted()
{
    for (const auto &[word, side] : { std::pair(u"Left"_s, Side::Left),
                                      { u"left"_s, Side::Left },
                                      { u"Right"_s, Side::Right },
                                      { u"right"_s, Side::Right } }) {
        QCOMPARE(SideEntry(word).value(), side);
        QVERIFY(isPerformFileOperationDictionaryValid(with(SideEntry(word), UpdateBoth::No)));
    }
    for (const QString &word :
         { u"YES"_s, u"NO"_s, u"DragDropCopy"_s, u"DragDropMove"_s, u"DragDropFinder"_s })
        QVERIFY(isPerformFileOperationDictionaryValid(with(Side::Left, UpdateBothEntry(word))));
}

QTEST_GUILESS_MAIN(tst_RequestValidation)
#include "tst_RequestValidation.moc"

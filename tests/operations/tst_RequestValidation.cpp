#include "operations/RequestValidation.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_RequestValidation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstFaultIsLoggedAndRefuses_data();
    void theFirstFaultIsLoggedAndRefuses();
    void bothSpellingsOfASideAreAccepted();
};

namespace {

OperationRequest with(const QString &key, const QVariant &value)
{
    OperationRequest request =
        operationRequest(Side::Left, u"/a"_s, u"/b"_s, { u"x"_s }, UpdateBoth::Yes);
    request.insert(key, value);
    return request;
}

} // namespace

void tst_RequestValidation::theFirstFaultIsLoggedAndRefuses_data()
{
    QTest::addColumn<OperationRequest>("request");
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char *name, const OperationRequest &request, const char *line) {
        QTest::newRow(name) << request << QByteArray("performFileOperation dictionary ") + line;
    };
    using RequestKey::Destination, RequestKey::Items, RequestKey::Source;
    row("no side", operationRequest({}, u"/a"_s, u"/b"_s, {}, UpdateBoth::Yes), "count != 5!");
    row("six entries", with(u"Operation"_s, u"x"_s), "count != 5!");
    row("empty source", with(Source, u""_s), "value for key 'Source' is empty!");
    row("source is destination", with(Destination, u"/a"_s),
        "value for key 'Source' is equal to value for key 'Destination'!");
    row("items no array of names", with(Items, QVariantList { u"x"_s }),
        "value for key 'Items' isn't a NSArray!");
    row("empty side", with(RequestKey::Side, u""_s), "value for key 'Side' is empty!");
    row("capitals", with(RequestKey::Side, u"LEFT"_s),
        "value for key 'Side' is not 'Left', 'left' or 'Right', 'right'!");
    row("empty update", with(RequestKey::UpdateBoth, u""_s),
        "value for key 'UpdateBoth' is empty!");
    row("unknown update", with(RequestKey::UpdateBoth, u"yes"_s),
        "value for key 'UpdateBoth' is not 'YES', 'NO', 'DragDropCopy', 'DragDropMove' or "
        "'DragDropFinder'!");
}

void tst_RequestValidation::theFirstFaultIsLoggedAndRefuses()
{
    QFETCH(OperationRequest, request);
    QFETCH(QByteArray, line);
    QTest::ignoreMessage(QtWarningMsg, line.constData());
    QVERIFY(!acceptRequest(request));
}

void tst_RequestValidation::bothSpellingsOfASideAreAccepted()
{
    QCOMPARE(acceptRequest(with(RequestKey::Side, u"Left"_s))->side, Side::Left);
    QCOMPARE(acceptRequest(with(RequestKey::Side, u"right"_s))->side, Side::Right);
}

QTEST_GUILESS_MAIN(tst_RequestValidation)
#include "tst_RequestValidation.moc"

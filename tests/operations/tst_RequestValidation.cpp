#include "operations/RequestValidation.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_RequestValidation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstFaultIsLoggedAndRefuses_data();
    void theFirstFaultIsLoggedAndRefuses();
    void acceptsBothSpellingsOfASide();
};

namespace {

OperationRequest valid()
{
    return operationRequest(Side::Left, u"/a"_s, u"/b"_s, { u"x"_s }, UpdateBoth::Yes);
}

OperationRequest with(const QString &key, const QVariant &value)
{
    OperationRequest request = valid();
    request.insert(key, value);
    return request;
}

} // namespace

void tst_RequestValidation::theFirstFaultIsLoggedAndRefuses_data()
{
    QTest::addColumn<OperationRequest>("request");
    QTest::addColumn<QByteArray>("line");
    const QByteArray value = "performFileOperation dictionary value for key ";
    OperationRequest four = valid();
    four.remove(RequestKey::Side);
    QTest::newRow("no side") << four << QByteArray("performFileOperation dictionary count != 5!");
    QTest::newRow("six entries") << with(u"Operation"_s, u"x"_s)
                                 << QByteArray("performFileOperation dictionary count != 5!");
    QTest::newRow("empty source") << with(RequestKey::Source, u""_s)
                                  << value + "'Source' is empty!";
    QTest::newRow("source is destination")
        << with(RequestKey::Destination, u"/a"_s)
        << value + "'Source' is equal to value for key 'Destination'!";
    QTest::newRow("items no array of names")
        << with(RequestKey::Items, QVariantList { u"x"_s }) << value + "'Items' isn't a NSArray!";
    QTest::newRow("empty side") << with(RequestKey::Side, u""_s) << value + "'Side' is empty!";
    QTest::newRow("capitals") << with(RequestKey::Side, u"LEFT"_s)
                              << value + "'Side' is not 'Left', 'left' or 'Right', 'right'!";
    QTest::newRow("empty update") << with(RequestKey::UpdateBoth, u""_s)
                                  << value + "'UpdateBoth' is empty!";
    QTest::newRow("unknown update") << with(RequestKey::UpdateBoth, u"yes"_s)
                                    << value
            + "'UpdateBoth' is not 'YES', 'NO', 'DragDropCopy', 'DragDropMove' or "
              "'DragDropFinder'!";
}

void tst_RequestValidation::theFirstFaultIsLoggedAndRefuses()
{
    QFETCH(OperationRequest, request);
    QFETCH(QByteArray, line);
    QTest::ignoreMessage(QtWarningMsg, line.constData());
    QVERIFY(!acceptRequest(request));
}

void tst_RequestValidation::acceptsBothSpellingsOfASide()
{
    QCOMPARE(acceptRequest(valid())->side, Side::Left);
    QCOMPARE(acceptRequest(with(RequestKey::Side, u"right"_s))->side, Side::Right);
}

QTEST_GUILESS_MAIN(tst_RequestValidation)
#include "tst_RequestValidation.moc"

#include "operations/RequestValidation.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_RequestValidation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstFaultIsLoggedAndRefuses()
    {
        const std::pair<OperationRequest, const char *> cases[] = {
            { with(SideEntry(), UpdateBoth::Yes), "count != 5!" },
            { {}, "count != 5!" },
            { between(u""_s, u"/b"_s), "value for key 'Source' is empty!" },
            { between(u"/a"_s, u"/a"_s),
              "value for key 'Source' is equal to value for key 'Destination'!" },
            { with(SideEntry(u""_s), UpdateBoth::Yes), "value for key 'Side' is empty!" },
            { with(SideEntry(u"LEFT"_s), UpdateBoth::Yes),
              "value for key 'Side' is not 'Left', 'left' or 'Right', 'right'!" },
            { with(Side::Left, UpdateBothEntry(u""_s)), "value for key 'UpdateBoth' is empty!" },
            { with(Side::Left, UpdateBothEntry(u"yes"_s)),
              "value for key 'UpdateBoth' is not 'YES', 'NO', 'DragDropCopy', 'DragDropMove' or "
              "'DragDropFinder'!" },
        };
        for (const auto &[request, line] : cases) {
            QTest::ignoreMessage(QtWarningMsg,
                                 QByteArray("performFileOperation dictionary ") + line);
            QVERIFY2(!isPerformFileOperationDictionaryValid(request), line);
        }
    }

    void everyWordOfAnEntryIsAccepted()
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

private:
    static OperationRequest between(const QString &source, const QString &destination)
    {
        return { source, destination, { u"x"_s }, Side::Left, UpdateBoth::Yes };
    }
    static OperationRequest with(const SideEntry &side, const UpdateBothEntry &updateBoth)
    {
        return { u"/a"_s, u"/b"_s, { u"x"_s }, side, updateBoth };
    }
};

QTEST_GUILESS_MAIN(tst_RequestValidation)
#include "tst_RequestValidation.moc"

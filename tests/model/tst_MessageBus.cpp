#include "model/Messages.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr Message<ChosenResult> Chosen { "TWTestChosenNotification" };
constexpr Message<ChosenResult> Other { "TWTestOtherNotification" };

// Writes down what it gets and then does what the test wants of it.
struct Receiver {
    QString name;
    QString &log;
    std::function<void()> then {};

    void receive(const ChosenResult &chosen)
    {
        log += name + chosen.path + u' ';
        if (const auto step = then)
            step();
    }
    void receiveElsewhere(const ChosenResult &chosen) { log += name + u'\'' + chosen.path + u' '; }
    void receiveSided(Side side, const FolderChange &change)
    {
        log += name + sideWord(side) + change.path + u' ';
    }
};

} // namespace

class tst_MessageBus : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        bus = {};
        log.clear();
        a.then = {};
    }

    void receiversGetAMessageInTheOrderTheySubscribed()
    {
        subscribe({ &c, &a });
        bus.subscribe(DirectoryChanged, &b, &Receiver::receiveSided);
        bus.post(Chosen, { u"1"_s });
        QCOMPARE(log, u"c1 a1 "_s); // delivered before the post returned
        bus.post(Other, { u"2"_s });
        bus.post(DirectoryChanged[Side::Right], { .path = u"/r"_s });
        bus.post(DirectoryChanged.left, { .path = u"/l"_s });
        QCOMPARE(log, u"c1 a1 bRight/r bLeft/l "_s);
    }

    void aSecondSubscriptionTakesThePlaceOfTheFirst()
    {
        subscribe({ &a });
        bus.subscribe(Other, &a, &Receiver::receive);
        subscribe({ &b });
        bus.subscribe(Chosen, &a, &Receiver::receiveElsewhere);
        bus.post(Chosen, { u"1"_s });
        bus.post(Other, { u"2"_s });
        QCOMPARE(log, u"b1 a'1 a2 "_s);
    }

    void aNestedPostEndsBeforeTheOuterGoesOn()
    {
        subscribe({ &a, &b });
        a.then = [&] {
            a.then = {};
            bus.post(Chosen, { u"Inner"_s });
        };
        bus.post(Chosen, { u"Outer"_s });
        QCOMPARE(log, u"aOuter aInner bInner bOuter "_s);
    }

    void whoComesDuringADeliveryGetsTheNextAndWhoIsGoneNothing()
    {
        subscribe({ &a, &b });
        a.then = [&] {
            subscribe({ &c });
            bus.unsubscribe(&b);
            bus.unsubscribe(&a);
        };
        bus.post(Chosen, { u"1"_s });
        QCOMPARE(log, u"a1 "_s);
        bus.post(Chosen, { u"2"_s });
        QCOMPARE(log, u"a1 c2 "_s);
    }

private:
    void subscribe(const QList<Receiver *> &receivers)
    {
        for (Receiver *receiver : receivers)
            bus.subscribe(Chosen, receiver, &Receiver::receive);
    }

    MessageBus bus;
    QString log;
    Receiver a { u"a"_s, log };
    Receiver b { u"b"_s, log };
    Receiver c { u"c"_s, log };
};

QTEST_GUILESS_MAIN(tst_MessageBus)
#include "tst_MessageBus.moc"

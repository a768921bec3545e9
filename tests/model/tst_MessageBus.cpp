#include "model/Messages.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr Message<ChosenResult> Chosen { "TWTestChosenNotification" };
constexpr Message<ChosenResult> Other { "TWTestOtherNotification" };

// Writes down what it gets and then does what the test wants of it.
struct Receiver {
    QString name;
    QStringList &log;
    std::function<void()> then {};

    void receive(const ChosenResult &chosen)
    {
        log.append(name + u' ' + chosen.path);
        if (const auto step = then)
            step();
    }
    void receiveElsewhere(const ChosenResult &chosen) { log.append(name + u"' "_s + chosen.path); }
    void receiveSided(Side side, const FolderChange &change)
    {
        log.append(name + u' ' + sideWord(side) + u' ' + change.path);
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
    }
    void receiversGetAMessageInTheOrderTheySubscribed();
    void aSecondSubscriptionTakesThePlaceOfTheFirst();
    void sidesArriveApart();
    void aNestedPostEndsBeforeTheOuterGoesOn();
    void whoSubscribesDuringADeliveryGetsTheNextMessage();
    void whoIsGoneDuringADeliveryGetsNothing();
    void theCancelOfUnpackingKeepsItsSpelling();

private:
    MessageBus bus;
    QStringList log;
};

void tst_MessageBus::receiversGetAMessageInTheOrderTheySubscribed()
{
    Receiver z { u"z"_s, log };
    Receiver a { u"a"_s, log };
    bus.subscribe(Chosen, &z, &Receiver::receive);
    bus.subscribe(Chosen, &a, &Receiver::receive);
    bus.post(Chosen, { u"1"_s });
    // Delivered before the post returned.
    QCOMPARE(log, QStringList({ u"z 1"_s, u"a 1"_s }));
    bus.post(Other, { u"2"_s });
    QCOMPARE(log.size(), 2);
}

void tst_MessageBus::aSecondSubscriptionTakesThePlaceOfTheFirst()
{
    Receiver a { u"a"_s, log };
    Receiver b { u"b"_s, log };
    bus.subscribe(Chosen, &a, &Receiver::receive);
    bus.subscribe(Other, &a, &Receiver::receive);
    bus.subscribe(Chosen, &b, &Receiver::receive);
    bus.subscribe(Chosen, &a, &Receiver::receiveElsewhere);
    bus.post(Chosen, { u"1"_s });
    bus.post(Other, { u"2"_s });
    QCOMPARE(log, QStringList({ u"b 1"_s, u"a' 1"_s, u"a 2"_s }));
}

void tst_MessageBus::sidesArriveApart()
{
    Receiver a { u"a"_s, log };
    bus.subscribe(DirectoryChanged, &a, &Receiver::receiveSided);
    bus.post(DirectoryChanged[Side::Right], { .path = u"/r"_s });
    bus.post(DirectoryChanged.left, { .path = u"/l"_s });
    QCOMPARE(log, QStringList({ u"a Right /r"_s, u"a Left /l"_s }));
}

void tst_MessageBus::aNestedPostEndsBeforeTheOuterGoesOn()
{
    Receiver a { u"a"_s, log };
    Receiver b { u"b"_s, log };
    bus.subscribe(Chosen, &a, &Receiver::receive);
    bus.subscribe(Chosen, &b, &Receiver::receive);
    a.then = [&] {
        a.then = {};
        bus.post(Chosen, { u"inner"_s });
    };
    bus.post(Chosen, { u"outer"_s });
    QCOMPARE(log, QStringList({ u"a outer"_s, u"a inner"_s, u"b inner"_s, u"b outer"_s }));
}

void tst_MessageBus::whoSubscribesDuringADeliveryGetsTheNextMessage()
{
    Receiver a { u"a"_s, log };
    Receiver b { u"b"_s, log };
    bus.subscribe(Chosen, &a, &Receiver::receive);
    a.then = [&] { bus.subscribe(Chosen, &b, &Receiver::receive); };
    bus.post(Chosen, { u"1"_s });
    QCOMPARE(log, QStringList({ u"a 1"_s }));
    a.then = {};
    bus.post(Chosen, { u"2"_s });
    QCOMPARE(log, QStringList({ u"a 1"_s, u"a 2"_s, u"b 2"_s }));
}

void tst_MessageBus::whoIsGoneDuringADeliveryGetsNothing()
{
    Receiver a { u"a"_s, log };
    auto b = std::make_unique<Receiver>(Receiver { u"b"_s, log });
    Receiver c { u"c"_s, log };
    bus.subscribe(Chosen, &a, &Receiver::receive);
    bus.subscribe(Chosen, b.get(), &Receiver::receive);
    bus.subscribe(Chosen, &c, &Receiver::receive);
    a.then = [&] {
        bus.unsubscribe(b.get());
        bus.unsubscribe(&a);
        b.reset();
    };
    bus.post(Chosen, { u"1"_s });
    QCOMPARE(log, QStringList({ u"a 1"_s, u"c 1"_s }));
}

void tst_MessageBus::theCancelOfUnpackingKeepsItsSpelling()
{
    QCOMPARE(CancelArchiving.name, "TWCancelArchvingNotification");
}

QTEST_GUILESS_MAIN(tst_MessageBus)
#include "tst_MessageBus.moc"

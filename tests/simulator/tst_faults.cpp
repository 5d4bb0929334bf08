#include "simulator/control_service.h"
#include "simulator/options.h"
#include "tests/simulator/client.h"

using namespace sim;
using namespace support;

Q_DECLARE_METATYPE(sim::FaultSettings)

namespace {

FaultSettings everything()
{
    FaultSettings settings;
    settings.jitterMs = 40;
    settings.drop = settings.duplicate = settings.reorder = settings.garbage = 0.3;
    return settings;
}

QString textOf(const Fate &fate)
{
    return QStringLiteral("%1%2%3%4%5 %6")
        .arg(fate.loseRequest)
        .arg(fate.loseReply)
        .arg(fate.duplicate)
        .arg(fate.reorder)
        .arg(fate.garbage)
        .arg(fate.delayMs);
}

QStringList fates(const FaultSettings &settings, quint32 seed)
{
    FaultDealer dealer(settings, seed);
    QStringList texts;
    for (int i = 0; i < 100; ++i)
        texts << textOf(dealer.next());
    return texts;
}

} // namespace

/// The faults of the control link, and the command line that orders them.
class FaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void fatesRepeatBySeed();
    void link_data();
    void link();
    void heldReplyIsReleased();
    void badOption_data();
    void badOption();
};

void FaultsTest::fatesRepeatBySeed()
{
    QCOMPARE(fates(everything(), 5), fates(everything(), 5));
    QVERIFY(fates(everything(), 5) != fates(everything(), 6));
    FaultSettings noDrop = everything();
    noDrop.drop = 0;
    FaultDealer with(everything(), 5);
    FaultDealer without(noDrop, 5);
    for (int i = 0; i < 100; ++i) // one fault more does not shift the others
        QCOMPARE(with.next().garbage, without.next().garbage);
}

void FaultsTest::link_data()
{
    QTest::addColumn<FaultSettings>("faults");
    QTest::addColumn<QByteArrayList>("replies"); // to the requests "1" and "2"
    const auto row = [](const char *name, double FaultSettings::*fault, const QByteArrayList &replies) {
        FaultSettings settings;
        settings.*fault = 1;
        QTest::newRow(name) << settings << replies;
    };
    QTest::newRow("none") << FaultSettings() << QByteArrayList{"re 1", "re 2"};
    row("drop", &FaultSettings::drop, {});
    row("duplicate", &FaultSettings::duplicate, {"re 1", "re 1", "re 2", "re 2"});
    row("reorder", &FaultSettings::reorder, {"re 2", "re 1"});
    FaultDealer dealer({}, 1);
    const QByteArray noise = dealer.garbage();
    row("garbage", &FaultSettings::garbage, {noise, dealer.garbage()});
}

void FaultsTest::link()
{
    QFETCH(FaultSettings, faults);
    QFETCH(QByteArrayList, replies);
    const auto answer = [](const QByteArray &request) { return QVector<Answer>{{"re " + request}}; };
    ControlService service(1, 60000, answer);
    service.setFaults(faults);
    ControlService fence(1, 0, answer); // what it answers later comes after all that is to come
    QVERIFY(service.listen(deviceAddress(), 0));
    QVERIFY(fence.listen(deviceAddress(), 0));
    Receiver client;
    client.ask(service.port(), "1");
    client.ask(service.port(), "2");
    QTRY_COMPARE(client.received.size(), replies.size());
    client.ask(fence.port(), "end");
    QTRY_VERIFY(client.received.contains("re end"));
    QCOMPARE(client.received, replies + QByteArrayList{"re end"});
}

void FaultsTest::heldReplyIsReleased()
{
    FaultSettings faults;
    faults.reorder = 1;
    ControlService service(1, 20, [](const QByteArray &request) { return QVector<Answer>{{request}}; });
    service.setFaults(faults);
    QVERIFY(service.listen(deviceAddress(), 0));
    Receiver client;
    client.ask(service.port(), "alone");
    QTRY_COMPARE(client.received, QByteArrayList{"alone"});
    client.ask(service.port(), "lost");
    service.setSilent(true); // once it has been taken and held, or before: nothing more comes either way
    ControlService fence(1, 0, [](const QByteArray &request) { return QVector<Answer>{{request}}; });
    QVERIFY(fence.listen(deviceAddress(), 0));
    client.ask(fence.port(), "fence");
    QTRY_VERIFY(client.received.contains("fence"));
    QCOMPARE(client.received.size(), 2);
}

void FaultsTest::badOption_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const QStringList &arguments, const char *error) {
        QTest::newRow(name) << arguments << QString::fromLatin1(error);
    };
    row("port", {QStringLiteral("--port=65536")},
        "--port takes a whole number from 0 to 65535, not \"65536\".");
    row("probability", {QStringLiteral("--drop=1.5")}, "--drop takes a number from 0 to 1, not \"1.5\".");
    row("address", {QStringLiteral("--address=lo")}, "--address takes a dotted IPv4 address, not \"lo\".");
    row("fault", {QStringLiteral("--tftp-fault=x")},
        "--tftp-fault takes one of none, lost-ack, duplicate-ack, wrong-block, nack, silence, not \"x\".");
    row("seed", {QStringLiteral("--seed=-1")}, "--seed takes a whole number from 0 to 4294967295, not");
    row("unknown", {QStringLiteral("--volume=3")}, "Unknown option 'volume'.");
    row("long name", {QStringLiteral("--name=") + QString(65, QLatin1Char('x'))},
        "--name takes a text of up to 64 characters, not");
    row("replay", {QStringLiteral("--replay=a"), QStringLiteral("--state=b")},
        "--replay goes without --state");
    row("positional", {QStringLiteral("lo")}, "\"lo\" is no option.");
}

void FaultsTest::badOption()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const ParsedOptions parsed = parseOptions(QStringList{QStringLiteral("kbx-simulator")} + arguments);
    QVERIFY2(parsed.error.startsWith(error), qPrintable(parsed.error));
}

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"

#include "simulator/phone.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

using sim::BluetoothSettings;
using sim::Phone;

namespace {

constexpr BluetoothSettings Basic{true, BluetoothSettings::Reconnect::Never, true};

QString stateOf(const Phone &phone)
{
    return phone.status().value(QStringLiteral("state")).toString();
}

QJsonObject deviceOf(const Phone &phone)
{
    return phone.status().value(QStringLiteral("device")).toObject();
}

QString songOf(const Phone &phone)
{
    return deviceOf(phone).value(QStringLiteral("song")).toString();
}

void pairNewPhone(Phone *phone)
{
    phone->pair();
    phone->advance(Phone::FoundMs);
    phone->advance(Phone::PairMs);
}

} // namespace

/// The life of the simulated phone, moved through time by the test.
class PhoneTest : public QObject
{
    Q_OBJECT

private slots:
    void pairing();
    void mediaKeys();
    void signalStrengthPassesAllBands();
};

void PhoneTest::pairing()
{
    Phone phone(1);
    QSignalSpy cues(&phone, &Phone::cueDue);
    QVERIFY(!phone.pair().isEmpty()); // disabled
    phone.applySettings(Basic);

    QCOMPARE(phone.pair(), QString());
    QCOMPARE(stateOf(phone), QStringLiteral("discoverable"));
    phone.advance(Phone::FoundMs);
    QCOMPARE(stateOf(phone), QStringLiteral("pairing"));
    phone.advance(Phone::PairMs);
    QCOMPARE(stateOf(phone), QStringLiteral("connected"));

    QCOMPARE(phone.pairedList().size(), 4);
    QCOMPARE(phone.pairedList().at(0).toObject().value(QStringLiteral("name")),
             deviceOf(phone).value(QStringLiteral("name")));
    QCOMPARE(cues.size(), 3); // started, ended, succeeded
    QCOMPARE(cues.last().first().toInt(), 2);
}

void PhoneTest::mediaKeys()
{
    Phone phone(1);
    phone.applySettings(Basic);
    QVERIFY(!phone.control(&sim::Player::next).isEmpty()); // not connected
    pairNewPhone(&phone);
    const QString first = songOf(phone);

    phone.control(&sim::Player::next);
    const QString second = songOf(phone);
    QVERIFY(second != first);
    phone.control(&sim::Player::previous);
    QCOMPARE(songOf(phone), first);

    phone.control(&sim::Player::pause);
    QVERIFY(!phone.isSounding());
    phone.advance(60000);
    QCOMPARE(songOf(phone), first);
    phone.control(&sim::Player::play);
    phone.advance(60000);
    QCOMPARE(songOf(phone), second); // moved on by itself

    const double before = phone.volumeDb();
    phone.control(&sim::Player::softer);
    QVERIFY(phone.volumeDb() < before);
    for (int i = 0; i < 20; ++i)
        phone.control(&sim::Player::louder);
    QCOMPARE(phone.volumeDb(), 0.0);
}

void PhoneTest::signalStrengthPassesAllBands()
{
    Phone phone(1);
    phone.applySettings(Basic);
    pairNewPhone(&phone);
    QSet<QString> bands;
    for (int ms = 0; ms < 60000; ms += 50) {
        phone.advance(50);
        const int rssi = deviceOf(phone).value(QStringLiteral("rssi")).toInt();
        QVERIFY(rssi >= -130 && rssi <= -50);
        bands << (rssi >= -67       ? QStringLiteral("good")
                      : rssi >= -80 ? QStringLiteral("average")
                      : rssi > -128 ? QStringLiteral("bad")
                                    : QStringLiteral("none"));
    }
    QCOMPARE(bands.size(), 4);
}

QTEST_GUILESS_MAIN(PhoneTest)
#include "tst_phone.moc"

#include "simulator/wave_file.h"
#include "transfer/wav_format.h"

#include <QTest>
#include <QtEndian>

namespace {

template <typename Number>
QByteArray little(Number number)
{
    QByteArray bytes(int(sizeof number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray chunk(const char *name, const QByteArray &body)
{
    return name + little(quint32(body.size())) + body + QByteArray(body.size() % 2, '\0');
}

QByteArray format(quint16 tag, quint16 channels, quint32 rate, quint16 bits)
{
    const quint16 frame = quint16(channels * bits / 8);
    return chunk("fmt ",
                 little(tag) + little(channels) + little(rate) + little(quint32(rate * frame)) + little(frame)
                     + little(bits));
}

QByteArray wave(const QByteArray &chunks)
{
    return chunk("RIFF", "WAVE" + chunks);
}

} // namespace

/// The editor and the device judge a recording alike.
class WavFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void isJudged_data();
    void isJudged();
};

void WavFormatTest::isJudged_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("kind"); // empty: playable
    QTest::addColumn<QString>("deviceSays");
    const QByteArray good = format(1, 1, 16000, 16);
    const QByteArray second = chunk("data", QByteArray(32000, '\1'));
    const auto row = [](const char *name, const QByteArray &file, const char *kind, const char *deviceSays) {
        QTest::newRow(name) << file << QString::fromLatin1(kind) << QString::fromLatin1(deviceSays);
    };
    row("good", wave(good + second), "", "");
    row("more chunks", wave(chunk("LIST", "odd") + good + chunk("fact", "4444") + second), "", "");
    row("stereo", wave(format(1, 2, 16000, 16) + second), "stereo, 16 kHz, 16 bit PCM",
        "it has 2 channels instead of one");
    row("rate", wave(format(1, 1, 44100, 16) + second), "mono, 44.1 kHz, 16 bit PCM",
        "its sampling rate is 44100 Hz instead of 16000");
    row("depth", wave(format(1, 1, 16000, 8) + second), "mono, 16 kHz, 8 bit PCM",
        "it has 8 bits a sample instead of 16");
    row("encoding", wave(format(3, 6, 16000, 32) + second), "6 channels, 16 kHz, 32 bit floating point",
        "it is not PCM");
    row("no format", wave(second), "a WAV file that does not say its format",
        "it has no complete format chunk");
    const char *kind = "a WAV file without samples, or cut off";
    const char *deviceSays = "it has no complete data chunk";
    row("no data", wave(good), kind, deviceSays);
    row("no samples", wave(good + chunk("data", "")), kind, deviceSays);
    row("half a sample", wave(good + chunk("data", "123")), kind, deviceSays);
    row("cut off", wave(good + second).chopped(1), kind, deviceSays);
    row("length of 4 GB", wave(good + "data" + QByteArray(4, '\xff') + "1234"), kind, deviceSays);
    row("no wave", chunk("RIFF", "AVI " + good + second), "no WAV file", "it is no RIFF WAVE file");
}

void WavFormatTest::isJudged()
{
    QFETCH(QByteArray, file);
    QTEST(unplayableKind(file), "kind");
    QTEST(sim::checkWave(file).problem, "deviceSays");
    QCOMPARE(sim::checkWave(file).lengthMs, unplayableKind(file).isEmpty() ? 1000 : 0);
}

QTEST_APPLESS_MAIN(WavFormatTest)
#include "tst_wav_format.moc"

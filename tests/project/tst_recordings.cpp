#include <QFile>
#include <QtEndian>
#include <QtTest>

#include <cmath>

namespace {

/// The chunks of a RIFF WAVE file by their four-letter names; empty when the file is malformed.
QMap<QByteArray, QByteArray> waveChunks(const QByteArray &file)
{
    const auto sizeAt = [&file](int offset) { return qFromLittleEndian<quint32>(file.constData() + offset); };
    if (file.size() < 12 || !file.startsWith("RIFF") || file.mid(8, 4) != "WAVE"
        || sizeAt(4) != quint32(file.size()) - 8)
        return {};
    QMap<QByteArray, QByteArray> chunks;
    for (int at = 12; at + 8 <= file.size();) {
        const quint32 size = sizeAt(at + 4);
        if (size > quint32(file.size() - at - 8))
            return {};
        chunks.insert(file.mid(at, 4), file.mid(at + 8, int(size)));
        at += 8 + int(size + size % 2);
    }
    return chunks;
}

QVector<int> samplesOf(const QByteArray &data)
{
    QVector<int> samples(data.size() / 2);
    for (int i = 0; i < samples.size(); ++i)
        samples[i] = qFromLittleEndian<qint16>(data.constData() + 2 * i);
    return samples;
}

double decibels(int sample)
{
    return 20 * std::log10(qMax(1, qAbs(sample)) / 32768.0);
}

bool isHeard(int sample)
{
    return decibels(sample) > -50;
}

} // namespace

/// The built-in voice cues are recordings that the device can play and a listener would not miss.
class TestRecordings : public QObject
{
    Q_OBJECT

private slots:
    void isPlayable_data();
    void isPlayable();
};

void TestRecordings::isPlayable_data()
{
    QTest::addColumn<QString>("path");
    for (const char *name : {"def_pair_init", "def_pair_end", "def_pair_success", "def_connect_failed"})
        QTest::newRow(name) << QStringLiteral(":/voice_cue/%1.wav").arg(QLatin1String(name));
}

void TestRecordings::isPlayable()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));
    const auto chunks = waveChunks(file.readAll());

    // PCM, one channel, 16000 frames and 32000 bytes a second, 2 bytes a frame, 16 bits a sample
    QCOMPARE(chunks.value("fmt ").toHex(), QByteArray("01000100803e0000007d000002001000"));

    constexpr int rate = 16000;
    const QVector<int> samples = samplesOf(chunks.value("data"));
    QVERIFY(samples.size() > rate / 2);
    QVERIFY(samples.size() < 5 * rate / 2);

    const auto [low, high] = std::minmax_element(samples.begin(), samples.end());
    const double peak = qMax(decibels(*low), decibels(*high));
    QVERIFY2(std::abs(peak + 3) < 0.5, qPrintable(QStringLiteral("peak %1 dBFS").arg(peak)));

    const auto first = std::find_if(samples.begin(), samples.end(), isHeard);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), isHeard);
    QVERIFY(first - samples.begin() <= rate / 5);
    QVERIFY(last - samples.rbegin() <= rate / 5);
}

QTEST_APPLESS_MAIN(TestRecordings)
#include "tst_recordings.moc"

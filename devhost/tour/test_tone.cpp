#include "devhost/tour/test_tone.h"

#include "devhost/whole_file.h"

#include <QDataStream>

#include <cmath>

namespace devhost::tour {

namespace {

constexpr int Rate = 16000; // samples a second
constexpr int SampleBytes = 2;
constexpr double Frequency = 440; // Hz
constexpr double Amplitude = 8000; // of 32767
constexpr double Pi = 3.14159265358979323846;

} // namespace

bool writeTestTone(const QString &path, int seconds)
{
    const quint32 dataBytes = quint32(seconds * Rate * SampleBytes);
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + dataBytes);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1) << quint16(1) << quint32(Rate) << quint32(Rate * SampleBytes)
           << quint16(SampleBytes) << quint16(8 * SampleBytes);
    stream.writeRawData("data", 4);
    stream << dataBytes;
    for (int sample = 0; sample < seconds * Rate; ++sample)
        stream << qint16(Amplitude * std::sin(2 * Pi * Frequency * sample / Rate));
    return writeWholeFile(path, bytes).isEmpty();
}

} // namespace devhost::tour

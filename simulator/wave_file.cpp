#include "simulator/wave_file.h"

#include <QtEndian>

#include <optional>

namespace sim {

namespace {

constexpr int RiffHeader = 12;
constexpr int ChunkHeader = 8;
constexpr int FormatSize = 16;
constexpr quint32 SampleRate = 16000;
constexpr quint16 Pcm = 1;
constexpr int BytesPerMs = 32;

quint32 u32(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

quint16 u16(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint16>(bytes.constData() + at);
}

/// The content of the first chunk of that name. A chunk that claims more than the file has is none.
std::optional<QByteArray> chunk(const QByteArray &file, const char *name)
{
    qint64 at = RiffHeader;
    while (at + ChunkHeader <= file.size()) {
        const qint64 size = u32(file, int(at) + 4);
        const bool wanted = file.mid(int(at), 4) == name;
        at += ChunkHeader;
        if (at + size > file.size())
            return std::nullopt;
        if (wanted)
            return file.mid(int(at), int(size));
        at += size + size % 2; // chunks begin at even offsets
    }
    return std::nullopt;
}

QString formatProblem(const QByteArray &format)
{
    if (u16(format, 0) != Pcm)
        return QStringLiteral("it is not PCM");
    if (u16(format, 2) != 1)
        return QStringLiteral("it has %1 channels instead of one").arg(u16(format, 2));
    if (u32(format, 4) != SampleRate)
        return QStringLiteral("its sampling rate is %1 Hz instead of 16000").arg(u32(format, 4));
    if (u16(format, 14) != 16)
        return QStringLiteral("it has %1 bits a sample instead of 16").arg(u16(format, 14));
    return {};
}

} // namespace

WaveCheck checkWave(const QByteArray &file)
{
    if (file.size() < RiffHeader || !file.startsWith("RIFF") || file.mid(8, 4) != "WAVE")
        return {QStringLiteral("it is no RIFF WAVE file"), 0};
    const std::optional<QByteArray> format = chunk(file, "fmt ");
    if (!format || format->size() < FormatSize)
        return {QStringLiteral("it has no complete format chunk"), 0};
    const QString problem = formatProblem(*format);
    if (!problem.isEmpty())
        return {problem, 0};
    const std::optional<QByteArray> samples = chunk(file, "data");
    if (!samples || samples->size() < 2 || samples->size() % 2 != 0)
        return {QStringLiteral("it has no complete data chunk"), 0};
    return {{}, qMax(1, samples->size() / BytesPerMs)};
}

} // namespace sim

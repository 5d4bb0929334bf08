#include "transfer/wav_format.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QtEndian>

namespace {

constexpr int RiffHeaderSize = 12;
constexpr int ChunkHeaderSize = 8;
constexpr int FormatSize = 16;
constexpr quint16 Pcm = 1;

struct Format
{
    quint16 encoding = 0;
    quint16 channels = 0;
    quint32 sampleRate = 0; ///< Hz
    quint16 bitsPerSample = 0;
};

QString tr(const char *text)
{
    return QCoreApplication::translate("UpdateDialog", text);
}

/// The body of the first chunk of that name; empty when there is none or the file ends within it.
QByteArray chunk(const QByteArray &file, const char *name)
{
    qint64 at = RiffHeaderSize;
    while (at + ChunkHeaderSize <= file.size()) {
        const qint64 size = qFromLittleEndian<quint32>(file.constData() + at + 4);
        const qint64 body = at + ChunkHeaderSize;
        if (file.mid(int(at), 4) == name)
            return body + size <= file.size() ? file.mid(int(body), int(size)) : QByteArray();
        at = body + size + size % 2; // chunks begin at even offsets
    }
    return {};
}

Format formatOf(const QByteArray &chunk)
{
    Format format;
    quint32 bytesPerSecond = 0;
    quint16 bytesPerFrame = 0;
    QDataStream stream(chunk);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream >> format.encoding >> format.channels >> format.sampleRate >> bytesPerSecond >> bytesPerFrame
        >> format.bitsPerSample;
    return format;
}

QString channelsText(int channels)
{
    if (channels == 1)
        return tr("mono");
    return channels == 2 ? tr("stereo") : tr("%1 channels").arg(channels);
}

QString encodingText(int encoding)
{
    switch (encoding) {
    case Pcm:
        return tr("PCM");
    case 3:
        return tr("floating point");
    case 6:
        return tr("A-law");
    case 7:
        return tr("mu-law");
    case 0xFFFE:
        return tr("in the extensible form");
    default:
        return tr("in encoding %1").arg(encoding);
    }
}

} // namespace

QString unplayableKind(const QByteArray &file)
{
    if (file.size() < RiffHeaderSize || !file.startsWith("RIFF") || file.mid(8, 4) != "WAVE")
        return tr("no WAV file");
    const QByteArray description = chunk(file, "fmt ");
    if (description.size() < FormatSize)
        return tr("a WAV file that does not say its format");
    const Format format = formatOf(description);
    if (format.encoding != Pcm || format.channels != 1 || format.sampleRate != 16000
        || format.bitsPerSample != 16)
        return tr("%1, %2 kHz, %3 bit %4")
            .arg(channelsText(format.channels), QString::number(format.sampleRate / 1000.0),
                 QString::number(format.bitsPerSample), encodingText(format.encoding));
    const QByteArray samples = chunk(file, "data");
    if (samples.isEmpty() || samples.size() % 2 != 0)
        return tr("a WAV file without samples, or cut off");
    return {};
}

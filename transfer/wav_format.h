#pragma once

#include <QByteArray>
#include <QString>

/// What @p file is instead of a recording that the device plays, as the rest of a sentence that begins "it
/// is"; empty when the device plays it: a RIFF WAVE file (Microsoft and IBM, 1991) with one channel, 16 kHz
/// and 16 bit PCM.
QString unplayableKind(const QByteArray &file);

#pragma once

#include <QPair>
#include <QVariant>

// What travels through the signals and slots of the block editors. Signals and slots spell the types out,
// so that connections by signature text find them as well.

/// One change of a channel strip: (parameter number, value).
using StripRecord = QPair<int, QVariant>;
/// One change of a strip editor: (channel index from 0, strip record).
using ChannelRecord = QPair<int, QPair<int, QVariant>>;
/// One change of the mixer: ((source index, sink index), (parameter number, value)).
using CrosspointRecord = QPair<QPair<int, int>, QPair<int, QVariant>>;
/// One change of the tone generator: (parameter number, value).
using ToneRecord = QPair<int, QVariant>;

/// Parameter numbers of the channel strips of the inputs.
enum InputParameter { InputMute = 0, InputInvert = 1, InputGain = 2 };

/// Parameter numbers of the channel strips of the outputs.
enum OutputParameter { OutputMute = 0, OutputGain = 1, OutputLimiterEnable = 2, OutputLimiterThreshold = 3 };

/// The only parameter number of a crosspoint: its level in dB.
enum CrosspointParameter { CrosspointLevel = 0 };

/// Parameter numbers of the tone generator: enable is a bool, frequency an int in Hz, level an int in dB.
enum ToneParameter { ToneEnable = 100, ToneFrequency = 101, ToneLevel = 102 };

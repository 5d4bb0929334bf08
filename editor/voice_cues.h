#pragma once

#include <QLatin1String>

#include <array>

/// One of the prompts that the device plays on pairing events. The order is that of the device's arrays.
struct VoiceCueInfo
{
    QLatin1String id; ///< how a download names it
    QLatin1String defaultFile; ///< file name of the built-in recording, in the resource folder ":/voice_cue"
};

constexpr int VoiceCueCount = 4;

constexpr std::array<VoiceCueInfo, VoiceCueCount> VoiceCues = {{
    {QLatin1String("VC_BT_PAIR", 10), QLatin1String("def_pair_init.wav", 17)},
    {QLatin1String("VC_BT_END_PAIR", 14), QLatin1String("def_pair_end.wav", 16)},
    {QLatin1String("VC_BT_SUCCESS", 13), QLatin1String("def_pair_success.wav", 20)},
    {QLatin1String("VC_BT_FAIL", 10), QLatin1String("def_connect_failed.wav", 22)},
}};

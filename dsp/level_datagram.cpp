#include "dsp/level_datagram.h"

std::optional<int> stripLevel(const QByteArray &datagram, int firstLevelByte, int strip)
{
    const int index = firstLevelByte + strip;
    if (index < 0 || index >= datagram.size())
        return std::nullopt;
    return static_cast<signed char>(datagram.at(index));
}

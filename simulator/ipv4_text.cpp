#include "simulator/ipv4_text.h"

#include <QRegularExpression>

namespace sim {

std::optional<quint32> ipv4FromText(const QString &text)
{
    static const QRegularExpression dotted(
        QStringLiteral("\\A([0-9]{1,3})\\.([0-9]{1,3})\\.([0-9]{1,3})\\.([0-9]{1,3})\\z"));
    const QRegularExpressionMatch match = dotted.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    quint32 address = 0;
    for (int part = 1; part <= 4; ++part) {
        const uint value = match.capturedRef(part).toUInt();
        if (value > 255)
            return std::nullopt;
        address = address << 8 | value;
    }
    return address;
}

bool isMulticastGroup(quint32 address)
{
    return address >> 28 == 0xe;
}

bool isNetmask(quint32 address)
{
    return ((~address + 1) & ~address) == 0;
}

} // namespace sim

#include "simulator/usb_host.h"

namespace sim {

namespace {

struct Stage
{
    const char *word;
    int ms;
};

constexpr Stage Stages[] = {
    {"connected", 45000},
    {"suspended", 8000},
    {"connected", 30000},
    {"disconnected", 10000},
};

constexpr int RoundMs = Stages[0].ms + Stages[1].ms + Stages[2].ms + Stages[3].ms;

const char *wordAt(int elapsed)
{
    for (const Stage &stage : Stages) {
        if (elapsed < stage.ms)
            return stage.word;
        elapsed -= stage.ms;
    }
    return Stages[0].word;
}

} // namespace

void UsbHost::powerUp()
{
    m_elapsed = 0;
}

void UsbHost::advance(int ms)
{
    m_elapsed = (m_elapsed + ms) % RoundMs;
}

const char *UsbHost::state() const
{
    if (m_plug == Plug::Auto)
        return wordAt(m_elapsed);
    return m_plug == Plug::In ? "connected" : "disconnected";
}

bool UsbHost::isActive() const
{
    return qstrcmp(state(), "connected") == 0;
}

QJsonObject UsbHost::status() const
{
    return {{QStringLiteral("state"), QLatin1String(state())}};
}

} // namespace sim

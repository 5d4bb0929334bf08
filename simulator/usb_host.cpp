#include "simulator/usb_host.h"

namespace sim {

namespace {

struct Stage
{
    const char *word;
    int ms;
};

constexpr Stage stages[] = {
    {"connected", 45000},
    {"suspended", 8000},
    {"connected", 30000},
    {"disconnected", 10000},
};

constexpr int roundMs = stages[0].ms + stages[1].ms + stages[2].ms + stages[3].ms;

const char *wordAt(int elapsed)
{
    for (const Stage &stage : stages) {
        if (elapsed < stage.ms)
            return stage.word;
        elapsed -= stage.ms;
    }
    return stages[0].word;
}

} // namespace

void UsbHost::powerUp()
{
    m_elapsed = 0;
}

void UsbHost::advance(int ms)
{
    m_elapsed = (m_elapsed + ms) % roundMs;
}

bool UsbHost::isActive() const
{
    return qstrcmp(wordAt(m_elapsed), "connected") == 0;
}

QJsonObject UsbHost::status() const
{
    return {{QStringLiteral("state"), QLatin1String(wordAt(m_elapsed))}};
}

} // namespace sim

#include "simulator/faults.h"

#include <QRegularExpression>

namespace sim {

FaultDealer::FaultDealer(const FaultSettings &settings, quint32 seed)
    : m_settings(settings)
    , m_fates(seed)
    , m_noise(~seed)
{
}

Fate FaultDealer::next()
{
    const bool lost = happens(m_settings.drop);
    const bool onTheWayIn = happens(0.5);
    Fate fate;
    fate.loseRequest = lost && onTheWayIn;
    fate.loseReply = lost && !onTheWayIn;
    fate.duplicate = happens(m_settings.duplicate);
    fate.reorder = happens(m_settings.reorder);
    fate.garbage = happens(m_settings.garbage);
    fate.delayMs = m_settings.latencyMs + int(m_fates.generateDouble() * m_settings.jitterMs);
    return fate;
}

QByteArray FaultDealer::garbage()
{
    QByteArray bytes(m_noise.bounded(1, 201), '\0');
    for (char &byte : bytes)
        byte = char(m_noise.bounded(256));
    return bytes;
}

bool FaultDealer::happens(double probability)
{
    return m_fates.generateDouble() < probability;
}

bool matchesPattern(const QString &pattern, const QString &path)
{
    QString expression = QRegularExpression::escape(pattern);
    expression.replace(QStringLiteral("\\*"), QStringLiteral(".*"));
    expression.replace(QStringLiteral("\\?"), QStringLiteral("."));
    return QRegularExpression(QRegularExpression::anchoredPattern(expression)).match(path).hasMatch();
}

} // namespace sim

#include "simulator/faults.h"

#include <QRegularExpression>

namespace sim {

namespace {

/// In a pattern * stands for any characters, "/" included, and ? for one.
bool matchesPattern(const QString &pattern, const QString &path)
{
    QString expression = QRegularExpression::escape(pattern);
    expression.replace(QStringLiteral("\\*"), QStringLiteral(".*"));
    expression.replace(QStringLiteral("\\?"), QStringLiteral("."));
    return QRegularExpression(QRegularExpression::anchoredPattern(expression)).match(path).hasMatch();
}

} // namespace

Outcome refusedOnRequest(const QString &refuse, const Request &request)
{
    return Outcome::refuse(request.path, QStringLiteral("refused on request (%1)").arg(refuse));
}

FaultSettings faultSettings(const QJsonObject &faults)
{
    FaultSettings settings;
    settings.latencyMs = faults.value(QStringLiteral("latency")).toInt();
    settings.jitterMs = faults.value(QStringLiteral("jitter")).toInt();
    settings.drop = faults.value(QStringLiteral("drop")).toDouble();
    settings.duplicate = faults.value(QStringLiteral("duplicate")).toDouble();
    settings.reorder = faults.value(QStringLiteral("reorder")).toDouble();
    settings.garbage = faults.value(QStringLiteral("garbage")).toDouble();
    settings.refuse = faults.value(QStringLiteral("refuse")).toString();
    settings.vanishAfter = faults.value(QStringLiteral("vanish-after")).toInt();
    settings.returnAfterMs = faults.value(QStringLiteral("return-after")).toInt();
    return settings;
}

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

bool isRefused(const QString &refuse, const Request &request)
{
    const QLatin1String setsOnly("set:");
    if (!refuse.startsWith(setsOnly))
        return !refuse.isEmpty() && matchesPattern(refuse, request.path);
    return request.kind == Request::Kind::Set && matchesPattern(refuse.mid(setsOnly.size()), request.path);
}

} // namespace sim

#include "simulator/identity.h"

#include <QJsonDocument>
#include <QRegularExpression>

namespace sim {

namespace {

/// The number at the end of a name ("KBX-0001" gives 1); a checksum of the name where it ends in none.
quint16 serialOf(const QString &name)
{
    static const QRegularExpression digits(QStringLiteral("([0-9]{1,4})\\z"));
    const QRegularExpressionMatch match = digits.match(name);
    if (match.hasMatch())
        return match.capturedRef(1).toUShort();
    const QByteArray utf8 = name.toUtf8();
    return qChecksum(utf8.constData(), uint(utf8.size()));
}

QString hexByte(int value)
{
    return QString::number(value, 16).toUpper().rightJustified(2, QLatin1Char('0'));
}

} // namespace

Identity::Identity(const QString &name, const QHostAddress &address)
    : m_name(name)
    , m_address(address)
{
}

QString Identity::macAddress() const
{
    const quint16 serial = serialOf(m_name);
    return QStringLiteral("02:4B:42:%1:%2:%3")
        .arg(hexByte(int(m_address.toIPv4Address() & 0xff)), hexByte(serial >> 8), hexByte(serial & 0xff));
}

QJsonObject Identity::info() const
{
    return {
        {QStringLiteral("name"), m_name},
        {QStringLiteral("product"), QStringLiteral("TarnKBX")},
        {QStringLiteral("model"), QStringLiteral("KBX")},
        {QStringLiteral("mac"), macAddress()},
        {QStringLiteral("version"), version()},
        {QStringLiteral("hardware"), QStringLiteral("B")},
        {QStringLiteral("serial"), QStringLiteral("SIM-%1").arg(serialOf(m_name), 5, 10, QLatin1Char('0'))}};
}

QByteArray Identity::announcement(quint16 controlPort) const
{
    const QJsonObject announcement{{QStringLiteral("announce"), QStringLiteral("plexo")},
                                   {QStringLiteral("name"), m_name},
                                   {QStringLiteral("type"), 1},
                                   {QStringLiteral("product"), QStringLiteral("TarnKBX")},
                                   {QStringLiteral("model"), QStringLiteral("KBX")},
                                   {QStringLiteral("mac"), macAddress()},
                                   {QStringLiteral("version"), version()},
                                   {QStringLiteral("feature_level"), 1},
                                   {QStringLiteral("control_port"), controlPort}};
    return QJsonDocument(announcement).toJson(QJsonDocument::Compact);
}

} // namespace sim

#include "devhost/announcement.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace devhost {

namespace {

// Names are shown in one line and written into log files.
constexpr int LongestText = 64;

bool isPlainText(const QString &text)
{
    return !text.isEmpty() && text.size() <= LongestText
        && std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isPrint() || c.isSurrogate(); });
}

/// Reads members one after the other and remembers whether all of them were as they must be.
class MemberReader
{
public:
    explicit MemberReader(const QJsonObject &object)
        : m_object(object)
    {
    }

    QString text(const char *member)
    {
        // Nobody could tell two names apart that differ in blanks at an end.
        QString value = m_object.value(QLatin1String(member)).toString().trimmed();
        m_good &= isPlainText(value);
        return value;
    }

    uint number(const char *member, uint least, uint most)
    {
        const QJsonValue value = m_object.value(QLatin1String(member));
        const double number = value.toDouble(-1);
        const bool good = value.isDouble() && number >= least && number <= most && number == uint(number);
        m_good &= good;
        return good ? uint(number) : 0;
    }

    bool allGood() const { return m_good; }

private:
    QJsonObject m_object;
    bool m_good = true;
};

pxDevice::e_dev_type typeOf(uint number)
{
    return number == pxDevice::DEV_TYPE_NETWORK ? pxDevice::DEV_TYPE_NETWORK : pxDevice::DEV_TYPE_UNKNOWN;
}

} // namespace

std::optional<Announcement> parseAnnouncement(const QByteArray &datagram)
{
    if (datagram.size() > LongestAnnouncement)
        return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(datagram).object();
    if (object.value(QLatin1String("announce")) != QJsonValue(QStringLiteral("plexo")))
        return std::nullopt;
    MemberReader reader(object);
    Announcement heard;
    heard.name = reader.text("name");
    heard.type = typeOf(reader.number("type", 0, 255));
    heard.product = reader.text("product");
    heard.model = reader.text("model");
    heard.mac = reader.text("mac");
    heard.version = pxDevice::versionFromText(reader.text("version"));
    heard.featureLevel = reader.number("feature_level", 0, 0x7fffffff);
    heard.controlPort = quint16(reader.number("control_port", 1, 65535));
    if (!reader.allGood() || heard.version == 0)
        return std::nullopt;
    return heard;
}

} // namespace devhost

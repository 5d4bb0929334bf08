#include "proof/snapshot_content.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamReader>

namespace proof {

namespace {

constexpr int MixerRows = 7;

QStringList sectionElements()
{
    return QStringLiteral("SYSTEM_NETWORK SYSTEM_NOTIFICATIONS SYSTEM_METERING SYSTEM_FUNC_GEN SYSTEM_USB "
                          "SYSTEM_BLUETOOTH SYSTEM_VOICE_CUE PRESET_RX PRESET_TX PRESET_USB_PLAYBACK "
                          "PRESET_USB_RECORD PRESET_BT_SINK PRESET_BT_SOURCE PRESET_VOICE_CUE PRESET_MIXER")
        .split(QLatin1Char(' '));
}

void takeSection(SnapshotContent *content, const QString &element, const QString &text)
{
    const QJsonObject section = QJsonDocument::fromJson(text.toUtf8()).object();
    const QString path = section.value(QLatin1String("param")).toString();
    content->elements.append(element);
    if (element == QLatin1String("PRESET_MIXER")) {
        for (int row = 0; row < MixerRows; ++row)
            content->settings.append({QStringLiteral("/preset/dsp/mixer/%1").arg(row),
                                      section.value(QLatin1String("value")).toArray().at(row).toArray()});
    } else if (path.startsWith(QLatin1String("/system/")) || path.startsWith(QLatin1String("/preset/"))) {
        content->settings.append({path, section.value(QLatin1String("value"))});
    }
}

} // namespace

SnapshotContent contentOf(const QByteArray &document)
{
    static const QStringList Sections = sectionElements();
    SnapshotContent content;
    QXmlStreamReader xml(document);
    QString text;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        const QString element = xml.name().toString();
        if (token == QXmlStreamReader::Characters)
            text = xml.text().toString();
        else if (token == QXmlStreamReader::EndElement && element == QLatin1String("PRODUCT_MCU_VER"))
            content.firmware = text;
        else if (token == QXmlStreamReader::EndElement && Sections.contains(element))
            takeSection(&content, element, text);
    }
    return content;
}

QStringList snapshotProblems(const SnapshotContent &content, const QString &firmware)
{
    QStringList problems;
    if (content.firmware != QLatin1Char('v') + firmware)
        problems.append(QStringLiteral("a snapshot of firmware %1 says %2").arg(firmware, content.firmware));
    for (const QString &element : sectionElements()) {
        if (!content.elements.contains(element))
            problems.append(QStringLiteral("a snapshot has no ") + element);
    }
    return problems;
}

} // namespace proof

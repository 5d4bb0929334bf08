#include "snapshot/snapshot_writer.h"

#include "host/px_device.h"

#include <QJsonDocument>
#include <QXmlStreamWriter>

namespace {

void writeInfo(QXmlStreamWriter &xml, const SnapshotIdentity &identity)
{
    xml.writeStartElement(QStringLiteral("SNAPSHOT_INFO"));
    xml.writeTextElement(QStringLiteral("FILE_VER"), QStringLiteral("1.0"));
    xml.writeTextElement(QStringLiteral("PRODUCT_ID"), identity.productId);
    xml.writeTextElement(QStringLiteral("PRODUCT_NAME"), identity.productName);
    xml.writeTextElement(QStringLiteral("PRODUCT_MCU_VER"),
                         pxDevice::versionToText(identity.firmwareVersion));
    xml.writeEndElement();
}

/// Compact JSON. Two characters that may stand in JSON, yet not in XML, are written as escapes.
QString textOf(const QJsonObject &cache)
{
    return QString::fromUtf8(QJsonDocument(cache).toJson(QJsonDocument::Compact))
        .replace(QChar(0xfffe), QStringLiteral("\\ufffe"))
        .replace(QChar(0xffff), QStringLiteral("\\uffff"));
}

void writeSections(QXmlStreamWriter &xml, const SectionCaches &caches)
{
    xml.writeStartElement(QStringLiteral("SNAPSHOT_DATA"));
    for (const SectionInfo &info : sections()) {
        if (info.inSnapshot())
            xml.writeTextElement(info.snapshotElement, textOf(caches[info.section]));
    }
    xml.writeEndElement();
}

} // namespace

QByteArray writeSnapshot(const SectionCaches &caches, const SnapshotIdentity &identity)
{
    QByteArray document;
    QXmlStreamWriter xml(&document);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("SNAPSHOT_FILE"));
    writeInfo(xml, identity);
    writeSections(xml, caches);
    xml.writeEndElement();
    xml.writeEndDocument();
    return document;
}

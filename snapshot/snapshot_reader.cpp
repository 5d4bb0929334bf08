#include "snapshot/snapshot_reader.h"

#include "host/px_device.h"

#include <QJsonDocument>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

constexpr double LowestFileVersion = 1.0;
// A snapshot of this model takes some 8 KB. The slowest document of this size that we know, 10,000 attributes
// that the XML reader compares with each other, is read in less than a second.
constexpr int LargestSnapshot = 64 * 1024;
// The text read last is handed out at the end of every element, so a small document could have one large text
// parsed thousands of times. A real snapshot hands out its largest text three times.
constexpr int TextBudget = 4 * LargestSnapshot;

/// The text of a document, or a null text when it is too large or not in UTF-8.
QString readableText(const QByteArray &document)
{
    if (document.size() > LargestSnapshot)
        return QString();
    QTextCodec::ConverterState state;
    const QString text
        = QTextCodec::codecForName("UTF-8")->toUnicode(document.constData(), document.size(), &state);
    return state.invalidChars == 0 ? text : QString();
}

/// A document with a document type has none: its entities could make a small document a huge one.
bool findStart(QXmlStreamReader &xml, QLatin1String element)
{
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::DTD)
            return false;
        if (token == QXmlStreamReader::StartElement && xml.name() == element)
            return true;
    }
    return false;
}

/// Walks through the rest of the document; tells of each element that ends, with the text read last.
template <typename Visit>
void forEachEnd(QXmlStreamReader &xml, Visit visit)
{
    QString text;
    int budget = TextBudget;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::Characters) {
            text = xml.text().toString();
        } else if (token == QXmlStreamReader::EndElement) {
            budget -= text.size();
            if (budget < 0 || !visit(xml.name().toString(), text))
                return;
        }
    }
}

/// The header's three conditions; each stays fulfilled once it was.
struct HeaderCheck
{
    const SnapshotIdentity &device;
    bool version = false;
    bool name = false;
    bool firmware = false;

    void see(const QString &element, const QString &text)
    {
        if (element == QLatin1String("FILE_VER"))
            version |= text.toDouble() >= LowestFileVersion;
        else if (element == QLatin1String("PRODUCT_NAME"))
            name |= text == device.productName;
        else if (element == QLatin1String("PRODUCT_MCU_VER"))
            firmware |= pxDevice::versionFromText(text.mid(1)) >= device.lowestFirmware;
    }
};

QJsonObject contentOf(const QString &text)
{
    const bool fitsLatin1
        = std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() <= 0xff; });
    if (fitsLatin1) {
        const QJsonDocument document = QJsonDocument::fromJson(text.toLatin1());
        if (document.isObject())
            return document.object();
    }
    // A name such as "Büro" is no UTF-8 when taken as Latin-1.
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

const SectionInfo *sectionOf(const QString &element)
{
    for (const SectionInfo &info : sections()) {
        if (info.inSnapshot() && element == info.snapshotElement)
            return &info;
    }
    return nullptr;
}

} // namespace

bool isSnapshotFor(const QByteArray &document, const SnapshotIdentity &identity)
{
    QXmlStreamReader xml(readableText(document));
    if (!findStart(xml, QLatin1String("SNAPSHOT_INFO")))
        return false;
    HeaderCheck check{identity};
    forEachEnd(xml, [&check](const QString &element, const QString &text) {
        check.see(element, text);
        return true;
    });
    return check.version && check.name && check.firmware;
}

bool readSnapshot(const QByteArray &document, const SnapshotVisitor &visit)
{
    QXmlStreamReader xml(readableText(document));
    if (!findStart(xml, QLatin1String("SNAPSHOT_DATA")))
        return false;
    forEachEnd(xml, [&visit](const QString &element, const QString &text) {
        const SectionInfo *section = sectionOf(element);
        return visit({element, section, section ? contentOf(text) : QJsonObject()});
    });
    return true;
}

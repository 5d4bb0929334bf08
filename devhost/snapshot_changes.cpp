#include "devhost/snapshot_changes.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamReader>

namespace devhost {

namespace {

constexpr int LongestValue = 120;

/// The settings of one document, in its order.
struct Settings
{
    QVector<QString> paths;
    QHash<QString, QString> values;

    void add(const QString &path, const QString &value)
    {
        if (!values.contains(path))
            paths.append(path);
        values.insert(path, value.left(LongestValue));
    }
};

QString textOf(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

void addValue(Settings *settings, const QString &path, const QJsonValue &value)
{
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it)
            addValue(settings, path + QLatin1Char('/') + it.key(), it.value());
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (int index = 0; index < array.size(); ++index)
            addValue(settings, QStringLiteral("%1/%2").arg(path).arg(index), array.at(index));
    } else {
        settings->add(path, textOf(value));
    }
}

/// Commands and states that stand in a snapshot reach no device.
bool isSetting(const QString &path)
{
    return path.startsWith(QLatin1String("/system/")) || path.startsWith(QLatin1String("/preset/"));
}

/// "/preset/mixer" for "PRESET_MIXER": a section that was read in parts does not say its path.
QString pathOf(QString element)
{
    const int end = element.indexOf(QLatin1Char('_'));
    return QLatin1Char('/') + element.replace(end, 1, QLatin1Char('/')).toLower();
}

/// "USB", "IP mode", "dante RX": words of one part of a path.
QString wordsOf(const QString &part)
{
    static const QStringList initials{QStringLiteral("bt"), QStringLiteral("ip"), QStringLiteral("rx"),
                                      QStringLiteral("tx"), QStringLiteral("usb")};
    QStringList words = part.split(QLatin1Char('_'));
    for (QString &word : words) {
        if (initials.contains(word))
            word = word.toUpper();
    }
    return words.join(QLatin1Char(' '));
}

/// Calls @p see with the name and the text of each element that has no others in it.
template <typename See>
void walkElements(const QByteArray &document, const See &see)
{
    QXmlStreamReader reader(document);
    QString text;
    bool isLeaf = false;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::DTD: // could make a small document a huge one
            return;
        case QXmlStreamReader::StartElement:
            text.clear();
            isLeaf = true;
            break;
        case QXmlStreamReader::Characters:
            text += reader.text();
            break;
        case QXmlStreamReader::EndElement:
            if (isLeaf)
                see(reader.name().toString(), text);
            isLeaf = false;
            break;
        default:
            break;
        }
    }
}

struct Content
{
    Settings settings;
    Settings texts; ///< of elements that are no replies, the document's head among them
};

Content contentOf(const QByteArray &document)
{
    Content content;
    walkElements(document, [&content](const QString &name, const QString &text) {
        const QJsonObject reply = QJsonDocument::fromJson(text.toUtf8()).object();
        const QString path = reply.value(QLatin1String("param")).toString(pathOf(name));
        if (reply.isEmpty())
            content.texts.add(name, text);
        else if (isSetting(path))
            addValue(&content.settings, path, reply.value(QLatin1String("value")));
    });
    return content;
}

} // namespace

QVector<SnapshotChange> snapshotChanges(const QByteArray &now, const QByteArray &then)
{
    const Content wanted = contentOf(then);
    const auto kind = wanted.settings.paths.isEmpty() ? &Content::texts : &Content::settings;
    const Settings present = contentOf(now).*kind;
    const Settings future = wanted.*kind;
    QVector<SnapshotChange> changes;
    for (const QString &path : future.paths) {
        if (!present.values.contains(path) || present.values.value(path) != future.values.value(path))
            changes.append({path, present.values.value(path), future.values.value(path)});
    }
    return changes;
}

QString settingName(const QString &path)
{
    const QStringList parts = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (!isSetting(path))
        return path;
    QString name;
    bool wasNumber = false;
    bool isInside = false; // of the section
    for (const QString &part : parts.mid(parts.value(1) == QLatin1String("dsp") ? 2 : 1)) {
        bool isNumber = false;
        const int index = part.toInt(&isNumber);
        if (isNumber) {
            name += (wasNumber ? QLatin1Char('/') : QLatin1Char(' ')) + QString::number(index + 1);
        } else if (name.isEmpty()) {
            name = wordsOf(part);
            name.replace(0, 1, name.at(0).toUpper());
        } else {
            name += (isInside ? QStringLiteral(" ") : QStringLiteral(": ")) + wordsOf(part);
            isInside = true;
        }
        wasNumber = isNumber;
    }
    return name;
}

QStringList snapshotPaths(const QByteArray &document)
{
    QStringList paths;
    walkElements(document, [&paths](const QString &, const QString &text) {
        const QJsonObject reply = QJsonDocument::fromJson(text.toUtf8()).object();
        const QString path = reply.value(QLatin1String("param")).toString();
        if (!path.isEmpty())
            paths.append(path);
    });
    paths.removeDuplicates();
    return paths;
}

} // namespace devhost

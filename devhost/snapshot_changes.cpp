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

void addElement(Settings *settings, const QString &name, const QString &text)
{
    const QJsonObject reply = QJsonDocument::fromJson(text.toUtf8()).object();
    if (reply.contains(QLatin1String("value")))
        addValue(settings, reply.value(QLatin1String("param")).toString(name),
                 reply.value(QLatin1String("value")));
    else if (reply.isEmpty() && text != QLatin1String("{}"))
        settings->add(name, text);
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

Settings settingsOf(const QByteArray &document)
{
    Settings settings;
    walkElements(document, [&settings](const QString &name, const QString &text) {
        addElement(&settings, name, text);
    });
    return settings;
}

} // namespace

QVector<SnapshotChange> snapshotChanges(const QByteArray &now, const QByteArray &then)
{
    const Settings present = settingsOf(now);
    const Settings future = settingsOf(then);
    QVector<SnapshotChange> changes;
    for (const QString &path : future.paths) {
        if (!present.values.contains(path) || present.values.value(path) != future.values.value(path))
            changes.append({path, present.values.value(path), future.values.value(path)});
    }
    return changes;
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

#include "simulator/state_file.h"

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

namespace sim {

StateRead readState(const QString &file)
{
    QFile input(file);
    if (!input.exists())
        return {};
    if (!input.open(QIODevice::ReadOnly))
        return {{}, input.errorString()};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(input.readAll(), &error);
    if (!document.isObject())
        return {{},
                QStringLiteral("no JSON object (%1 at byte %2)").arg(error.errorString()).arg(error.offset)};
    return {document.object(), {}};
}

QString writeState(const QString &file, const QJsonObject &state)
{
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly))
        return output.errorString();
    output.write(QJsonDocument(state).toJson());
    // What is still in a buffer would fail unnoticed, and replace a whole file by a part of one.
    return output.flush() && output.commit() ? QString() : output.errorString();
}

} // namespace sim

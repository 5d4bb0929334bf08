// What the device remembers without power.

#include "simulator/device_model.h"

namespace sim {

QJsonObject DeviceModel::toJson() const
{
    return {{QStringLiteral("format"), 1},
            {QStringLiteral("system"), m_tree.value(QStringLiteral("/system"))},
            {QStringLiteral("preset"), m_tree.value(QStringLiteral("/preset"))},
            {QStringLiteral("presets"), m_presets.toJson()},
            {QStringLiteral("paired"), m_phone.pairedList()},
            {QStringLiteral("recordings_ms"), m_cues.toJson()}};
}

QString DeviceModel::fromJson(const QJsonObject &state)
{
    if (state.value(QStringLiteral("format")).toInt() != 1)
        return QStringLiteral("the file is not of format 1");
    const QJsonObject whole = toJson();
    for (auto member = whole.begin(); member != whole.end(); ++member) {
        if (state.value(member.key()).type() != member.value().type())
            return QStringLiteral("the member \"%1\" is missing or damaged").arg(member.key());
    }
    ParameterTree restored = m_tree;
    for (const QString &part : {QStringLiteral("system"), QStringLiteral("preset")}) {
        const Outcome outcome = restored.set(QLatin1Char('/') + part, state.value(part));
        if (!outcome.accepted())
            return outcome.refusal;
    }
    m_tree = restored;
    m_presets.fromJson(state.value(QStringLiteral("presets")).toArray());
    m_phone.setPairedList(state.value(QStringLiteral("paired")).toArray());
    m_cues.fromJson(state.value(QStringLiteral("recordings_ms")).toArray());
    settingsApplied();
    return {};
}

} // namespace sim

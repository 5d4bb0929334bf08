#include "simulator/presets.h"

namespace sim {

namespace {

QStringList presetPaths()
{
    return {QStringLiteral("/preset"), QStringLiteral("/system/function_gen")};
}

} // namespace

void Presets::save(int slot, const ParameterTree &tree)
{
    QJsonObject preset;
    for (const QString &path : presetPaths())
        preset.insert(path, tree.value(path));
    m_slots.at(size_t(slot)) = preset;
}

QString Presets::load(int slot, ParameterTree *tree) const
{
    const QJsonObject preset = m_slots.at(size_t(slot));
    if (preset.isEmpty())
        return QStringLiteral("preset %1 was never stored").arg(slot);
    ParameterTree recalled = *tree;
    for (const QString &path : presetPaths()) {
        const Outcome outcome = recalled.set(path, preset.value(path));
        if (!outcome.accepted())
            return outcome.refusal;
    }
    *tree = recalled;
    return {};
}

QJsonArray Presets::toJson() const
{
    QJsonArray array;
    for (const QJsonObject &preset : m_slots)
        array.append(preset.isEmpty() ? QJsonValue() : QJsonValue(preset));
    return array;
}

void Presets::fromJson(const QJsonArray &array)
{
    for (size_t slot = 0; slot < m_slots.size(); ++slot)
        m_slots[slot] = array.at(int(slot)).toObject();
}

} // namespace sim

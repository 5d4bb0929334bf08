#pragma once

#include "simulator/device_table.h"

#include <QJsonArray>

#include <array>

namespace sim {

/// The eight preset slots. A preset holds the sound of the device: everything under "/preset" and the tone
/// generator; recalling one changes no address, name or Bluetooth setting.
class Presets
{
public:
    /// Slots are 0 to 7; anything else asserts.
    void save(int slot, const ParameterTree &tree);

    /// An empty text, or why the slot cannot be recalled; then the tree is as it was.
    QString load(int slot, ParameterTree *tree) const;

    void clear() { m_slots.fill({}); }

    /// One entry a slot, null for one that was never stored.
    QJsonArray toJson() const;
    void fromJson(const QJsonArray &array);

private:
    std::array<QJsonObject, PresetSlotCount> m_slots;
};

} // namespace sim

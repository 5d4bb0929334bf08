// Snapshots that the host keeps, and presets that the device keeps.

#include "editor/tarnkbx_main_window.h"

#include "host/modal_box.h"
#include "host/plexo_plugin.h"
#include "host/plexo_plugin_factory.h"
#include "protocol/messages.h"
#include "protocol/paths.h"
#include "snapshot/snapshot_reader.h"
#include "snapshot/snapshot_writer.h"

#include "ui_main_window.h"

namespace {

SnapshotIdentity identityOf(PlexoPlugin *plugin)
{
    SnapshotIdentity identity;
    PlexoPluginFactory *factory = plugin ? plugin->getFactory() : nullptr;
    if (factory) {
        identity.productId = factory->getProductId();
        identity.lowestFirmware = pxDevice::versionFromText(factory->getVersionFull());
    }
    if (const pxDevice *device = plugin ? plugin->getDevice() : nullptr) {
        identity.productName = device->productName();
        identity.firmwareVersion = device->firmwareVersion();
    }
    return identity;
}

/// Whatever its path: what a snapshot holds are stored settings.
void restore(PlexoPlugin *plugin, const QString &path, const QJsonValue &value)
{
    if (plugin)
        plugin->queueVelmarAsciiMsg(plugin->getDeviceName(), message::set(path, value), true);
}

} // namespace

void TarnKBX_MainWindow::getSnapshot(QByteArray *out)
{
    *out = writeSnapshot(*m_caches, identityOf(m_plugin));
}

bool TarnKBX_MainWindow::checkSnapshot(const QByteArray &snapshot)
{
    return isSnapshotFor(snapshot, identityOf(m_plugin));
}

void TarnKBX_MainWindow::refuseSnapshot()
{
    const QPointer<TarnKBX_MainWindow> alive(this);
    BoxText box;
    box.title = tr("Version Warning");
    box.text = tr("The version of the saved preset configuration file is not supported by the version of "
                  "this device or plugin.");
    runModalBox(box, this);
    if (alive && m_plugin)
        emit m_plugin->presetLoadFinished(false);
}

void TarnKBX_MainWindow::applySnapshot(const QByteArray &snapshot)
{
    if (!checkSnapshot(snapshot)) {
        refuseSnapshot();
        return;
    }
    const QPointer<TarnKBX_MainWindow> alive(this);
    const bool wasEnabled = ui->plugin_frame->isEnabled();
    ui->plugin_frame->setEnabled(false);
    const bool found = readSnapshot(snapshot, [this, &alive](const SnapshotElement &element) {
        if (element.section)
            applySection(*element.section, element.content);
        if (alive && m_plugin && !m_plugin->getNoConnectFlag())
            emit dataChanged();
        return !alive.isNull();
    });
    if (!alive)
        return;
    // Nothing was sent, so no reply would enable it again.
    if (!found)
        ui->plugin_frame->setEnabled(wasEnabled);
    if (m_plugin)
        emit m_plugin->presetLoadFinished(found);
}

void TarnKBX_MainWindow::applySection(const SectionInfo &info, const QJsonObject &content)
{
    if (info.section == Section::Mixer) {
        applyMixer(content);
        return;
    }
    const QString path = json::text(content, "param");
    // The path is the file's: one from elsewhere must not be able to reset or reboot the device.
    if (path::changesStoredSettings(path)) {
        (*m_caches)[info.section] = content;
        restore(m_plugin, path, content.value(QLatin1String("value")));
    } else if (m_plugin) {
        m_plugin->emitLogData(
            path.isEmpty()
                ? tr("Snapshot: %1 holds no settings and was left out.").arg(info.snapshotElement)
                : tr("Snapshot: %1 was left out, because %2 is no setting.").arg(info.snapshotElement, path));
    }
}

/// All rows, whatever there is of them: the answer to the last one enables the editor again.
void TarnKBX_MainWindow::applyMixer(const QJsonObject &content)
{
    const QPointer<TarnKBX_MainWindow> alive(this);
    (*m_caches)[Section::Mixer] = content;
    const QJsonArray rows = json::array(content, "value");
    for (int row = 0; alive && row < path::MixerRows; ++row)
        restore(m_plugin, path::indexed(path::MixerRow, row), rows.at(row).toArray());
}

void TarnKBX_MainWindow::requestPreset(QLatin1String path, int preset)
{
    issue(path, message::setQuotedNumber(path, preset),
          [this](DeviceStateOwner &, const QJsonObject &) { reloadDevice(); });
}

void TarnKBX_MainWindow::loadPreset(int preset)
{
    requestPreset(path::LoadPreset, preset);
}

void TarnKBX_MainWindow::savePreset(int preset)
{
    requestPreset(path::SavePreset, preset);
}

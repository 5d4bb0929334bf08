#include "plugin/velmar_sample_plugin.h"

#include "editor/tarnkbx_main_window.h"

VelmarSamplePlugin::VelmarSamplePlugin(QWidget *parent)
    : PlexoPlugin(parent)
{
}

VelmarSamplePlugin::~VelmarSamplePlugin()
{
    // While this is still whole: the window's destructor speaks to it.
    delete m_editorWindow;
}

void VelmarSamplePlugin::setEditor(TarnKBX_MainWindow *editor)
{
    m_editorWindow = editor;
}

TarnKBX_MainWindow *VelmarSamplePlugin::editor() const
{
    return qobject_cast<TarnKBX_MainWindow *>(m_editorWindow);
}

QWidget *VelmarSamplePlugin::getPluginWidget()
{
    return m_editorWindow;
}

bool VelmarSamplePlugin::checkSnapshot(const QByteArray &snapshot)
{
    return editor() && editor()->checkSnapshot(snapshot);
}

void VelmarSamplePlugin::getSnapshot(QByteArray *out)
{
    if (TarnKBX_MainWindow *window = editor())
        window->getSnapshot(out);
}

void VelmarSamplePlugin::applySnapshot(QByteArray snapshot)
{
    if (TarnKBX_MainWindow *window = editor())
        window->applySnapshot(snapshot);
}

void VelmarSamplePlugin::loadPreset(int preset)
{
    if (TarnKBX_MainWindow *window = editor())
        window->loadPreset(preset);
}

void VelmarSamplePlugin::savePreset(int preset)
{
    if (TarnKBX_MainWindow *window = editor())
        window->savePreset(preset);
}

void VelmarSamplePlugin::recvVelmarAsciiMsg(QString dev_name, QByteArray bytes)
{
    if (dev_name != getDeviceName())
        return;
    const QPointer<VelmarSamplePlugin> alive(this);
    if (TarnKBX_MainWindow *window = editor())
        window->handleAsciiReply(dev_name, bytes);
    if (alive)
        PlexoPlugin::recvVelmarAsciiMsg(dev_name, bytes);
}

void VelmarSamplePlugin::recallPreset(int preset)
{
    loadPreset(preset);
}

void VelmarSamplePlugin::storePreset(int preset)
{
    savePreset(preset);
}

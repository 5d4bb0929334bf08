#pragma once

#include "dsp/strip_editor.h"

class QLineEdit;

// The six strip editors. Each is built with its number of channels and a section that outlives it.

/// Network receive channels.
class NetRxForm : public StripEditor
{
    Q_OBJECT

public:
    NetRxForm(uchar channels, const QJsonObject *section, QWidget *parent = nullptr);
};

/// USB playback channels, and the volume and mute that the USB host reports (hidden).
class UsbInForm : public StripEditor
{
    Q_OBJECT

public:
    UsbInForm(uchar channels, const QJsonObject *section, QWidget *parent = nullptr);

public slots:
    void onUsbMode(int ch, int type) override;
    void onUsbHostStatus(const QString &volume, const QString &mute);

private:
    QLineEdit *m_hostVolume = nullptr;
    QLineEdit *m_hostMute = nullptr;
};

/// Bluetooth input channels.
class BtInForm : public StripEditor
{
    Q_OBJECT

public:
    BtInForm(uchar channels, const QJsonObject *section, QWidget *parent = nullptr);
};

/// Network transmit channels.
class NetTxForm : public StripEditor
{
    Q_OBJECT

public:
    NetTxForm(uchar channels, const QJsonObject *section, QWidget *parent = nullptr);
};

/// USB record channels.
class UsbOutForm : public StripEditor
{
    Q_OBJECT

public:
    UsbOutForm(uchar channels, const QJsonObject *section, QWidget *parent = nullptr);

public slots:
    void onUsbMode(int ch, int type) override;
};

/// The Bluetooth output channel.
class BtOutForm : public StripEditor
{
    Q_OBJECT

public:
    BtOutForm(uchar channels, const QJsonObject *section, QWidget *parent = nullptr);
};

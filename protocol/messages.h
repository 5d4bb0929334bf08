#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

/// The control messages that the device understands, exactly as they go onto the wire. No terminator.
namespace message {

/// {"get":"/system/usb"}
QByteArray get(const QString &path);

/// {"set":"/control/identify","value":true}: compact JSON in UTF-8, members in ascending order.
QByteArray set(const QString &path, const QJsonValue &value);

/// {"set":"/preset/dsp/dante_rx/0/gain", "value":-12}: a text template with a blank after the comma.
QByteArray setNumber(const QString &path, int value);

/// {"set":"/control/save_preset", "value":"2"}: the number travels as a text.
QByteArray setQuotedNumber(const QString &path, int value);

/// Asks for level datagrams: {"set":"/control/req_metering", "value":100}
QByteArray requestMetering();

/// {"set":"/control/reboot", "value":true}
QByteArray reboot();

/// A gain in dB as the integer that is sent: truncated toward zero, and held inside the range of int.
int wholeGain(double gain);

} // namespace message

#pragma once

#include "devhost/request_watch.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QVector>

namespace devhost {

/// A change that a device refused, for the user.
struct RefusedChange
{
    QDateTime at;
    QString what; ///< such as "set /system/usb/mode to 2X2"
    QString reason; ///< the device's own words, shortened
};

/// What devices refused to change, until the user has seen it. Bounded in number and length.
class Refusals : public QObject
{
    Q_OBJECT

public:
    /// @p requests is not owned.
    explicit Refusals(const RequestWatch *requests, QObject *parent = nullptr);

    /// Since the user last looked.
    int count(const QString &device) const { return m_devices.value(device).count; }
    /// The last of them, the newest first.
    QVector<RefusedChange> latest(const QString &device) const { return m_devices.value(device).latest; }
    void clear(const QString &device);

signals:
    void changed(const QString &device);
    /// A sentence for the user.
    void refused(const QString &device, const QString &sentence);

private:
    struct Device
    {
        int count = 0;
        QVector<RefusedChange> latest;
    };

    void note(const Refusal &refusal);

    QHash<QString, Device> m_devices;
};

/// What a request asks for, in few words: "read /system/usb".
QString wordsFor(const RequestText &request);
/// The device's words, without the path where they begin with it.
QString reasonOf(const Refusal &refusal);
/// @p text from the network, as long as it may be in a sentence.
QString shortened(const QString &text);

} // namespace devhost

#pragma once

#include <QCryptographicHash>
#include <QMetaMethod>

namespace support {

/// Of the signals and slots that a class adds itself: hosts, forms and scripts connect to them by name and
/// number, so none may change or move. Shows them, so that a test that fails tells what there is instead.
inline QByteArray fingerprint(const QMetaObject *meta)
{
    QByteArray methods;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
        methods += meta->method(i).methodSignature().replace(' ', "") + '\n';
    qInfo("%s\n%s", meta->className(), methods.constData());
    return QCryptographicHash::hash(methods, QCryptographicHash::Md5).toHex();
}

} // namespace support

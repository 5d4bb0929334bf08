#pragma once

#include <QSharedPointer>
#include <QWeakPointer>

namespace vm {

/// The one instance of T that lives while somebody holds it. Unlike a plain global it is gone with its last
/// holder, so that a plugin can be unloaded without leaving a timer or a factory behind. GUI thread only.
template <typename T>
QSharedPointer<T> sharedInstance()
{
    static QWeakPointer<T> instance;
    QSharedPointer<T> held = instance.toStrongRef();
    if (!held) {
        held = QSharedPointer<T>::create();
        instance = held;
    }
    return held;
}

} // namespace vm

#pragma once

#include <QObject>
#include <QPointer>

/// A signal blocker for an object that may be destroyed while it is blocked.
class GuardedSignalBlocker
{
public:
    explicit GuardedSignalBlocker(QObject *object)
        : m_object(object)
        , m_wasBlocked(object && object->blockSignals(true))
    {
    }

    ~GuardedSignalBlocker()
    {
        if (m_object)
            m_object->blockSignals(m_wasBlocked);
    }

    Q_DISABLE_COPY(GuardedSignalBlocker)

private:
    QPointer<QObject> m_object;
    bool m_wasBlocked;
};

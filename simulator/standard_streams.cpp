#include "simulator/standard_streams.h"

#include <QFile>
#include <QMutex>
#include <QQueue>
#include <QSemaphore>
#include <QWaitCondition>

#include <thread>

namespace sim {

namespace {

constexpr int FarewellMs = 500;
constexpr int InputDescriptor = 0;

void writeAll(int descriptor, QByteArray bytes)
{
    QFile file;
    if (!file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return;
    for (qint64 written = 0; !bytes.isEmpty() && written >= 0; bytes.remove(0, int(qMax(written, qint64(0)))))
        written = file.write(bytes);
}

} // namespace

struct StandardStreams::Outbox
{
    struct Line
    {
        Target target;
        QByteArray bytes;
    };

    void writeForGood();

    QMutex mutex;
    QWaitCondition filled;
    QWaitCondition emptied;
    QQueue<Line> lines; ///< the first one is being written
    int lost = 0;
};

struct StandardStreams::Inbox
{
    void readAll(int mostBytes);
    bool deliver(const QByteArray &line);

    QMutex mutex;
    StandardStreams *owner; ///< null when it has gone
    QSemaphore taken;
};

void StandardStreams::Outbox::writeForGood()
{
    QMutexLocker locker(&mutex);
    for (;;) {
        while (lines.isEmpty())
            filled.wait(&mutex);
        const Line line = lines.head();
        locker.unlock();
        writeAll(line.target, line.bytes + '\n');
        locker.relock();
        lines.dequeue();
        if (lines.isEmpty() && lost > 0)
            lines.enqueue(
                {Output, "{\"cmd\":\"lost\",\"value\":" + QByteArray::number(std::exchange(lost, 0)) + '}'});
        emptied.wakeAll();
    }
}

/// One byte at a time, because a larger read would wait until there is so much.
void StandardStreams::Inbox::readAll(int mostBytes)
{
    QFile input;
    if (!input.open(InputDescriptor, QIODevice::ReadOnly | QIODevice::Unbuffered))
        return;
    QByteArray line;
    char byte = 0;
    while (input.read(&byte, 1) == 1) {
        if (byte != '\n') {
            if (line.size() <= mostBytes)
                line.append(byte);
        } else if (!deliver(std::exchange(line, {}))) {
            return;
        }
    }
}

bool StandardStreams::Inbox::deliver(const QByteArray &line)
{
    {
        const QMutexLocker locker(&mutex);
        if (!owner)
            return false;
        QMetaObject::invokeMethod(
            owner,
            [this, line] {
                emit owner->lineRead(line);
                taken.release();
            },
            Qt::QueuedConnection);
    }
    taken.acquire();
    return true;
}

StandardStreams::StandardStreams(QObject *parent)
    : QObject(parent)
    , m_outbox(std::make_shared<Outbox>())
    , m_inbox(std::make_shared<Inbox>())
{
    m_inbox->owner = this;
    std::thread([outbox = m_outbox] { outbox->writeForGood(); }).detach();
}

StandardStreams::~StandardStreams()
{
    {
        const QMutexLocker locker(&m_inbox->mutex);
        m_inbox->owner = nullptr;
    }
    QMutexLocker locker(&m_outbox->mutex);
    const QDeadlineTimer farewell(FarewellMs);
    while (!m_outbox->lines.isEmpty() && m_outbox->emptied.wait(&m_outbox->mutex, farewell)) { }
}

void StandardStreams::print(Target target, const QByteArray &line)
{
    const QMutexLocker locker(&m_outbox->mutex);
    if (m_outbox->lines.size() < MostLines) {
        m_outbox->lines.enqueue({target, line});
        m_outbox->filled.wakeOne();
    } else {
        ++m_outbox->lost;
    }
}

void StandardStreams::read(int mostBytes)
{
    std::thread([inbox = m_inbox, mostBytes] { inbox->readAll(mostBytes); }).detach();
}

} // namespace sim

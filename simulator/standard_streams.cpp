#include "simulator/standard_streams.h"

#include <QFile>
#include <QQueue>

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace sim {

namespace {

constexpr std::chrono::milliseconds Farewell{500};
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

    std::mutex mutex;
    std::condition_variable filled;
    std::condition_variable emptied;
    QQueue<Line> lines; ///< the first one is being written
    int lost = 0;
};

struct StandardStreams::Inbox
{
    void readAll(int mostBytes);
    bool deliver(const QByteArray &line);

    std::mutex mutex;
    std::condition_variable changed;
    StandardStreams *owner = nullptr; ///< null when it has gone
    QByteArray handed; ///< a line, to the owner
    bool isTaken = true;
};

void StandardStreams::Outbox::writeForGood()
{
    std::unique_lock<std::mutex> lock(mutex);
    for (;;) {
        filled.wait(lock, [this] { return !lines.isEmpty(); });
        const Line line = lines.head();
        lock.unlock();
        writeAll(line.target, line.bytes + '\n');
        lock.lock();
        lines.dequeue();
        if (lines.isEmpty() && lost > 0)
            lines.enqueue(
                {Output, "{\"cmd\":\"lost\",\"value\":" + QByteArray::number(std::exchange(lost, 0)) + '}'});
        emptied.notify_all();
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
    std::unique_lock<std::mutex> lock(mutex);
    if (!owner)
        return false;
    handed = line;
    isTaken = false;
    QMetaObject::invokeMethod(owner, "takeLine",
                              Qt::QueuedConnection); // by name: nothing is handed over in it
    changed.wait(lock, [this] { return isTaken || !owner; });
    return owner;
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
        const std::lock_guard<std::mutex> lock(m_inbox->mutex);
        m_inbox->owner = nullptr;
    }
    m_inbox->changed.notify_all();
    std::unique_lock<std::mutex> lock(m_outbox->mutex);
    m_outbox->emptied.wait_for(lock, Farewell, [this] { return m_outbox->lines.isEmpty(); });
}

void StandardStreams::takeLine()
{
    const std::shared_ptr<Inbox> inbox = m_inbox; // who hears of the line may destroy us
    std::unique_lock<std::mutex> lock(inbox->mutex);
    const QByteArray line = std::exchange(inbox->handed, {});
    lock.unlock();
    emit lineRead(line);
    lock.lock();
    inbox->isTaken = true;
    inbox->changed.notify_all();
}

void StandardStreams::print(Target target, const QByteArray &line)
{
    const std::lock_guard<std::mutex> lock(m_outbox->mutex);
    if (m_outbox->lines.size() < MostLines) {
        m_outbox->lines.enqueue({target, line});
        m_outbox->filled.notify_one();
    } else {
        ++m_outbox->lost;
    }
}

void StandardStreams::read(int mostBytes)
{
    std::thread([inbox = m_inbox, mostBytes] { inbox->readAll(mostBytes); }).detach();
}

} // namespace sim

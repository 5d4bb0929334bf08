#pragma once

#include <QObject>

#include <memory>

namespace sim {

/// The program's standard input and outputs, line by line, such that nobody at their other ends can hold the
/// program up: threads of their own read and write, and lines that nobody takes are dropped in the end.
class StandardStreams : public QObject
{
    Q_OBJECT

public:
    enum Target { Output = 1, Error = 2 };

    /// Lines that wait for their reader; what comes when there are as many is dropped.
    static constexpr int MostLines = 1000;

    explicit StandardStreams(QObject *parent = nullptr);

    /// Waits a moment for the last lines to go out.
    ~StandardStreams() override;

    void print(Target target, const QByteArray &line);

    /// Begins to read. Each line is taken before the next one is read. A line of more than @p mostBytes comes
    /// cut to one byte more; a last one without its end does not come.
    void read(int mostBytes);

signals:
    void lineRead(const QByteArray &line);

private:
    struct Outbox;
    struct Inbox;

    Q_INVOKABLE void takeLine();

    std::shared_ptr<Outbox> m_outbox; ///< shared with threads that outlive this object when they are blocked
    std::shared_ptr<Inbox> m_inbox;
};

} // namespace sim

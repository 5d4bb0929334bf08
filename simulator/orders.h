#pragma once

#include "simulator/message.h"
#include "simulator/parameter_tree.h"

#include <QJsonObject>
#include <QObject>

namespace sim {

/// What can be ordered of every device: faults, and whether it is there.
std::vector<Row> presenceOrders();

/// And of one that lives: its phone, its computer, its levels.
std::vector<Row> lifeOrders();

/// What somebody outside wants a simulated device to do while it runs. Orders are requests for a tree of
/// their own, one a line, in the words of the device's control link (docs/simulated-device.md).
class Orders : public QObject
{
    Q_OBJECT

public:
    /// A longer line is refused.
    static constexpr int MostBytes = 65536;

    Orders(const std::vector<Row> &table, const QJsonObject &faults, QObject *parent = nullptr);

    /// Carries an order out and gives the answer to it.
    QByteArray answer(const QByteArray &line);

    const ParameterTree &tree() const { return m_tree; }
    QJsonValue value(const QString &path) const { return m_tree.value(path); }

    /// What comes about without an order.
    void tell(const QString &path, const QJsonValue &value);

    /// Tells everything that is on.
    void tellAll();

signals:
    /// An order was taken; what it leaves out stays as it was.
    void changed(const QString &path, const QJsonValue &order);

    /// A line for whoever gives the orders.
    void said(const QByteArray &line);

private:
    Outcome outcomeOf(const QByteArray &line, const Request &request);
    void say(const QString &path);

    QStringList m_topPaths;
    ParameterTree m_tree;
};

} // namespace sim

#include "simulator/orders.h"

#include "simulator/tftp_faults.h"

#include <QJsonDocument>

namespace sim {

namespace {

constexpr Type Ms{Kind::Integer, 0, 3600000};
constexpr Type Probability{Kind::Fraction, 0, 1};
constexpr Type Level{Kind::Level, -100, 20};

constexpr char Channels[] = "dante_rx/0 dante_rx/1 dante_rx/2 dante_rx/3 usb_playback/0 usb_playback/1 "
                            "bt_sink/0 bt_sink/1 voice_cue/0 dante_tx/0 dante_tx/1 dante_tx/2 dante_tx/3 "
                            "usb_record/0 usb_record/1 bt_source/0";

} // namespace

std::vector<Row> presenceOrders()
{
    return {
        {"/faults/latency", Ms, "0"},
        {"/faults/jitter", Ms, "0"},
        {"/faults/drop", Probability, "0"},
        {"/faults/duplicate", Probability, "0"},
        {"/faults/reorder", Probability, "0"},
        {"/faults/garbage", Probability, "0"},
        {"/faults/refuse", {Kind::Text, 0, 1000}, R"("")"},
        {"/faults/vanish-after", {Kind::Integer, 0, 3600000}, "0"},
        {"/faults/return-after", Ms, "0"},
        {"/faults/tftp-fault", {Kind::Word, 0, 0, TftpFaultSettings::KindWords}, R"("none")"},
        {"/faults/tftp-drop", Probability, "0"},
        {"/faults/tftp-duplicate", Probability, "0"},
        {"/present", {Kind::Bool}, "true"},
    };
}

std::vector<Row> lifeOrders()
{
    return {
        {"/phone", {Kind::Word, 0, 0, "auto near away"}, R"("auto")"},
        {"/usb", {Kind::Word, 0, 0, "auto plugged unplugged"}, R"("auto")"},
        {"/levels/dante_rx/{4}", Level, "null"},
        {"/levels/usb_playback/{2}", Level, "null"},
        {"/levels/bt_sink/{2}", Level, "null"},
        {"/levels/voice_cue/{1}", Level, "null"},
        {"/levels/dante_tx/{4}", Level, "null"},
        {"/levels/usb_record/{2}", Level, "null"},
        {"/levels/bt_source/{1}", Level, "null"},
        {"/clip", {Kind::Word, 0, 0, Channels}, R"("")"},
    };
}

Orders::Orders(const std::vector<Row> &table, const QJsonObject &faults, QObject *parent)
    : QObject(parent)
    , m_tree(treeOf(table))
{
    for (const Row &row : table)
        m_topPaths << QString::fromLatin1(row.path).section(QLatin1Char('/'), 0, 1);
    m_topPaths.removeDuplicates();
    for (auto fault = faults.begin(); fault != faults.end(); ++fault)
        m_tree.put(QStringLiteral("/faults/") + fault.key(), fault.value());
}

QByteArray Orders::answer(const QByteArray &line)
{
    const Request request = parseRequest(line);
    return replyBytes(request, outcomeOf(line, request));
}

Outcome Orders::outcomeOf(const QByteArray &line, const Request &request)
{
    if (line.size() > MostBytes)
        return {{}, QStringLiteral("no request: the line is longer than %1 bytes").arg(MostBytes)};
    switch (request.kind) {
    case Request::Kind::Get:
        return m_tree.get(request.path);
    case Request::Kind::Set:
        break;
    case Request::Kind::Text:
        return {{}, QStringLiteral("no request: an order is a JSON object")};
    case Request::Kind::Bad:
        return {{}, request.text};
    }
    Outcome outcome = m_tree.set(request.path, request.value);
    if (outcome.accepted())
        emit changed(request.path, request.value);
    return outcome;
}

void Orders::tell(const QString &path, const QJsonValue &value)
{
    if (m_tree.value(path) == value)
        return;
    m_tree.put(path, value);
    say(path);
}

void Orders::tellAll()
{
    for (const QString &path : qAsConst(m_topPaths))
        say(path);
}

void Orders::say(const QString &path)
{
    const QJsonObject line{{QStringLiteral("cmd"), QStringLiteral("now")},
                           {QStringLiteral("param"), path},
                           {QStringLiteral("value"), m_tree.value(path)}};
    emit said(QJsonDocument(line).toJson(QJsonDocument::Compact));
}

} // namespace sim

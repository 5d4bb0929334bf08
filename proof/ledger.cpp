#include "proof/ledger.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace proof {

namespace {

constexpr int HistoryLength = 12;

QString text(const QJsonValue &value)
{
    return value.toVariant().toString();
}

/// Some switches travel as 0 and 1.
QJsonValue plain(const QString &path, const QJsonValue &value)
{
    const bool isSwitch = path.endsWith(QLatin1String("/mute")) || path.endsWith(QLatin1String("/enable"));
    return isSwitch && value.isDouble() ? QJsonValue(value.toInt() != 0) : value;
}

bool isExpectedBeforehand(const QString &path)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^/preset/dsp/(dante|usb|bt)_[a-z]+/\\d+/(gain|mute)$"
        "|^/system/(usb/priority|bluetooth/(enable|button|connection_mode|profile)|notifications/enable"
        "|voice_cue/\\d/enable|function_gen/enable)$"
        "|^/(system/(usb|bluetooth|voice_cue|function_gen)|preset/dsp/([a-z]+_[a-z]+|mixer/\\d))$"
        "|^/control/(bluetooth/(pair|disconnect|clear_list|play|pause|prev|next|vol_up|vol_down)"
        "|voice_cue/\\d/play)$"));
    return pattern.match(path).hasMatch();
}

} // namespace

void Ledger::record(const QString &path, const char *what, const QJsonValue &value)
{
    QStringList &entries = m_history[path];
    entries.append(QLatin1String(what) + text(value));
    if (entries.size() > HistoryLength)
        entries.removeFirst();
}

QString Ledger::history(const QString &path) const
{
    return path + QLatin1String(": ") + m_history.value(path).join(QLatin1String(", "));
}

void Ledger::expect(const QString &path, const QJsonValue &value)
{
    if (!isExpectedBeforehand(path))
        return;
    record(path, "due ", value);
    m_due[path].append(value);
}

void Ledger::note(const QByteArray &request)
{
    const bool repeats = m_mayRepeat > 0 && request == m_last;
    m_mayRepeat -= repeats ? 1 : 0;
    m_last = request;
    const QJsonObject message = QJsonDocument::fromJson(request).object();
    if (!repeats && message.contains(QLatin1String("get")) && !isSettled())
        complain(QStringLiteral("a query left before the user's act: ") + QString::fromUtf8(request));
    const QString path = message.value(QLatin1String("set")).toString();
    m_lastSent.insert(path, message.value(QLatin1String("value")));
    if (!isExpectedBeforehand(path))
        return;
    const QJsonValue value = plain(path, message.value(QLatin1String("value")));
    record(path, repeats ? "repeated " : "sent ", value);
    if (repeats)
        return;
    QList<QJsonValue> &due = m_due[path];
    if (!due.isEmpty() && due.first() == value) {
        due.removeFirst();
        ++m_matched;
    } else if (!m_forgiven[path].removeOne(value)) {
        m_problems.append(QStringLiteral("sent without, or in another order than, the user's act: ")
                          + history(path));
    }
}

void Ledger::noteAnswer(const QByteArray &answer)
{
    static const QRegularExpression unfit(QStringLiteral(": expected |is not one of|is not a whole number"));
    const QString result = QJsonDocument::fromJson(answer).object().value(QLatin1String("result")).toString();
    const bool isPort = result.contains(QLatin1String("/port: ")); // of which the user was warned
    const bool isShape = result.contains(QLatin1String("entries")); // of a snapshot of what was never read
    const bool isPreset = result.contains(QLatin1String("_preset: ")); // whose number is the host's
    if (result.contains(unfit) && !isPort && !isShape && !isPreset)
        complain(QStringLiteral("the device cannot take what was sent: ") + result);
}

void Ledger::forgive()
{
    m_mayRepeat = 0;
    for (auto due = m_due.begin(); due != m_due.end(); ++due) {
        for (const QJsonValue &value : due.value())
            record(due.key(), "forgiven ", value);
        m_forgiven[due.key()] += due.value();
        due.value().clear();
    }
}

bool Ledger::isSettled() const
{
    return std::all_of(m_due.begin(), m_due.end(), [](const auto &due) { return due.isEmpty(); });
}

QStringList Ledger::problems() const
{
    QStringList problems = m_problems;
    for (auto due = m_due.begin(); due != m_due.end(); ++due) {
        if (!due.value().isEmpty())
            problems.append(QStringLiteral("the user's act was not sent: ") + history(due.key()));
    }
    return problems;
}

} // namespace proof

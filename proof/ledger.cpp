#include "proof/ledger.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace proof {

namespace {

QString shown(const QString &path, const QJsonValue &value)
{
    return path
        + QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).prepend(' '));
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
        "|^/control/(bluetooth/(pair|disconnect|clear_list|play|pause|prev|next|vol_up|vol_down)"
        "|voice_cue/\\d/play)$"));
    return pattern.match(path).hasMatch();
}

} // namespace

void Ledger::expect(const QString &path, const QJsonValue &value)
{
    m_due[path].append(value);
}

void Ledger::note(const QByteArray &request)
{
    const bool repeats = m_mayRepeat > 0 && request == m_last;
    m_mayRepeat -= repeats ? 1 : 0;
    m_last = request;
    const QJsonObject message = QJsonDocument::fromJson(request).object();
    const QString path = message.value(QLatin1String("set")).toString();
    if (repeats || !isExpectedBeforehand(path))
        return;
    const QJsonValue value = plain(path, message.value(QLatin1String("value")));
    QList<QJsonValue> &due = m_due[path];
    if (!due.isEmpty() && due.first() == value) {
        due.removeFirst();
        ++m_matched;
    } else if (!m_forgiven[path].removeOne(value)) {
        m_problems.append(
            QStringLiteral("sent without, or in another order than, the user's act: %1, due: %2")
                .arg(shown(path, value),
                     due.isEmpty() ? QStringLiteral("nothing") : shown(path, due.first())));
    }
}

void Ledger::forgive()
{
    for (auto due = m_due.begin(); due != m_due.end(); ++due) {
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
        for (const QJsonValue &value : due.value())
            problems.append(QStringLiteral("the user's act was not sent: ") + shown(due.key(), value));
    }
    return problems;
}

} // namespace proof

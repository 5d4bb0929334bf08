#pragma once

#include "simulator/message.h"

#include <QJsonObject>
#include <QRandomGenerator>
#include <QString>

namespace sim {

/// What is to go wrong on the way between a host and the device. Probabilities are 0 to 1.
struct FaultSettings
{
    int latencyMs = 0; ///< every reply is this late
    int jitterMs = 0; ///< and up to this much more
    double drop = 0;
    double duplicate = 0;
    double reorder = 0;
    double garbage = 0;
    QString refuse; ///< paths that are refused, with the wildcards * and ?, after "set:" sets only; or empty
    int vanishAfter = 0; ///< requests answered before the device goes silent; 0 never
    int returnAfterMs = 0; ///< time until it comes back; 0 never
};

/// The settings under the names that the command line has for them, checked.
FaultSettings faultSettings(const QJsonObject &faults);

/// What happens to one request and its reply.
struct Fate
{
    bool loseRequest = false;
    bool loseReply = false;
    bool duplicate = false;
    bool reorder = false; ///< the reply goes out after the next one
    bool garbage = false; ///< other bytes go out in place of the reply
    int delayMs = 0;
};

/// Deals the fates. The sequence depends on the seed alone: every fate takes the same number of random
/// draws, so switching one fault on does not shift the others.
class FaultDealer
{
public:
    FaultDealer(const FaultSettings &settings, quint32 seed);

    void setSettings(const FaultSettings &settings) { m_settings = settings; }
    Fate next();
    QByteArray garbage(); ///< 1 to 200 random bytes

private:
    bool happens(double probability);

    FaultSettings m_settings;
    QRandomGenerator m_fates;
    QRandomGenerator m_noise;
};

/// Whether a request is one of those that FaultSettings::refuse names.
bool isRefused(const QString &refuse, const Request &request);
Outcome refusedOnRequest(const QString &refuse, const Request &request);

} // namespace sim

#pragma once

class QNetworkInterface;

/// Processes that announce devices which are nowhere else, so that what it takes to hear of them is measured
/// apart from what it takes to say so.
namespace proof {

/// Announces @p count devices, each once a second; does not return.
int announce(int count, const QNetworkInterface &interface);

/// Announces devices of ever new names, 10,000 a second as far as the machine can; does not return.
int flood(const QNetworkInterface &interface);

} // namespace proof

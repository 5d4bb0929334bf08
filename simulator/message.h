#pragma once

#include "simulator/schema.h"

#include <QByteArray>

namespace sim {

/// A control request as it came in.
struct Request
{
    enum class Kind {
        Get,
        Set,
        Text, ///< a plain command such as "LOAD 1\r", in `text`
        Bad ///< neither; `text` says why
    };

    Kind kind = Kind::Bad;
    QString path; ///< as written, also for a bad request where it could be read
    QJsonValue value; ///< of a set
    QString text;
};

/// "get" or "set"; empty for other kinds.
QString commandWord(Request::Kind kind);

/// Reads a request. Whatever begins with "{" is meant as JSON, everything else as a plain command.
Request parseRequest(const QByteArray &bytes);

/// The reply to a JSON request: compact UTF-8, members in key order, `value` only when it was carried out.
QByteArray replyBytes(const Request &request, const Outcome &outcome);

} // namespace sim

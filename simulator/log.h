#pragma once

#include <QLoggingCategory>

/// What happens to the device, one line an event, on the standard error stream.
Q_DECLARE_LOGGING_CATEGORY(simulatorLog)

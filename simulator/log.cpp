#include "simulator/log.h"

Q_LOGGING_CATEGORY(simulatorLog, "simulator")

#pragma once

#include "monitor/LinkHistory.h"

#include <QString>

// Describes the newest values of the plot for screen readers.
[[nodiscard]] QString describeNewest(const LinkHistory& history);

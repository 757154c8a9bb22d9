#pragma once

#include "monitor/LinkHistory.h"

#include <QString>

// The newest values of the plot in words, for those who hear it instead of seeing it.
[[nodiscard]] QString describeNewest(const LinkHistory& history);

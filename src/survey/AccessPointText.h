#pragma once

#include "survey/AccessPoint.h"

// The texts of a row as the list displays them, separated by tabs.
[[nodiscard]] QString tabSeparatedText(const AccessPoint& row);

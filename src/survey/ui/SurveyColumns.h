#pragma once

#include "platform/ui/CellModel.h"

#include <vector>

// The column of the picture that marks the joined network.
inline constexpr QStringView joinedColumn = u"pi";

// The columns of the list of networks. The identifiers of the others are the keys of AccessPoint.
[[nodiscard]] std::vector<TableColumn> surveyColumns();

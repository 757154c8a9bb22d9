#pragma once

#include <QString>

// The control socket of an instance: pellvane-sim/INSTANCE.control in the user's runtime directory.
[[nodiscard]] QString defaultControlPath(const QString& instance);

#pragma once

#include "survey/keys/KeyRules.h"

#include <QString>

#include <string_view>

// What to tell the user beside a key that is being typed: what is missing, or what it is. It only informs: what is
// refused is up to keyRefusal. Never shows any of the key.

// Empty where there is nothing to say: for a key that is neither typed nor selected, and without a format.
[[nodiscard]] QString wepKeyHint(const WepKeyControls& key, bool selected);

[[nodiscard]] QString presharedKeyHint(std::string_view text);

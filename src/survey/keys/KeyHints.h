#pragma once

#include "survey/keys/KeyRules.h"

#include <QString>

#include <string_view>

// Hints beside a key field while the user types: what is missing, or what the key is. They only inform; keyRefusal()
// decides. They never show any part of the key.

// Empty if no format is selected, and for an empty key that is not the transmit key.
[[nodiscard]] QString wepKeyHint(const WepKeyControls& key, bool selected);

// What becomes of a pre-shared key. Only a profile can hold 64 hexadecimal digits: in a direct connection the first 32
// characters of the text become the key, which is not the one that was meant.
enum class KeyUse { Profile, Connection };

[[nodiscard]] QString presharedKeyHint(std::string_view text, KeyUse use);

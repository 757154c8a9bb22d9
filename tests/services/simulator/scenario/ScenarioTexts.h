#pragma once

#include <string>

// The start of a network in a scenario.
inline const std::string nameless = "bssid = \"0A-00-00-00-00-01\"\n";
inline const std::string named = "ssid = \"Quay\"\n" + nameless;
inline const std::string wep = named + "security = \"wep\"\n";
inline const std::string wpaPsk = named + "security = \"wpa-psk\"\n";

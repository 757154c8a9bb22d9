"""The networks that the card meets: one of each kind, on both bands."""

import card
from access_points import AccessPoint

WPA_TKIP = ("wpa=1", "wpa_key_mgmt=WPA-PSK", "wpa_pairwise=TKIP")
WPA_AES = ("wpa=1", "wpa_key_mgmt=WPA-PSK", "wpa_pairwise=CCMP")
WPA2 = ("wpa=2", "wpa_key_mgmt=WPA-PSK", "rsn_pairwise=CCMP")
WPA_AND_WPA2 = ("wpa=3", "wpa_key_mgmt=WPA-PSK", "wpa_pairwise=TKIP", "rsn_pairwise=CCMP")
PROTECTED_MANAGEMENT = ("ieee80211w=2",)
WPA3 = ("wpa=2", "wpa_key_mgmt=SAE", "rsn_pairwise=CCMP", "ieee80211w=2", "sae_password=only by equals")
ENTERPRISE = ("wpa=2", "wpa_key_mgmt=WPA-EAP", "rsn_pairwise=CCMP", "ieee8021x=1", "auth_server_addr=127.0.0.1",
              "auth_server_shared_secret=unused")

OPEN = AccessPoint(1, b"Quay", 1, "open")
WEP_40 = AccessPoint(2, b"Pearl", 6, "WEP 40, open, key 1").with_wep({0: b"pearl"})
WEP_40_SHARED = AccessPoint(3, b"Reef", 4, "WEP 40, shared, key 4").with_wep(
    {index: bytes([0x40 + index] * 5) for index in range(4)}, transmit=3, shared=True)
WEP_104 = AccessPoint(4, b"Lighthouse", 40, "WEP 104, open, key 2").with_wep(
    {0: b"thirteenbytes", 1: b"lighthousekey"}, transmit=1)
WEP_104_SHARED = AccessPoint(5, b"Master", 2, "WEP 104, shared, key 3").with_wep(
    {2: bytes(range(13))}, transmit=2, shared=True)
TKIP = AccessPoint(6, b"Anchor", 3, "WPA-PSK TKIP").with_passphrase("anchor and chain", *WPA_TKIP, cipher=card.TKIP)
WPA = AccessPoint(7, b"Vane", 36, "WPA-PSK AES on 5 GHz").with_passphrase("weather vane", *WPA_AES)
MODERN = AccessPoint(8, b"Compass", 11, "WPA2-PSK").with_passphrase("north by northwest", *WPA2)
MIXED = AccessPoint(9, b"Both Tides", 149, "WPA-PSK and WPA2-PSK on 5 GHz").with_passphrase(
    "ebb and flow", *WPA_AND_WPA2, cipher=card.TKIP)
HIDDEN = AccessPoint(10, b"Smuggler", 9, "open, hidden", hidden=True)
HIDDEN_MODERN = AccessPoint(11, b"Cellar", 44, "WPA2-PSK, hidden, 5 GHz", hidden=True).with_passphrase(
    "behind the casks", *WPA2)
PROTECTED = AccessPoint(12, b"Strongbox", 157, "WPA2-PSK with protected management frames").with_passphrase(
    "bolted to the deck", *WPA2, *PROTECTED_MANAGEMENT)
TRANSITION = AccessPoint(19, b"Old Harbour", 153, "WPA2-PSK and WPA3").with_passphrase(
    "both gates open", "wpa=2", "wpa_key_mgmt=WPA-PSK SAE", "rsn_pairwise=CCMP", "ieee80211w=1",
    "sae_password=both gates open")
ODD_NAME = AccessPoint(13, b"\x1b[2J %s \xff\xc3\xa9 \x80", 5, "open, odd name")
LONG_NAME = AccessPoint(14, b"Thirty-two bytes of network name", 7, "open, long name")
EQUALS = AccessPoint(15, b"Equals", 48, "WPA3 only").with_settings("WPA AES", *WPA3)
OFFICE = AccessPoint(16, b"Office", 8, "802.1X").with_settings("WPA AES", *ENTERPRISE)
# For the tests that change their signals and channels.
NEAR_AND_FAR = AccessPoint(17, b"Buoy", 10, "WPA2-PSK").with_passphrase("red to port", *WPA2)
FAR_AND_NEAR = AccessPoint(18, b"Sextant", 11, "WPA2-PSK").with_passphrase("noon sight", *WPA2)
# Two access points of one network.
ROAMING = [AccessPoint(20 + index, b"Ferry", channel, "WPA2-PSK").with_passphrase("port and starboard", *WPA2)
           for index, channel in enumerate((8, 161))]

CHANGING = [NEAR_AND_FAR, FAR_AND_NEAR, *ROAMING]

ALL = [OPEN, WEP_40, WEP_40_SHARED, WEP_104, WEP_104_SHARED, TKIP, WPA, MODERN, MIXED, HIDDEN, HIDDEN_MODERN, PROTECTED,
       TRANSITION, ODD_NAME, LONG_NAME, EQUALS, OFFICE, *CHANGING]
JOINABLE = [network for network in ALL if network not in (EQUALS, OFFICE, *CHANGING)]

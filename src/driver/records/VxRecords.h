#pragma once

#include <cstddef>
#include <cstdint>

// The driver-private records. They match the wire format byte for byte; integers are in host byte order.

struct VX_802_11_STA_CONFIG {
    std::uint32_t EnableTxBurst; // 0 or 1
    std::uint32_t EnableTurboRate; // 0 or 1
    std::uint32_t UseBGProtection; // 802.11b/g protection setting
    std::uint32_t UseShortSlotTime; // 0 or 1
    std::uint32_t UseOfdmRatesIn11gAdhoc; // 0 or 1
    std::uint32_t HwRadioStatus; // hardware radio switch: 0 off
    std::uint32_t Rsv1;
    std::uint32_t SystemErrorBitmap; // bit 0: the card failed to initialise
};
static_assert(sizeof(VX_802_11_STA_CONFIG) == 32);
static_assert(offsetof(VX_802_11_STA_CONFIG, EnableTxBurst) == 0);
static_assert(offsetof(VX_802_11_STA_CONFIG, EnableTurboRate) == 4);
static_assert(offsetof(VX_802_11_STA_CONFIG, UseBGProtection) == 8);
static_assert(offsetof(VX_802_11_STA_CONFIG, UseShortSlotTime) == 12);
static_assert(offsetof(VX_802_11_STA_CONFIG, UseOfdmRatesIn11gAdhoc) == 16);
static_assert(offsetof(VX_802_11_STA_CONFIG, HwRadioStatus) == 20);
static_assert(offsetof(VX_802_11_STA_CONFIG, Rsv1) == 24);
static_assert(offsetof(VX_802_11_STA_CONFIG, SystemErrorBitmap) == 28);

struct VX_802_11_LINK_COUNTERS {
    std::uint32_t TxRate; // current transmit rate in units of 500 kbit/s
    std::uint32_t ChannelQuality; // raw value; the link quality is computed from it
    std::uint32_t TxCount; // bytes sent; wraps around
    std::uint32_t RxCount; // bytes received; wraps around
};
static_assert(sizeof(VX_802_11_LINK_COUNTERS) == 16);
static_assert(offsetof(VX_802_11_LINK_COUNTERS, TxRate) == 0);
static_assert(offsetof(VX_802_11_LINK_COUNTERS, ChannelQuality) == 4);
static_assert(offsetof(VX_802_11_LINK_COUNTERS, TxCount) == 8);
static_assert(offsetof(VX_802_11_LINK_COUNTERS, RxCount) == 12);

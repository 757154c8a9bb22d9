#pragma once

// How the radio switches of a device stand.
struct RadioPosition {
    bool isSoftBlocked { false };
    bool isHardBlocked { false };
};

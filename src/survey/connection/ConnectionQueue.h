#pragma once

#include <memory>

struct PROFILE_DATA;

// Where a profile hands in the connection it describes.
class ConnectionQueue {
public:
    virtual ~ConnectionQueue() = default;

    // Queues the connection that the record describes; the next tick of the site survey makes it.
    virtual void SetTaskQueue(std::unique_ptr<PROFILE_DATA> record) = 0;
    // Forgets how the last connection of the site survey was made, so that nothing is expected of it any more.
    virtual void resetFlag() = 0;
};

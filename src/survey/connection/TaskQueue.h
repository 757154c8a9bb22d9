#pragma once

#include <deque>
#include <memory>

class ProfileData;

// The process-wide queue of connection tasks: first in, first out. Null until the one TaskQueue is created; until
// then nothing can be inserted and there is nothing to get.
using ConnectionTaskQueue = std::deque<std::shared_ptr<ProfileData>>;
extern std::unique_ptr<ConnectionTaskQueue> ProfileDataQueue;

class TaskQueue {
public:
    TaskQueue(); // begins with an empty queue

    // A task that is inserted before there is a queue goes at once.
    static void InsertTaskObject(std::shared_ptr<ProfileData> task);
    // The oldest task; null when the queue is empty. It stays queued.
    [[nodiscard]] static std::shared_ptr<ProfileData> GetTaskObject();
    // Takes the oldest task away; harmless when the queue is empty.
    static void RemoveTaskObject();
};

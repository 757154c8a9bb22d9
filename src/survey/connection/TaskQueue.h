#pragma once

#include <deque>
#include <memory>

class ProfileData;

// The process-wide queue of connection tasks: first in, first out. Null until the TaskQueue is created.
using ConnectionTaskQueue = std::deque<std::shared_ptr<ProfileData>>;
extern std::unique_ptr<ConnectionTaskQueue> ProfileDataQueue;

class TaskQueue {
public:
    TaskQueue(); // creates the empty queue

    // Without a queue the task is discarded.
    static void InsertTaskObject(std::shared_ptr<ProfileData> task);
    // The oldest task, which stays queued; null if the queue is empty.
    [[nodiscard]] static std::shared_ptr<ProfileData> GetTaskObject();
    // Removes the oldest task; a no-op if the queue is empty.
    static void RemoveTaskObject();
};

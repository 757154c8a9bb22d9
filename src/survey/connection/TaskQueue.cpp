#include "survey/connection/TaskQueue.h"

#include "survey/connection/ProfileData.h"

#include <utility>

std::unique_ptr<ConnectionTaskQueue> ProfileDataQueue;

TaskQueue::TaskQueue()
{
    ProfileDataQueue = std::make_unique<ConnectionTaskQueue>();
}

void TaskQueue::InsertTaskObject(std::shared_ptr<ProfileData> task)
{
    if (ProfileDataQueue)
        ProfileDataQueue->push_front(std::move(task));
}

std::shared_ptr<ProfileData> TaskQueue::GetTaskObject()
{
    return ProfileDataQueue && !ProfileDataQueue->empty() ? ProfileDataQueue->back() : nullptr;
}

void TaskQueue::RemoveTaskObject()
{
    if (ProfileDataQueue && !ProfileDataQueue->empty())
        ProfileDataQueue->pop_back();
}

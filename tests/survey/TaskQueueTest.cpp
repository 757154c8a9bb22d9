#include "survey/TaskQueue.h"

#include "survey/ProfileData.h"

#include <gtest/gtest.h>

namespace {

std::shared_ptr<ProfileData> task(std::int32_t type)
{
    std::shared_ptr<ProfileData> result = ProfileData::setProfileData(std::make_unique<PROFILE_DATA>());
    result->setTaskType(type);
    return result;
}

TEST(TaskQueue, RunsTasksInTheOrderTheyWereInserted)
{
    const TaskQueue queue;
    TaskQueue::InsertTaskObject(task(2));
    TaskQueue::InsertTaskObject(task(1));
    EXPECT_EQ(TaskQueue::GetTaskObject()->getTaskType(), 2);
    TaskQueue::RemoveTaskObject();
    EXPECT_EQ(TaskQueue::GetTaskObject()->getTaskType(), 1);
    TaskQueue::RemoveTaskObject();
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
}

TEST(TaskQueue, KeepsATaskUntilItIsRemoved)
{
    const TaskQueue queue;
    TaskQueue::InsertTaskObject(task(1));
    EXPECT_EQ(TaskQueue::GetTaskObject(), TaskQueue::GetTaskObject());
    EXPECT_EQ(ProfileDataQueue->size(), 1U);
}

TEST(TaskQueue, TakesNothingFromAnEmptyQueueCalmly)
{
    const TaskQueue queue;
    TaskQueue::RemoveTaskObject();
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
}

TEST(TaskQueue, HoldsNothingBeforeItIsCreated)
{
    ProfileDataQueue.reset();
    TaskQueue::InsertTaskObject(task(1));
    TaskQueue::RemoveTaskObject();
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
    const TaskQueue queue;
    EXPECT_TRUE(ProfileDataQueue->empty());
}

TEST(ProfileData, HoldsAPlaceholderRecordUntilItIsGivenOne)
{
    ProfileData data;
    ASSERT_NE(data.Profile(), nullptr);
    auto record = std::make_unique<PROFILE_DATA>();
    record->TxPower = 3;
    const PROFILE_DATA* const given = record.get();
    data.setProfile(std::move(record));
    EXPECT_EQ(data.Profile(), given);
    data.setProfile(nullptr);
    EXPECT_EQ(data.Profile(), nullptr);
}

TEST(ProfileData, WritesTheSameTwoLinesWhenItTakesARecordAndWhenItGoes)
{
    testing::internal::CaptureStderr();
    {
        ProfileData data;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        testing::internal::CaptureStderr();
        data.setProfile(std::make_unique<PROFILE_DATA>());
        EXPECT_EQ(
            testing::internal::GetCapturedStderr(), "ProfileDat - setProfile - start\nProfileDat - setProfile - end\n");
        testing::internal::CaptureStderr();
    }
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "ProfileDat - setProfile - start\nProfileDat - setProfile - end\n");
}

} // namespace

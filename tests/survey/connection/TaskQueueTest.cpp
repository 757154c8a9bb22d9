#include "survey/connection/TaskQueue.h"

#include "survey/connection/ProfileData.h"
#include "tests/support/StandardErrorOf.h"
#include "tests/survey/InitialSurveyState.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

std::shared_ptr<ProfileData> task(std::int32_t type)
{
    std::shared_ptr<ProfileData> result = ProfileData::setProfileData(std::make_unique<PROFILE_DATA>());
    result->setTaskType(type);
    return result;
}

TEST(TaskQueue, RunsTasksInInsertionOrder)
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

TEST(TaskQueue, RemovingFromAnEmptyQueueIsANoOp)
{
    const TaskQueue queue;
    TaskQueue::RemoveTaskObject();
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
}

TEST(TaskQueue, DiscardsTasksBeforeItIsCreated)
{
    const InitialSurveyState initialState;
    TaskQueue::InsertTaskObject(task(1));
    TaskQueue::RemoveTaskObject();
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
    const TaskQueue queue;
    EXPECT_TRUE(ProfileDataQueue->empty());
}

TEST(ProfileData, StartsWithAPlaceholderRecord)
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

TEST(ProfileData, WritesTheSameTwoLinesOnSetProfileAndOnDestruction)
{
    const std::string bothLines = "ProfileDat - setProfile - start\nProfileDat - setProfile - end\n";
    std::optional<ProfileData> data;
    EXPECT_EQ(standardErrorOf([&] { data.emplace(); }), "");
    EXPECT_EQ(standardErrorOf([&] { data->setProfile(std::make_unique<PROFILE_DATA>()); }), bothLines);
    EXPECT_EQ(standardErrorOf([&] { data.reset(); }), bothLines);
}

} // namespace

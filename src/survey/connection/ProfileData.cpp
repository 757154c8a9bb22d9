#include "survey/connection/ProfileData.h"

#include "app/shared/Trace.h"

#include <utility>

namespace {

// setProfile() and the destructor write the same two lines.
void traceStart()
{
    traceAlways("ProfileDat - setProfile - start\n");
}

void traceEnd()
{
    traceAlways("ProfileDat - setProfile - end\n");
}

} // namespace

std::unique_ptr<ProfileData> ProfileData::setProfileData(std::unique_ptr<PROFILE_DATA> record)
{
    auto task = std::make_unique<ProfileData>();
    task->setProfile(std::move(record));
    return task;
}

ProfileData::ProfileData()
    : m_profile(std::make_unique<PROFILE_DATA>())
{
}

ProfileData::~ProfileData()
{
    traceStart();
    m_profile.reset();
    traceEnd();
}

void ProfileData::setProfile(std::unique_ptr<PROFILE_DATA> record)
{
    traceStart();
    m_profile = std::move(record);
    traceEnd();
}

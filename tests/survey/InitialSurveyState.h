#pragma once

#include "survey/connection/TaskQueue.h"
#include "tests/support/InitialSharedState.h"

// The shared flags and the queue of connection tasks, which there is none of yet, as they are when the program starts,
// at the beginning and at the end of a test that has one of these.
class InitialSurveyState {
public:
    InitialSurveyState() { ProfileDataQueue.reset(); }
    ~InitialSurveyState() { ProfileDataQueue.reset(); }
    InitialSurveyState(const InitialSurveyState&) = delete;
    InitialSurveyState& operator=(const InitialSurveyState&) = delete;

private:
    InitialSharedState m_flags;
};

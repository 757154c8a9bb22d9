#pragma once

#include "survey/connection/TaskQueue.h"
#include "tests/support/InitialSharedState.h"

#include <QtGlobal>

// Resets the shared flags to their initial values and removes the task queue,
// at the start and at the end of a test.
class InitialSurveyState {
public:
    InitialSurveyState() { ProfileDataQueue.reset(); }
    ~InitialSurveyState() { ProfileDataQueue.reset(); }
    Q_DISABLE_COPY_MOVE(InitialSurveyState)

private:
    InitialSharedState m_flags;
};

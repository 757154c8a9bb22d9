#pragma once

#include "survey/connection/ConnectionTasks.h"

class IdleList final : public SurveyList {
public:
    void RefreshAPList() override { }
    void reloadData() override { }
};

#include "platform/StandardAssertionHandler.h"

#include <gtest/gtest.h>

namespace {

TEST(StandardAssertionHandler, WritesOneLineAndLetsNothingGoOn)
{
    StandardAssertionHandler handler;
    testing::internal::CaptureStderr();
    const bool goOn = handler.handleFailureInMethod(
        "RescanTimeFunc", "SiteSurveyPageController", "SiteSurveyPageController", 978, invalidParameter);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "*** Assertion failure in SiteSurveyPageController - RescanTimeFunc, SiteSurveyPageController:978: "
        "Invalid parameter not satisfying: FALSE\n");
    EXPECT_FALSE(goOn);
}

} // namespace

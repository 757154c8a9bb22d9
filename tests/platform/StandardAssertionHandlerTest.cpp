#include "platform/StandardAssertionHandler.h"

#include "tests/support/StandardErrorOf.h"

#include <gtest/gtest.h>

namespace {

TEST(StandardAssertionHandler, WritesOneLineAndAborts)
{
    StandardAssertionHandler handler;
    bool shouldContinue = true;
    const std::string written = standardErrorOf([&] {
        shouldContinue = handler.handleFailureInMethod(
            "RescanTimeFunc", "SiteSurveyPageController", "SiteSurveyPageController", 978, invalidParameter);
    });
    EXPECT_EQ(written,
        "*** Assertion failure in SiteSurveyPageController - RescanTimeFunc, SiteSurveyPageController:978: "
        "Invalid parameter not satisfying: FALSE\n");
    EXPECT_FALSE(shouldContinue);
}

} // namespace

#include "survey/ui/HiddenSSIDController.h"
#include "survey/ui/SheetReceivers.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "survey/ui/WEPSettingController.h"
#include "tests/support/DebugTraces.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/survey/SurveyFixture.h"

namespace {

class Receiver final : public SecuritySettingsReceiver, public HiddenSSIDReceiver {
public:
    void ReceiveWEPsetting(const SecuritySettings& /*settings*/) override { }
    void ReceiveHiddenSSID(const std::string& /*HiddenSSIDtext*/) override { }
};

class SurveyTraces : public SurveyFixture {
protected:
    ManualRunLoop runLoop;
    RecordingAssertionHandler assertions;
    ScriptedModalSheets sheets;
    Receiver receiver;
};

TEST_F(SurveyTraces, PageTellsOfEachOperationOnce)
{
    SiteSurveyPageController page(adapter, runLoop, assertions, alerts, sheets);
    const auto lines
        = [](const std::vector<std::string>& methods) { return entries("SiteSurveyPageController", methods); };
    EXPECT_EQ(traced(true, [&] { page.RefreshAPList(); }), lines({ "RefreshAPList" }));
    EXPECT_EQ(traced(true, [&] { page.ClearAPList(); }), lines({ "ClearAPList" }));
    EXPECT_EQ(traced(true, [&] { page.StartSiteSurveyTimer(); }), lines({ "StartSiteSurveyTimer" }));
    EXPECT_EQ(traced(true, [&] { page.StopSiteSurveyTimer(); }), lines({ "StopSiteSurveyTimer" }));
    EXPECT_EQ(traced(true, [&] { page.resetFlag(); }), lines({ "resetFlag" }));
    EXPECT_EQ(traced(true, [&] { page.UpdateConnectStatus({}); }), lines({ "UpdateConnectStatus" }));
    EXPECT_EQ(traced(true, [&] { page.OnConnect(); }), lines({ "OnConnect" }));
    EXPECT_EQ(traced(true, [&] { page.OnAddProfile(); }), lines({ "OnAddProfile" }));
    EXPECT_EQ(traced(false, [&] { page.RefreshAPList(); }), "");
}

TEST_F(SurveyTraces, SheetsTellOfTheirOperationsAndOfNoKey)
{
    WEPSettingController sheet(sheets, alerts, receiver);
    const auto lines = [](const std::vector<std::string>& methods) { return entries("WEPSettingController", methods); };
    EXPECT_EQ(traced(true, [&] { sheet.awakeFromNib(); }),
        lines({ "awakeFromNib", "OnSelchangeAuthType", "OnSelchangeEncryptionType", "OnSelchangeEncryptionType" }));
    EXPECT_EQ(traced(true, [&] { sheet.setAuthenTypeComboText(1); }), lines({ "setAuthenTypeComboText" }));
    EXPECT_EQ(traced(true, [&] { sheet.OnAuthType(); }),
        lines({ "OnAuthType", "OnSelchangeAuthType", "OnSelchangeEncryptionType" }));
    EXPECT_EQ(traced(true, [&] { sheet.OnOK(); }), lines({ "OnOK", "VerifyKey" }));
    EXPECT_EQ(traced(true, [&] { sheet.OnCANCEL(); }), lines({ "OnCANCEL" }));

    HiddenSSIDController hidden(sheets, receiver);
    EXPECT_EQ(traced(true, [&] { hidden.OnOK(); }), entries("HiddenSSIDController", { "OnOK" }));
    EXPECT_EQ(traced(true, [&] { hidden.OnCANCEL(); }), entries("HiddenSSIDController", { "OnCANCEL" }));
}

} // namespace

#include "survey/ui/HiddenSSIDController.h"
#include "survey/ui/SheetReceivers.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "survey/ui/WEPSettingController.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/support/StandardErrorOf.h"
#include "tests/survey/SurveyFixture.h"

namespace {

class Receiver final : public SecuritySettingsReceiver, public HiddenSSIDReceiver {
public:
    void ReceiveWEPsetting(const SecuritySettings& /*settings*/) override { }
    void ReceiveHiddenSSID(const NetworkName& /*HiddenSSIDtext*/) override { }
};

class SurveyTraces : public SurveyFixture {
protected:
    ManualRunLoop runLoop;
    RecordingAssertionHandler assertions;
    ScriptedModalSheets sheets;
    Receiver receiver;
};

TEST_F(SurveyTraces, PageTracesEachOperationOnce)
{
    SiteSurveyPageController page(adapter, runLoop, assertions, alerts, sheets);
    const auto lines
        = [](const std::vector<std::string>& methods) { return entryLines("SiteSurveyPageController", methods); };
    EXPECT_EQ(tracesOf([&] { page.RefreshAPList(); }), lines({ "RefreshAPList" }));
    EXPECT_EQ(tracesOf([&] { page.ClearAPList(); }), lines({ "ClearAPList" }));
    EXPECT_EQ(tracesOf([&] { page.StartSiteSurveyTimer(); }), lines({ "StartSiteSurveyTimer" }));
    EXPECT_EQ(tracesOf([&] { page.StopSiteSurveyTimer(); }), lines({ "StopSiteSurveyTimer" }));
    EXPECT_EQ(tracesOf([&] { page.resetFlag(); }), lines({ "resetFlag" }));
    EXPECT_EQ(tracesOf([&] { page.UpdateConnectStatus({}); }), lines({ "UpdateConnectStatus" }));
    EXPECT_EQ(tracesOf([&] { page.OnConnect(); }), lines({ "OnConnect" }));
    EXPECT_EQ(tracesOf([&] { page.OnAddProfile(); }), lines({ "OnAddProfile" }));
    EXPECT_EQ(standardErrorOf([&] { page.RefreshAPList(); }), "");
}

TEST_F(SurveyTraces, SheetsTraceTheirOperationsWithoutKeys)
{
    WEPSettingController sheet(sheets, alerts, receiver);
    const auto lines
        = [](const std::vector<std::string>& methods) { return entryLines("WEPSettingController", methods); };
    EXPECT_EQ(tracesOf([&] { sheet.awakeFromNib(); }),
        lines({ "awakeFromNib", "OnSelchangeAuthType", "OnSelchangeEncryptionType", "OnSelchangeEncryptionType" }));
    EXPECT_EQ(tracesOf([&] { sheet.setAuthenTypeComboText(1); }), lines({ "setAuthenTypeComboText" }));
    EXPECT_EQ(tracesOf([&] { sheet.OnAuthType(); }),
        lines({ "OnAuthType", "OnSelchangeAuthType", "OnSelchangeEncryptionType" }));
    EXPECT_EQ(tracesOf([&] { sheet.OnOK(); }), lines({ "OnOK", "VerifyKey" }));
    EXPECT_EQ(tracesOf([&] { sheet.OnCANCEL(); }), lines({ "OnCANCEL" }));

    HiddenSSIDController hidden(sheets, receiver);
    EXPECT_EQ(tracesOf([&] { hidden.OnOK(); }), entryLines("HiddenSSIDController", { "OnOK" }));
    EXPECT_EQ(tracesOf([&] { hidden.OnCANCEL(); }), entryLines("HiddenSSIDController", { "OnCANCEL" }));
}

} // namespace

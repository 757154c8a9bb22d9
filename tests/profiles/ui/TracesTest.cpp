#include "tests/profiles/ui/ProfileEditorFixture.h"
#include "tests/profiles/ui/ProfilePageFixture.h"
#include "tests/support/StandardErrorOf.h"

namespace {

class ProfilePageTraces : public ProfilePageFixture {
protected:
    static std::string lines(const std::vector<std::string>& methods)
    {
        return entryLines("ProfilePageController", methods);
    }
};

TEST_F(ProfilePageTraces, EveryOperationIsTraced)
{
    EXPECT_EQ(tracesOf([this] { page.OnTimer(); }), lines({ "OnTimer" }));
    EXPECT_EQ(tracesOf([this] { page.ClearProfileList(); }), lines({ "ClearProfileList" }));
    EXPECT_EQ(tracesOf([this] { page.RefreshProfileList(); }), lines({ "RefreshProfileList", "ClearProfileList" }));
    EXPECT_EQ(tracesOf([this] { page.OnEdit(); }), lines({ "OnEdit" }));
    EXPECT_EQ(tracesOf([this] { page.OnDelete(); }), lines({ "OnDelete" }));
    EXPECT_EQ(tracesOf([this] { page.OnActivate(); }), lines({ "OnActivate" }));
    EXPECT_EQ(tracesOf([this] { page.DisabledActivateProfile(); }), lines({ "DisabledActivateProfile" }));
}

TEST_F(ProfilePageTraces, CreationIsTraced)
{
    std::unique_ptr<ProfilePageController> made;
    EXPECT_EQ(tracesOf([&] {
        made = std::make_unique<ProfilePageController>(adapter, runLoop, alerts, sheets, store, connections);
    }),
        lines({ "init" }));
    EXPECT_EQ(tracesOf([&] { made->awakeFromNib(); }),
        lines({ "awakeFromNib" }) + entryLines("ProfileEditorController", { "awakeFromNib" }));
}

TEST_F(ProfilePageTraces, AddTracesTheEditorAndTheReload)
{
    G_bDeviceExist = 0;
    EXPECT_EQ(tracesOf([this] { page.OnAdd(); }), lines({ "OnAdd" }));
    G_bDeviceExist = 1;
    const auto cancel = [](QDialog& sheet) { pressButton(sheet, QDialogButtonBox::Cancel); };
    sheets.users.emplace_back(cancel);
    const std::string added = tracesOf([this] { page.OnAdd(); });
    EXPECT_EQ(linesOf("ProfilePageController", added), lines({ "OnAdd", "RefreshProfileList", "ClearProfileList" }));
    EXPECT_NE(added.find(entryLines("ProfileEditorController", { "AddInit" })), std::string::npos);
    EXPECT_NE(added.find(entryLines("ProfileEditorController", { "OnCANCEL" })), std::string::npos);
}

TEST_F(ProfilePageTraces, AutomaticConnectionIsTracedWithAndWithoutAnActiveProfile)
{
    EXPECT_EQ(tracesOf([this] { page.CheckProfileSettingForConnect(); }), lines({ "CheckProfileSettingForConnect" }));
    haveProfiles({ sampleProfile() });
    table->selectRowNumber(0);
    page.OnActivate();
    const std::string taken = tracesOf([this] { page.CheckProfileSettingForConnect(); });
    EXPECT_EQ(linesOf("ProfilePageController", taken), lines({ "CheckProfileSettingForConnect" }));
    EXPECT_EQ(connections.records.size(), 2u);
}

TEST_F(ProfilePageTraces, NothingIsTracedWithoutTheDebugFlag)
{
    const auto everything = [this] {
        page.OnTimer();
        page.RefreshProfileList();
        page.OnEdit();
        page.OnDelete();
        page.OnActivate();
    };
    EXPECT_EQ(standardErrorOf(everything), "");
}

class ProfileEditorTraces : public ProfileEditorFixture {
protected:
    static std::string lines(const std::vector<std::string>& methods)
    {
        return entryLines("ProfileEditorController", methods);
    }
};

TEST_F(ProfileEditorTraces, OpeningsTraceTheirOperations)
{
    EXPECT_EQ(tracesOf([this] { editor.AddInit(); }),
        lines({ "AddInit", "GetBssidList", "GetNextProfileName", "OnSelchangeAuthType", "OnSelchangeEncryptionType",
            "OnSelchangeEncryptionType" }));
    editor.OnOK();
    EXPECT_EQ(tracesOf([this] { editor.EditInit(0); }),
        lines(
            { "EditInit", "OnNetworkType", "setAuthenTypeComboText", "OnSelchangeAuthType", "OnSelchangeEncryptionType",
                "OnSelchangeAuthType", "OnSelchangeEncryptionType", "OnSelchangeEncryptionType", "GetBssidList" }));
    EXPECT_EQ(tracesOf([this] { EXPECT_TRUE(editor.AddProfile({})); }),
        lines({ "AddProfile", "GetNextProfileName", "OnSelchangeAuthType", "OnSelchangeEncryptionType",
            "OnSelchangeEncryptionType", "GetBssidList" }));
}

TEST_F(ProfileEditorTraces, ClosingTracesItsStepsWithoutKeys)
{
    editor.AddInit();
    choose(combo(u"AuthenType"_qs), 2);
    type(field(u"WPAPreSharedKey"_qs), u"north by northwest"_qs);
    EXPECT_EQ(tracesOf([this] { editor.OnOK(); }), lines({ "OnOK", "VerifyKey", "createProfileData", "saveProfile" }));
    editor.AddInit();
    EXPECT_EQ(tracesOf([this] { editor.OnCANCEL(); }), lines({ "OnCANCEL" }));
}

TEST_F(ProfileEditorTraces, SelectionsTraceTheOperationsTheyForwardTo)
{
    editor.AddInit();
    EXPECT_EQ(tracesOf([this] { choose(combo(u"AuthenType"_qs), 1); }),
        lines({ "OnAuthType", "OnSelchangeAuthType", "OnSelchangeEncryptionType" }));
    EXPECT_EQ(
        tracesOf([this] { choose(combo(u"EncryType"_qs), 1); }), lines({ "OnEncryType", "OnSelchangeEncryptionType" }));
    EXPECT_EQ(tracesOf([this] { editor.setAuthenTypeCombo(2); }), lines({ "setAuthenTypeCombo" }));
    EXPECT_EQ(tracesOf([this] { editor.setEncryTypeCombo(0); }), lines({ "setEncryTypeCombo" }));
    const auto everything = [this] {
        choose(combo(u"AuthenType"_qs), 0);
        choose(combo(u"EncryType"_qs), 1);
        editor.setAuthenTypeCombo(2);
        editor.setEncryTypeCombo(0);
    };
    EXPECT_EQ(standardErrorOf(everything), "");
}

TEST_F(ProfileEditorTraces, ThresholdsTraceEachChange)
{
    const auto change = [this] {
        control<QCheckBox>(u"RtsThresholdCheck"_qs).toggle();
        control<QSlider>(u"RtsThresholdSlider"_qs).setValue(100);
        control<QCheckBox>(u"FragThresholdCheck"_qs).toggle();
        control<QSlider>(u"FragThresholdSlider"_qs).setValue(300);
    };
    EXPECT_EQ(tracesOf(change), lines({ "OnSelRTS", "OnRtsSlider", "OnSelFrag", "OnFragSlider" }));
    EXPECT_EQ(standardErrorOf(change), "");
}

} // namespace

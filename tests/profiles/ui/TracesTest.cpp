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

TEST_F(ProfilePageTraces, EveryOperationTellsThatItIsEntered)
{
    EXPECT_EQ(tracesOf([this] { page.OnTimer(); }), lines({ "OnTimer" }));
    EXPECT_EQ(tracesOf([this] { page.ClearProfileList(); }), lines({ "ClearProfileList" }));
    EXPECT_EQ(tracesOf([this] { page.RefreshProfileList(); }), lines({ "RefreshProfileList", "ClearProfileList" }));
    EXPECT_EQ(tracesOf([this] { page.OnEdit(); }), lines({ "OnEdit" }));
    EXPECT_EQ(tracesOf([this] { page.OnDelete(); }), lines({ "OnDelete" }));
    EXPECT_EQ(tracesOf([this] { page.OnActivate(); }), lines({ "OnActivate" }));
    EXPECT_EQ(tracesOf([this] { page.DisabledActivateProfile(); }), lines({ "DisabledActivateProfile" }));
}

TEST_F(ProfilePageTraces, NothingIsToldWithoutTheFlag)
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

TEST_F(ProfileEditorTraces, OpeningsTellOfTheOperationsTheyGoThrough)
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

TEST_F(ProfileEditorTraces, ClosingTellsOfItsStepsAndOfNoKey)
{
    editor.AddInit();
    choose(combo(u"AuthenType"_qs), 2);
    type(field(u"WPAPreSharedKey"_qs), u"north by northwest"_qs);
    EXPECT_EQ(tracesOf([this] { editor.OnOK(); }), lines({ "OnOK", "VerifyKey", "createProfileData", "saveProfile" }));
    editor.AddInit();
    EXPECT_EQ(tracesOf([this] { editor.OnCANCEL(); }), lines({ "OnCANCEL" }));
}

TEST_F(ProfileEditorTraces, ThresholdsTellOfEachChange)
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

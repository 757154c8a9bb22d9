#include "tests/profiles/ui/ProfileEditorFixture.h"

#include <functional>
#include <vector>

namespace {

struct Threshold {
    const char16_t* prefix;
    int min;
    int max;
    const char* key;
};

class ThresholdFieldsTest : public ProfileEditorFixture, public testing::WithParamInterface<Threshold> {
protected:
    ThresholdFieldsTest()
    {
        editor.AddInit();
        show(check);
    }

    void turnOn() { check.setChecked(true); }

    [[nodiscard]] static QString name(const char16_t* suffix)
    {
        return QString::fromUtf16(GetParam().prefix) + QString::fromUtf16(suffix);
    }
    [[nodiscard]] static QString most() { return QString::number(GetParam().max); }

    QCheckBox& check { control<QCheckBox>(name(u"ThresholdCheck")) };
    QSlider& slider { control<QSlider>(name(u"ThresholdSlider")) };
    QLineEdit& text { field(name(u"ThresholdText")) };
};

TEST_P(ThresholdFieldsTest, StartsDisabledWithTheMaximum)
{
    EXPECT_FALSE(check.isChecked());
    EXPECT_FALSE(slider.isEnabled());
    EXPECT_FALSE(text.isEnabled());
    EXPECT_EQ(text.text(), most());
    EXPECT_EQ(slider.value(), GetParam().max);
    EXPECT_EQ(slider.minimum(), GetParam().min);
    EXPECT_EQ(slider.maximum(), GetParam().max);
}

TEST_P(ThresholdFieldsTest, CheckBoxEnablesBoth)
{
    QTest::mouseClick(&check, Qt::LeftButton, {}, QPoint(5, check.height() / 2));
    EXPECT_TRUE(slider.isEnabled());
    EXPECT_TRUE(text.isEnabled());
    QTest::mouseClick(&check, Qt::LeftButton, {}, QPoint(5, check.height() / 2));
    EXPECT_FALSE(slider.isEnabled());
    EXPECT_FALSE(text.isEnabled());
}

TEST_P(ThresholdFieldsTest, FieldFollowsTheSlider)
{
    turnOn();
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_Left);
    EXPECT_EQ(text.text(), QString::number(GetParam().max - 1));
    QTest::keyClick(&slider, Qt::Key_Home);
    EXPECT_EQ(text.text(), QString::number(GetParam().min));
}

TEST_P(ThresholdFieldsTest, SliderFollowsTheFieldWithoutChangingItsText)
{
    turnOn();
    type(text, u"1000"_qs);
    EXPECT_EQ(slider.value(), 1000);
    type(text, u"1"_qs);
    EXPECT_EQ(text.text(), u"1"_qs);
    EXPECT_EQ(slider.value(), std::max(1, GetParam().min));
}

TEST_P(ThresholdFieldsTest, FieldIsCorrectedWhenItLosesFocus)
{
    turnOn();
    editor.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    text.setFocus();
    type(text, QString());
    slider.setFocus();
    EXPECT_EQ(text.text(), most()) << "an empty field means off";
    text.setFocus();
    type(text, u"2399"_qs);
    slider.setFocus();
    EXPECT_EQ(text.text(), most());
    text.setFocus();
    type(text, u"12a4"_qs);
    EXPECT_EQ(text.text(), u"124"_qs) << "digits alone";
    slider.setFocus();
    EXPECT_EQ(text.text(), QString::number(std::max(124, GetParam().min)));
}

TEST_P(ThresholdFieldsTest, TextIsSavedRegardlessOfTheCheckBox)
{
    turnOn();
    type(text, u"512"_qs);
    check.setChecked(false);
    pressOk();
    EXPECT_EQ(saved().front().text(QString::fromLatin1(GetParam().key)), u"512"_qs);
}

TEST_P(ThresholdFieldsTest, EachOpeningShowsAndSavesThePreviousThresholds)
{
    turnOn();
    type(text, u"777"_qs);
    press(QDialogButtonBox::Cancel);
    store.saveRecords({ sampleProfile() });
    const std::vector<std::function<void()>> openings { [this] { editor.EditInit(0); }, [this] { editor.AddInit(); },
        [this] {
            ProfileProposal network;
            network.EcrypStatus = Ndis802_11EncryptionDisabled;
            EXPECT_TRUE(editor.AddProfile(network));
        } };
    for (const auto& open : openings) {
        open();
        EXPECT_TRUE(check.isChecked());
        EXPECT_EQ(text.text(), u"777"_qs);
        EXPECT_EQ(slider.value(), 777);
        pressOk();
        EXPECT_EQ(saved().back().text(QString::fromLatin1(GetParam().key)), u"777"_qs);
    }
}

TEST_P(ThresholdFieldsTest, RefusedKeyLeavesTheTypedText)
{
    turnOn();
    choose(combo(u"AuthenType"_qs), 2);
    type(field(u"WPAPreSharedKey"_qs), u"short"_qs);
    text.clear();
    pressOk();
    ASSERT_EQ(alerts.alerts.size(), 1U);
    EXPECT_EQ(text.text(), QString());
}

INSTANTIATE_TEST_SUITE_P(Each, ThresholdFieldsTest,
    testing::Values(
        Threshold { u"Rts", 0, 2347, "RTS Threshold" }, Threshold { u"Frag", 256, 2346, "Fragmentation Threshold" }),
    [](const auto& info) { return QString::fromUtf16(info.param.prefix).toStdString(); });

} // namespace

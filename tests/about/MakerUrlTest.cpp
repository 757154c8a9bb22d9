#include "about/MakerUrl.h"

#include "platform/store/WindowSettings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString builtIn = QStringLiteral("https://www.quorvane.example/");

class MakerUrl : public testing::Test {
protected:
    [[nodiscard]] QString configured(const QString& text)
    {
        settings.setText(u"MakerUrl"_qs, text);
        return makerUrl(settings).toString();
    }

    QTemporaryDir directory;
    WindowSettings settings { directory.filePath(u"settings.plist"_qs) };
};

TEST_F(MakerUrl, DefaultsToTheBuiltInAddress)
{
    EXPECT_EQ(makerUrl(settings).toString(), builtIn);
    EXPECT_TRUE(makerUrl(settings).isValid());
}

TEST_F(MakerUrl, UsesAConfiguredWebAddress)
{
    EXPECT_EQ(configured(u"https://support.quorvane.example/7100?lang=de"_qs),
        u"https://support.quorvane.example/7100?lang=de");
    EXPECT_EQ(configured(u"http://intranet/"_qs), u"http://intranet/");
}

TEST_F(MakerUrl, IgnoresOtherConfiguredValues)
{
    for (const QString& text : { u""_qs, u"www.quorvane.example"_qs, u"file:///etc/passwd"_qs, u"mailto:a@b.example"_qs,
             u"javascript:alert(1)"_qs, u"https://"_qs, u"https:///path"_qs, u"https://a b/"_qs })
        EXPECT_EQ(configured(text), builtIn) << text.toStdString();
}

} // namespace

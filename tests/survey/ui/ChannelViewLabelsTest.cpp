#include "survey/ui/ChannelViewLabels.h"

#include "tests/survey/ChannelViewNetworks.h"

#include <QFont>
#include <gtest/gtest.h>

#include <memory>

namespace {

const QString longName(32, u'W');

class ChannelViewLabelsTest : public testing::Test {
protected:
    void place(int characters = 130, int lines = 24)
    {
        const QRectF contents(0, 0, metrics.averageCharWidth() * characters, metrics.height() * lines);
        m_geometry = std::make_unique<ChannelViewGeometry>(contents, metrics, model);
        labels = placeChannelViewLabels(*m_geometry, model, metrics);
    }

    [[nodiscard]] const ChannelViewLabel* labelOfRow(int row) const
    {
        const auto found = std::find_if(
            labels.begin(), labels.end(), [row](const auto& label) { return label.curve->network->row == row; });
        return found == labels.end() ? nullptr : &*found;
    }

    void expectNoOverlap() const
    {
        for (std::size_t one = 0; one < labels.size(); ++one) {
            for (std::size_t other = one + 1; other < labels.size(); ++other) {
                EXPECT_FALSE(labels[one].box.intersects(labels[other].box))
                    << qPrintable(labels[one].text) << " and " << qPrintable(labels[other].text);
            }
        }
    }

    QFontMetrics metrics { QFont() };
    ChannelViewModel model;
    std::vector<ChannelViewLabel> labels;

    [[nodiscard]] const ChannelViewGeometry& geometry() const { return *m_geometry; }

private:
    std::unique_ptr<ChannelViewGeometry> m_geometry;
};

TEST_F(ChannelViewLabelsTest, ANameLiesOverItsPeak)
{
    model.networks = { networkOn(0, u"Compass"_qs, 6, 50) };
    place();
    ASSERT_EQ(labels.size(), 1U);
    EXPECT_EQ(labels[0].text, u"Compass");
    EXPECT_FALSE(labels[0].isElided);
    EXPECT_NEAR(labels[0].box.center().x(), geometry().curves[0].peak.x(), 1);
    EXPECT_LE(labels[0].box.bottom(), geometry().curves[0].peak.y());
    EXPECT_GE(labels[0].box.bottom(), geometry().curves[0].peak.y() - metrics.height());
}

TEST_F(ChannelViewLabelsTest, NamesNeverOverlapAndStayInTheView)
{
    model = { manyNetworks(), 4, 50 };
    for (const int characters : { 30, 64, 130, 250 }) {
        place(characters, characters / 4);
        EXPECT_FALSE(labels.empty());
        expectNoOverlap();
        const QRectF bounds = geometry().area.adjusted(-1, -geometry().labelHeight - 1, 1, 1);
        for (const ChannelViewLabel& label : labels)
            EXPECT_TRUE(bounds.contains(label.box)) << qPrintable(label.text);
    }
}

TEST_F(ChannelViewLabelsTest, NetworksOnOneChannelAllHaveTheirName)
{
    model.networks
        = { networkOn(0, u"One"_qs, 6, 70), networkOn(1, u"Two"_qs, 6, 70), networkOn(2, u"Three"_qs, 6, 70) };
    place();
    EXPECT_EQ(labels.size(), 3U);
    expectNoOverlap();
}

TEST_F(ChannelViewLabelsTest, TheStrongestNamesComeFirstWhereThereIsLittleRoom)
{
    for (int row = 0; row < 30; ++row)
        model.networks.push_back(networkOn(row, u"Network"_qs, 6, 41 + row));
    place(40, 12);
    EXPECT_LT(labels.size(), model.networks.size());
    EXPECT_NE(labelOfRow(29), nullptr);
    EXPECT_EQ(labelOfRow(0), nullptr);
}

TEST_F(ChannelViewLabelsTest, LongNamesAreElidedUnlessSelected)
{
    model.networks = { networkOn(0, longName, 6, 50) };
    place();
    ASSERT_EQ(labels.size(), 1U);
    EXPECT_TRUE(labels[0].isElided);
    EXPECT_TRUE(labels[0].text.endsWith(u'…'));
    EXPECT_LE(metrics.horizontalAdvance(labels[0].text), labels[0].textBox.width() + 1);

    model.selectedRow = 0;
    place();
    ASSERT_EQ(labels.size(), 1U);
    EXPECT_EQ(labels[0].text, longName);
}

TEST_F(ChannelViewLabelsTest, TheSelectedAndTheJoinedNameAreShownInAnyCrowd)
{
    for (int row = 0; row < 60; ++row)
        model.networks.push_back(networkOn(row, u"Network"_qs, 6, 100 - row));
    model.joinedRow = 59;
    for (const int row : { 0, 20, 40, 58 }) {
        model.selectedRow = row;
        place(64, 14);
        EXPECT_NE(labelOfRow(row), nullptr) << row;
        EXPECT_NE(labelOfRow(59), nullptr) << row;
        expectNoOverlap();
    }
}

TEST_F(ChannelViewLabelsTest, OnlyTheJoinedNameCarriesTheMark)
{
    model = { { networkOn(0, u"One"_qs, 1, 70), networkOn(1, u"Two"_qs, 11, 70) }, 1, 0 };
    place();
    EXPECT_TRUE(labelOfRow(0)->mark.isEmpty());
    EXPECT_FALSE(labelOfRow(1)->mark.isEmpty());
    EXPECT_LT(labelOfRow(1)->mark.right(), labelOfRow(1)->textBox.left());
}

TEST_F(ChannelViewLabelsTest, APointOnANameMeansItsNetwork)
{
    // The name of the weaker network lies above the curve of the stronger one.
    model.networks = { networkOn(0, u"Strong"_qs, 6, 60), networkOn(1, u"Weak"_qs, 6, 59) };
    place();
    const QPointF onName = labelOfRow(1)->box.center();
    EXPECT_EQ(networkAt(onName, geometry(), labels), &model.networks[1]);
    EXPECT_EQ(networkAt(labelOfRow(0)->box.center(), geometry(), labels), &model.networks[0]);
    EXPECT_EQ(networkAt(geometry().curves[1].peak + QPointF(0, geometry().area.height() / 3), geometry(), labels),
        &model.networks[1]);
    EXPECT_EQ(networkAt(geometry().area.topLeft(), geometry(), labels), nullptr);
}

} // namespace

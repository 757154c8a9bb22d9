#include "profiles/ProfileMerge.h"

#include "tests/profiles/SampleProfile.h"

#include <gtest/gtest.h>

namespace {

ProfileList named(const std::vector<QString>& names)
{
    ProfileList list;
    for (const QString& name : names)
        list.push_back(sampleProfile(name));
    return list;
}

const ProfileList base = named({ u"1"_qs, u"2"_qs, u"3"_qs });

TEST(MergedProfiles, AreTheChangedListIfNothingElseHasChanged)
{
    const ProfileList reordered = named({ u"3"_qs, u"new"_qs, u"1"_qs });
    EXPECT_EQ(mergedProfiles(base, reordered, base), reordered);
}

TEST(MergedProfiles, HaveTheAdditionsOfBoth)
{
    EXPECT_EQ(mergedProfiles(base, named({ u"1"_qs, u"2"_qs, u"3"_qs, u"own"_qs }),
                  named({ u"1"_qs, u"2"_qs, u"3"_qs, u"other"_qs })),
        named({ u"1"_qs, u"2"_qs, u"3"_qs, u"other"_qs, u"own"_qs }));
}

TEST(MergedProfiles, HaveAProfileThatBothAddedOnce)
{
    EXPECT_EQ(mergedProfiles({}, named({ u"1"_qs, u"own"_qs }), named({ u"1"_qs, u"other"_qs })),
        named({ u"1"_qs, u"other"_qs, u"own"_qs }));
}

TEST(MergedProfiles, HaveEditsInTheirRows)
{
    EXPECT_EQ(mergedProfiles(base, named({ u"1"_qs, u"own"_qs, u"3"_qs }), named({ u"other"_qs, u"2"_qs, u"3"_qs })),
        named({ u"other"_qs, u"own"_qs, u"3"_qs }));
    EXPECT_EQ(mergedProfiles(base, named({ u"1"_qs, u"2"_qs, u"own"_qs }), named({ u"2"_qs, u"3"_qs })),
        named({ u"2"_qs, u"own"_qs }));
}

TEST(MergedProfiles, LackTheDeletionsOfBoth)
{
    EXPECT_EQ(mergedProfiles(base, named({ u"2"_qs, u"3"_qs }), named({ u"1"_qs, u"2"_qs })), named({ u"2"_qs }));
}

TEST(MergedProfiles, HaveBothVersionsOfAProfileThatBothEdited)
{
    EXPECT_EQ(mergedProfiles(base, named({ u"1"_qs, u"own"_qs, u"3"_qs }), named({ u"1"_qs, u"other"_qs, u"3"_qs })),
        named({ u"1"_qs, u"other"_qs, u"3"_qs, u"own"_qs }));
    EXPECT_EQ(mergedProfiles(base, named({ u"1"_qs, u"3"_qs }), named({ u"1"_qs, u"other"_qs, u"3"_qs })),
        named({ u"1"_qs, u"other"_qs, u"3"_qs }));
}

} // namespace

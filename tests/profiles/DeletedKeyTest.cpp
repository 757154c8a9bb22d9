#include "platform/store/SettingsUserDefaults.h"
#include "profiles/ProfileKeys.h"
#include "profiles/ProfileStore.h"
#include "tests/profiles/SampleProfile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

// A key whose characters are computed, so that looking for it needs no copy of it.
constexpr int keyLength = 40;
constexpr char keyCharacter(int index)
{
    return static_cast<char>('a' + (index * 11 + 5) % 23);
}

QString key()
{
    QString text(keyLength, u' ');
    for (int index = 0; index < keyLength; ++index)
        text[index] = QLatin1Char(keyCharacter(index));
    return text;
}

// Whether the key is here, each of its characters followed by this many zero bytes.
bool isKeyAt(const std::vector<char>& memory, std::size_t start, std::size_t zeros)
{
    for (int index = 0; index < keyLength; ++index) {
        const std::size_t at = start + static_cast<std::size_t>(index) * (zeros + 1);
        if (at + zeros >= memory.size() || memory[at] != keyCharacter(index) || (zeros == 1 && memory[at + 1] != 0))
            return false;
    }
    return true;
}

struct KeyCopies {
    int utf16 { 0 };
    int utf8 { 0 };
};

// All copies in the writable memory of this process.
KeyCopies keyCopies()
{
    KeyCopies copies;
    std::ifstream maps("/proc/self/maps");
    QFile memory(u"/proc/self/mem"_qs);
    EXPECT_TRUE(memory.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    for (std::string line; std::getline(maps, line);) {
        std::istringstream fields(line);
        qint64 begin = 0;
        qint64 end = 0;
        char dash = 0;
        std::string rights;
        fields >> std::hex >> begin >> dash >> end >> rights;
        if (rights.substr(0, 2) != "rw" || line.find("[stack]") != std::string::npos || !memory.seek(begin))
            continue;
        std::vector<char> bytes(static_cast<std::size_t>(end - begin));
        bytes.resize(static_cast<std::size_t>(std::max<qint64>(memory.read(bytes.data(), end - begin), 0)));
        for (std::size_t start = 0; start < bytes.size(); ++start) {
            if (bytes[start] != keyCharacter(0))
                continue;
            copies.utf16 += isKeyAt(bytes, start, 1) ? 1 : 0;
            copies.utf8 += isKeyAt(bytes, start, 0) ? 1 : 0;
        }
    }
    return copies;
}

TEST(DeletedKey, IsNoLongerInMemory)
{
    const QTemporaryDir home;
    SettingsUserDefaults defaults(home.filePath(u"settings.plist"_qs));
    ProfileStore store(defaults, home.filePath(u"Profile.plist"_qs));
    {
        Profile profile = sampleProfile(u"home"_qs);
        profile.set(ProfileKey::wpaPsk, ClearingText(key()));
        store.saveRecords({ profile, sampleProfile(u"other"_qs) });
    }
    ProfileList records = store.loadRecords();
    ProfileList activation;
    store.saveActivation(activation, records[0]);
    EXPECT_GT(keyCopies().utf16, 0) << "the search finds nothing";

    store.deleteRecord(records, activation, 0);
    EXPECT_EQ(records.size(), 1u);
    const KeyCopies left = keyCopies();
    EXPECT_EQ(left.utf8, 0) << "what is read and written";
    constexpr int leftByQt = 3; // by its XML reader, in memory that it has released
    EXPECT_LE(left.utf16, leftByQt);
}

} // namespace

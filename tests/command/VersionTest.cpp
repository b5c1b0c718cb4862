#include <qvpreslayer/Version.h>

#include <string>

#include <gtest/gtest.h>

TEST(Version, TextAndNumberAreMadeOfTheThreeNumbers) {
    const std::string text = std::to_string(QVPRESLAYER_VERSION_MAJOR) + "." +
                             std::to_string(QVPRESLAYER_VERSION_MINOR) + "." +
                             std::to_string(QVPRESLAYER_VERSION_PATCH);
    EXPECT_EQ(text, QVPRESLAYER_VERSION);
    EXPECT_EQ(QVPRESLAYER_VERSION_PATCH, QVPRESLAYER_VERSION_NUMBER % 100);
    EXPECT_EQ(QVPRESLAYER_VERSION_MINOR, QVPRESLAYER_VERSION_NUMBER / 100 % 100);
    EXPECT_EQ(QVPRESLAYER_VERSION_MAJOR, QVPRESLAYER_VERSION_NUMBER / 10000);
}

TEST(Version, TheBuildReadsItFromTheHeader) { EXPECT_STREQ(QVPRESLAYER_BUILD_VERSION, QVPRESLAYER_VERSION); }

TEST(Version, TheLoadedLibrarySaysItsOwn) { EXPECT_STREQ(QVPRESLAYER_VERSION, GetPresLayerVersion()); }

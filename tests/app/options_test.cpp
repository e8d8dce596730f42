#include "app/options.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

Options parse(std::vector<const char*> words) {
    words.insert(words.begin(), "valojuova");
    return parseOptions(int(words.size()), words.data());
}

TEST(Options, LaterWordsOverrideEarlierOnes) {
    EXPECT_TRUE(parse({}).fullscreen);
    EXPECT_EQ(parse({}).soundOutput, 6);
    EXPECT_FALSE(parse({"-fs", "-win"}).fullscreen);
    EXPECT_TRUE(parse({"-win", "-fs"}).fullscreen);
    EXPECT_EQ(parse({"-nosound", "-oss"}).soundOutput, 4);
    EXPECT_EQ(parse({"-oss", "-esd"}).soundOutput, 5);
    EXPECT_EQ(parse({"-esd", "-alsa"}).soundOutput, 6);
    EXPECT_EQ(parse({"-alsa", "-win", "-nosound", "-win"}).soundOutput, 0);
    EXPECT_FALSE(parse({"-win", "-nosound"}).usage);
}

TEST(Options, UsageForHelpAndForEveryWordThatIsNoOption) {
    EXPECT_TRUE(parse({"-help"}).usage);
    // The usage text names "-window", the program does not know it.
    for (const char* word : {"-window", "-h", "--help", "-WIN", "-win ", "-wi", "win", "", "-", "800"}) {
        EXPECT_TRUE(parse({"-win", word, "-nosound"}).usage) << word;
    }
}

}  // namespace

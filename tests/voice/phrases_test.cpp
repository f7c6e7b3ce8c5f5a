// Normalised phrases, and the context file that the speech server reads.
#include "voice/phrases.h"

#include <cmath>

#include "tests/log_lines.h"
#include "tests/plugin_folder.h"
#include "voice/speech_link.h"

namespace {

class Phrases : public PluginFolder {
protected:
    Phrases() { CreateSpeechDatarefs(); }

    static std::vector<std::string> Sent() {
        std::vector<std::string> texts;
        for (const simhost::SentMessage &message : simhost::TakeSentMessages()) texts.push_back(message.text);
        return texts;
    }

    static float Compare(const std::string &a, const std::string &b) {
        return ComparePhrase(MakeStrokaFromText(a, NormaliseOnly), MakeStrokaFromText(b, NormaliseOnly));
    }

    const std::string defaults =
        "checked\r\nconfirmed\r\nyes\r\nno\r\nconfig\r\nset\r\noff\r\non\r\nnormal\r\nstop\r\n"
        "abort\r\nincrease volume\r\ndecrease volume\r\nexit\r\n";
};

TEST_F(Phrases, Normalising) {
    const strokaStruct gear = MakeStrokaFromText("Gear up, please!", NormaliseOnly);
    EXPECT_EQ(gear.text, "GEAR UP PLEASE");
    ASSERT_EQ(gear.words.size(), 3U);
    EXPECT_EQ(gear.words[1].code, 'U' + 'P');
    EXPECT_EQ(gear.words[2].word, "PLEASE");

    const struct {
        const char *text, *expected;
        size_t words;
    } rows[] = {
        {"Flaps  5", "FLAPS 5", 2},
        {" a - b ", " A  B ", 5},
        {"", "", 1},
        {"?!", "", 1},
        {"!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~x", "X", 1},
    };
    for (const auto &row : rows) {
        const strokaStruct phrase = MakeStrokaFromText(row.text, NormaliseOnly);
        EXPECT_EQ(phrase.text, row.expected);
        EXPECT_EQ(phrase.words.size(), row.words) << row.text;
    }
    // Bytes beyond ASCII stay and count as signed characters.
    EXPECT_EQ(MakeStrokaFromText("\xC3\xA4", NormaliseOnly).words[0].code, 0xC3 - 256 + 0xA4 - 256);
    EXPECT_TRUE(contextDictionary.empty());
}

TEST_F(Phrases, Comparing) {
    EXPECT_EQ(Compare("gear up", "GEAR, UP!"), 1.0F);
    EXPECT_EQ(Compare("gear gear", "gear up"), 1.0F);
    EXPECT_EQ(Compare("gear", "gear up"), 0.5F);
    EXPECT_EQ(Compare("raeg", "gear"), 0.0F) << "equal codes are not equal words";
    EXPECT_TRUE(std::isnan(ComparePhrase({}, {})));
}

TEST_F(Phrases, TheContextFile) {
    MakeStrokaFromText("Gear up!", AddToContext);
    MakeStrokaFromText("gear up", AddToContext);
    MakeStrokaFromText("", AddToContext);
    EXPECT_EQ(contextString, ",GEAR UP,");
    EXPECT_FALSE(exists("data/context.txt"));
    simhost::TakeLogLines();
    ReadCommandsFolder();
    EXPECT_EQ(CountNewLines({"Context: ,GEAR UP,"}), 1);
    EXPECT_EQ(read("data/context.txt"), "gear up\r\n" + defaults);
    EXPECT_EQ(Sent(), std::vector<std::string>{"contextpath>" + plugin});
    MakeStrokaFromText("Flaps; 5", AddAndTellServer);
    EXPECT_EQ(read("data/context.txt"), "gear up\r\n" + defaults + "flaps 5\r\n");
    EXPECT_EQ(Sent(), std::vector<std::string>{"contextpathupdate>" + plugin});
}

TEST_F(Phrases, TheServerIsNotSentToAFileThatCouldNotBeWritten) {
    std::filesystem::remove_all(plugin + "data");
    ReadCommandsFolder();
    EXPECT_EQ(MakeStrokaFromText("flaps", AddAndTellServer).text, "FLAPS");
    EXPECT_TRUE(Sent().empty());
}

} // namespace

// The companion's view of the first officer's datarefs: no message lost, none twice.
#include "speech/companion/link.h"

#include <cstring>
#include <map>

#include <gtest/gtest.h>

#include "tests/text_dataref.h"

namespace fennic_speech {
namespace {

class Link : public testing::Test {
protected:
    std::map<std::string, std::string> texts;
    std::map<std::string, XPLMDataRef> handles;

    Link() { ResetLink(); }
    ~Link() override { Leave(); }

    void Come(bool hasLists) {
        for (const char *name : {"kv/to_speech", "kv/fr_speech", "kv/speech/messages", "kv/speech/expected"})
            if (hasLists || !std::strstr(name, "/speech/"))
                handles[name] = PublishTextDataref(name, texts[name]);
        for (int frame = 0; frame < 40; frame++) FindFirstOfficer();
    }
    void Leave() {
        for (const auto &[name, handle] : handles) XPLMUnregisterDataAccessor(handle);
        handles.clear();
    }

    std::string Taken() {
        std::string all, message;
        while (TakeMessage(message)) all += message + "|";
        return all;
    }
};

TEST_F(Link, TakesEachNumberedMessageOnce) {
    EXPECT_FALSE(FindFirstOfficer());
    Come(true);
    ASSERT_TRUE(FindFirstOfficer());
    EXPECT_TRUE(hasComeAnew());
    EXPECT_FALSE(hasComeAnew());
    std::string &messages = texts["kv/speech/messages"];
    EXPECT_EQ(Taken(), "");
    messages = "1 contextpath>/a b/\n2 say>One.\n";
    EXPECT_EQ(Taken(), "contextpath>/a b/|say>One.|");
    EXPECT_EQ(Taken(), "");
    messages = "2 say>One.\n3 say>One.\n4 \n5 CmdRecStart\n";
    EXPECT_EQ(Taken(), "say>One.||CmdRecStart|");
    messages = "nonsense\n\n6 say>Six.\n";
    EXPECT_EQ(Taken(), "say>Six.|");
    messages = "1 say>Anew.\n"; // she was loaded again
    EXPECT_EQ(Taken(), "say>Anew.|");

    texts["kv/speech/expected"] = "gear up\nany\n";
    std::string phrases;
    EXPECT_TRUE(TakeExpected(phrases));
    EXPECT_EQ(phrases, "gear up;any;");
    EXPECT_FALSE(TakeExpected(phrases));
}

TEST_F(Link, HandsHerOneAnswerAtATime) {
    Come(true);
    ASSERT_TRUE(FindFirstOfficer());
    Answer("gear up");
    Answer("stop>");
    std::string &answer = texts["kv/fr_speech"];
    DeliverAnswer();
    DeliverAnswer();
    EXPECT_EQ(answer, "gear up");
    answer.clear();
    DeliverAnswer();
    EXPECT_EQ(answer, "stop>");
    Leave(); // and what waited goes with her
    Answer("late");
    EXPECT_FALSE(FindFirstOfficer());
    answer.clear();
    Come(false);
    ASSERT_TRUE(FindFirstOfficer());
    DeliverAnswer();
    EXPECT_EQ(answer, "");
}

TEST_F(Link, AnOlderFirstOfficerIsReadMessageByMessage) {
    Come(false);
    ASSERT_TRUE(FindFirstOfficer());
    for (const char *message : {"say>One.", "say>One.", "CmdRecStop"}) {
        texts["kv/to_speech"] = message;
        EXPECT_EQ(Taken(), std::string(message) + "|");
        EXPECT_EQ(texts["kv/to_speech"], "");
    }
}

} // namespace
} // namespace fennic_speech

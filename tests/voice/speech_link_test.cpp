// Messages as the speech server writes and reads them.
#include "voice/speech_link.h"

#include "tests/plugin_folder.h"

TEST_F(PluginFolder, SpeechMessagesAreTakenOnceAndCutAt600Bytes) {
    CreateSpeechDatarefs();
    SendMSG("say>a");
    SendMSG("say>b");
    EXPECT_EQ(simhost::GetText("kv/to_speech"), "say>b");
    EXPECT_EQ(XPLMGetDatab(XPLMFindDataRef("kv/to_speech"), nullptr, 0, 0), 6);
    EXPECT_EQ(ReadMSG(), "");
    for (size_t length : {1U, 15U, 599U, 600U, 601U, 5000U}) {
        simhost::SetText("kv/fr_speech", std::string(length, 'x'));
        EXPECT_EQ(ReadMSG().size(), std::min<size_t>(length, 600));
        EXPECT_EQ(simhost::GetText("kv/fr_speech"), "");
        EXPECT_EQ(ReadMSG(), "");
    }
    char twoTexts[] = "gear\0up";
    XPLMSetDatab(XPLMFindDataRef("kv/fr_speech"), twoTexts, 0, sizeof twoTexts);
    EXPECT_EQ(ReadMSG(), "gear");
}

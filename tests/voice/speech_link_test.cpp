// The link as the speech server sees it: what it is sent when, and what becomes of its answers.
#include "voice/speech_link.h"

#include "figure/animation.h"
#include "frame/datarefs.h"
#include "frame/settings.h"
#include "tests/plugin_folder.h"
#include "util/clock.h"
#include "voice/recognition.h"

namespace {

class SpeechLink : public PluginFolder {
protected:
    SpeechLink() {
        CreateSpeechDatarefs();
        SetTime(10);
    }

    static void SetTime(double seconds) {
        simhost::SetFlightTimeSeconds(seconds);
        FlightTimeSEC = seconds;
    }

    // All messages sent since the last call, joined by blanks.
    static std::string Sent() {
        std::string all;
        for (const simhost::SentMessage &message : simhost::TakeSentMessages())
            all += (all.empty() ? "" : " ") + message.text;
        return all;
    }

    // A frame's push-to-talk and intake, the server having written the answer. True when it was heard.
    static bool Frame(const std::string &answer) {
        if (!answer.empty()) simhost::SetText("kv/fr_speech", answer);
        const bool wasStopped = RunPushToTalk();
        simhost::TakeLogLines();
        ReadServerMessage(wasStopped);
        for (const std::string &line : simhost::TakeLogLines())
            if (line.find("Just Get Recognition: ") != std::string::npos) return true;
        return false;
    }
};

TEST_F(SpeechLink, MessagesAreTakenOnceAndCutAt600Bytes) {
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

TEST_F(SpeechLink, StartUpInAFreshFlightChoosesTheVoiceAlone) {
    write("data/voicelist_mac.txt", "voice a\r\n\r\nvoice  b\r\nvoice b\r\n");
    ReadVoiceList();
    EXPECT_EQ(voiceList.size(), 3U);
    globalGender = "m";
    globalVoiceW = "voice a";
    globalVoiceM = "voice b";
    SetTime(3);
    RunVoiceStartup();
    EXPECT_EQ(setvoiceDone, 0);
    SetTime(3.5);
    for (int i = 0; i < 5; i++) RunVoiceStartup();
    EXPECT_EQ(setvoiceDone, 3);
    EXPECT_EQ(Sent(), "initvoice>voice b");
}

TEST_F(SpeechLink, StartUpLateInAFlightSendsVolumeAndRate) {
    globalVoiceW = "not listed";
    globalGender = "w";
    globalVolume = 70;
    SetTime(31);
    for (int i = 0; i < 5; i++) RunVoiceStartup();
    EXPECT_EQ(Sent(), "volume>70 rate>50");
}

TEST_F(SpeechLink, PushToTalk) {
    EXPECT_FALSE(Frame("too early"));
    EXPECT_EQ(LastRecognition, "");
    needCmdRecStart = needCmdRecStop = 1; // pressed and released between two frames
    EXPECT_FALSE(Frame(""));
    EXPECT_EQ(Sent(), "CmdRecStart");
    EXPECT_EQ(onAir, 1);
    EXPECT_TRUE(isNewRecognitionMayCome);
    EXPECT_FALSE(Frame(""));
    EXPECT_EQ(Sent(), "CmdRecStop");
    EXPECT_EQ(onAir, 0);

    EXPECT_TRUE(Frame("gear up"));
    EXPECT_EQ(LastRecognition, "gear up");
    EXPECT_FALSE(Frame("gear up")) << "the same text again is not new";
    EXPECT_TRUE(Frame("gear down"));
    isNewRecognitionMayCome = false; // used
    EXPECT_FALSE(Frame("gear up"));
    EXPECT_EQ(LastRecognition, "gear down");
    EXPECT_TRUE(Frame("abort"));
    EXPECT_TRUE(Frame("abort")) << "always heard";
    EXPECT_EQ(LastRecognition, "abort");
    needCmdRecStop = 1;
    Frame("");
    EXPECT_EQ(LastRecognition, "");
}

TEST_F(SpeechLink, SilenceAnswersWhatTakesAnyAnswer) {
    for (bool isGood : {false, true}) {
        isAnyInputGood = isGood;
        needCmdRecStart = 1;
        Frame("");
        EXPECT_FALSE(Frame("")) << "still listening";
        needCmdRecStop = 1;
        EXPECT_EQ(Frame(""), isGood);
        EXPECT_EQ(LastRecognition, isGood ? "ANY" : "");
    }
    EXPECT_FALSE(isAnyInputGood);
}

TEST_F(SpeechLink, StopEndsTheLips) {
    Next_lipsAnimTime = 500;
    isNewRecognitionMayCome = true;
    EXPECT_FALSE(Frame("stop>"));
    EXPECT_EQ(Next_lipsAnimTime, 10);
    EXPECT_EQ(LastRecognition, "");
}

} // namespace

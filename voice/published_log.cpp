// Whoever watches learns of each text when it is written to the dataref, so each goes out by itself. The
// dataref is none of the table: it is taken back last, since what goes wrong at the end counts too.
#include "voice/published_log.h"

#include <algorithm>

#include "XPLMDataAccess.h"
#include "frame/datarefs.h"
#include "systems/action_kinds.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "voice/link_words.h"

namespace {

const size_t AnswersListed = 100;

DRFclass publishedLog;

void Publish(const char *kind, const std::string &subject, const std::string &words) {
    if (!publishedLog.handle) return;
    std::string text = std::string(kind) + "\t" + subject + "\t" + words;
    XPLMSetDatab(publishedLog.handle, text.data(), 0, static_cast<int>(text.size()) + 1);
}

void PublishRecord(const LogRecord &record, const std::string &text) {
    if (!text.empty() && record.severity == Severity::Error) Publish("error", record.file, text);
}

const char *KindWord(ActionText text) {
    switch (text) {
    case ActionText::Spoken: return "speech";
    case ActionText::Position: return "position";
    case ActionText::Command: return "command";
    case ActionText::Dataref: return "dataref";
    default: return "other";
    }
}

} // namespace

void PublishLog() {
    if (FindDataref(link_words::LogTold)) return;
    publishedLog.Create_s(link_words::LogTold);
    ListenToLog(PublishRecord);
}

void UnpublishLog() {
    publishedLog.Unregister();
}

// Of an assignment the subject is what stands before the "=", as it is written to: without blanks.
void LogAction(const doStruct &action) {
    string2debugString(std::string("EXECUTE RUN: ") + NameOfQueued(action.type) + " ", action.text, 1);
    const ActionKind *kind = ActionKindOfQueued(action.type);
    if (!kind) return;
    std::string subject = action.text;
    if (kind->queued == QueuedText::Assignment) {
        subject.resize(std::min(subject.find('='), subject.size()));
        std::erase(subject, ' ');
    }
    Publish(KindWord(kind->text), subject, DeedOf(*kind, subject, LeadingNumber(action.text)));
}

void LogAnswers(const std::vector<std::string> &answers, bool isAnyAnswerExpected) {
    std::vector<std::string> listed(
        answers.begin(),
        answers.begin() + static_cast<std::ptrdiff_t>(std::min(answers.size(), AnswersListed)));
    if (listed.size() < answers.size())
        listed.push_back("and " + std::to_string(answers.size() - listed.size()) + " more");
    if (isAnyAnswerExpected) listed.emplace_back("any");
    std::string list, words;
    for (const std::string &answer : listed) {
        list += (list.empty() ? "" : ", ") + answer;
        words += (words.empty() ? "" : "\t") + answer;
    }
    string2debugString("Expected answers: ", list.empty() ? "none" : list, 1);
    Publish("answers", "", words);
}

void ResetPublishedLog() {
    MakeFresh(publishedLog);
}

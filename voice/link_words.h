// The words of the speech link: names of its datarefs and of its messages. Shared with the programs at the
// other end; what each message means is on the page docs/speech-server.md.
#pragma once

namespace link_words {

// Datarefs.
inline const char *const ToSpeech = "kv/to_speech";
inline const char *const FrSpeech = "kv/fr_speech";
inline const char *const Messages = "kv/speech/messages"; // the last of those to the server, numbered
inline const char *const Expected = "kv/speech/expected"; // the phrases that are expected now
inline const char *const LogTold = "kv/diagnost/log";     // what went wrong last, and what she does
inline const char *const SpeechState = "kv/diagnost/speech";
inline const char *const RecognitionState = "kv/diagnost/reco";

// The companion's own: the number of the voice's process, 0 while none runs.
inline const char *const VoiceProcess = "fennic_speech/process";

// Messages to the server. An argument follows the ">" directly.
inline const char *const Say = "say>";
inline const char *const InitVoice = "initvoice>";
inline const char *const SetVoice = "setvoice>";
inline const char *const Volume = "volume>";
inline const char *const Rate = "rate>";
inline const char *const Restart = "restart>";
inline const char *const Exit = "exit>";
inline const char *const ContextPath = "contextpath>";
inline const char *const ContextPathUpdate = "contextpathupdate>";
inline const char *const RecStart = "CmdRecStart";
inline const char *const RecStop = "CmdRecStop";

// From the companion to the voice alone: the phrases that are expected now, joined by ";".
inline const char *const ExpectedNow = "expected>";

// What is said when all is broken off. A server need not speak what waits before it.
inline const char *const AbortedText = "All Commands and Checklists Aborted!";

// From the speech server.
inline const char *const Spoken = "stop>";
inline const char *const Abort = "abort";

} // namespace link_words

// Normalising and the context. The context only grows: nothing takes a phrase out before the plug-in stops.
#include "voice/phrases.h"

#include <string_view>

#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/paths.h"
#include "util/text.h"
#include "voice/link_words.h"
#include "voice/speech_link.h"

ContextState context;

namespace {

const char *const ContextDefault =
    ",CHECKED,CONFIRMED,YES,NO,CONFIG,SET,OFF,ON,NORMAL,STOP,ABORT,increase volume,decrease volume,exit";

std::string ContextFile() {
    return WhatPluginPath() + "data/context.txt";
}

// The 32 printable ASCII characters that are neither letters nor digits nor the blank.
bool isPunctuation(char c) {
    return (c >= '!' && c <= '/') || (c >= ':' && c <= '@') || (c >= '[' && c <= '`')
           || (c >= '{' && c <= '~');
}

bool WriteContext() {
    std::string content;
    for (const std::string &phrase : contextDictionary)
        if (!phrase.empty()) content += UpperToLowerCase(phrase) + "\r\n";
    return WriteWholeFile(ContextFile(), content);
}

void AddPhraseToContext(const std::string &text) {
    if (!context.index.insert(text).second) return;
    contextDictionary.push_back(text);
    contextString += "," + text;
}

} // namespace

strokaStruct MakeStrokaFromText(const std::string &text, int mode) {
    strokaStruct phrase;
    phrase.text = LowerToUpperCase(ReplaceStringDoubleSpace(text));
    std::erase_if(phrase.text, isPunctuation);
    if (mode > NormaliseOnly) AddPhraseToContext(phrase.text);
    if (mode == AddAndTellServer && WriteContext()) SendMSG(link_words::ContextPathUpdate + WhatPluginPath());
    for (std::string &word : StringToWordsArray(phrase.text, ' ')) {
        int code = 0;
        for (char c : word) code += static_cast<signed char>(c);
        phrase.words.push_back({std::move(word), code});
    }
    return phrase;
}

float ComparePhrase(const strokaStruct &a, const strokaStruct &b) {
    const size_t wanted = b.words.size();
    size_t count = 0;
    for (const slovoStruct &wordB : b.words)
        for (const slovoStruct &wordA : a.words)
            if (count < wanted && wordB.code == wordA.code && wordB.word == wordA.word) count++;
    return static_cast<float>(count) / static_cast<float>(wanted);
}

void ReadCommandsFolder() {
    string2debugString("Context: ", contextString, 1);
    WriteWholeFile(ContextFile(), contextString + ContextDefault + "\r\n");
    for (std::string &phrase : StringToWordsArray(ContextDefault, ',')) {
        if (phrase.empty()) continue;
        context.index.insert(phrase);
        contextDictionary.push_back(std::move(phrase));
    }
    if (WriteContext()) SendMSG(link_words::ContextPath + WhatPluginPath());
}

void ResetPhrases() {
    MakeFresh(context);
}

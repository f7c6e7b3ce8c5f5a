// Phrases in canonical form, and the recognition context: the list of all phrases that the speech server
// must know, kept in "data/context.txt" for it.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

struct slovoStruct {
    std::string word;
    int code = 0; // sum of the bytes as signed characters: unequal codes spare comparing the words
};

struct strokaStruct {
    std::string text; // upper case, without punctuation, single blanks
    std::vector<slovoStruct> words;
};

struct ContextState {
    std::vector<std::string> dictionary;   // in the order first added
    std::string text;                      // the same, each preceded by ","
    std::unordered_set<std::string> index; // what the dictionary holds
};
extern ContextState context;
inline std::vector<std::string> &contextDictionary = context.dictionary;
inline std::string &contextString = context.text;

// What MakeStrokaFromText does besides normalising.
enum {
    NormaliseOnly = 0,
    AddToContext = 1,     // in memory
    AddAndTellServer = 2, // and in the file, and the server is told
};

strokaStruct MakeStrokaFromText(const std::string &text, int mode);

// The share of b's words that occur in a, 0 to 1; not a number when b has no words.
float ComparePhrase(const strokaStruct &a, const strokaStruct &b);

// Adds the default vocabulary, writes the context file and tells the server where it lies. Called once,
// when the systems files have been loaded. When the file cannot be written the server is not told.
void ReadCommandsFolder();

// Everything as when the program starts.
void ResetPhrases();

// Cleaning and splitting of text. Bytes are bytes: nothing here depends on a locale, and only the counting of
// characters on an encoding.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Without any carriage return and line feed.
std::string RemoveNR(std::string s);

// RemoveNR, and runs of spaces shrunk to one, except that the last two characters are never merged.
std::string RemoveNRS(std::string s);

// Without spaces, except that the last two characters are kept whatever they are.
std::string RemoveS(std::string s);

// Without any of the characters ( ) < > [ ].
std::string RemoveTags(std::string s);

// The first occurrence, or every occurrence, of from replaced by to; searching goes on behind the inserted
// text. An empty from changes nothing.
std::string ReplaceString(std::string s, std::string_view from, std::string_view to);
std::string ReplaceStringAll(std::string s, std::string_view from, std::string_view to);

// Every run of spaces shrunk to one.
std::string ReplaceStringDoubleSpace(const std::string &s);

// The letters A to Z and a to z alone.
std::string LowerToUpperCase(std::string s);
std::string UpperToLowerCase(std::string s);

// The same for names that are to be compared without regard to capitals, as the file systems of most Macs and
// of Windows do: Latin, Greek and Cyrillic letters of a UTF-8 text become small ones.
std::string FoldCase(std::string_view s);

// Spaces in front until s is width long.
std::string alignR(std::string s, int width);

// Half the length of s, as spaces, behind it.
std::string alignC(std::string s);

// The fields between delimiters, empty ones too, after removing carriage returns and line feeds. Never an
// empty vector: a text without a delimiter is one field.
std::vector<std::string> StringToWordsArray(const std::string &s, char delimiter);

// The same fields as views into text, which must outlive them and hold no line ends; the form for loading
// large files. fields is overwritten.
void SplitFields(std::string_view text, char delimiter, std::vector<std::string_view> &fields);

// How many characters of UTF-8 a text has, which is what is spoken and what takes room. A byte that is no
// part of one counts as a character of its own.
size_t CountCharacters(std::string_view text);

// Whether letters over 127 are UTF-8, and not as an old editor writes them; and such a text made into it,
// each byte a letter of Latin-1.
bool isUtf8(std::string_view text);
std::string Latin1ToUtf8(std::string_view text);

bool Contains(std::string_view text, std::string_view part);

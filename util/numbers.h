// Numbers from and to text. Nothing here throws or depends on the process's locale: another plug-in may
// have switched the decimal point to a comma.
#pragma once

#include <string>
#include <string_view>

inline bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Reads the whole text, blanks around it aside, as one decimal number (sign, digits, point, exponent).
// False, with value untouched, when it is no number or not finite.
bool ParseDouble(std::string_view text, double &value);

// Reads the whole text as ParseDouble does and cuts it towards zero ("5.000000" is 5). False, with value
// untouched, when it is no number or does not fit.
bool ParseInt(std::string_view text, int &value);

// The decimal number that the text begins with, blanks before it aside; 0 when there is none.
double LeadingNumber(std::string_view text);

// Cut towards zero; the nearest int when the value does not fit, 0 when it is not a number.
int TruncateToInt(double value);

// True for a non-empty text of the characters "-.0123456789" alone. A lone "-" passes, 1e5 does not:
// this is what tells a number from a link in the systems files.
bool isNumber(std::string_view text);

// Decimal, as the format "%d" gives it.
std::string int2string(int n);

// Six decimals, rounded, as the format "%f" gives them.
std::string float2string(double x);
std::string double2string(double x);

// The same where six decimals hold the number; else as many decimals as it takes to read it back equal, and
// no exponent. x must be finite.
std::string ExactDecimal(double x);

// The same without the zeros behind: "0.5", "3".
std::string ShortDecimal(double x);

// One to six significant digits, as the format "%g" gives them.
std::string SignificantDigits(double x, int digits = 6);

// float2string split at the point: the integer part is padded with as many zeros as digits are missing,
// less the digits it has (5 with intDigits 3 gives "05"), the fraction is cut, not rounded, to fracDigits.
std::string FormatFloat2String(double x, int intDigits, int fracDigits);

// Splits 10·x, cut towards zero, before its last digit: 12.34 gives "12" and "3", -0.5 gives "-0" and "5".
void float2LRstring(double x, std::string &left, std::string &right);

// Zeros in front up to width, at most ten of them.
std::string add0before(const std::string &s, int width);

// s followed by ten zeros, cut to its first n characters.
std::string add0after(const std::string &s, int n);

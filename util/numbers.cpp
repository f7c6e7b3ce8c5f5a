// What is a number, and how it is cut, padded and rounded; the conversions themselves are the system's.
#include "util/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "util/number_calls.h"
#include "util/text.h"

namespace {

// Length of the decimal number at the start of text, 0 if there is none. strtod alone would also take
// hexadecimal numbers, "inf" and "nan".
size_t DecimalLength(std::string_view text) {
    size_t i = 0;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) i++;
    size_t digits = 0;
    for (; i < text.size() && isDigit(text[i]); i++) digits++;
    if (i < text.size() && text[i] == '.')
        for (i++; i < text.size() && isDigit(text[i]); i++) digits++;
    if (digits == 0) return 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        size_t exponent = i + 1;
        if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) exponent++;
        if (exponent < text.size() && isDigit(text[exponent])) {
            for (i = exponent; i < text.size() && isDigit(text[i]);) i++;
        }
    }
    return i;
}

double Convert(std::string_view decimal) {
    char buffer[64];
    if (decimal.size() < sizeof buffer) {
        decimal.copy(buffer, decimal.size());
        buffer[decimal.size()] = '\0';
        return NearestDouble(buffer);
    }
    return NearestDouble(std::string(decimal).c_str());
}

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

} // namespace

bool ParseDouble(std::string_view text, double &value) {
    text = TrimBlanks(text);
    const size_t length = DecimalLength(text);
    if (length == 0 || length != text.size()) return false;
    const double number = Convert(text);
    if (!std::isfinite(number)) return false;
    value = number;
    return true;
}

bool ParseInt(std::string_view text, int &value) {
    double number = 0;
    if (!ParseDouble(text, number)) return false;
    if (number <= std::numeric_limits<int>::min() - 1.0 || number >= std::numeric_limits<int>::max() + 1.0)
        return false;
    value = static_cast<int>(number);
    return true;
}

double LeadingNumber(std::string_view text) {
    text = TrimBlanks(text);
    const size_t length = DecimalLength(text);
    if (length == 0) return 0.0;
    const double number = Convert(text.substr(0, length));
    return std::isfinite(number) ? number : 0.0;
}

int TruncateToInt(double value) {
    if (std::isnan(value)) return 0;
    if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    return static_cast<int>(value);
}

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("-.0123456789") == std::string_view::npos;
}

std::string int2string(int n) {
    return std::to_string(n);
}

std::string float2string(double x) {
    return FixedDecimals(x, 6);
}

std::string double2string(double x) {
    return FixedDecimals(x, 6);
}

// Seventeen digits tell any double; those of a small one begin behind its zeros.
std::string ExactDecimal(double x) {
    std::string text = float2string(x);
    if (Convert(text) == x) return text;
    const int zeros = static_cast<int>(-std::floor(std::log10(std::fabs(x)))) - 1;
    for (int decimals = std::max(7, zeros); Convert(text) != x && decimals <= zeros + 18; decimals++)
        text = FixedDecimals(x, decimals);
    return text;
}

std::string ShortDecimal(double x) {
    std::string text = ExactDecimal(x);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string SignificantDigits(double x, int digits) {
    return GeneralDigits(x, std::clamp(digits, 1, 6));
}

std::string FormatFloat2String(double x, int intDigits, int fracDigits) {
    const std::vector<std::string> parts = StringToWordsArray(float2string(x), '.');
    std::string integer = parts[0];
    std::string fraction = parts.size() > 1 ? parts[1] : "";
    const int integerLength = static_cast<int>(integer.size());
    const int fractionLength = static_cast<int>(fraction.size());
    if (integerLength < intDigits) integer = add0before(integer, intDigits - integerLength);
    if (fractionLength < fracDigits) fraction = add0after(fraction, fracDigits - fractionLength);
    if (fractionLength > fracDigits) fraction.resize(static_cast<size_t>(fracDigits > 0 ? fracDigits : 0));
    return integer + "." + fraction;
}

void float2LRstring(double x, std::string &left, std::string &right) {
    std::string digits = int2string(TruncateToInt(10.0 * x));
    if (digits.size() == 1 && x >= 0) digits = "0" + digits;
    if (digits.size() == 2 && x < 0) digits = "-0" + int2string(TruncateToInt(-10.0 * x));
    left = digits.substr(0, digits.size() - 1);
    right = digits.substr(digits.size() - 1);
}

std::string add0before(const std::string &s, int width) {
    const int missing = width - static_cast<int>(s.size());
    if (missing <= 0) return s;
    return std::string(static_cast<size_t>(missing < 10 ? missing : 10), '0') + s;
}

std::string add0after(const std::string &s, int n) {
    return (s + "0000000000").substr(0, static_cast<size_t>(n > 0 ? n : 0));
}

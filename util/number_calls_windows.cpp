// Number conversions over <charconv>, which knows no locale: the C library of this system gives seventeen
// right digits at most.
#include "util/number_calls.h"

#include <charconv>
#include <limits>
#include <string_view>

namespace {

std::string Format(double x, std::chars_format format, int precision) {
    char buffer[400]; // the largest double has 309 digits before the point, the smallest 324 behind it
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, x, format, precision);
    return std::string(buffer, result.ptr);
}

// Of a number that no double comes near to: whether it is nearer to 0 than all.
bool isTiny(std::string_view decimal) {
    const size_t exponent = decimal.find_first_of("eE");
    if (exponent != std::string_view::npos) return decimal.substr(exponent + 1).starts_with('-');
    return decimal.substr(0, decimal.find('.')).find_first_of("123456789") == std::string_view::npos;
}

} // namespace

double NearestDouble(const char *decimal) {
    std::string_view text = decimal;
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc::result_out_of_range || isTiny(text)) return value;
    const double infinite = std::numeric_limits<double>::infinity();
    return text.starts_with('-') ? -infinite : infinite;
}

std::string FixedDecimals(double x, int decimals) {
    return Format(x, std::chars_format::fixed, decimals);
}

std::string GeneralDigits(double x, int digits) {
    return Format(x, std::chars_format::general, digits);
}

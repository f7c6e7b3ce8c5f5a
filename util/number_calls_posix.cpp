// Number conversions over the C library, pinned to the "C" locale: strtod_l for reading, and snprintf
// inside a scope that switches this thread's locale for writing.
#include "util/number_calls.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale.h>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace {

locale_t PlainLocale() {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return plain;
}

std::string FormatPlain(const char *format, int precision, double x) {
    const locale_t before = uselocale(PlainLocale());
    char buffer[400]; // the largest double has 309 digits before the point, the smallest 324 behind it
    const int length = std::snprintf(buffer, sizeof buffer, format, precision, x);
    uselocale(before);
    return std::string(buffer, static_cast<size_t>(length));
}

} // namespace

double NearestDouble(const char *decimal) {
    return strtod_l(decimal, nullptr, PlainLocale());
}

std::string FixedDecimals(double x, int decimals) {
    return FormatPlain("%.*f", decimals, x);
}

std::string GeneralDigits(double x, int digits) {
    return FormatPlain("%.*g", digits, x);
}

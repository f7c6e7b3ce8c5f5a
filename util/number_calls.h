// Numbers as the C library of each system reads and writes them, whatever the process's locale is. The bodies
// are in number_calls_posix.cpp and number_calls_windows.cpp. Only numbers.cpp includes this.
#pragma once

#include <string>

// The double nearest to a decimal number (sign, digits, point, exponent), which is all of the text; infinite
// when it is too large for one.
double NearestDouble(const char *decimal);

// As the format "%.<decimals>f" gives it.
std::string FixedDecimals(double x, int decimals);

// As the format "%.<digits>g" gives it.
std::string GeneralDigits(double x, int digits);

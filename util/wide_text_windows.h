// Windows names files and texts in UTF-16, everything else here is UTF-8.
#pragma once

#include <string>
#include <string_view>

// Empty for what is no UTF-8, as for an empty text.
std::wstring WideText(std::string_view text);

std::string NarrowText(std::wstring_view text);

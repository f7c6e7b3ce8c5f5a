// Text datarefs of another plug-in, with a std::string behind each, as the first officer has them: the zero
// byte behind the text belongs to what is read and to what is written.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>

#include "XPLMDataAccess.h"

inline int ReadTextDataref(void *text, void *target, int offset, int most) {
    const std::string &value = *static_cast<std::string *>(text);
    const int size = static_cast<int>(value.size()) + 1;
    if (!target) return size;
    const int count = std::clamp(size - offset, 0, most);
    std::memcpy(target, value.c_str() + offset, static_cast<size_t>(count));
    return count;
}

inline void WriteTextDataref(void *text, void *source, int, int size) {
    static_cast<std::string *>(text)->assign(static_cast<char *>(source), static_cast<size_t>(size - 1));
}

// Until it is unregistered, the text must stay where it is.
inline XPLMDataRef PublishTextDataref(const char *name, std::string &text) {
    return XPLMRegisterDataAccessor(name, xplmType_Data, 1, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, ReadTextDataref,
                                    WriteTextDataref, &text, &text);
}

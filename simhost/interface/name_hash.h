// How tables of names are searched by a piece of text, without a copy of it.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace simhost {

struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
};

} // namespace simhost

#pragma once

#include <string_view>

namespace tessarine
{

/// What processes the presentations of a run.
enum class Engine {
    PowerPoint,  ///< An installed one, on Windows.
    BuiltIn,     ///< Our own, on every system.
};

/// For programs: what reports and options call it.
constexpr std::string_view NameOf(Engine engine)
{
    return engine == Engine::PowerPoint ? "powerpoint" : "builtin";
}

}  // namespace tessarine

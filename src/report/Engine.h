#pragma once

#include <initializer_list>
#include <optional>
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

/// The engine of that name; nothing for another text.
constexpr std::optional<Engine> EngineNamed(std::string_view name)
{
    for (const Engine engine : {Engine::PowerPoint, Engine::BuiltIn}) {
        if (NameOf(engine) == name)
            return engine;
    }
    return std::nullopt;
}

}  // namespace tessarine

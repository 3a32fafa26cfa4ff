#pragma once

#include <cstdint>
#include <optional>

namespace tessarine
{

/// The seconds that a run will still take, guessed from the files that it has done in the seconds gone by. Rounded up
/// to what such a guess is good for, so that it does not change all the time: 5 seconds below a minute, 30 below ten
/// minutes, then whole minutes. Nothing for the first few files and seconds, which tell too little, and none after the
/// last file.
std::optional<int> SecondsLeft(std::int32_t filesDone, std::int32_t allFiles, int secondsGone);

}  // namespace tessarine

#pragma once

namespace tessarine
{

/// Gives this process the surroundings that the tests are written for, whatever those of its caller are: new files that
/// everybody may read, a plain locale in UTF-8, universal time, windows without scaling or a desktop's style. To be
/// called before anything else, by one thread.
void PinSurroundings();

}  // namespace tessarine

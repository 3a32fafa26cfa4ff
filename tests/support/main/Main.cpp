#include <gmock/gmock.h>

#include "support/Surroundings.h"

/// Runs the tests of everything that has no windows.
int main(int argumentCount, char** arguments)
{
    tessarine::PinSurroundings();
    testing::InitGoogleMock(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}

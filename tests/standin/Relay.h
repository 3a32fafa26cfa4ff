#pragma once

#include "standin/Program.h"
#include "standin/ServedObject.h"

/// A process in the middle: what it serves under PowerPoint's name are objects of a test, so that calls of the test to
/// its own stand-ins leave the process and come back, with all that happens to them on the way.
///
/// The test puts an object (`RelayedRoot`) into the table of running objects, with the members "Create", which gives an
/// application, and "Pass", which takes nothing and gives the object that the test wants to have passed on.
namespace tessarine::standin
{

/// The name under which the test's object stands in the table of running objects.
inline constexpr CLSID RelayedRoot{0x6f6a2c51, 0x1b52, 0x4d63, {0x9a, 0x53, 0x54, 0x45, 0x53, 0x53, 0x41, 0x03}};

/// The program that passes an object of the test on without its being an application ("Pass").
inline constexpr Program RelayProgram{L"Tessarine.Relay",
                                      L"/relay",
                                      {0x6f6a2c51, 0x1b52, 0x4d63, {0x9a, 0x53, 0x54, 0x45, 0x53, 0x53, 0x41, 0x04}},
                                      L"{6F6A2C51-1B52-4D63-9A53-544553534104}",
                                      false};

/// An object whose calls go to another one, and whose results are of the same kind. Null for null.
Reference<IDispatch> Forward(Reference<IDispatch> destination);

/// Serves both programs, any number of times each, until the process that put the root has ended or the root is gone.
/// Gives the process's exit status.
int ServeRelay();

}  // namespace tessarine::standin

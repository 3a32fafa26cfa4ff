#pragma once

#include <sys/types.h>

#include <cstddef>

/// What is to happen at which call, as the environment says.
namespace tessarine::torture
{

/// What a call is about.
struct Subject {
    int descriptor = -1;
    const char* path = nullptr;
};

/// To be called in front of each call. May not return (the program dies), or wait for the attacker. Gives 0 when the
/// call is to be made, else the errno that it fails with.
int Meet(const char* call, Subject subject = {});

/// How many bytes a write of so many may take; 0 means that the disk is full. Bytes taken are counted here.
std::size_t Room(int descriptor, std::size_t wanted);

}  // namespace tessarine::torture

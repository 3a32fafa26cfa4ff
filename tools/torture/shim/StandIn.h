#pragma once

#include <dlfcn.h>

#include <cerrno>
#include <type_traits>

#include "shim/Plan.h"

/// Functions that stand in for those of the C library have names of their own here and get the library's by
/// asm("..."): its headers declare them with attributes that a second definition would have to repeat.
namespace tessarine::torture
{

/// The C library's own function.
template <class Signature>
Signature* Real(const char* name)
{
    return reinterpret_cast<Signature*>(dlsym(RTLD_NEXT, name));
}

/// Makes the call unless it is to fail: then -1 or null, and errno.
template <class Result, class... Parameters>
Result Pass(const char* call, Subject subject, Result (*real)(Parameters...),
            std::type_identity_t<Parameters>... values)
{
    if (const int error = Meet(call, subject)) {
        errno = error;
        if constexpr (std::is_pointer_v<Result>)
            return nullptr;
        else
            return -1;
    }
    return real(values...);
}

}  // namespace tessarine::torture

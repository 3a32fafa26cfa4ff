#pragma once

// Private to this folder: names of the system stay out of what others include.
#include "platform/WindowsHeaders.h"

// After the system's own, which they build on.
#include <objbase.h>
#include <oleauto.h>

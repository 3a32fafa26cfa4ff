#include "office/windows/PowerPointProvider.h"

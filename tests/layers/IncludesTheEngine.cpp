#include "engine/SearchFunctions.h"

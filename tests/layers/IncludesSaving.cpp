#include "saving/ReplacementFile.h"

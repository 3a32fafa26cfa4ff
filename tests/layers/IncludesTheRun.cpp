#include "run/RunLoop.h"

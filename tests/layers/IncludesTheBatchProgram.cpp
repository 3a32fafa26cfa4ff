#include "batch/BatchCall.h"

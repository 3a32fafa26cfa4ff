#include "model/PowerPoint.h"

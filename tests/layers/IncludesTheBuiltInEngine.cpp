#include "office/builtin/Provider.h"

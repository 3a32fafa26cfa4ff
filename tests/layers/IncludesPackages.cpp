#include "office/builtin/package/Package.h"

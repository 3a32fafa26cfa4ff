#include "office/builtin/zip/ZipDirectory.h"

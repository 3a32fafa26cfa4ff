#include "office/builtin/reader/PresentationReader.h"

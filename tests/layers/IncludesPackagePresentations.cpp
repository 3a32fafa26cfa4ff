#include "office/builtin/presentation/PresentationFile.h"

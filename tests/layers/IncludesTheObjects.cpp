#include "office/builtin/objects/PresentationObject.h"

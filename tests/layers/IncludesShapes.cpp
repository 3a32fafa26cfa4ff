#include "office/builtin/shapes/ShapeTree.h"

#pragma once

#include "office/builtin/binary/Drawing.h"
#include "office/builtin/binary/ExternalObjects.h"
#include "office/builtin/reader/PageReader.h"

namespace tessarine::builtin
{

/// The kind that PowerPoint's object model gives a drawn shape.
ShapeFacts FactsOf(const DrawnShape& shape, const ExternalObjects& objects);

}  // namespace tessarine::builtin

#pragma once

#include "support/BinaryDeck.h"

namespace tessarine::test::ppt
{

/// A binary deck with "Fabrikam" in every place that a job can search, and something of everything that holds texts.
BinaryDeck DeckWithEverything();

}  // namespace tessarine::test::ppt

#pragma once

#include <string_view>

/// What all pages of reports have in common: the style and the script. Pages allow exactly these two by their digests,
/// so that no other style or script in a page would ever take effect.
namespace tessarine
{

/// The style: light and dark by the reader's choice, and for paper.
extern const std::string_view PageStyle;
extern const std::string_view PageStyleDigest;  ///< As a policy names it ("sha256-…"); a test tells the right one.

/// The script, which filters the files. Without it the page shows everything, and no controls.
extern const std::string_view PageScript;
extern const std::string_view PageScriptDigest;  ///< Like the other one.

}  // namespace tessarine

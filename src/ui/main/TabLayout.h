#pragma once

#include <QLayout>

/// Distances that the tabs of the main window share, in device-independent pixels.
namespace tessarine
{

inline constexpr int Indent = 22;     ///< Of what belongs to an option button above it.
inline constexpr int ColumnGap = 24;  ///< Between two columns of controls.

/// A layout moved in below its option button.
template <class Layout>
Layout* Indented(Layout* layout)
{
    layout->setContentsMargins(Indent, 0, 0, 0);
    return layout;
}

}  // namespace tessarine

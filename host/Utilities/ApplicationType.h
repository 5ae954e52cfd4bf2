#pragma once

namespace Utilities {

// Where an application shows itself.
enum class ApplicationType : int {
    Background = 0, // no widgets
    Navigation = 1, // a control widget only
    Window = 2      // a control widget in the navigation area and a main widget in the work area
};

} // namespace Utilities

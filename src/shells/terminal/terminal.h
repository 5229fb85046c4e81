// Questions to the terminal and the environment.
#pragma once

namespace kelo::terminal {

/// The descriptor is a terminal that follows commands within the text.
bool isScreen(int descriptor);
/// The descriptor is a terminal that shows colours, and NO_COLOR is not set.
bool wantsColour(int descriptor);
/// Of the terminal behind standard output in character cells; 80 when there is none.
int terminalWidth();

}  // namespace kelo::terminal

// Questions to the terminal and the environment.
#pragma once

namespace kelo::terminal {

/// Takes the place of standard streams that are closed, which then fail as before; without it a
/// file that is opened later would become one of them. To be called before any other file is
/// opened.
void holdStandardStreams();
/// The descriptor is a terminal that follows commands within the text.
bool isScreen(int descriptor);
/// The descriptor is a terminal that shows colours, and NO_COLOR is not set.
bool wantsColour(int descriptor);
/// Of the terminal behind standard output in character cells; 80 when there is none.
int terminalWidth();

}  // namespace kelo::terminal

// How large an array was that could not be held, for a message about it.
//
// Thread: the interpreter's thread only.
#pragma once

namespace kelo {

void noteRefusedBytes(double bytes);
/// The bytes of the last array that was refused since the last call; 0 when none was.
double takeRefusedBytes();

}  // namespace kelo

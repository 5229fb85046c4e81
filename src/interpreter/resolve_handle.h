// The first look at a handle as it is written.
#pragma once

namespace kelo {

class KeloNode;

/// Fills the cache of the node and its HandleDetails: of an anonymous function its body, with the
/// names that it is to capture.
void resolveHandle(KeloNode& node);

}  // namespace kelo

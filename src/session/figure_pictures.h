// The current figure as something to look at: what is to be painted, the mesh of a surface, and
// pictures.
#pragma once

#include <string>

#include "figures/drawing/drawing.h"
#include "session/method.h"

namespace kelo::session {

/// The view that a request gives, 640 x 480 points unless told. throws Refusal, when a side is out
/// of range
drawing::Size viewOf(const Call& call);

/// The display list.
Json drawingJson(const Call& call);

/// The meshes of a surface with its view and colours. throws Refusal, when there is no surface
Json meshJson(const Call& call);

/// A picture as "png", "svg" or "pdf". throws Refusal for what the request may not ask for, Problem
/// when a library is missing
std::string pictureBytes(const Call& call, const std::string& format);

/// The picture in the list of saved figures; empty where pictures cannot be made.
std::string thumbnailOf(const Call& call);

}  // namespace kelo::session

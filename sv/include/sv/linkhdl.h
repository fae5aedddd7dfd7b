// The root of the callers' class trees.

#pragma once

namespace SV {

// Empty: callers derive from it, nothing asks anything of it.
class LinkHdl {};

}  // namespace SV

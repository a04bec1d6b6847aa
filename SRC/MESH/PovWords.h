// Names that a mesh of a file may have in a scene for POV-Ray.
#pragma once

#include <string>

/// ASCII letters, digits and "_", not a digit first; no word of POV-Ray's language, and nothing that our scenes
/// declare for themselves.
bool IsFreePovName(const std::string& name);

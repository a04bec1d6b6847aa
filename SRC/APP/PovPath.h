// The film's camera as text for scenes of POV-Ray that users write themselves.
#pragma once

#include <wx/string.h>

class Main_cls;

/// Where camera and anchor are at POV-Ray's clock, 0 to 1, and a camera that is there. An anchor that follows
/// a particle goes straight from picture to picture of the film; where its place isn't known yet it goes on
/// from the last known one to the next, which the user is told.
wxString GetPathPov(const Main_cls& main);

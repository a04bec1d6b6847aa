// Comparison with a picture that was looked at and kept (tests/golden).
//
// Drivers and fonts differ by a little: a picture counts as the same when its channels differ by 1.5 of 255
// on average at most, and no more than 1 pixel in 100 by over 48.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "GuiTest.h"

/// Success, or what differs; then the picture and the difference, brightened, lie in MORENTIS_GUI_PICTURES,
/// else in the folder for temporary files. With MORENTIS_WRITE_GOLDEN in the environment the picture is kept
/// as the new one instead.
::testing::AssertionResult IsGolden(const std::string& name, const Picture_st& picture);

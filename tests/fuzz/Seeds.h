// What inputs are made from.
#pragma once

#include <string>
#include <vector>

/// All files below these folders of the checkout, cut off at a length that mutation gets through.
std::vector<std::string> ReadSeeds(const std::vector<std::string>& folders);
/// One picture of each kind that carries a project.
std::vector<std::string> MakePictures();

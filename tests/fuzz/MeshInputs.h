// Texts of meshes, mostly in order, with what goes wrong in them.
#pragma once

#include <random>
#include <string>

std::string MakeMeshInput(std::mt19937& random);

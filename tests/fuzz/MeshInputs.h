// Texts of meshes, mostly in order, with what goes wrong in them.
#pragma once

#include <random>
#include <string>

std::string MakeObjInput(std::mt19937& random);
std::string MakeMesh2Input(std::mt19937& random);

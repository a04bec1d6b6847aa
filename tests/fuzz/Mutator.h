// Inputs out of other inputs.
#pragma once

#include <random>
#include <string>
#include <vector>

/// One change: of a byte or a number, something cut away, doubled or put in.
void MutateOnce(std::string& bytes, std::mt19937& random);
/// The first part of one and the last part of another.
std::string Splice(const std::string& first, const std::string& last, std::mt19937& random);

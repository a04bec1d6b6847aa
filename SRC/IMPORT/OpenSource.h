// Which format a file has, and who reads it.
#pragma once

#include <memory>
#include <string>
#include <vector>

class ParticleSource_cls;
struct ImportChoice_st;

/// Files in the order of the numbers in their names; parts of one snapshot stand for one.
std::vector<std::string> OrderImportFiles(const std::vector<std::string>& files);

/// The format that a file's contents show: one of the words of --from. Throws ImportError_cls when there is
/// none.
std::string GuessImportFormat(const std::string& path);

/// Throws ImportError_cls.
std::unique_ptr<ParticleSource_cls> OpenImportSource(const std::string& path, const std::string& format,
                                                     const ImportChoice_st& choice);

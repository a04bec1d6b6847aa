// What is fuzzed. A target takes any bytes; a broken promise of the code under it ends the process.
#pragma once

#include <string>

/// A promise that held for every input so far; the process ends when it is broken.
void Promise(bool bKept, const char* what);

/// Head and body of a snapshot, binary and text, under grammars that the first bytes pick.
void FuzzSnapshot(const std::string& bytes);
/// The guess at a grammar.
void FuzzGuess(const std::string& bytes);
/// Every object that reads lines of a project, but for those that need a window.
void FuzzProject(const std::string& bytes);
/// The readers of meshes in text.
void FuzzMesh(const std::string& bytes);
/// Whether a picture carries a project.
void FuzzPicture(const std::string& bytes);

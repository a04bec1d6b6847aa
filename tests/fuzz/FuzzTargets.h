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
/// The same, and what only the configure file keeps.
void FuzzConfigure(const std::string& bytes);

/// Meshes.
void FuzzObj(const std::string& bytes);
void FuzzMesh2(const std::string& bytes);
void FuzzStl(const std::string& bytes);
void FuzzPly(const std::string& bytes);
void FuzzGlb(const std::string& bytes);

/// Lists of sticks: ".bond", and text.
void FuzzBond(const std::string& bytes);
void FuzzSticks(const std::string& bytes);
/// The record of what a user did.
void FuzzRecord(const std::string& bytes);

/// What the importer reads, and the note that it leaves for itself.
void FuzzXyz(const std::string& bytes);
void FuzzDump(const std::string& bytes);
void FuzzCsv(const std::string& bytes);
void FuzzVtk(const std::string& bytes);
void FuzzHdf5(const std::string& bytes);
void FuzzH5md(const std::string& bytes);
void FuzzNote(const std::string& bytes);

/// Whether a picture carries a project.
void FuzzPicture(const std::string& bytes);
/// Pictures that POV-Ray writes: OpenEXR, Radiance HDR, PPM.
void FuzzLinear(const std::string& bytes);

// Lines of OBJ files as programs write them, read whole registers at a time.
//
// A place (or normal): three numbers of digits with one point each, up to 15 digits, and maybe a minus. A
// face: three corners, all of the form "v", "v/t", "v//n" or "v/t/n", of up to 8 digits a number, none 0. One
// space between two words, a line feed behind the last, within 62 characters. Such lines come out to the bit
// as by the plain way; for all others there is none but that.
#pragma once

#include <cstddef>

constexpr size_t kLineReach = 96; ///< bytes from where a line begins that are looked at, and must be there

/// Lines in a run, as many as are of the form.
struct ObjRun_st {
    const char* mpNext; ///< from where the first one begins to where the last one ended
    const char* mpEnd;  ///< no line begins here
    size_t mNumber;     ///< lines, in front up to how many
};

// Only with HasWideRegisters.

/// Places behind "v ", or where `bNormals` says so, normals behind "vn ". `pTo` has room for one number more.
void ReadPlainPlaces(bool bNormals, ObjRun_st* pRun, float* pTo);
/// Corners, from 0; normals, too, when pNormal isn't null, else lines that have some end the run. Both have
/// room for one number more.
void ReadPlainFaces(ObjRun_st* pRun, int* pVertex, int* pNormal);

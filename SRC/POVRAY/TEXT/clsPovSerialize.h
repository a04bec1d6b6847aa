// Numbers, vectors and colours as text of a scene for POV-Ray.
#pragma once

#include <string>

/// Text is UTF-8. There is no blank between a keyword and its vector.
class PovSerialize_cls {
public:
    /// `text` and behind it "<x,y,z>" with so many decimals.
    static std::string PovOut3d(std::string text, const double* p, int decimals);
    static std::string PovOut3f(std::string text, const float* p, int decimals);
    /// The same of four numbers.
    static std::string PovOut4f(std::string text, const float* p, int decimals);
    /// The same of RGBA, alpha turned into POV-Ray's transmit.
    static std::string PovOut4fRGBTfromRGBA(std::string text, const float* pColor, int decimals);
    /// `text` and behind it the nine numbers of a matrix, each with a comma. POV-Ray refuses one that can't
    /// be turned round: what is flat gets a thickness that just shows in the decimals.
    static std::string PovOutRows(std::string text, const double (*rows)[3], int decimals);
    /// A scale whose factors that would be written as 0, which POV-Ray takes for 1, are the smallest that
    /// show.
    static std::string PovOutScale(std::string text, const double* factors, int decimals);
    /// As PovOut3d, with each number as short as it can be.
    static std::string PovOut3dS(std::string text, const double* p, int decimals);
    /// Six decimals, without zeros at their end.
    static std::string GetShortString(double value) { return GetCutoffString(value, 6); }
    /// So many decimals, without zeros at their end, nor a point that has nothing behind it.
    static std::string GetCutoffString(double value, int decimals);
    /// "%f".
    static std::string PovOutF(double value) { return PovOutF(value, 6); }
    static std::string PovOutF(double value, int decimals);
    /// "%g".
    static std::string PovOutG(double value);
};

#include "POVRAY/TEXT/clsPovSerialize.h"

#include "POVRAY/TEXT/PovNumber.h"

namespace {

template <class T>
std::string Append(std::string text, const T* p, int count, int decimals) {
    for (int i = 0; i < count; ++i) {
        text += i == 0 ? '<' : ',';
        AppendFixed(&text, static_cast<double>(p[i]), decimals);
    }
    text += '>';
    return text;
}

} // namespace

std::string PovSerialize_cls::PovOut3d(std::string text, const double* p, int decimals) {
    return Append(std::move(text), p, 3, decimals);
}

std::string PovSerialize_cls::PovOut3f(std::string text, const float* p, int decimals) {
    return Append(std::move(text), p, 3, decimals);
}

std::string PovSerialize_cls::PovOut4f(std::string text, const float* p, int decimals) {
    return Append(std::move(text), p, 4, decimals);
}

std::string PovSerialize_cls::PovOut4fRGBTfromRGBA(std::string text, const float* pColor, int decimals) {
    const float rgbt[4] = {pColor[0], pColor[1], pColor[2], 1.0f - pColor[3]};
    return PovOut4f(std::move(text), rgbt, decimals);
}

std::string PovSerialize_cls::PovOut3dS(std::string text, const double* p, int decimals) {
    for (int i = 0; i < 3; ++i) {
        text += i == 0 ? '<' : ',';
        text += GetCutoffString(p[i], decimals);
    }
    return text + '>';
}

std::string PovSerialize_cls::GetCutoffString(double value, int decimals) {
    std::string text = PovOutF(value, decimals);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

std::string PovSerialize_cls::PovOutF(double value, int decimals) {
    std::string text;
    AppendFixed(&text, value, decimals);
    return text;
}

std::string PovSerialize_cls::PovOutG(double value) {
    std::string text;
    AppendGeneral(&text, value);
    return text;
}

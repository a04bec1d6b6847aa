#include "COLORCURVE/EDITOR/clsColorCurveGraph.h"

#include <algorithm>
#include <cmath>

#include "COLORCURVE/EDITOR/clsColorCurveEdit.h"
#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/Globals.h"
#include "PARAM/clsParamGroup.h"
#include "WIDGET/clsColourDialogEX.h"

namespace {

constexpr int kLeft = 34; // room for the values' labels
constexpr int kRight = 12;
constexpr int kBarHeight = 28;
constexpr int kStopHeight = 16;
constexpr int kAxisHeight = 26;
constexpr int kGap = 4;
constexpr int kHandle = 44;    // length of a tangent's handle
constexpr double kRoom = 0.06; // of the values above and below

} // namespace

ColorCurveGraph_cls::ColorCurveGraph_cls(wxWindow* pParent, ColorCurveEdit_cls* pEdit) : mpCEdit(pEdit) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxWANTS_CHARS);
    SetMinSize(FromDIP(wxSize(360, 220)));
    Bind(wxEVT_PAINT, &ColorCurveGraph_cls::OnPaint, this);
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        Refresh();
        event.Skip();
    });
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        Refresh();
        event.Skip();
    });
    const auto refresh = [this](wxFocusEvent& event) {
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_SET_FOCUS, refresh);
    Bind(wxEVT_KILL_FOCUS, refresh);
    BindMouse();
}

void ColorCurveGraph_cls::SetHistogram(std::vector<float> bins) {
    if (bins == mVHistogram) return;
    mVHistogram = std::move(bins);
    Refresh();
}

void ColorCurveGraph_cls::ShowChannel(int channel, bool bShow) {
    mpCEdit->ShowChannel(channel, bShow);
    Edited();
}

bool ColorCurveGraph_cls::IsChannelShown(int channel) const { return mpCEdit->IsChannelShown(channel); }

wxRect ColorCurveGraph_cls::GetBar() const {
    const int left = FromDIP(kLeft);
    return wxRect(left, FromDIP(kGap), std::max(GetClientSize().x - left - FromDIP(kRight), 2),
                  FromDIP(kBarHeight));
}

wxRect ColorCurveGraph_cls::GetStopStrip() const {
    const wxRect bar = GetBar();
    return wxRect(bar.x, bar.GetBottom() + 1, bar.width, FromDIP(kStopHeight));
}

wxRect ColorCurveGraph_cls::GetPlot() const {
    const wxRect strip = GetStopStrip();
    const int top = strip.GetBottom() + 1 + FromDIP(kGap);
    return wxRect(strip.x, top, strip.width, std::max(GetClientSize().y - top - FromDIP(kAxisHeight), 2));
}

double ColorCurveGraph_cls::ToX(double position) const {
    const wxRect plot = GetPlot();
    return plot.x + position * plot.width;
}

double ColorCurveGraph_cls::ToPosition(double x) const {
    const wxRect plot = GetPlot();
    return (x - plot.x) / plot.width;
}

double ColorCurveGraph_cls::ToY(double value) const {
    const wxRect plot = GetPlot();
    return plot.y + plot.height * (1.0 + kRoom - value) / (1.0 + 2 * kRoom);
}

double ColorCurveGraph_cls::ToValue(double y) const {
    const wxRect plot = GetPlot();
    return 1.0 + kRoom - (y - plot.y) / plot.height * (1.0 + 2 * kRoom);
}

bool ColorCurveGraph_cls::GetHandle(int channel, int key, int side, wxPoint2DDouble* pPoint) const {
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    if (!pCurve) return false;
    const Parameters_cls& param = pCurve->mpCParamGroup->mVParams[static_cast<size_t>(channel)];
    const auto& keys = param.GetKeys();
    if (key < 0 || key >= param.GetKeyNumber()) return false;
    // A tangent acts in a segment that begins at a Hermite key: its own, or the one that ends here.
    const int begin = side > 0 ? key : key - 1;
    if (begin < 0 || begin + 1 >= param.GetKeyNumber()) return false;
    const unsigned kind = keys[static_cast<size_t>(begin)].mInterpType;
    if (kind == INTERP_LINEAR || kind == INTERP_STEP) return false;
    const KeyFrame_cls& at = keys[static_cast<size_t>(key)];
    const wxRect plot = GetPlot();
    const double dx = plot.width;
    const double dy = -param.GetHermiteVelocity(key) * plot.height / (1.0 + 2 * kRoom);
    const double length = std::hypot(dx, dy);
    if (!std::isfinite(length)) return false;
    const double scale = side * FromDIP(kHandle) / length;
    *pPoint = wxPoint2DDouble(ToX(at.mDoubleIndex) + dx * scale, ToY(at.mValue) + dy * scale);
    return true;
}

wxColour ColorCurveGraph_cls::GetChannelColour(int channel, bool bDark) {
    static constexpr unsigned char kLight[kChannelNumber][3] = {
        {0xD0, 0x3A, 0x3A}, {0x2E, 0x8B, 0x45}, {0x2F, 0x66, 0xCC}, {0x60, 0x60, 0x66}};
    static constexpr unsigned char kDark[kChannelNumber][3] = {
        {0xFF, 0x7B, 0x72}, {0x6F, 0xD0, 0x8C}, {0x79, 0xB0, 0xFF}, {0xC8, 0xC8, 0xCE}};
    const unsigned char* pRgb = bDark ? kDark[channel] : kLight[channel];
    return wxColour(pRgb[0], pRgb[1], pRgb[2]);
}

void ColorCurveGraph_cls::AskStopColor(double position) {
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    if (!pCurve) return;
    float color[4];
    for (size_t c = 0; c < 4; ++c)
        color[c] = static_cast<float>(pCurve->mpCParamGroup->mVParams[c].Evaluate(position, 0.0));
    const auto byte = [](float value) {
        return static_cast<unsigned char>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f));
    };
    const wxColour old(byte(color[0]), byte(color[1]), byte(color[2]));
    wxColourDialogEX local(wxGetTopLevelParent(this));
    wxColourDialogEX* dialog = GpCClrDialog ? GpCClrDialog : &local;
    dialog->SetColour(old);
    if (dialog->ShowModal() != wxID_OK || dialog->GetColour() == old) return;
    const wxColour chosen = dialog->GetColour();
    color[0] = static_cast<float>(chosen.Red()) / 255.0f;
    color[1] = static_cast<float>(chosen.Green()) / 255.0f;
    color[2] = static_cast<float>(chosen.Blue()) / 255.0f;
    mpCEdit->SetStopColor(position, color, false);
    Edited();
}

void ColorCurveGraph_cls::Edited() {
    Refresh();
    if (mOnEdited) mOnEdited();
}

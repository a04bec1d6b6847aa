#include "GL/DRAW/clsGLAttributeGUI.h"

#include <wx/bookctrl.h>
#include <wx/button.h>
#include <wx/intl.h>

#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "PDATA/ParticleScalars.h"

namespace {

NumSpec Range(double low, double high, double step, bool bRelative = false) {
    NumSpec spec = RangeSpec(low, high, step);
    spec.mbRelative = bRelative;
    return spec;
}

/// As 1,234,567, whatever the locale.
wxString GroupDigits(long long number) {
    wxString text = wxString::Format("%lld", number);
    for (size_t at = text.length(); at > 3; at -= 3)
        text.insert(at - 3, ",");
    return text;
}

} // namespace

GLAttributeGUI_cls::GLAttributeGUI_cls(wxWindow* pParent, GLAttribute_cls* pAttribute)
    : MultiInputPanel_cls(pParent), mpCAttribute(pAttribute) {
    AddCountRow();
    // "Both" draws nothing and so isn't offered; a project that holds it shows and keeps it.
    mRowDrawType = AddChoice(_("Draw Type"), &mpCAttribute->mDrawType.mValue,
                             std::vector<ChoiceItem>{{DRAW_POINT, _("Point"), true},
                                                     {DRAW_BILLBOARD, _("Billboard"), true},
                                                     {DRAW_SPHERE, _("Sphere"), true},
                                                     {DRAW_BOTH, _("Both"), false},
                                                     {DRAW_HIDE, _("Hide"), true}},
                             _("What stands for a particle"));
    AddPointRows();
    AddRadiusRows();
    AddAlphaRows();
    AddColorRows();
    SetUndo(UPDATE_SNAPDATA | UPDATE_COLOR | UPDATE_GL | UPDATE_ATTRIB);
    HideAndShow();
}

void GLAttributeGUI_cls::AddCountRow() {
    mRowCount = AddStatic(
        _("Particles"), [this] { return GetCountText(); },
        _("How many particles of this frame this attribute draws"));
    mpCButtonMost =
        AddButtonTo(mRowCount, wxString::Format("%s %d", _("Attrib"), 0),
                    _("To the page of the class that has most particles"), [this] { GoToMost(); });
}

void GLAttributeGUI_cls::ShowCounts(const DrawnCounts_st& counts) {
    if (counts == mCounts) return;
    mCounts = counts;
    UpdateValues(); // the text, and whether there is any
}

wxString GLAttributeGUI_cls::GetCountText() const {
    const long long number = mCounts.mNumber[static_cast<size_t>(mpCAttribute->mIndex)];
    if (!mCounts.mbKnown) return wxString();
    if (number == 0)
        return mCounts.mbClassify ? _("none of this class") : _("none: the first page draws all");
    const bool bHidden = mpCAttribute->mDrawType.mValue >= DRAW_BOTH;
    return bHidden ? GroupDigits(number) + _(", hidden") : GroupDigits(number);
}

void GLAttributeGUI_cls::GoToMost() {
    for (wxWindow* pWindow = GetParent(); pWindow; pWindow = pWindow->GetParent())
        if (auto* book = dynamic_cast<wxBookCtrlBase*>(pWindow)) {
            book->SetSelection(static_cast<size_t>(mCounts.GetMost()));
            return;
        }
}

void GLAttributeGUI_cls::AddPointRows() {
    GLAttribute_cls& a = *mpCAttribute;
    mRowQuality =
        AddChoice(_("Quality"), &a.mDrawQuality.mValue,
                  std::vector<ChoiceItem>{{0, _("Low"), true},
                                          {1, _("Middle"), true},
                                          {2, _("High"), true},
                                          {3, _("Exact"), false}}, // left by spheres
                  _("Low: billboards lie in the plane of the view; else, with all attributes in use, "
                    "they face the eye"));
    mRowFineness =
        AddChoice(_("Quality"), &a.mDrawQuality.mValue, {_("Low"), _("Middle"), _("High"), _("Exact")},
                  _("Fineness of the mesh of a sphere; Exact draws true spheres, and much faster"));
    mRowBlend = AddChoice(_("Blend Type"), &a.mBlendType.mValue, {_("AlphaBlend"), _("Additive")},
                          _("How a particle mixes with what is behind it"));
    mRowPointSize = AddNumber(_("Point Size"), &a.mPointSize.mValue, 1, Range(1, 200, 1),
                              _("Edge of a point in pixels of the picture"));
    mRowShader = AddChoice(_("Shader"), &a.mShaderType.mValue,
                           {_("original"), _("Gouroud"), _("Phong"), _("Toon")}, _("Lighting of spheres"));
    mRowTexture =
        AddFile(_("Texture"), &a.mTexFileBillboard.mStrValue, _("Select a texture"),
                "Image (*.png;*.jpg;*.bmp;*.tif)|*.png;*.jpg;*.bmp;*.tif|All|*", _("Picture on billboards"));
}

void GLAttributeGUI_cls::AddRadiusRows() {
    GLAttribute_cls& a = *mpCAttribute;
    mRowRadiusType = AddChoice(_("Radius"), &a.mRadiusType.mValue, {_("Use Data"), _("Constant (unity)")},
                               _("Where the radius comes from"));
    mRowRadiusFactor = AddNumber(_("Radius Factor"), &a.mRadiusFactor.mValue, 1, Range(0, 1e6, 0.1, true),
                                 _("Multiplies the radius in the data"));
    mRowRadiusConst =
        AddNumber(_("Radius Value"), &a.mRadiusFactorForConst.mValue, 1, Range(0, 1e6, 0.001, true),
                  _("Radius of every particle, in units of the data"));
}

void GLAttributeGUI_cls::AddAlphaRows() {
    GLAttribute_cls& a = *mpCAttribute;
    mRowAlphaType =
        AddChoice(_("Alpha"), &a.mAlphaType.mValue, {_("Constant (unity)"), _("Depend on R (power -2)")},
                  _("Whether larger particles are more transparent: billboards, and spheres with all "
                    "attributes in use; points never are"));
    mRowAlphaFactor = AddNumber(_("Alpha Factor"), &a.mAlphaFactor.mValue, 1, Range(0, 100, 0.01, true),
                                _("Multiplies the colour's alpha"));
    mRowAlphaBase = AddNumber(_("Base/Max"), &a.mAlphaDependBase.mValue, 1, Range(0, 1e6, 0.1, true),
                              _("Radius with full alpha, in units of the data"));
    AddNumberTo(mRowAlphaBase, &a.mAlphaMax.mValue, Range(0, 100, 0.1), _("Limit of that alpha"));
}

void GLAttributeGUI_cls::AddColorRows() {
    GLAttribute_cls& a = *mpCAttribute;
    ColorCurve_cls& color = a.mColor;
    mRowUseCurve = AddCheck(_("Color"), &color.mbUseColorCurve.mValue, _("By a quantity"),
                            _("Colour each particle by one of its quantities"));
    mRowColor = AddColor("", color.mConstantColor.mValue, _("Colour of all particles of this attribute"));
    mRowCurve = AddColorCurve(*this, "", &color, _("Colours by the quantity; a click opens the editor"));
    mRowDepend = AddChoice(_("Depend on"), &color.mDependType.mValue, ParticleScalars_st::GetLabels(),
                           _("The quantity that chooses the colour"));
    mRowScaling = AddNumber(_("Scaling"), &color.mScalingMin.mValue, 1, Range(-1e30, 1e30, 0.1),
                            _("Quantity at the start of the curve, in units of the data"));
    AddNumberTo(mRowScaling, &color.mScalingMax.mValue, Range(-1e30, 1e30, 0.1),
                _("Quantity at the end of the curve, in units of the data"));
    mRowFit = AddFitRange(*this, &color);
    mRowAmbient = AddColorCurve(*this, _("Ambient"), &a.mAmbient, _("Colour of spheres in the shade"));
    mRowDiffuse = AddColorCurve(*this, _("Diffuse"), &a.mDiffuse, _("Colour of spheres in the light"));
    mRowSpecular = AddColorCurve(*this, _("Specular"), &a.mSpecular, _("Colour of highlights"));
}

bool GLAttributeGUI_cls::IsDrawType(unsigned type) const { return mpCAttribute->mDrawType.mValue == type; }

void GLAttributeGUI_cls::UpdateValues() {
    MultiInputPanel_cls::UpdateValues(kAllRows);
    HideAndShow();
}

void GLAttributeGUI_cls::HideAndShow() {
    const GLAttribute_cls& a = *mpCAttribute;
    const bool bPoint = IsDrawType(DRAW_POINT);
    const bool bBillboard = IsDrawType(DRAW_BILLBOARD) || IsDrawType(DRAW_BOTH);
    const bool bSphere = IsDrawType(DRAW_SPHERE) || IsDrawType(DRAW_BOTH);
    const bool bAny = bPoint || bBillboard || bSphere;
    const int most = mCounts.GetMost();
    Freeze();
    ShowRow(mRowCount, mCounts.mbKnown);
    const bool bEmpty = mCounts.mNumber[static_cast<size_t>(a.mIndex)] == 0;
    mpCButtonMost->Show(mCounts.mbKnown && bEmpty && most != a.mIndex);
    mpCButtonMost->SetLabel(wxString::Format("%s %d", _("Attrib"), most));
    ShowRow(mRowPointSize, bPoint);
    ShowRow(mRowQuality, bBillboard);
    ShowRow(mRowFineness, bSphere && !bBillboard);
    ShowRow(mRowBlend, bAny);
    ShowRow(mRowShader, bSphere);
    ShowRow(mRowTexture, bBillboard);
    ShowRow(mRowRadiusType, bAny);
    ShowRow(mRowRadiusFactor, bAny && a.mRadiusType.mValue != RADIUS_CONSTANT);
    ShowRow(mRowRadiusConst, bAny && a.mRadiusType.mValue == RADIUS_CONSTANT);
    ShowRow(mRowAlphaType, bAny);
    ShowRow(mRowAlphaFactor, bAny && !(bBillboard && a.mAlphaType.mValue == ALPHA_BY_RADIUS));
    ShowRow(mRowAlphaBase, bAny && a.mAlphaType.mValue == ALPHA_BY_RADIUS);
    const bool bOwnColor = bPoint || bBillboard;
    const bool bCurve = a.mColor.mbUseColorCurve.mValue;
    ShowRow(mRowUseCurve, bOwnColor);
    ShowRow(mRowColor, bOwnColor && !bCurve);
    ShowRow(mRowCurve, bOwnColor && bCurve);
    ShowRow(mRowDepend, bOwnColor && bCurve);
    ShowRow(mRowScaling, bOwnColor && bCurve);
    ShowRow(mRowFit, bOwnColor && bCurve);
    ShowRow(mRowAmbient, bSphere);
    ShowRow(mRowDiffuse, bSphere);
    ShowRow(mRowSpecular, bSphere);
    Layout(); // of the first row, too
    Thaw();
}

void GLAttributeGUI_cls::FuncHookClick(int) {
    HideAndShow();
    Redraw();
}

void GLAttributeGUI_cls::FuncHookCombobox(int) {
    HideAndShow();
    Redraw();
}

void GLAttributeGUI_cls::FuncHookValue(int, bool) { Redraw(); }

void GLAttributeGUI_cls::Redraw() {
    GbSnapDataRefresh.store(true);
    PostMenuEvent(ID_REFRESH_GL);
}

wxWindow* GLAttribute_cls::InstantiateGUI(wxWindow* pParent) {
    mpCGUI = new GLAttributeGUI_cls(pParent, this);
    return mpCGUI;
}

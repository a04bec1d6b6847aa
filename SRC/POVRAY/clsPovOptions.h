// Pages of POV-Ray settings: the base that they share, and the five of the dialog.
#pragma once

#include <functional>

#include "WIDGET/clsImgSizeTemplate.h"
#include "WIDGET/clsMultiInputPanel.h"

class PovAdvanced_cls;
class PovFormat_cls;
class PovPhotons_cls;
class PovRadiosity_cls;
class PovRayCtrl_cls;
class PovRender_cls;
class wxChoice;

/// What is being typed in a panel counts as it stands.
void CommitFields(MultiInputPanel_cls& panel);

class PovOptions_cls : public MultiInputPanel_cls {
public:
    explicit PovOptions_cls(wxWindow* pParent);
    /// For the size that the page may need; UpdateValues hides what doesn't count.
    void ShowAllRows();

protected:
    /// A line for ShowRow to show; one of a field's width.
    int AddWarning(const wxString& text, const wxString& tip);
    /// All rows are there.
    void FinishPage();
    void GiveRoom();
    /// Show the rows that count with the settings as they are.
    virtual void HideAndShow() {}
};

class PovFormatPage_cls final : public PovOptions_cls, public ImgSizeTemplate_cls {
public:
    PovFormatPage_cls(wxWindow* pParent, PovRayCtrl_cls& ctrl);

private:
    void SetMNumSize();
    void SetMNumScene();
    void HideAndShow() override;
    void HookGeometry();

    PovRayCtrl_cls& mCtrl;
    PovFormat_cls& mFormat;
    wxChoice* mpCSizes = nullptr;
    int mRowSize = 0;
    int mRowRefusal = 0;
    int mRowJitter = 0;
    bool mbCustom = false; ///< the fields are wanted although they hold one of the usual sizes
};

class PovRenderPage_cls final : public PovOptions_cls {
public:
    PovRenderPage_cls(wxWindow* pParent, PovRender_cls& render);

private:
    void HideAndShow() override;

    PovRender_cls& mRender;
    int mRowCustom = 0;
};

class PovRadiosityPage_cls final : public PovOptions_cls {
public:
    PovRadiosityPage_cls(wxWindow* pParent, PovRayCtrl_cls& ctrl);

private:
    void SetMNumRadiosity();
    void HideAndShow() override;

    PovRadiosity_cls& mRadiosity;
    bool* mpKeepFirst;
    int mRowReuse = 0;
    int mRowFile = 0;
    int mRowName = 0; ///< what is wrong with it
};

class PovPhotonsPage_cls final : public PovOptions_cls {
public:
    PovPhotonsPage_cls(wxWindow* pParent, PovPhotons_cls& photons);

private:
    void SetMNumPhotons();
    void HideAndShow() override;

    PovPhotons_cls& mPhotons;
};

/// The panel of "Pov-Ray Advanced Settings".
class PovAdvancedPage_cls final : public PovOptions_cls {
public:
    PovAdvancedPage_cls(wxWindow* pParent, PovRayCtrl_cls& ctrl);
};

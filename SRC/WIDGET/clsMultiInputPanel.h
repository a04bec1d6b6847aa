// A panel of labelled rows of typed fields, bound to plain values: labels in one column, fields in
// another. All pages and dialogs are made of it, so the same field looks and works the same everywhere.
//
// Rows are numbered from 0 as they are added. A change by the user is written to the bound value first
// and told afterwards; UpdateValues shows values that changed elsewhere. With SetUndo each gesture (typing
// and Enter, an arrow held, a burst of the wheel, a drag) is one step of the undo list.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <wx/panel.h>

#include "WIDGET/NumberText.h"

class FieldUndo_cls;
class KeyButton_cls;
class ParamEdit_cls;
class ParamGroup_cls;
class wxButton;
class wxFlexGridSizer;
class wxSizer;

/// A value of a choice and its label; an entry that isn't offered is shown only while it is the value.
struct ChoiceItem {
    unsigned mValue;
    wxString mLabel;
    bool mbOffered = true;
};

class MultiInputPanel_cls : public wxPanel {
public:
    static constexpr int kMaxField = 4; ///< numbers in a row at most
    static constexpr int kAllRows = -3; ///< for UpdateValues

    explicit MultiInputPanel_cls(wxWindow* pParent, int labelWidth = 0);
    ~MultiInputPanel_cls() override;

    /// Rows from here on have a label column of this width to themselves: short labels leave fields more
    /// room.
    void BeginColumns(int labelWidth);

    // Rows; each returns its number. `tip` says what the value is, with its unit; the range is added.
    int AddNumber(const wxString& label, float* pValue, int count, const NumSpec& spec, const wxString& tip);
    int AddNumber(const wxString& label, double* pValue, int count, const NumSpec& spec, const wxString& tip);
    int AddNumber(const wxString& label, int* pValue, int count, const NumSpec& spec, const wxString& tip);
    int AddNumber(const wxString& label, unsigned* pValue, int count, const NumSpec& spec,
                  const wxString& tip);
    /// A number that lives behind two functions.
    int AddNumber(const wxString& label, std::function<double()> get, std::function<void(double)> set,
                  const NumSpec& spec, const wxString& tip);
    int AddChoice(const wxString& label, unsigned* pValue, const std::vector<ChoiceItem>& items,
                  const wxString& tip);
    int AddChoice(const wxString& label, unsigned* pValue, const std::vector<wxString>& labels,
                  const wxString& tip);
    int AddChoice(const wxString& label, int* pValue, const std::vector<wxString>& labels,
                  const wxString& tip);
    /// The labels of false and of true.
    int AddChoice(const wxString& label, bool* pValue, const std::vector<wxString>& labels,
                  const wxString& tip);
    /// One more choice at the end of a row.
    void AddChoiceTo(int row, unsigned* pValue, const std::vector<wxString>& labels, const wxString& tip);
    void AddChoiceTo(int row, int* pValue, const std::vector<wxString>& labels, const wxString& tip);
    int AddCheck(const wxString& label, bool* pValue, const wxString& text, const wxString& tip);
    /// One more check box at the end of a row.
    void AddCheckTo(int row, bool* pValue, const wxString& text, const wxString& tip);
    /// One more number at the end of a row.
    void AddNumberTo(int row, float* pValue, const NumSpec& spec, const wxString& tip);
    void AddNumberTo(int row, int* pValue, const NumSpec& spec, const wxString& tip);
    void AddNumberTo(int row, unsigned* pValue, const NumSpec& spec, const wxString& tip);
    /// Red, green, blue, alpha, 0..1: a swatch, and alpha as a number.
    int AddColor(const wxString& label, float* pColor, const wxString& tip);
    int AddText(const wxString& label, wxString* pValue, const wxString& tip);
    /// A path with a button that asks for it.
    int AddFile(const wxString& label, wxString* pValue, const wxString& message, const wxString& wildcard,
                const wxString& tip);
    /// A value that is only shown; `get` gives its text.
    int AddStatic(const wxString& label, std::function<wxString()> get, const wxString& tip);
    /// An animated setting: one number a dimension, each with a diamond that sets or removes its key. Edits
    /// are keys at the current time, always as steps of the undo list. The group outlives the panel.
    int AddParam(const wxString& label, ParamGroup_cls* pGroup, const NumSpec& spec, const wxString& tip);
    /// One dimension of such a setting alone.
    int AddParam(const wxString& label, ParamGroup_cls* pGroup, int dimension, const NumSpec& spec,
                 const wxString& tip);
    /// The same at the end of a row.
    void AddParamTo(int row, ParamGroup_cls* pGroup, int dimension, const NumSpec& spec, const wxString& tip);
    int AddButton(const wxString& label, const wxString& text, const wxString& tip);
    /// A button of the row's last field.
    wxButton* AddButtonTo(int row, const wxString& text, const wxString& tip, std::function<void()> press);
    int AddCaption(const wxString& text);
    /// A window made by the caller, child of this panel.
    int AddWindow(const wxString& label, wxWindow* pWindow);
    /// One more at the end of a row.
    void AddWindowTo(int row, wxWindow* pWindow);
    /// Called by UpdateValues for the row: brings a window of the caller's up to date.
    void AddRefresh(int row, std::function<void()> refresh);

    /// From now on what the user changes is undoable, and makes stale what the mask says
    /// (COMMON/UpdateBits.h). The bound values must live as long as the program.
    void SetUndo(long long updateMask);
    /// Show all values in every panel with SetUndo or AddParam: something was done or undone.
    static void UpdateAllPanels();
    /// Show the values of all AddParam rows: the time, or a curve, is another.
    static void UpdateAllParams();

    /// Show the value of one row, or of all (kAllRows, and any other negative number).
    void UpdateValues(int which = kAllRows);
    void ShowRow(int row, bool bShow);
    void EnableRow(int row, bool bEnable);
    /// Field k of a row: a NumField_cls, wxChoice, wxCheckBox, ColorSwatch_cls, wxTextCtrl or wxButton.
    wxWindow* GetField(int row, int k = 0) const;
    KeyButton_cls* GetKeyButton(int row, int dimension = 0) const; ///< of an AddParam row, else null
    int GetRowCount() const;
    /// Told after the hooks below, whatever changed. bFinal is false while a gesture is under way.
    void SetOnChange(std::function<void(int row, bool bFinal)> handler) { mOnChange = std::move(handler); }

protected:
    /// A check box, swatch, file or button.
    virtual void FuncHookClick(int) {}
    /// A choice.
    virtual void FuncHookCombobox(int) {}
    /// A number or text.
    virtual void FuncHookValue(int, bool) {}
    /// The mouse on the panel or a label.
    virtual void FuncHookMouse(wxMouseEvent& event) { event.Skip(); }

private:
    struct Row;
    enum class Hook { Click, Choice, Value };

    int NewRow(const wxString& label, const wxString& tip, bool bGrip = false);
    wxWindow* Place(int row, wxWindow* pWindow, int proportion);
    template <class T>
    int AddNumbers(const wxString& label, T* pValue, int count, NumSpec spec, const wxString& tip);
    template <class T>
    void PlaceOneMore(int row, T* pValue, NumSpec spec, const wxString& tip);
    using Undo = std::shared_ptr<FieldUndo_cls>;
    void PlaceNumber(int row, std::function<double()> get, std::function<void(double)> set,
                     const NumSpec& spec, const wxString& tip, bool bGripLabel, Undo undo);
    void PlaceCheck(int row, bool* pValue, const wxString& text, const wxString& tip);
    int PlaceChoice(int row, std::function<unsigned()> get, std::function<void(unsigned)> set,
                    const std::vector<ChoiceItem>& items, const wxString& tip, Undo undo);
    void PlaceParam(int row, const std::shared_ptr<ParamEdit_cls>& edit, ParamGroup_cls* pGroup,
                    int dimension, const NumSpec& spec, const wxString& tip, bool bGripLabel);
    void Edit(const Undo& undo, const std::function<void()>& write, bool bFinal = true);
    wxWindow* PlaceText(int row, wxString* pValue, const wxString& tip);
    void AskForFile(int row, wxString* pValue, const wxString& message, const wxString& wildcard);
    void Tell(int row, Hook hook, bool bFinal);

    std::vector<std::unique_ptr<Row>> mRows;
    std::function<void(int, bool)> mOnChange;
    bool mbUndo = false;
    int mUndoMask = 0;
    wxFlexGridSizer* mpCGrid = nullptr; ///< of the next row
};

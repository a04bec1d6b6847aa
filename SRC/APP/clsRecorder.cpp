#include "APP/clsRecorder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/scrolbar.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tglbtn.h>
#include <wx/toolbar.h>

#include "APP/MenuNames.h"
#include "APP/WindowArgs.h"
#include "APP/WindowPath.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsRecentFiles.h"
#include "COMMON/ActLine.h"
#include "COMMON/EventIds.h"
#include "COMMON/UserActs.h"
#include "COMMON/clsSplitPath.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/PopUp.h"
#include "WIDGET/clsColorSwatch.h"
#include "WIDGET/clsGripLabel.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr size_t kLongestRemark = 60;

wxString Int(long number) { return wxString::Format("%ld", number); }

/// Windows whose mouse is recorded as it is. Others tell what it did: a button its press, a field its value.
bool HasRawMouse(const wxWindow* pWindow) {
    if (dynamic_cast<const NumField_cls*>(pWindow) || dynamic_cast<const GripLabel_cls*>(pWindow) ||
        dynamic_cast<const NumField_cls*>(pWindow->GetParent()))
        return false;
    return !dynamic_cast<const wxControl*>(pWindow) || dynamic_cast<const wxStaticText*>(pWindow) ||
           dynamic_cast<const ColorSwatch_cls*>(pWindow);
}

bool IsText(const wxWindow* pWindow) { return dynamic_cast<const wxTextCtrl*>(pWindow) != nullptr; }

/// What a reader of the record knows a window by.
wxString Describe(const wxWindow* pWindow) {
    if (!pWindow) return wxString();
    const auto* field = dynamic_cast<const NumField_cls*>(pWindow);
    const wxWindow* shown = field ? field->GetPCText() : pWindow;
    wxString text = shown->GetToolTipText();
    const auto* control = dynamic_cast<const wxControl*>(pWindow);
    if (text.empty() && control && !IsText(pWindow)) text = control->GetLabelText();
    text.Replace("\n", " ");
    return text.length() > kLongestRemark ? text.Left(kLongestRemark) + "..." : text;
}

/// A fraction of a window's side: it survives another size, and gives the same pixel in the same size.
wxString Fraction(int pixel, int side) {
    wxString text = wxString::FromCDouble(side > 0 ? (pixel + 0.5) / side : 0.0, 5);
    return text;
}

} // namespace

const std::vector<MouseName_st>& GetMouseNames() {
    static const std::vector<MouseName_st> kNames = {
        {wxEVT_MOTION, "move"},
        {wxEVT_LEFT_DOWN, "left-down"},
        {wxEVT_LEFT_UP, "left-up"},
        {wxEVT_LEFT_DCLICK, "left-double"},
        {wxEVT_MIDDLE_DOWN, "mid-down"},
        {wxEVT_MIDDLE_UP, "mid-up"},
        {wxEVT_MIDDLE_DCLICK, "mid-double"},
        {wxEVT_RIGHT_DOWN, "right-down"},
        {wxEVT_RIGHT_UP, "right-up"},
        {wxEVT_RIGHT_DCLICK, "right-double"},
        {wxEVT_MOUSEWHEEL, "wheel"},
    };
    return kNames;
}

Recorder_cls::Recorder_cls(Main_cls& hub) : mHub(hub) {
    wxEvtHandler::AddFilter(this);
    GUserActs.mNote = [this](const char* verb, const wxString& what) { Note(verb, what); };
    GUserActs.mTold = [this](const wxString& text) {
        mTold.push_back(GetTimeStamp() + " " + text);
        if (mTold.size() > kMostTold) mTold.pop_front();
        Write({}, "told: " + text);
    };
}

Recorder_cls::~Recorder_cls() {
    GUserActs.mNote = nullptr;
    GUserActs.mTold = nullptr;
    wxEvtHandler::RemoveFilter(this);
}

wxString Recorder_cls::BeginFile(const wxString& path) {
    const int file = open(NarrowPath(path).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return wxString::FromUTF8(std::strerror(errno));
    mFile.reset(fdopen(file, "w"));
    const std::string head = GetHead().utf8_string();
    std::fwrite(head.data(), 1, head.size(), mFile.get());
    std::fflush(mFile.get());
    return wxString();
}

wxString Recorder_cls::GetHead() const { return wxString(kRecordStart) + "\nversion " + GetVersion() + "\n"; }

wxString Recorder_cls::GetText() const {
    wxString text = GetHead();
    if (mDropped > 0) text += wxString::Format("# %lld lines before these are left out\n", mDropped);
    for (const wxString& line : mLines)
        text += line + "\n";
    return text;
}

void Recorder_cls::Restart() {
    mLines.clear();
    mDropped = 0;
    mFrame = mStep = mWidth = mHeight = -1;
}

wxString Recorder_cls::GetTimeStamp() const {
    return wxString::FromCDouble(double(mWatch.Time()) / 1000.0, 1) + " s";
}

int Recorder_cls::FilterEvent(wxEvent& event) {
    // Those that come all the time are no user's.
    if (event.GetEventType() == wxEVT_UPDATE_UI || event.GetEventType() == wxEVT_IDLE) return Event_Skip;
    const auto* window = dynamic_cast<const wxWindow*>(event.GetEventObject());
    if (event.GetEventType() == wxEVT_MENU) {
        OnMenu(static_cast<const wxCommandEvent&>(event));
    } else if (!window) {
        return Event_Skip;
    } else if (auto* mouse = dynamic_cast<wxMouseEvent*>(&event)) {
        OnMouse(*mouse, window);
    } else if (event.GetEventType() == wxEVT_CHAR_HOOK) {
        OnKey(static_cast<const wxKeyEvent&>(event), window);
    } else if (event.GetEventType() == wxEVT_SET_FOCUS || event.GetEventType() == wxEVT_KILL_FOCUS) {
        OnFocus(window, event.GetEventType() == wxEVT_SET_FOCUS);
    } else if (event.IsCommandEvent() || event.GetEventType() == wxEVT_CLOSE_WINDOW) {
        OnCommand(event, window);
    }
    return Event_Skip;
}

void Recorder_cls::OnMouse(wxMouseEvent& event, const wxWindow* pWindow) {
    const char* name = nullptr;
    for (const MouseName_st& known : GetMouseNames())
        if (known.mType == event.GetEventType()) name = known.mName;
    const bool bMove = event.GetEventType() == wxEVT_MOTION;
    if (!name || (bMove && (mpPressed != pWindow || !event.Dragging()))) return;
    if (!bMove && !HasRawMouse(pWindow)) {
        // What comes of it is told by the control, but a panel may be chosen by a press on what it holds.
        const auto* field = dynamic_cast<const NumField_cls*>(pWindow->GetParent());
        const bool bRight = event.RightDown();
        if (bRight || event.LeftDown())
            Add("touch", field ? field : pWindow, {bRight ? "right" : "left"}, "");
        return;
    }
    if (!mpPressed) NoteState();
    if (!bMove || mPressedPath.empty()) mPressedPath = GetWindowPath(pWindow);
    if (event.ButtonDown() || event.ButtonDClick()) mpPressed = pWindow;
    if (event.ButtonUp()) mpPressed = nullptr;
    if (mPressedPath.empty()) return;
    const wxSize size = pWindow->GetClientSize();
    Words words = {"mouse", mPressedPath, name, Fraction(event.GetX(), size.x),
                   Fraction(event.GetY(), size.y)};
    for (const auto& [bIs, word] :
         {std::pair(event.ShiftDown(), "shift"), std::pair(event.ControlDown(), "ctrl"),
          std::pair(event.AltDown(), "alt"), std::pair(event.LeftIsDown(), "left"),
          std::pair(event.MiddleIsDown(), "mid"), std::pair(event.RightIsDown(), "right")})
        if (bIs) words.push_back(word);
    if (event.GetEventType() == wxEVT_MOUSEWHEEL)
        words.push_back((event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL ? "across:" : "turn:") +
                        Int(event.GetWheelRotation()));
    Write(words, bMove ? wxString() : GetTimeStamp());
}

void Recorder_cls::OnKey(const wxKeyEvent& event, const wxWindow* pWindow) {
    const int key = event.GetKeyCode();
    if (IsText(pWindow) || key == WXK_SHIFT || key == WXK_CONTROL || key == WXK_ALT || key == WXK_NONE)
        return;
    wxString remark = wxAcceleratorEntry(event.GetModifiers() & 7, key).ToRawString();
    Add("key", pWindow, {Int(key), Int(event.GetModifiers())}, remark);
}

void Recorder_cls::OnFocus(const wxWindow* pWindow, bool bGot) {
    if (!IsText(pWindow) || dynamic_cast<const NumField_cls*>(pWindow->GetParent())) return;
    if (!bGot) NoteText(pWindow);
    mpTyped = bGot ? pWindow : nullptr;
    mTypedBefore = static_cast<const wxTextCtrl*>(pWindow)->GetValue();
}

void Recorder_cls::NoteText(const wxWindow* pWindow) {
    const wxString now = static_cast<const wxTextCtrl*>(pWindow)->GetValue();
    if (mpTyped == pWindow && now == mTypedBefore) return;
    mTypedBefore = now;
    Add("text", pWindow, {now}, Describe(pWindow));
}

void Recorder_cls::OnMenu(const wxCommandEvent& event) {
    wxObject* object = event.GetEventObject();
    auto* menu = dynamic_cast<wxMenu*>(object);
    if (!menu && !dynamic_cast<wxToolBar*>(object)) return; // a command of the program itself
    const int id = event.GetId();
    while (menu && menu->GetParent())
        menu = menu->GetParent();
    if (menu && !menu->GetMenuBar()) {
        const int place = GetMenuPlace(*menu, id);
        if (place >= 0) Write({"popup", Int(place)}, menu->GetLabelText(id));
        return;
    }
    NoteState();
    if (id >= ID_RECENT_PROJECT_0 && id < ID_COPY_VIEW) {
        const wxString path = mHub.mpCRecentFiles->GetByMenuId(id);
        if (!path.empty()) Write({"open", path}, GetTimeStamp());
        return;
    }
    const wxString name = GetMenuName(id);
    const wxMenuItem* item = mHub.mpCFrameMain->GetMenuBar()->FindItem(id);
    Words words = {"menu", name};
    if (item && item->IsCheckable()) words.push_back(event.IsChecked() ? "on" : "off");
    if (!name.empty()) Write(words, GetTimeStamp() + (item ? ", " + item->GetItemLabelText() : wxString()));
}

void Recorder_cls::OnCommand(wxEvent& event, const wxWindow* pWindow) {
    const wxEventType type = event.GetEventType();
    const auto* command = dynamic_cast<const wxCommandEvent*>(&event);
    if (type == wxEVT_CLOSE_WINDOW) {
        Add("close", pWindow, {}, wxString());
    } else if (!command) {
        return;
    } else if (type == EVT_FIELD_SET) {
        const double value = static_cast<const NumField_cls*>(pWindow)->GetValue();
        Add("set", pWindow, {WriteActNumber(value)}, Describe(pWindow));
    } else if (type == wxEVT_BUTTON) {
        Add("press", pWindow, {}, Describe(pWindow));
    } else if (type == wxEVT_TOGGLEBUTTON || type == wxEVT_CHECKBOX) {
        Add("check", pWindow, {command->IsChecked() ? "on" : "off"}, Describe(pWindow));
    } else if (const auto* choice = dynamic_cast<const wxChoice*>(pWindow); choice && type == wxEVT_CHOICE) {
        Add("choose", pWindow, {Int(choice->GetSelection())}, choice->GetStringSelection());
    } else if (type == wxEVT_TEXT_ENTER && IsText(pWindow) &&
               !dynamic_cast<const NumField_cls*>(pWindow->GetParent())) {
        NoteText(pWindow);
    } else if (const auto* book = dynamic_cast<const wxNotebook*>(pWindow);
               book && type == wxEVT_NOTEBOOK_PAGE_CHANGED) {
        const int page = static_cast<const wxBookCtrlEvent&>(event).GetSelection();
        if (page >= 0 && size_t(page) < book->GetPageCount())
            Add("page", pWindow, {Int(page)}, book->GetPageText(size_t(page)));
    } else if (const auto* bar = dynamic_cast<const wxScrollBar*>(pWindow);
               bar && type == wxEVT_SCROLL_CHANGED) {
        Add("scroll", pWindow, {Int(bar->GetThumbPosition())}, wxString());
    }
}

void Recorder_cls::Note(const char* verb, const wxString& what) {
    const wxString name = verb;
    Words words = {name};
    if (name == "shortcut")
        words.insert(words.end(), {what.BeforeFirst(' '), what.AfterFirst(' ')});
    else if (name != "rest")
        words.push_back(what);
    if (name == "open" || name == "shortcut") NoteState();
    Write(words, wxString());
}

void Recorder_cls::NoteState() {
    NumField_cls::EndAnyGesture(); // its value comes before what is done now
    const TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    const wxSize size = mHub.mpCFrameMain->GetClientSize();
    if (size.x != mWidth || size.y != mHeight) Write({"window", Int(size.x), Int(size.y)}, wxString());
    mWidth = size.x;
    mHeight = size.y;
    const int frame = time->GetFrame();
    const int step = time->GetInterpStep();
    if (frame != mFrame || step != mStep) Write({"frame", Int(frame), Int(step)}, wxString());
    mFrame = frame;
    mStep = step;
}

void Recorder_cls::Add(const char* verb, const wxWindow* pWindow, const Words& words,
                       const wxString& remark) {
    const wxString path = GetWindowPath(pWindow);
    if (path.empty()) return;
    NoteState();
    Words all = {verb, path};
    all.insert(all.end(), words.begin(), words.end());
    Write(all, GetTimeStamp() + (remark.empty() ? "" : ", " + remark));
}

void Recorder_cls::Write(const Words& words, const wxString& remark) {
    ActLine_st line;
    line.mWords = words;
    line.mRemark = remark;
    mLines.push_back(WriteActLine(line));
    if (mLines.size() > kMostLines) {
        mLines.pop_front();
        ++mDropped;
    }
    if (!mFile) return;
    const std::string bytes = mLines.back().utf8_string() + "\n";
    std::fwrite(bytes.data(), 1, bytes.size(), mFile.get());
    std::fflush(mFile.get());
}

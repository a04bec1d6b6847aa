// The shared file dialog. It remembers the last folder and keeps the answer itself.
#pragma once

#include <functional>

#include <wx/string.h>

class wxWindow;

class wxFileDialogEX {
public:
    explicit wxFileDialogEX(wxWindow* pParent) : mpParent(pParent) {}

    /// `dir` empty: the folder of the last answer. `style` of wxFD_ flags.
    void SetParams(const wxString& message, const wxString& dir, const wxString& name,
                   const wxString& wildcard, long style);
    /// wxID_OK or wxID_CANCEL. Views keep still meanwhile.
    int ShowModal();
    /// Ask for a folder: the same, and GetPath is the folder.
    int ShowModalFolder(const wxString& message, const wxString& dir);
    /// The path of the last OK.
    wxString GetPath() const { return mStrPath; }
    wxString GetMessage() const { return mStrMessage; }
    wxString GetDirectory() const { return mStrDir; } ///< where the dialog starts
    wxString GetFilename() const { return mStrName; } ///< name it starts with
    long GetStyle() const { return mStyle; }

    /// Not empty: the next ShowModal gives this path (or, for "CANCEL", wxID_CANCEL) without a window.
    static wxString sStrTestAnswer;

private:
    int Ask(const char* verb, const std::function<int(wxString* pPath)>& show);

    wxWindow* mpParent;
    wxString mStrMessage;
    wxString mStrDir;
    wxString mStrName;
    wxString mStrWildcard = "*";
    long mStyle = 0;
    wxString mStrPath;
    wxString mStrLastDir;
};

// Paths that users name for things beside the data: a file for all frames, or a pattern with a file a frame.
// In a project they go on from its folder where they lie below it, so that folder and project can move.
#pragma once

#include <functional>

#include <wx/string.h>

/// The longest end of a path, from whole relative path to bare name, that `isThere` knows; empty when it
/// knows none. Backslashes count as slashes: a project may come from another system.
wxString FindEndOfPath(const wxString& path, const std::function<bool(const wxString& end)>& isThere);
/// The path from the root on; relative ones are seen from the working directory.
wxString MakeAbsolutePath(const wxString& path);

/// A path with at most one place for the frame's number: the first "%d", "%i" or "%u", with a width of up to
/// two digits and a leading 0 if wanted ("%4d", "%04d"). All else in it is plain text, other "%" too.
class FramePath_cls {
public:
    FramePath_cls() = default;
    /// `folder`: where the project lies that the pattern came with, or empty.
    explicit FramePath_cls(const wxString& pattern, const wxString& folder = wxString());

    /// Is there a file for each frame?
    bool HasNumber() const { return mTagLength > 0; }
    const wxString& GetPattern() const { return mStrPattern; }
    /// The text of a frame, as it is given.
    wxString GetText(int frame) const;
    /// The file of a frame: what the text leads to from the folder, else from the working directory, else
    /// what an end of it finds in the folder; the text again when there is nothing.
    wxString GetFile(int frame) const;
    /// The pattern for a project in `folder`: as it goes on from there where it lies below, else as given,
    /// but whole where it would lead from there to another file than now, or nowhere. `frame`: one that has a
    /// file.
    wxString GetForProject(const wxString& folder, int frame) const;

private:
    void FindTag();
    wxString FindEnd(const wxString& folder, int frame) const;

    wxString mStrPattern;
    wxString mStrFolder;
    size_t mTagPos = 0;
    size_t mTagLength = 0; ///< 0: no number
    int mWidth = 0;
    bool mbZeros = false;
    bool mbUnsigned = false;
};

// What a picture tells of where it came from: the project's text, the frame, the names of the data and the
// program's version. PNG files carry it as text chunks, TIFF files as their description; other formats don't.
#pragma once

#include <memory>
#include <string>

#include <wx/string.h>

class FilmTime_cls;

struct PictureOrigin_st {
    std::string mProject;  ///< the bytes of a project file
    std::string mFrame;    ///< as MakeFrameText has it
    std::string mData;     ///< names of the data's first files, a line each
    std::string mSoftware; ///< the program with its version
};

/// Longer projects aren't carried, nor read from a picture.
constexpr size_t kLongestOrigin = size_t(64) << 20;

/// Where the clock stands: "12", or "12+1/4" one of four steps behind frame 12.
std::string MakeFrameText(int frame, int step, int steps);
/// False for any other text. Without a step *pSteps is 1.
bool ReadFrameText(const std::string& text, int* pFrame, int* pStep, int* pSteps);

/// Made once for all pictures of a run, as compressing takes longer than writing a small picture.
class OriginPack_cls {
public:
    /// All but the frame.
    explicit OriginPack_cls(const PictureOrigin_st& origin);

    /// Put it, and the frame, into the bytes of a whole file. Its pixels stay as they are.
    void AddToPNG(const std::string& frame, std::string* pBytes) const;
    void AddToTIFF(const std::string& frame, std::string* pBytes) const;

private:
    std::string mChunks; ///< of PNG files
    PictureOrigin_st mOrigin;
};

/// What one of these pictures carries.
struct ImageOrigin_st {
    std::shared_ptr<const OriginPack_cls> mpPack; ///< null: nothing
    std::string mFrame;                           ///< as MakeFrameText has it
};

/// Of one that shows where the clock stands now.
ImageOrigin_st MakeImageOrigin(const std::shared_ptr<const OriginPack_cls>& pPack, const FilmTime_cls& time);

enum class OriginFound {
    None,  ///< a picture like others, or no picture
    Whole, ///< there is a project
    Broken ///< there was one
};

/// Look into a file, whatever its ending. Reads no pixels, and no more than kLongestOrigin of anything.
/// `pReason`: what is wrong with a broken one, as the end of a sentence.
OriginFound ReadPictureOrigin(const wxString& path, PictureOrigin_st* pOrigin, wxString* pReason);

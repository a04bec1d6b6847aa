// What one or two files of a sequence tell beside their layout: how their particles go on from file to
// file, the periodic box, classes and radii. Each as an offer that a user takes or leaves.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include <wx/string.h>

#include "PDATA/GuessBox.h"

class GrammerBase_cls;
struct GrammarGuess_st;

enum class GuessOfferKind { Interpolation, ParticleNumber, Periodic, Classification, Radius };

struct GuessOffer_st {
    GuessOfferKind mKind = GuessOfferKind::Interpolation;
    wxString mStrName;    ///< as the setting is called in its dialog
    wxString mStrValue;   ///< what it becomes
    wxString mStrReason;  ///< a sentence
    bool mbTicked = true; ///< proposed; the user may change it

    unsigned mChoice = 0; ///< interpolation, particle number, periodic type or classification
    /// Periodic, of a box that wraps: base vectors in scaled coordinates.
    std::array<std::array<float, 3>, 3> mBox = {};
    float mRadius = 0.0f; ///< of every particle, in scaled coordinates
    /// Classification: classes 0 to 3 get the colours of kGuessColors.
    bool mbColors = false;
};

/// Red, green and blue of the classes 0 to 3. They differ in lightness as well as in hue: no two of them
/// look alike to an eye without red, green or blue cones, nor in shades of grey.
extern const std::array<std::array<float, 3>, 4> kGuessColors;

/// Offers for the sequence that begins with `path`, by a guess that found its layout. `scale` is the
/// loader's (0: none). Reads a few megabytes of four files at most: the first one with particles, the next,
/// and two further on.
std::vector<GuessOffer_st> MakeGuessOffers(const wxString& path, const GrammarGuess_st& guess, float scale);

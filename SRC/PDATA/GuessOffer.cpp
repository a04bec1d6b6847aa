#include "PDATA/GuessOffer.h"

#include <algorithm>
#include <cmath>
#include <set>

#include <wx/filename.h>
#include <wx/intl.h>

#include "PDATA/GrammarGuess.h"
#include "PDATA/GuessParticles.h"
#include "PDATA/GuessSample.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsFileSequence.h"
#include "PDATA/clsPeriodicBoundary.h"

const std::array<std::array<float, 3>, 4> kGuessColors = {
    {{1.0f, 0.98f, 0.5f}, {0.94f, 0.38f, 0.05f}, {0.35f, 0.8f, 1.0f}, {0.4f, 0.28f, 0.66f}}};

namespace {

constexpr int kEmptyFiles = 10; // so many files without particles are passed over
constexpr double kRadiusShare = 0.4;
constexpr int kLastClass = 3;

// A number as the user sees it, which is then the number that is set.
wxString Round(double value) { return wxString::Format("%.3g", value); }

double Rounded(double value) {
    double rounded = 0;
    return Round(value).ToCDouble(&rounded) ? rounded : value;
}

/// A file that was looked at.
struct Looked_st {
    wxString mStrName; ///< without the folder
    GuessSample_st mSample;
};

/// Looks at the files of a sequence and makes the offers.
class OfferMaker_cls {
public:
    OfferMaker_cls(const GrammarGuess_st& guess, float scale)
        : mGuess(guess), mScale(scale == 0.0f ? 1.0 : std::abs(static_cast<double>(scale))),
          mGrammar("DataLoad") {
        mGrammar.mCItemDataType.mValue = guess.mDataType;
        mGrammar.SetHeaderGrammer(guess.mHead);
        mGrammar.SetBodyGrammer(guess.mBody);
    }

    std::vector<GuessOffer_st> Make(const wxString& path) {
        LookAt(path);
        if (mFiles.empty()) return {};
        OfferMotion();
        OfferBox();
        OfferClasses();
        OfferRadius();
        return mOffers;
    }

private:
    bool Look(const FileSequence_cls& files, int index) {
        const wxString name = files.GetModifiedStr(index, 0);
        if (!wxFileName::FileExists(name)) return false;
        mFiles.push_back({wxFileName(name).GetFullName(), ReadGuessSample(mGrammar, name)});
        return true;
    }
    // The first file with particles, the next one, and two further on where the sequence is so long.
    void LookAt(const wxString& path) {
        const FileSequence_cls files(path);
        int first = 0;
        for (; first < kEmptyFiles && Look(files, first) && mFiles.back().mSample.mPos.empty(); ++first) {
            mFiles.pop_back();
            if (files.mDigits < 0) break;
        }
        if (mFiles.empty() || files.mDigits < 0) return;
        for (const int ahead : {1, 10, 100}) {
            if (!Look(files, first + ahead)) return;
            if (mFiles.back().mSample.mPos.empty()) mFiles.pop_back();
        }
    }

    GuessOffer_st& Add(GuessOfferKind kind, const wxString& name, unsigned choice, const wxString& value,
                       const wxString& reason) {
        GuessOffer_st offer;
        offer.mKind = kind;
        offer.mStrName = name;
        offer.mChoice = choice;
        offer.mStrValue = value;
        offer.mStrReason = reason;
        mOffers.push_back(offer);
        return mOffers.back();
    }
    void AddMotion(bool bLinear, unsigned number, const wxString& reason, const wxString& numberReason) {
        static const wxString sNumbers[] = {_("Constant"), _("Variable"), _("Sort by ID")};
        Add(GuessOfferKind::Interpolation, _("Interpolation"),
            bLinear ? INTERPOLATE_LINEAR : INTERPOLATE_NONE, bLinear ? _("Linear") : _("No Interpolate"),
            reason);
        Add(GuessOfferKind::ParticleNumber, _("Particle Number"), number, sNumbers[number], numberReason);
    }

    void OfferMotion() {
        mbIds = std::all_of(mFiles.begin(), mFiles.end(),
                            [](const Looked_st& file) { return HasUsableIds(file.mSample); });
        if (mFiles.size() < 2) {
            if (mbIds)
                AddMotion(true, NUMBER_VARIABLE, _("Particles go straight to their places in the next file."),
                          _("There is no second file to compare; by their IDs particles are found in any."));
            return;
        }
        mbIds ? OfferByIds() : OfferByPlaces();
    }
    void OfferByIds() {
        const GuessSample_st& first = mFiles[0].mSample;
        GuessOrder order = GuessOrder::Same;
        const Looked_st* other = &mFiles[1];
        for (size_t i = mFiles.size() - 1; i > 0; --i) {
            const GuessOrder now = CompareIds(first, mFiles[i].mSample);
            // How far IDs move tells only the next file.
            if (now == GuessOrder::Same || (i > 1 && order != GuessOrder::Same)) continue;
            order = i > 1 ? GuessOrder::Changed : now;
            other = &mFiles[i];
        }
        const wxString linear = _("Particles are found again, and go straight to their next places.");
        const wxString name = other->mStrName;
        if (order == GuessOrder::Same)
            AddMotion(true, NUMBER_CONSTANT, linear,
                      wxString::Format(_("%s has the same IDs in the same order."), mFiles.back().mStrName));
        else if (order == GuessOrder::Shuffled)
            AddMotion(
                true, NUMBER_SORTED, linear,
                wxString::Format(_("%s has its IDs in another order, too far for a search. Positions are "
                                   "sorted, other columns are not."),
                                 name));
        else if (first.mNumber != other->mSample.mNumber)
            AddMotion(true, NUMBER_VARIABLE, linear,
                      wxString::Format(_("Particles come and go: %d here, %d in %s. They are found by ID."),
                                       first.mNumber, other->mSample.mNumber, name));
        else
            AddMotion(
                true, NUMBER_VARIABLE, linear,
                wxString::Format(_("%s has other IDs or another order. Particles are found by ID."), name));
        mbSorted = order == GuessOrder::Shuffled;
    }
    void OfferByPlaces() {
        const Looked_st& next = mFiles[1];
        const bool bSame = ComparePlaces(mFiles[0].mSample, next.mSample) == GuessOrder::Same;
        const wxString why = Has(BODY_ID) ? _("The IDs repeat and tell nothing.") : _("There are no IDs.");
        const wxString number =
            why + " " +
            (bSame ? wxString::Format(_("In %s each particle is near its place here, in the same order."),
                                      next.mStrName)
                   : wxString::Format(_("In %s other particles stand in these places."), next.mStrName));
        AddMotion(bSame, NUMBER_CONSTANT,
                  bSame ? _("Particles go straight to their places in the next file.")
                        : _("Particles can't be followed from file to file."),
                  number);
    }

    void OfferBox() {
        const auto& lines = mFiles[0].mSample.mHeadLines;
        auto box = FindGuessBox(lines);
        if (!box) return;
        wxString extra;
        if (mGuess.mbFractions) {
            box->mVector = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
            extra += " " + _("Positions are fractions of it.");
        } else if (box->IsSlanted()) {
            extra += " " + _("It is slanted: what wraps is told by its lengths along x, y and z.");
        }
        for (size_t i = 1; i < mFiles.size() && !mGuess.mbFractions; ++i) {
            const auto other = FindGuessBox(mFiles[i].mSample.mHeadLines);
            if (!other || !IsPeriodChanged(*box, *other)) continue;
            extra +=
                " " + wxString::Format(_("%s has another size; this one holds for all."), mFiles[i].mStrName);
            break;
        }
        AddBox(*box, extra);
    }
    static bool IsPeriodChanged(const GuessBox_st& from, const GuessBox_st& to) {
        for (size_t k = 0; k < 3; ++k)
            if (from.mbPeriodic[k] && from.mVector[k] != to.mVector[k]) return true;
        return false;
    }
    void AddBox(const GuessBox_st& box, const wxString& extra) {
        const auto& p = box.mbPeriodic;
        PeriodicType type = PERIODIC_NONE;
        if (!box.mbTold || (p[0] && p[1] && p[2]))
            type = PERIODIC_XYZ;
        else if (p[0] && p[1])
            type = PERIODIC_XY;
        static const wxString sTypes[] = {_("No Periodic Boundary Condition"), _("Periodic in x-y plane"),
                                          _("Periodic in xyz space")};
        wxString reason = _("The header has a box that is periodic along these axes.");
        if (!box.mbTold) reason = _("The header has a box, but doesn't say whether it is periodic.");
        if (type == PERIODIC_NONE)
            reason = p[0] || p[1] || p[2]
                         ? _("The header's box is periodic along other axes than x and y, or all three.")
                         : _("The header's box has no periodic sides.");
        GuessOffer_st& offer = Add(GuessOfferKind::Periodic, _("Boundary"), type, sTypes[type], reason);
        offer.mbTicked = box.mbTold;
        if (type == PERIODIC_NONE) return;
        offer.mStrReason += extra;
        for (size_t k = 0; k < 3; ++k)
            for (size_t i = 0; i < 3; ++i)
                offer.mBox[k][i] = static_cast<float>(box.mVector[k][i] * mScale);
        offer.mStrValue += ", " + TextOf(offer, box.IsSlanted());
    }
    static wxString TextOf(const GuessOffer_st& offer, bool bSlanted) {
        const auto number = [](float value) { return wxString::Format("%.6g", static_cast<double>(value)); };
        const auto& v = offer.mBox;
        if (!bSlanted) return number(v[0][0]) + " x " + number(v[1][1]) + " x " + number(v[2][2]);
        wxString text;
        for (const auto& row : v)
            text += (text.empty() ? "(" : ", (") + number(row[0]) + " " + number(row[1]) + " " +
                    number(row[2]) + ")";
        return text;
    }

    void OfferClasses() {
        std::set<int> types, classes;
        for (const Looked_st& file : mFiles)
            types.insert(file.mSample.mType.begin(), file.mSample.mType.end());
        if (types.empty()) return;
        for (const int type : types)
            classes.insert(type >= 0 && type <= kLastClass ? type : 0);
        if (classes.size() == 1) {
            Add(GuessOfferKind::Classification, _("Classification"), 0, _("Use Attrib0 Only (fast)"),
                types.size() == 1
                    ? wxString::Format(_("All particles have type %d: the page \"Attrib 0\" is theirs."),
                                       *types.begin())
                    : wxString(_("All types are of one class: the page \"Attrib 0\" is theirs.")));
            return;
        }
        wxString names, pages;
        for (const int type : types)
            if (type >= 0 && type <= kLastClass) names += (names.empty() ? "" : ", ") + std::to_string(type);
        wxString reason =
            wxString::Format(_("Types %s look as the pages \"Attrib\" of these numbers say."), names);
        if (*types.begin() < 0 || *types.rbegin() > kLastClass)
            reason += " " + _("Others look as \"Attrib 0\".");
        if (mbSorted) reason += " " + _("Sorted positions don't keep their types.");
        GuessOffer_st& offer =
            Add(GuessOfferKind::Classification, _("Classification"), 1, _("Use All Attrib"), reason);
        offer.mbColors = true;
        offer.mbTicked = !mbSorted;
    }

    void OfferRadius() {
        const auto zero = [](const Looked_st& file) { return !(file.mSample.mMaxRadius > 0.0f); };
        if (!std::all_of(mFiles.begin(), mFiles.end(), zero)) return;
        const GuessSample_st& sample = mFiles[0].mSample;
        const double distance = GetMeanDistance(sample.mSpread, sample.mNumber) * mScale;
        const double radius = Rounded(kRadiusShare * distance);
        if (!(radius > 0) || !std::isfinite(static_cast<float>(radius))) return;
        const wxString why = Has(BODY_RADIUS) ? _("All radii are 0.") : _("There is no radius.");
        Add(GuessOfferKind::Radius, _("Radius"), 1, wxString::Format(_("Constant, %s"), Round(radius)),
            why + " " +
                wxString::Format(_("This is 0.4 of the mean distance of particles, %s."), Round(distance)))
            .mRadius = static_cast<float>(radius);
    }

    bool Has(int code) const { return mGrammar.IsItemExistBody(code); }

    const GrammarGuess_st& mGuess;
    const double mScale;
    GrammerBase_cls mGrammar;
    std::vector<Looked_st> mFiles; ///< the first one, and those compared with it
    bool mbIds = false;
    bool mbSorted = false; ///< particles are to be sorted by ID
    std::vector<GuessOffer_st> mOffers;
};

} // namespace

std::vector<GuessOffer_st> MakeGuessOffers(const wxString& path, const GrammarGuess_st& guess, float scale) {
    if (!guess.mbFound) return {};
    return OfferMaker_cls(guess, scale).Make(path);
}

// What a hand does to keys, wherever they are drawn: pick, press, drag, band, cancel. Strips, graph and
// colour editor share it, so that a key answers alike in all of them. Windows keep what is theirs: where keys
// lie, and what a drag changes.
#pragma once

#include <functional>
#include <utility>
#include <vector>

class Parameters_cls;

/// A place in a window, pixels.
struct KeyPoint {
    int mX = 0;
    int mY = 0;
    bool operator==(const KeyPoint& o) const { return mX == o.mX && mY == o.mY; }
};

/// A key by its index and that of its curve in what the window shows, or a handle of its tangent.
struct KeyHit {
    int mCurve = -1;
    int mKey = -1;
    int mSide = 0; ///< 0 the key itself, -1 the left handle of its tangent, 1 the right one
    bool IsAny() const { return mKey >= 0; }
    bool operator==(const KeyHit& o) const {
        return mCurve == o.mCurve && mKey == o.mKey && mSide == o.mSide;
    }
};

/// Which of the keys and handles around the pointer is meant. The window offers those that come into
/// question, what is drawn on top last.
class KeyPicker_cls {
public:
    /// The pointer, and how far from it something is still under it, pixels.
    KeyPicker_cls(double x, double y, double reach) : mX(x), mY(y), mReach(reach) {}
    void OfferKey(int curve, int key, double x, double y, bool bSelected);
    void OfferHandle(int curve, int key, int side, double x, double y);
    /// The nearest key; of two at one place a selected one, which can be dragged with the others.
    const KeyHit& GetKey() const { return mKey; }
    /// The nearer of key and handle; at one place the handle, which is there only because its key is
    /// selected. With `bKeyFirst` (Shift or Ctrl: the selection is meant, which handles have no part in) any
    /// key.
    KeyHit GetHit(bool bKeyFirst) const;

private:
    double mX;
    double mY;
    double mReach;
    KeyHit mKey;
    KeyHit mHandle;
    double mKeyAway = 0.0;   ///< with a bonus to selected ones
    double mKeyPixels = 0.0; ///< really
    double mHandleAway = 0.0;
};

/// The course of one gesture from the press to the release. A press shows its effect on the selection at
/// once; nothing else happens until the pointer has gone `kThreshold` pixels.
class KeyGesture_cls {
public:
    static constexpr int kThreshold = 3;

    enum class State {
        NONE,
        KEY,    ///< pressed on a key
        HANDLE, ///< pressed on a handle
        GROUND, ///< pressed beside all keys
        GRIP,   ///< pressed with the button that pans
        MOVE,   ///< keys under drag
        TURN,   ///< a tangent under drag
        BAND,   ///< a rubber band
        PAN     ///< the view under drag
    };
    /// What a press or release does to the selection.
    enum class Pick { KEEP, ALONE, ADD, TOGGLE, CLEAR };

    /// `bSelected`: the key that is hit is. ALONE, ADD and TOGGLE concern that key; never CLEAR.
    /// With `bAlt` a drag of keys leaves them and moves copies.
    Pick Press(const KeyPoint& at, const KeyHit& hit, bool bSelected, bool bShift, bool bCtrl,
               bool bAlt = false);
    void Grip(const KeyPoint& at);
    /// The pointer went there, `threshold` in pixels of this screen; true when the drag begins with it.
    bool Drag(const KeyPoint& to, int threshold = kThreshold);
    /// The button is up: what became of it. `pPick` takes ALONE for a click on one of several selected keys,
    /// CLEAR for one on the ground, else KEEP.
    State Release(Pick* pPick);
    /// The same without any effect.
    State Cancel();

    State Get() const { return mState; }
    bool IsActive() const { return mState != State::NONE; }
    const KeyHit& GetHit() const { return mHit; } ///< under the press
    const KeyPoint& GetFrom() const { return mFrom; }
    /// Pixels from press to pointer; with `bOneAxis` along the longer axis alone.
    KeyPoint GetWay(bool bOneAxis) const;
    bool IsAdding() const { return mbAdd; }      ///< Shift or Ctrl at the press
    bool IsToggling() const { return mbToggle; } ///< Ctrl at the press
    bool IsCopying() const { return mbCopy; }    ///< Alt at the press

    // The band's edges, pixels.
    int GetLeft() const { return mFrom.mX < mTo.mX ? mFrom.mX : mTo.mX; }
    int GetRight() const { return mFrom.mX < mTo.mX ? mTo.mX : mFrom.mX; }
    int GetTop() const { return mFrom.mY < mTo.mY ? mFrom.mY : mTo.mY; }
    int GetBottom() const { return mFrom.mY < mTo.mY ? mTo.mY : mFrom.mY; }

private:
    State mState = State::NONE;
    KeyHit mHit;
    KeyPoint mFrom;
    KeyPoint mTo;
    bool mbSelected = false;
    bool mbAdd = false;
    bool mbToggle = false;
    bool mbCopy = false;
};

/// The selection while a band is drawn: at every move it is what it was at the press, changed by the keys
/// that lie in the band now.
class KeyBand_cls {
public:
    using Inside = std::function<bool(Parameters_cls& curve, int key)>;

    void Begin(const std::vector<Parameters_cls*>& curves);
    /// Keys inside are selected, with Ctrl turned over; without Shift and Ctrl all others are deselected.
    void Select(const KeyGesture_cls& gesture, const Inside& inside) const;
    /// The selection of the press, as far as its curves live.
    void Restore() const;

private:
    std::vector<std::pair<Parameters_cls*, std::vector<bool>>> mVKept;
};

// The basis of a camera or a placed object: where it looks, what is up, what is right.
#pragma once

class Direction_cls {
public:
    double mFront[3] = {0, 0, -1};
    double mUp[3] = {0, 1, 0};
    double mRight[3] = {1, 0, 0}; ///< front cross up, always

    // Degrees, kept by UpdateYPR; they grow past a full turn.
    double mYaw = 0, mPitch = 0, mRoll = 0;
    // The angles of the last update, without full turns.
    double mPrevYaw = 0, mPrevPitch = 0, mPrevRoll = 0;
    int mTurnYaw = 0, mTurnPitch = 0, mTurnRoll = 0;

    /// Make the basis orthonormal and right-handed. One that can't be (front and up parallel, zero or
    /// not finite) becomes front (0,0,-1), up (0,1,0).
    void NormalizeAndOrthogonalize();
    /// Set front and up, then repair.
    void Setv(const double* front, const double* up);
    /// Look along an axis: 1 to 6 for +x, -x, +y, -y, +z, -z; other modes change nothing.
    void SetDirection(int mode);
    /// Where front is parallel to up, up becomes the x axis, or the y axis when that is parallel too.
    void RejectInvalidDirection();

    /// Derive yaw, pitch and roll from the basis. With `bTrack` full turns are counted, so that a
    /// rotation across the seam goes on growing or falling.
    void UpdateYPR(bool bTrack);

    // Turns of the basis about its own axes, in degrees. From front (1,0,0), up (0,0,1), yaw, then
    // pitch, then roll lead to a basis of which UpdateYPR gives these angles back.
    void RotateYaw(double angle);
    void RotatePitch(double angle); ///< positive lowers the front
    void RotateRoll(double angle);
    void RotateYPR(double yaw, double pitch, double roll);

    /// The same basis; angles and turn counters follow from it and don't count.
    bool operator==(const Direction_cls& other) const;
};

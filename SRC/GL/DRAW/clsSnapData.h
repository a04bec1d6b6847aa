// The draw-time snapshot: the particles at one exact, fractional time with colours worked out. Drawing,
// filters and the information panel read only this.
#pragma once

class GLAttribute_cls;
class PDataBlock_cls;
struct ParticleScalars_st;

class SnapData_cls {
public:
    /// Evaluate `pBlock` at its time plus dt, every `step`-th particle.
    SnapData_cls(PDataBlock_cls* pBlock, GLAttribute_cls** ppAttribute, double dt, int step);
    ~SnapData_cls();
    SnapData_cls(const SnapData_cls&) = delete;
    SnapData_cls& operator=(const SnapData_cls&) = delete;
    /// To the user, and to whoever writes the picture: it can't be drawn.
    static void TellShortMemory();

    /// Is this the given block at its time plus dt, with all particles that such a step wants?
    bool IsOf(const PDataBlock_cls* pBlock, double dt, int step) const;
    /// The same, and no look has changed since? Consumes GbSnapDataRefresh.
    bool IsItSameSnap(PDataBlock_cls* pBlock, double dt, int step) const;
    /// True if any attribute's colour depends on a computed quantity (depend value 2 or more).
    static bool IsInterpolateRequired(GLAttribute_cls* const* ppAttribute);
    /// The block is about to give its arrays back while this snapshot may be on its way to the screen: take
    /// over what is borrowed. The snapshot serves no other draw after that.
    void TakeOverFromBlock();
    /// The values that drive a curve of an attribute: 0 colour, 1 ambient, 2 diffuse, 3 specular. A derived
    /// quantity is computed on first use; all curves share the first one that was asked for.
    void SetPValue1(float** ppOut, GLAttribute_cls* pAttribute, int which);
    /// What scalar `depend` of a curve is drawn with: a computed one as SetPValue1 worked it out, else
    /// Value1.
    float* GetDrivingValues(unsigned depend) const;
    /// The scalars as they are drawn: values and radii at the time on show, computed ones from the block.
    ParticleScalars_st GetScalars() const;

    const unsigned long long mSerial; ///< of the snapshots of this run; no two are alike
    PDataBlock_cls* mpCBlock;         ///< source, not owned
    bool mbAllocated = false;
    bool mbValue1Dash = false; ///< mpValue1Dash exists
    int mNumber = 0;           ///< particles, as in the block
    double mTime = 0.0;        ///< block time plus dt
    int mStep = 1;             ///< only multiples of it are filled
    float (*mpPos)[3] = nullptr;
    float* mpRadius = nullptr;
    float* mpValue1 = nullptr;
    float* mpValue1Dash = nullptr;   ///< the one derived quantity that colours may depend on
    float (*mpColor)[4] = nullptr;   ///< RGBA, alpha adjusted
    unsigned char* mpType = nullptr; ///< borrowed from the block

private:
    bool Allocate(int number);
    void ReleaseData();
    bool AllocateValue1Dash();
    void SetValue1Dash(unsigned depend);
    void InterpolateNot(PDataBlock_cls* pBlock, GLAttribute_cls** ppAttribute);
    void InterpolateLinear(PDataBlock_cls* pBlock, GLAttribute_cls** ppAttribute, float dt);

    bool mbOwnType = false; ///< mpType was taken over
};

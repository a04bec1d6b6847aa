// How far a long drawing loop has come, and whether the user wants it to stop.
#pragma once

#include <chrono>

/// One may stand around others, as around the copies of what they draw: they count together.
class DrawProgress_cls {
public:
    /// A loop over `total` points of `size` pixels; of other particles the loop tells the cost itself.
    explicit DrawProgress_cls(int total, float size = 1.0f);
    ~DrawProgress_cls();
    DrawProgress_cls(const DrawProgress_cls&) = delete;
    DrawProgress_cls& operator=(const DrawProgress_cls&) = delete;

    /// Points to draw between two reports: as many as take the slowest OpenGL a fraction of a second.
    int GetRun() const { return mRun; }
    /// Count what a particle costs the slowest OpenGL, in nanoseconds. True: a report is due.
    bool AddCost(float cost) { return (msCost += cost) > kCostPerRun; }
    /// Publish the percentage, which moves every 100,000 or, above 2,000,000, in twentieths; five times a
    /// second, whatever loops there are, let the window breathe. False: stop.
    bool Report(int done);
    /// The same where nothing waits in OpenGL.
    bool Tell(int done);
    /// What is drawn several times, of which loops that follow draw number `part` (from 0): percentages are
    /// those of all parts.
    static void SetPart(long long part, long long parts);
    static bool IsFirstPart() { return msPart == 0; }
    static bool IsLastPart() { return msPart + 1 >= msParts; }
    /// Since ForgetCut: a loop was told to stop, so the picture isn't whole.
    static bool WasCut() { return msbCut; }
    static void ForgetCut();

    // Costs for AddCost.
    static constexpr float kCostPixel = 6.0f;       ///< of a blended sprite
    static constexpr float kCostExactPixel = 40.0f; ///< of a ray-cast sphere
    static constexpr float kCostVertex = 100.0f;
    static constexpr float kCostTriangle = 2000.0f; ///< of a mesh, lit
    static constexpr float kCostPerRun = 1e8f;      ///< a report is due

private:
    void WaitForLastRun();

    static bool msbCut;
    static long long msPart;
    static long long msParts;
    static int msDepth;                                    ///< of those that stand around each other
    static float msCost;                                   ///< since the last report
    static void* mspFence;                                 ///< GL sync object behind the last run but one
    static std::chrono::steady_clock::time_point msBreath; ///< the last one

    int mTotal;
    int mInterval; ///< between two percentages
    int mRun;
};

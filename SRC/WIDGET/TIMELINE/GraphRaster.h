// A small painter of function curves into memory: antialiased, and fast enough for hundreds of them.
#pragma once

#include <cstdint>
#include <vector>

struct CurveColumns;
struct GraphScale;

/// Colours are 0xRRGGBB; what lies outside is not drawn.
class GraphRaster_cls {
public:
    void Resize(int width, int height);
    void Fill(uint32_t colour);
    /// A rectangle, laid over with an opacity of 0 to 1.
    void Rectangle(int x, int y, int width, int height, uint32_t colour, float opacity);
    void Curve(const CurveColumns& curve, const GraphScale& scale, uint32_t colour, float lineWidth);
    /// Filled, with its centre at (x, y) and `radius` to each corner.
    void Diamond(float x, float y, float radius, uint32_t colour);
    /// Rows from the top, three bytes a pixel; `pOut` has room for all.
    void CopyRGB(unsigned char* pOut) const;

    int GetWidth() const { return mWidth; }
    int GetHeight() const { return mHeight; }
    uint32_t Get(int x, int y) const { return mVPixels[size_t(y) * size_t(mWidth) + size_t(x)]; }

private:
    uint32_t* Row(int y) { return mVPixels.data() + size_t(y) * size_t(mWidth); }
    /// One column of a curve without jump or bend, from mVRows.
    void SoftColumn(int x, float reach, uint32_t colour);

    int mWidth = 0;
    int mHeight = 0;
    std::vector<uint32_t> mVPixels;
    std::vector<float> mVRows; ///< a curve's rows at the columns' edges
    std::vector<unsigned char> mVIsHard;
};

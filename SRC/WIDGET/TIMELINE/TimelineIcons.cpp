#include "WIDGET/TIMELINE/TimelineIcons.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <memory>

#include <wx/graphics.h>
#include <wx/image.h>

#include "PARAM/clsKeyFrame.h"

namespace {

using Painter = std::function<void(wxGraphicsContext&)>;

wxBitmap Render(int size, double scale, const Painter& paint) {
    const int pixels = std::max(int(std::lround(size * scale)), 1);
    wxImage image(pixels, pixels);
    image.InitAlpha();
    std::fill_n(image.GetAlpha(), size_t(pixels) * size_t(pixels), static_cast<unsigned char>(0));
    {
        const std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::Create(image));
        if (gc) {
            gc->Scale(scale, scale);
            paint(*gc);
        }
    }
    return wxBitmap(image, 32, scale);
}

wxGraphicsPath Polygon(wxGraphicsContext& gc, std::initializer_list<wxPoint2DDouble> corners) {
    wxGraphicsPath path = gc.CreatePath();
    bool bFirst = true;
    for (const wxPoint2DDouble& corner : corners) {
        if (bFirst)
            path.MoveToPoint(corner);
        else
            path.AddLineToPoint(corner);
        bFirst = false;
    }
    path.CloseSubpath();
    return path;
}

void FillPolygon(wxGraphicsContext& gc, std::initializer_list<wxPoint2DDouble> corners) {
    gc.FillPath(Polygon(gc, corners));
}

void Lines(wxGraphicsContext& gc, std::initializer_list<wxPoint2DDouble> corners) {
    const auto* from = corners.begin();
    for (const auto* to = from + 1; to != corners.end(); from = to++)
        gc.StrokeLine(from->m_x, from->m_y, to->m_x, to->m_y);
}

wxGraphicsPath Diamond(wxGraphicsContext& gc, double x, double y, double r) {
    return Polygon(gc, {{x - r, y}, {x, y - r}, {x + r, y}, {x, y + r}});
}

void Curve(wxGraphicsContext& gc) {
    wxGraphicsPath path = gc.CreatePath();
    path.MoveToPoint(2.5, 12.5);
    path.AddCurveToPoint(8.0, 12.5, 8.0, 3.5, 13.5, 3.5);
    gc.StrokePath(path);
    for (const double end : {0.0, 1.0})
        gc.FillPath(Diamond(gc, 2.5 + 11.0 * end, 12.5 - 9.0 * end, 2.5));
}

/// Someone who looks over a wall.
void Shy(wxGraphicsContext& gc) {
    wxGraphicsPath head = gc.CreatePath();
    head.AddArc(8.0, 10.0, 4.5, M_PI, 2.0 * M_PI, true);
    gc.StrokePath(head);
    Lines(gc, {{1.5, 10.5}, {14.5, 10.5}});
    gc.DrawEllipse(5.6, 7.4, 1.0, 1.2);
    gc.DrawEllipse(9.4, 7.4, 1.0, 1.2);
}

void FoldAll(wxGraphicsContext& gc, bool bOpen) {
    for (const double y : {2.5, 8.5}) {
        if (bOpen)
            FillPolygon(gc, {{1.5, y}, {6.5, y}, {4.0, y + 4.0}});
        else
            FillPolygon(gc, {{2.0, y - 0.5}, {6.0, y + 2.0}, {2.0, y + 4.5}});
        Lines(gc, {{8.0, y + 2.0}, {14.0, y + 2.0}});
        if (bOpen) Lines(gc, {{10.0, y + 5.0}, {14.0, y + 5.0}});
    }
}

void Lens(wxGraphicsContext& gc, bool bPlus) {
    gc.StrokeLine(10.2, 10.2, 14.0, 14.0);
    wxGraphicsPath rim = gc.CreatePath();
    rim.AddCircle(6.5, 6.5, 4.5);
    gc.StrokePath(rim);
    Lines(gc, {{4.5, 6.5}, {8.5, 6.5}});
    if (bPlus) Lines(gc, {{6.5, 4.5}, {6.5, 8.5}});
}

/// Arrows to both ends; for the work area between its bounds.
void Extent(wxGraphicsContext& gc, bool bWork) {
    Lines(gc, {{1.5, 3.0}, {1.5, 13.0}});
    Lines(gc, {{14.5, 3.0}, {14.5, 13.0}});
    if (bWork) {
        gc.DrawRectangle(3.5, 5.5, 9.0, 5.0);
        return;
    }
    Lines(gc, {{4.0, 8.0}, {12.0, 8.0}});
    FillPolygon(gc, {{3.0, 8.0}, {6.0, 5.0}, {6.0, 11.0}});
    FillPolygon(gc, {{13.0, 8.0}, {10.0, 5.0}, {10.0, 11.0}});
}

void Chain(wxGraphicsContext& gc, bool bLinked) {
    const double gap = bLinked ? 0.0 : 1.5;
    for (const double x : {1.5 - gap / 2, 7.0 + gap}) {
        wxGraphicsPath ring = gc.CreatePath();
        ring.AddRoundedRectangle(x, 5.5, 7.5 - gap / 2, 5.0, 2.5);
        gc.StrokePath(ring);
    }
}

void Tick(wxGraphicsContext& gc, bool bTicked) {
    wxGraphicsPath box = gc.CreatePath();
    box.AddRoundedRectangle(2.5, 2.5, 11.0, 11.0, 2.0);
    gc.StrokePath(box);
    if (!bTicked) return;
    Lines(gc, {{5.0, 8.0}, {7.2, 10.5}, {11.0, 5.2}});
}

void PaintIcon(wxGraphicsContext& gc, TimelineIcon icon) {
    switch (icon) {
    case TimelineIcon::GRAPH:
        return Curve(gc);
    case TimelineIcon::SHY:
        return Shy(gc);
    case TimelineIcon::FOLD_ALL:
        return FoldAll(gc, false);
    case TimelineIcon::UNFOLD_ALL:
        return FoldAll(gc, true);
    case TimelineIcon::ZOOM_IN:
        return Lens(gc, true);
    case TimelineIcon::ZOOM_OUT:
        return Lens(gc, false);
    case TimelineIcon::ZOOM_FILM:
        return Extent(gc, false);
    case TimelineIcon::ZOOM_WORK:
        return Extent(gc, true);
    case TimelineIcon::PREVIOUS_KEY:
        return FillPolygon(gc, {{5.0, 8.0}, {10.5, 4.0}, {10.5, 12.0}});
    case TimelineIcon::NEXT_KEY:
        return FillPolygon(gc, {{11.0, 8.0}, {5.5, 4.0}, {5.5, 12.0}});
    case TimelineIcon::TOGGLE_KEY:
        return gc.FillPath(Diamond(gc, 8.0, 8.0, 5.0));
    case TimelineIcon::HOLLOW_KEY:
        return gc.StrokePath(Diamond(gc, 8.0, 8.0, 4.5));
    case TimelineIcon::DELETE_KEY:
        gc.StrokePath(Diamond(gc, 6.5, 6.5, 4.5));
        Lines(gc, {{9.5, 9.5}, {14.0, 14.0}});
        return Lines(gc, {{14.0, 9.5}, {9.5, 14.0}});
    case TimelineIcon::LINKED:
        return Chain(gc, true);
    case TimelineIcon::UNLINKED:
        return Chain(gc, false);
    case TimelineIcon::OPEN:
        return FillPolygon(gc, {{4.0, 6.0}, {12.0, 6.0}, {8.0, 11.0}});
    case TimelineIcon::CLOSED:
        return FillPolygon(gc, {{6.0, 4.0}, {11.0, 8.0}, {6.0, 12.0}});
    case TimelineIcon::TICKED:
        return Tick(gc, true);
    case TimelineIcon::UNTICKED:
        return Tick(gc, false);
    case TimelineIcon::COUNT:
        return;
    }
}

} // namespace

wxBitmap MakeTimelineIcon(TimelineIcon icon, const wxColour& colour, double scale) {
    return Render(kIconSize, scale, [&](wxGraphicsContext& gc) {
        gc.SetPen(gc.CreatePen(wxGraphicsPenInfo(colour, 1.25)));
        gc.SetBrush(wxBrush(colour));
        PaintIcon(gc, icon);
    });
}

wxBitmap MakeKeyBitmap(unsigned kind, const wxColour& fill, const wxColour& edge, double scale) {
    return Render(kMarkSize, scale, [&](wxGraphicsContext& gc) {
        const double m = kMarkSize / 2.0;
        gc.SetPen(gc.CreatePen(wxGraphicsPenInfo(edge, 1.0)));
        gc.SetBrush(wxBrush(fill));
        wxGraphicsPath path = gc.CreatePath();
        switch (kind) {
        case INTERP_HERMITE_AUTO:
            path.AddCircle(m, m, 4.5);
            break;
        case INTERP_HERMITE_SEMIAUTO:
            path.AddCircle(m, m, 4.5);
            path.AddCircle(m, m, 1.75);
            break;
        case INTERP_HERMITE:
            path = Polygon(gc, {{m - 4.5, m - 5.0},
                                {m + 4.5, m - 5.0},
                                {m + 1.0, m},
                                {m + 4.5, m + 5.0},
                                {m - 4.5, m + 5.0},
                                {m - 1.0, m}});
            break;
        case INTERP_STEP:
            path.AddRectangle(m - 4.0, m - 4.0, 8.0, 8.0);
            break;
        default:
            path = Diamond(gc, m, m, 5.5);
        }
        gc.DrawPath(path, wxODDEVEN_RULE);
    });
}

// Where things of the time lines stand, for the mouse.
#pragma once

#include <cmath>

#include "GuiTest.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamStrips.h"
#include "WIDGET/TIMELINE/clsParamTL.h"
#include "WIDGET/TIMELINE/clsTimeHeader.h"

class TimelinePoints : public GuiTest {
protected:
    static BtmHalfPanel_cls* Half() { return Frame()->GetPCBtmHalf(); }
    static ParamGUICtrl_cls* Lines() { return Half()->GetPCParamGUICtrl(); }
    static ParamStrips_cls* Strips() { return Lines()->GetPCStrips(); }
    /// A position of the film in a row of the strips.
    static wxPoint StripPoint(int row, double doubleIndex) {
        const RowScale rows = Lines()->GetRowScale();
        return wxPoint(int(std::lround(ParamTL_cls::ToPixel(Strips()->GetScale(), doubleIndex))),
                       rows.ToPixel(row) + rows.mHeight / 2);
    }
    /// Click the button left of the ruler whose tip begins so; false when the pointer finds none.
    static bool ClickHeader(const wxString& tip) {
        TimeHeader_cls* header = Half()->GetPCHeader();
        const wxSize size = header->GetClientSize();
        for (const int y : {size.y / 4, size.y * 3 / 4})
            for (int x = 6; x < size.x; x += 8) {
                MoveTo(header, wxPoint(x, y));
                if (!header->GetToolTipText().StartsWith(tip)) continue;
                Click(header, wxPoint(x, y));
                return true;
            }
        return false;
    }
};

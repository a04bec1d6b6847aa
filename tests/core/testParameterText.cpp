// Curves as text: on the clipboard, in projects, in scene scripts.
#include "PARAM/clsParameters.h"

#include "PARAM/clsParamCommand.h"
#include "ParamTest.h"

namespace {

using Parameters = ParamTest;
using Doubles = std::vector<double>;

TEST_F(Parameters, ClipboardTextHoldsTheSelectedKeys) {
    Curve curve({MakeKey(0.25, 1), MakeKey(0.5, 2, INTERP_STEP)});
    EXPECT_EQ(curve.GetClipboardText(), "");
    curve.SelectKey(1, true);
    EXPECT_EQ(curve.GetClipboardText(),
              "Parameter_x\nitemnum 1\n0.500000000 4 2.000000 0.000000 0.000000 \n");
}

TEST_F(Parameters, SnippingTagsMarkTheFramesOfKeys) {
    Curve curve({MakeKey(0, 1), MakeKey(0.29, 2), MakeKey(1, 3), MakeKey(1e300, 4), MakeKey(-1e300, 5)});
    std::vector<int> marked;
    GParamHooks.mMarkSnipping = [&](int frame) { marked.push_back(frame); };
    std::vector<bool> tags(101);
    curve.CheckSnippingTag(&tags);
    EXPECT_EQ(marked, (std::vector<int>{0, 29, 100}));
    EXPECT_TRUE(tags[29]);
}

TEST_F(Parameters, TextFormRoundTrip) {
    Curve curve({MakeKey(0, 1), MakeKey(1 / 3.0, 2, INTERP_HERMITE_AUTO), MakeKey(1, 3, INTERP_STEP)});
    curve.mPeriodic.mValue = 360;
    const wxString text = curve.Serialize();
    EXPECT_EQ(text, "Parameter_x\ntimeDepend=1\nperiodic=360\nitemnum 3\n"
                    "0.000000000 0 1.000000 0.000000 0.000000 \n"
                    "0.333333333 1 2.000000 2.000000 2.000000 \n"
                    "1.000000000 4 3.000000 0.000000 0.000000 \n");
    Parameters_cls read("Group x", "x", false, 0, nullptr);
    EXPECT_EQ(ReadText(read, "Parameter_y\n" + text + "next\n"),
              (std::vector<std::string>{"Parameter_y", "next"}));
    EXPECT_EQ(read.Serialize(), text);
}

TEST_F(Parameters, BadTextEndsNothing) {
    Parameters_cls curve("Group x", "x", true, 0, nullptr);
    ReadText(curve, "Parameter_x\ntimeDepend=1\nitemnum 2000000000\n0.5 0 1 0 0\n");
    EXPECT_EQ(curve.GetKeyNumber(), 1) << "the end of the file ends the keys";
    ReadText(curve, "Parameter_x\nperiodic=0\nitemnum -4\n");
    EXPECT_EQ(curve.GetKeyNumber(), 0);
    EXPECT_EQ(curve.GetInterpolatedValue(0.5), 0);
    ReadText(curve, L"Parameter_x\r\nitemnum 3\r\n0.9 0 1 0 0\r\n0.1 0 2 0 0\n\u00ff nonsense\n");
    EXPECT_EQ(curve.GetKeyNumber(), 3);
    EXPECT_TRUE(IsSorted(curve)) << "keys out of order are put in order";
    ReadText(curve, "Parameter_x");
    EXPECT_EQ(curve.GetKeyNumber(), 0);
    // Editing goes on from there.
    curve.InsertKey(0.5, 1, 0, 0);
    curve.Flip();
    EXPECT_EQ(curve.GetKeyNumber(), 1);
}

TEST_F(Parameters, SceneTextSelectsBySegment) {
    Curve curve(
        {MakeKey(0.25, 1, INTERP_HERMITE, 2), MakeKey(0.75, 3, INTERP_LINEAR, -4), MakeKey(0.875, 10)});
    EXPECT_EQ(curve.GetStrExpression("A_x"),
              "#if (t0 <= 0.25)\n\t#declare A_x = 1;\n#elseif (t0 <= 0.75)\n"
              "\t#declare rate = (t0 - 0.25)/0.5;\n"
              "\t#declare A_x = 1 + 1*rate + 6*rate*rate + -5*rate*rate*rate;\n"
              "#elseif (t0 <= 0.875)\n\t#declare rate = (t0 - 0.75)/0.125;\n"
              "\t#declare A_x = #else\n\t#declare A_x3+ rate * 7 = 10;\n#end\n");
    Curve step({MakeKey(0, 350, INTERP_STEP), MakeKey(1, 10)});
    step.mPeriodic.mValue = 360;
    EXPECT_EQ(step.GetStrExpression("n"),
              "#if (t0 <= 1)\n\t#declare rate = (t0 - 0)/1;\n"
              "\t#declare n = 350 + 0*rate + 60*rate*rate + -40*rate*rate*rate;\n#end\n");
    step.mbTimeDepend.mValue = false;
    EXPECT_EQ(step.GetStrExpression("n"), "#declare n = 350;\n");
}

} // namespace

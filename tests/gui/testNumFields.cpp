// Numeric fields under real keys and mouse.
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "GuiTest.h"
#include "WIDGET/clsDialogEXKey.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

class NumFields : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        mpDialog = new wxDialogEXKey(Frame(), "Fields");
        mpPanel = new MultiInputPanel_cls(mpDialog);
        NumSpec spec;
        spec.mMin = 0;
        spec.mMax = 100;
        mRow = mpPanel->AddNumber("Value", &mValue, 1, spec, "A value");
        mpPanel->SetOnChange([this](int, bool bFinal) { ++(bFinal ? mFinal : mLive); });
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        sizer->Add(mpPanel, 1, wxEXPAND);
        mpDialog->SetSizerAndFit(sizer);
        mpDialog->OpenWindow();
        ASSERT_TRUE(PumpUntil([this] { return mpDialog->IsActive(); }));
        Click(Text(), wxPoint(20, 10));
        ASSERT_TRUE(PumpUntil([this] { return Text()->HasFocus(); }));
    }
    void TearDown() override {
        mpDialog->Destroy();
        GuiTest::TearDown();
    }
    NumField_cls* Field() { return static_cast<NumField_cls*>(mpPanel->GetField(mRow)); }
    wxTextCtrl* Text() { return Field()->GetPCText(); }
    void Enter(const std::string& text) {
        Text()->SelectAll();
        Type(text);
    }

    wxDialogEXKey* mpDialog = nullptr;
    MultiInputPanel_cls* mpPanel = nullptr;
    int mRow = -1;
    float mValue = 10.0f;
    int mFinal = 0;
    int mLive = 0;
};

} // namespace

TEST_F(NumFields, EnterCommitsOnceAndCutsToTheRange) {
    Enter("42.5");
    Key(WXK_RETURN);
    EXPECT_TRUE(PumpUntil([this] { return mValue == 42.5f; }, 2000));
    Enter("250");
    Key(WXK_RETURN);
    EXPECT_TRUE(PumpUntil([this] { return mValue == 100.0f; }, 2000));
    EXPECT_EQ(Text()->GetValue(), "100");
    EXPECT_EQ(mFinal, 2);
    EXPECT_EQ(mLive, 0);
}

TEST_F(NumFields, EscapeRestoresFirstAndHidesTheDialogNext) {
    Enter("77");
    Key(WXK_ESCAPE);
    EXPECT_TRUE(PumpUntil([this] { return Text()->GetValue() == "10"; }, 2000));
    EXPECT_TRUE(mpDialog->IsShown());
    Key(WXK_ESCAPE);
    EXPECT_TRUE(PumpUntil([this] { return !mpDialog->IsShown(); }, 2000));
    EXPECT_EQ(mFinal, 0);
    EXPECT_EQ(mValue, 10.0f);
}

TEST_F(NumFields, WhatIsNoNumberGivesTheOldValueBack) {
    Enter("1e");
    Key(WXK_RETURN);
    EXPECT_TRUE(PumpUntil([this] { return Text()->GetValue() == "10"; }, 2000));
    EXPECT_EQ(mFinal, 0);
}

TEST_F(NumFields, ADragIsLiveAndEndsWithOneChange) {
    const wxRect text = Text()->GetRect();
    const wxPoint arrows(text.GetRight() + 8, text.GetHeight() / 2);
    Drag(Field(), arrows, arrows + wxPoint(30, 0));
    EXPECT_TRUE(PumpUntil([this] { return mFinal == 1; }, 2000));
    EXPECT_GT(mLive, 1);
    EXPECT_EQ(mValue, 40.0f);
}

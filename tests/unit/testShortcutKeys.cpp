#include <gtest/gtest.h>

#include <wx/defs.h>
#include <wx/event.h>

#include "WIDGET/ShortcutKeys.h"

TEST(ShortcutKeys, ANumberKeepsOnlyWhatNumbersAreMadeOf) {
    for (const int key : {int('0'), int('9'), int('.'), int('-'), int('E'), int(WXK_NUMPAD5), int(WXK_BACK),
                          int(WXK_LEFT), int(WXK_RETURN), int(WXK_TAB), int(WXK_ESCAPE)})
        EXPECT_TRUE(IsFieldKey(FieldKind::Number, key, wxMOD_NONE)) << key;
    for (const int key : {int(WXK_SPACE), int('B'), int('K'), int('T'), int('\''), int(WXK_F5)})
        EXPECT_FALSE(IsFieldKey(FieldKind::Number, key, wxMOD_NONE)) << key;
}

TEST(ShortcutKeys, UndoGoesToTheFrameAndTheClipboardStays) {
    for (const FieldKind kind : {FieldKind::Number, FieldKind::Text}) {
        EXPECT_FALSE(IsFieldKey(kind, 'Z', wxMOD_CONTROL));
        EXPECT_FALSE(IsFieldKey(kind, '1', wxMOD_CONTROL));
        EXPECT_FALSE(IsFieldKey(kind, WXK_F7, wxMOD_NONE));
        EXPECT_TRUE(IsFieldKey(kind, 'C', wxMOD_CONTROL));
        EXPECT_TRUE(IsFieldKey(kind, WXK_LEFT, wxMOD_CONTROL));
    }
}

TEST(ShortcutKeys, TextKeepsLettersAndBlanks) {
    EXPECT_TRUE(IsFieldKey(FieldKind::Text, WXK_SPACE, wxMOD_NONE));
    EXPECT_TRUE(IsFieldKey(FieldKind::Text, 'B', wxMOD_SHIFT));
    EXPECT_TRUE(IsFieldKey(FieldKind::Text, 0xE9, wxMOD_NONE));
}

TEST(ShortcutKeys, OutsideFieldsOnlyMovingTheFocusStays) {
    EXPECT_TRUE(IsFieldKey(FieldKind::None, WXK_TAB, wxMOD_SHIFT));
    EXPECT_TRUE(IsFieldKey(FieldKind::None, WXK_SPACE, wxMOD_NONE)) << "presses the focused button";
    EXPECT_TRUE(IsFieldKey(FieldKind::None, WXK_CONTROL, wxMOD_CONTROL));
    EXPECT_TRUE(IsFieldKey(FieldKind::None, 'O', wxMOD_ALT)) << "a mnemonic";
    EXPECT_FALSE(IsFieldKey(FieldKind::None, 'B', wxMOD_NONE));
}

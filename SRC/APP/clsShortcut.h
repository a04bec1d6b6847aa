// Keys that act in the whole window.
#pragma once

class FrameMain_cls;

class Shortcut_cls {
public:
    explicit Shortcut_cls(FrameMain_cls* pFrame) : mpCFrame(pFrame) {}

    /// modifier: sum of 1 Alt, 2 Ctrl, 4 Shift, 8 Meta. True when the key meant something.
    bool ProcShortcutKey(int modifier, int keycode);

private:
    bool ProcCtrl(int keycode);
    bool ProcPlain(int keycode, bool bCtrl);
    bool ProcItem(int keycode);
    bool ProcTime(int keycode);
    void ChangeHistory(bool bUndo);
    /// Display mode of the active view.
    void SetDisplayMode(int mode);

    FrameMain_cls* mpCFrame;
};

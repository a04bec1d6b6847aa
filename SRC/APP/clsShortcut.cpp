#include "APP/clsShortcut.h"

#include <wx/defs.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "GL/BASE/clsNavigators.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "SCENE/clsMoveItem.h"
#include "SCENE/clsSceneObj.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/TimeGesture.h"

bool Shortcut_cls::ProcShortcutKey(int modifier, int keycode) {
    if (modifier == 1) return false; // Alt belongs to the menus
    // What a hand holds has the keys first, but for undo and redo.
    bool bUndo = modifier == 2 && (keycode == 'Y' || keycode == 'Z');
    if (GpCurrentGLPanel && MoveItem_cls::IsDragging() && (keycode == 'Y' || keycode == 'Z')) {
        // Shift may be held for the gesture, and Ctrl to snap: then the letter is an axis.
        bUndo = (modifier == 2 || modifier == 6) && !MoveItem_cls::IsSnapping();
        if (bUndo) modifier = 2;
    }
    if (GpCurrentGLPanel && !bUndo && GpCurrentGLPanel->OnDragKey(keycode)) return true;
    if (modifier != 2) return ProcPlain(keycode, (modifier & 2) != 0);
    if (!ProcCtrl(keycode)) return false;
    PostMenuEvent(ID_REFRESH_GL);
    return true;
}

bool Shortcut_cls::ProcCtrl(int keycode) {
    switch (keycode) {
    case '1':
    case WXK_NUMPAD1:
    case WXK_NUMPAD_END:
        SetDisplayMode(DISPLAY_TO_MINUS_X);
        return true;
    case '3':
    case WXK_NUMPAD3:
    case WXK_NUMPAD_PAGEDOWN:
        SetDisplayMode(DISPLAY_TO_MINUS_Y);
        return true;
    case '7':
    case WXK_NUMPAD7:
    case WXK_NUMPAD_HOME:
        SetDisplayMode(DISPLAY_TO_PLUS_Z);
        return true;
    case 'Y':
    case 'Z':
        ChangeHistory(keycode == 'Z');
        return true;
    default:
        return false;
    }
}

// What is being drawn isn't taken away: the menu's command waits for the paint.
void Shortcut_cls::ChangeHistory(bool bUndo) {
    if (GbGLLockDrawing.load())
        PostMenuEvent(bUndo ? ID_UNDO : ID_REDO);
    else if (bUndo)
        mpCFrame->GetPCMain()->Undo();
    else
        mpCFrame->GetPCMain()->Redo();
}

void Shortcut_cls::SetDisplayMode(int mode) {
    if (!GpCurrentGLPanel) return;
    GpCurrentGLPanel->ChooseDisplayMode(mode);
    PostMenuEvent(ID_SYNC_GL_CTRL);
    PostMenuEvent(ID_REFRESH_GL);
}

bool Shortcut_cls::ProcPlain(int keycode, bool bCtrl) {
    switch (keycode) {
    case 'Q': // the toolkit doesn't take a letter alone as a menu's key
        PostMenuEvent(ID_QUIT);
        return true;
    case '0':
    case WXK_NUMPAD0:
    case WXK_NUMPAD_INSERT:
        SetDisplayMode(DISPLAY_FREE);
        return true;
    case '1':
    case WXK_NUMPAD1:
    case WXK_NUMPAD_END:
        SetDisplayMode(DISPLAY_TO_PLUS_X);
        return true;
    case '3':
    case WXK_NUMPAD3:
    case WXK_NUMPAD_PAGEDOWN:
        SetDisplayMode(DISPLAY_TO_PLUS_Y);
        return true;
    case '7':
    case WXK_NUMPAD7:
    case WXK_NUMPAD_HOME:
        SetDisplayMode(DISPLAY_TO_MINUS_Z);
        return true;
    case WXK_ESCAPE:
        return mpCFrame->GetPCMain()->mpCParticles->End();
    case '5':
    case WXK_NUMPAD5:
    case WXK_NUMPAD_BEGIN:
        if (GpCurrentGLPanel) GpCurrentGLPanel->TogglePerspective();
        PostMenuEvent(ID_SYNC_GL_CTRL);
        return true;
    default:
        return (!bCtrl && ProcItem(keycode)) || ProcTime(keycode); // letters with Ctrl are the menus'
    }
}

// How hands move the selected item, and along which axis.
bool Shortcut_cls::ProcItem(int keycode) {
    SceneObj_cls* item = MoveItem_cls::mspCSelectedObject;
    switch (keycode) {
    case 'R':
        Navigators_cls::RotationMode();
        break;
    case 'S':
        Navigators_cls::ScaleMode();
        break;
    case 'T':
        Navigators_cls::TranslationMode();
        break;
    case 'X':
    case 'Y':
    case 'Z':
        if (!item) return false;
        item->ToggleDragMode(keycode - 'X');
        break;
    default:
        return false;
    }
    PostMenuEvent(ID_REFRESH_GL);
    return true;
}

bool Shortcut_cls::ProcTime(int keycode) {
    TimeCtrl_cls* time = mpCFrame->GetPCTimeCtrl();
    switch (keycode) {
    case WXK_SPACE:
        time->StartPlayCommand(1);
        return true;
    case '\'':
        TimeGesture_cls::Burst(time);
        time->ExpandAACommand(true);
        return true;
    case '-':
        TimeGesture_cls::Burst(time);
        time->ExpandAACommand(false);
        return true;
    case 'B':
        time->SetWAInHere();
        return true;
    case 'N':
        time->SetWAOutHere();
        return true;
    case 'J':
        time->MoveFrameCommandSnip(-1);
        return true;
    case 'K':
        time->MoveFrameCommandSnip(1);
        return true;
    case WXK_LEFT:
        time->MoveFrameCommand(-1);
        return true;
    case WXK_RIGHT:
        time->MoveFrameCommand(1);
        return true;
    default:
        return false;
    }
}

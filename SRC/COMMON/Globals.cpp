#include "COMMON/Globals.h"

std::atomic<bool> GbGLLockDrawing{false};
std::atomic<bool> GbGLLockForInterplateData{false};
std::atomic<bool> GbGLLockForLoadingData{false};
std::atomic<bool> GbGLLockModalDialog{false};
std::atomic<bool> GbGLLockPlayWait{false};
std::atomic<bool> GbGLLockProjectLoading{false};
std::atomic<bool> GbSnapDataRefresh{false};
std::atomic<bool> GbThreadReaderFinished{false};
std::atomic<bool> GbThreadInterpolateFinished{false};
std::atomic<bool> GbAbort{false};

std::atomic<ThreadFileReader_cls*> GpCThreadReader{nullptr};
std::atomic<ThreadInterpolator_cls*> GpCThreadInterpolate{nullptr};
std::atomic<int> GThreadReaderIndex{-1};
std::atomic<int> GThreadReaderPercentage{100};
std::atomic<int> GDrawingStage{0};
std::atomic<int> GDrawingPercentage{100};
std::atomic<int> GThreadNumberReadAscii{4};

FrameMain_cls* GpCMainFrameCLS = nullptr;
MainGLCanvas_cls* GpCurrentGLPanel = nullptr;
wxFileDialogEX* GpCFileDialog = nullptr;
wxColourDialogEX* GpCClrDialog = nullptr;

int GShortcutKeycode = 0;
int GShortcutModifier = 0;

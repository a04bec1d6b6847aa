// A view's part in scenes for POV-Ray: while it runs, the host is told of each whole picture that stands in
// the window, to write its scene.
#pragma once

class MainGLCanvas_cls;
class ViewHost_cls;

class ViewPov_cls {
public:
    ViewPov_cls(MainGLCanvas_cls& canvas, ViewHost_cls& host) : mCanvas(canvas), mHost(host) {}

    void StartExportPovStringProcess();
    void StopExportPovStringProcess();
    bool IsRunning() const { return mbExportPov; }
    /// The paint has shown all of its frame.
    void OnShown();

private:
    MainGLCanvas_cls& mCanvas;
    ViewHost_cls& mHost;
    bool mbExportPov = false;
};

// What the colour curve editor learns of the program: which curves there are, and the data that drive them.
#pragma once

class ColorCurveCtrl_cls;
class Main_cls;

/// Both must outlive the editor's window.
void LinkColorCurveCtrl(Main_cls& hub, ColorCurveCtrl_cls& ctrl);

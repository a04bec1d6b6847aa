// The program's start, measured in a process of its own: this executable called again with
// "--start-probe [project]" starts hub and frame as the program does, opens the project, and prints the
// milliseconds from main to the shown window and to the first picture with data.
#pragma once

/// Runs the probe and exits if the arguments ask for it; otherwise returns at once.
void RunStartProbeIfAsked(int argc, char** argv);

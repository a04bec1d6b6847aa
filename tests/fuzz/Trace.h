// What an input reaches, where the code was compiled to tell (the preset "fuzz"); else nothing is known.
#pragma once

/// Forget what was reached since the last call.
void BeginTrace();
/// Did it reach anything, or anything so often, that no input before it did?
bool EndTrace();

// Simple solid things, half as large as their name says in each direction from the middle: their edges and
// diameters are 1. They are lit by the current material and shader.
#pragma once

// These need a current OpenGL context.
void DrawSolidCube();
void DrawSolidSquare(); ///< in the plane z = 0, facing +z
void DrawSolidSphere();

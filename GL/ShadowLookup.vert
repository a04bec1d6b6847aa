#version 120
// All of the screen.
// Written by tools/make_shaders.py.

void main()
{
    gl_Position = gl_Vertex;
}

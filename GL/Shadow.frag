#version 120
// Its colour where it is shown.
// Written by tools/make_shaders.py.

void main()
{
    gl_FragColor = gl_Color;
}

#version 120
// Its colour where it is shown.
// Written by tools/make_shaders.py.

#ifdef NO_CLAMP
varying vec2 depth;
#endif

void main()
{
#ifdef NO_CLAMP
    gl_FragDepth = gl_DepthRange.near + gl_DepthRange.diff * clamp(0.5 * depth.x / depth.y + 0.5, 0.0, 1.0);
#endif
    gl_FragColor = gl_Color;
}

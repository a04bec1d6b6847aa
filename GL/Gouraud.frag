#version 120
// The colour between the vertices, and fog.
// Written by tools/make_shaders.py.

#ifndef FOG
uniform int fogMode; // 0 none, 1 exponential, 2 its square, 3 linear
#define FOG fogMode
#endif

vec3 fogged(vec3 color, float depth)
{
    if (FOG == 0) return color;
    float reach = gl_Fog.density * depth;
    float clear = FOG == 1 ? exp(-reach)
                : FOG == 2 ? exp(-reach * reach) : (gl_Fog.end - depth) * gl_Fog.scale;
    return mix(gl_Fog.color.rgb, color, clamp(clear, 0.0, 1.0));
}

#ifdef EACH_BLENDS
varying float covers; // 1, or 0 for what adds
#endif

vec4 blended(vec4 color)
{
#ifdef EACH_BLENDS
    return vec4(color.rgb * color.a, color.a * covers);
#else
    return color;
#endif
}

void main()
{
    gl_FragColor = blended(vec4(fogged(gl_Color.rgb, gl_FogFragCoord), gl_Color.a));
}

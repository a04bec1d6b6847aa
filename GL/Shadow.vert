#version 120
// The volume that a sphere keeps from a light.
// Written by tools/make_shaders.py.

attribute vec4 sphere; // centre and radius
#ifdef NEAR_LIGHT
uniform vec3 light;    // its place among the spheres
uniform float start;   // where shadows begin and end, radii
uniform float reach;
#endif
#ifdef NO_CLAMP
varying vec2 depth;    // over each other: what the far plane would cut stays
#endif

// gl_Vertex: of a far light the corner itself, radii; of a near one cosine and sine of the place around, and
// which end. gl_MultiTexCoord0: which end.
void main()
{
#ifdef NEAR_LIGHT
    vec3 away = sphere.xyz - light;
    float far = length(away);
    away /= far;
    float sine = min(sphere.w / far, 0.9995);
    float cosine = sqrt(1.0 - sine * sine);
    vec3 side = normalize(cross(away, abs(away.z) < 0.9 ? vec3(0.0, 0.0, 1.0) : vec3(1.0, 0.0, 0.0)));
    float way = mix(start, reach, gl_Vertex.z);
    float wide = cosine + way * sine / cosine;
    vec3 corner = (way - sine) * away + wide * (gl_Vertex.x * side + gl_Vertex.y * cross(away, side));
#else
    vec3 corner = gl_Vertex.xyz;
#endif
    gl_Position = gl_ModelViewProjectionMatrix * vec4(sphere.xyz + sphere.w * corner, 1.0);
#ifdef NO_CLAMP
    depth = gl_Position.zw;
    gl_Position.z = 0.0;
#endif
    gl_FrontColor = vec4(gl_Color.rgb * (1.0 - 0.7 * gl_MultiTexCoord0.x), 1.0);
    gl_BackColor = gl_FrontColor;
}

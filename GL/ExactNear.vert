#version 120
// The part of the screen that a sphere at the eye may fill.
// Written by tools/make_shaders.py.

#extension GL_EXT_gpu_shader4 : enable
#ifdef GL_EXT_gpu_shader4
#define PER_SPHERE flat varying
#else
#define PER_SPHERE varying
#endif

#if defined(FAR_LIGHTS) || defined(NEAR_LIGHTS)
#define BY_SPHERE
#endif
attribute vec4 sphere;  // centre and radius
#ifdef MATERIALS
attribute vec4 ambient;
attribute vec4 diffuse;
attribute vec4 specular;
#ifndef BY_SPHERE
PER_SPHERE vec4 materialAmbient;
PER_SPHERE vec4 materialDiffuse;
PER_SPHERE vec4 materialSpecular;
#endif
#endif

#ifdef EACH_BLENDS
PER_SPHERE float covers;
#endif

uniform vec4 viewport;     // left, bottom, width, height in pixels
uniform vec2 rayScale;     // from window coordinates to the plane at depth 1, or of a parallel view
uniform vec2 rayOffset;
uniform float scale;       // of the model-view matrix
PER_SPHERE vec4 ball;      // the sphere in eye coordinates

// Middle and half width of the silhouette along one axis of the picture plane at depth 1.
vec2 silhouette(float across, float depth, float radius)
{
    float rest = depth * depth - radius * radius;
    return vec2(across * depth, radius * sqrt(across * across + rest)) / rest;
}

void main()
{
    vec3 centre = (gl_ModelViewMatrix * vec4(sphere.xyz, 1.0)).xyz;
    float radius = sphere.w * scale;
    ball = vec4(centre, radius);
    vec2 x = vec2(centre.x, radius);
    vec2 y = vec2(centre.y, radius);
    bool full = false;
#ifdef PERSPECTIVE
    float depth = -centre.z;
    full = depth <= radius * 1.0001; // reaches the plane of the eye: may be anywhere
    x = silhouette(centre.x, depth, radius);
    y = silhouette(centre.y, depth, radius);
#endif
    vec2 middle = full ? viewport.xy + 0.5 * viewport.zw : (vec2(x.x, y.x) - rayOffset) / rayScale;
    vec2 reach = full ? viewport.zw : vec2(0.0625) + vec2(x.y, y.y) / rayScale;
    vec2 corner = middle + gl_MultiTexCoord0.xy * reach - viewport.xy;
    gl_Position = vec4(corner / (0.5 * viewport.zw) - 1.0, 0.0, 1.0);

#ifdef EACH_BLENDS
    covers = ambient.a;
#endif
#if defined(MATERIALS) && !defined(BY_SPHERE)
    materialAmbient = ambient;
    materialDiffuse = diffuse;
    materialSpecular = specular;
#endif
}

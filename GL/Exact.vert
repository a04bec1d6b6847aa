#version 120
// The square on the screen that a sphere fills.
// Written by tools/make_shaders.py.

attribute vec4 sphere;  // centre and radius
#ifdef MATERIALS
attribute vec4 ambient;
attribute vec4 diffuse;
attribute vec4 specular;
varying vec4 materialAmbient;
varying vec4 materialDiffuse;
varying vec4 materialSpecular;
#endif
uniform vec4 viewport;     // left, bottom, width, height in pixels
uniform vec2 rayScale;     // from window coordinates to the plane at depth 1, or of a parallel view
uniform vec2 rayOffset;
uniform float scale;       // of the model-view matrix
varying vec4 ball;         // the sphere in eye coordinates

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
    bool hidden = false;
#ifdef PERSPECTIVE
    float depth = -centre.z;
    full = depth <= radius * 1.0001; // reaches the plane of the eye: may be anywhere
    // Behind the eye, or wholly beyond a side of the picture: nothing, rather than the whole picture for
    // each sphere beside the eye. Views to all sides have many of these.
    vec2 low = viewport.xy * rayScale + rayOffset;
    vec2 high = (viewport.xy + viewport.zw) * rayScale + rayOffset;
    vec2 beyond = max((centre.xy - high * depth) / sqrt(1.0 + high * high),
                      (low * depth - centre.xy) / sqrt(1.0 + low * low));
    hidden = depth <= -radius || max(beyond.x, beyond.y) > radius * 1.01;
    x = silhouette(centre.x, depth, radius);
    y = silhouette(centre.y, depth, radius);
#endif
    // Window coordinates, a little wider for what the rasterizer rounds.
    vec2 middle = full ? viewport.xy + 0.5 * viewport.zw : (vec2(x.x, y.x) - rayOffset) / rayScale;
    vec2 reach = full ? viewport.zw : vec2(0.125) + vec2(x.y, y.y) / rayScale;
    gl_PointSize = 2.0 * max(reach.x, reach.y);
    // A corner of a square, or 0 for a point.
    vec2 corner = middle + gl_MultiTexCoord0.xy * reach - viewport.xy;
    gl_Position = hidden ? vec4(2.0, 2.0, 2.0, 1.0) : vec4(corner / (0.5 * viewport.zw) - 1.0, 0.0, 1.0);
#ifdef MATERIALS
    materialAmbient = ambient;
    materialDiffuse = diffuse;
    materialSpecular = specular;
#endif
}

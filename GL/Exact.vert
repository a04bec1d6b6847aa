#version 120
// The square on the screen that a sphere fills, and its light.
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
uniform vec2 depthMap;     // depth = x + y / z, in a parallel view x + y * z
uniform float scale;       // of the model-view matrix
PER_SPHERE vec4 onScreen;  // middle in window coordinates; radii of the sphere a pixel
PER_SPHERE vec4 toSphere;  // direction from the eye, and the radius over the distance
#ifdef BALL
PER_SPHERE vec4 ball;      // the sphere in eye coordinates
#endif

#ifdef FAR_LIGHTS
PER_SPHERE vec4 litAlways;                // with the alpha
#if LIGHT_NUMBER > 0
PER_SPHERE vec4 litFrom[LIGHT_NUMBER];    // direction: x, y, its part along the view; diffuse red
PER_SPHERE vec4 shineFrom[LIGHT_NUMBER];  // the same half way to the viewer; diffuse green
PER_SPHERE vec4 litShine[LIGHT_NUMBER];   // highlight; diffuse blue
#endif
#endif

#ifdef NEAR_LIGHTS
PER_SPHERE vec4 litAlways;               // with the alpha
PER_SPHERE vec4 litAmbient;              // the material
PER_SPHERE vec4 litDiffuse;
PER_SPHERE vec4 litSpecular;
PER_SPHERE vec4 nearFrom[LIGHT_NUMBER];  // direction: x, y, its part along the view; strength
PER_SPHERE vec4 nearTurn[LIGHT_NUMBER];  // radius over distance; what strength gains towards the light; one
                                         // over the length of direction plus viewer; what ambient light gains
#endif

#ifdef BY_SPHERE
#ifdef MATERIALS
#define AMBIENT ambient
#define DIFFUSE diffuse
#define SPECULAR specular
#else
#define AMBIENT gl_FrontMaterial.ambient
#define DIFFUSE gl_FrontMaterial.diffuse
#define SPECULAR gl_FrontMaterial.specular
#endif
#endif

#ifdef FAR_LIGHTS
uniform vec3 lightTo[8];       // of length 1
uniform vec3 lightBetween[8];

void prepareLights(vec3 along)
{
    vec3 always = gl_LightModel.ambient.rgb * AMBIENT.rgb;
#if LIGHT_NUMBER > 0
    for (int i = 0; i < LIGHT_NUMBER; ++i) {
        vec3 color = gl_LightSource[i].diffuse.rgb * DIFFUSE.rgb;
        always += gl_LightSource[i].ambient.rgb * AMBIENT.rgb;
        litFrom[i] = vec4(lightTo[i].xy, dot(lightTo[i], along), color.r);
        shineFrom[i] = vec4(lightBetween[i].xy, dot(lightBetween[i], along), color.g);
        litShine[i] = vec4(gl_LightSource[i].specular.rgb * SPECULAR.rgb, color.b);
    }
#endif
    litAlways = vec4(always, DIFFUSE.a);
}
#endif

#ifdef NEAR_LIGHTS
void prepareNear(vec3 along, vec3 centre, float radius)
{
    float always = 0.0;
    for (int i = 0; i < LIGHT_NUMBER; ++i) {
        vec4 source = gl_LightSource[i].position;
        vec3 to = source.xyz - source.w * centre;
        float far = max(length(to), 1e-30);
        to /= far;
        float share = 1.0;
        float turn = 0.0;
        float gain = 0.0;
        if (source.w != 0.0) {
            float linear = far * gl_LightSource[i].linearAttenuation;
            float square = far * far * gl_LightSource[i].quadraticAttenuation;
            share = 1.0 / (gl_LightSource[i].constantAttenuation + linear + square);
            turn = radius / far;
            gain = (linear + 2.0 * square) * share * turn;
        }
        if (gl_LightSource[i].spotCutoff <= 90.0
            && -dot(to, normalize(gl_LightSource[i].spotDirection)) < gl_LightSource[i].spotCosCutoff)
            share = 0.0;
        float strength = share * gl_LightSource[i].diffuse.r;
        float around = share * gl_LightSource[i].ambient.r;
        always += around;
        nearFrom[i] = vec4(to.xy, dot(to, along), strength);
        nearTurn[i] = vec4(turn, strength * gain, inversesqrt(max(2.0 + 2.0 * to.z, 1e-6)), around * gain);
    }
    litAlways = vec4((gl_LightModel.ambient.rgb + vec3(always)) * AMBIENT.rgb, DIFFUSE.a);
    litAmbient = AMBIENT;
    litDiffuse = DIFFUSE;
    litSpecular = SPECULAR;
}
#endif

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
#ifdef PERSPECTIVE
    float depth = -centre.z;
    float far = length(centre);
    toSphere = vec4(centre, radius) / far;
    onScreen = vec4((centre.xy / depth - rayOffset) / rayScale, rayScale * (depth / radius));
    vec2 x = silhouette(centre.x, depth, radius);
    vec2 y = silhouette(centre.y, depth, radius);
    float middleDepth = depthMap.x + depthMap.y / centre.z;
    float thickness = depthMap.y * toSphere.w / depth;
#else
    toSphere = vec4(0.0, 0.0, -1.0, 0.0);
    onScreen = vec4((centre.xy - rayOffset) / rayScale, rayScale / radius);
    vec2 x = vec2(centre.x, radius);
    vec2 y = vec2(centre.y, radius);
    float middleDepth = depthMap.x + depthMap.y * centre.z;
    float thickness = -depthMap.y * radius;
#endif
#ifdef BALL
    ball = vec4(centre, radius);
#endif
    // Window coordinates, a little wider for what the rasterizer rounds.
    vec2 middle = (vec2(x.x, y.x) - rayOffset) / rayScale;
    vec2 reach = vec2(0.0625) + vec2(x.y, y.y) / rayScale;
    gl_PointSize = 2.0 * max(reach.x, reach.y);
    // A corner of a square, or 0 for a point.
    vec2 corner = middle + gl_MultiTexCoord0.xy * reach - viewport.xy;
    // Every pixel gets the depth of the middle as its z and the thickness as its w; thinner than any depth
    // buffer can tell counts as that.
    float w = 1.0 / max(thickness, 1e-9);
    float z = (2.0 * middleDepth - gl_DepthRange.near - gl_DepthRange.far) / gl_DepthRange.diff;
    gl_Position = vec4(corner / (0.5 * viewport.zw) - 1.0, z, 1.0) * vec4(w);
#ifdef FAR_LIGHTS
    prepareLights(toSphere.xyz);
#endif
#ifdef NEAR_LIGHTS
    prepareNear(toSphere.xyz, centre, radius);
#endif

#ifdef EACH_BLENDS
    covers = ambient.a;
#endif
#if defined(MATERIALS) && !defined(BY_SPHERE)
    materialAmbient = ambient;
    materialDiffuse = diffuse;
    materialSpecular = specular;
#endif
}

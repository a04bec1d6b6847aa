#!/usr/bin/env python3
"""Write GL/*.vert and GL/*.frag, the shaders of lit spheres and objects.

GLSL 1.20 on the state of the fixed pipeline: lights, materials and fog are read from where glLight,
glMaterial and glFog put them. Parts that several files need stand here once. Standard library only.

Without any define a file works on plain vertices, and uniforms tell lights and fog. For many spheres the
program compiles forms made for the scene at hand: SPHERES repeats a mesh, STICKS (at the vertices alone) a cylinder, MATERIALS gives every ray-cast
sphere its own colours, LIGHT_NUMBER and FOG are what the uniforms would tell, and PARALLEL says that all
lights are far away and none is a spot. EACH_BLENDS lets every sphere cover or add. FAR_LIGHTS has the light of such lights worked out once a ray-cast
sphere, and NEAR_LIGHTS that of grey ones of any kind for spheres that are small beside the distance to them;
BALL hands its place to the pixels where light or fog ask for it.
"""
import pathlib

TARGET = pathlib.Path(__file__).resolve().parent.parent / "GL"

HEAD = """#version 120
// {title}
// Written by tools/make_shaders.py.
"""

LIGHTS = """
// How much of OpenGL light i reaches a place, eye coordinates, by the rules of the fixed pipeline: attenuation
// and spot. `to` is the direction to the light, `between` half way from there to a viewer far away.
float reach(int i, vec3 place, out vec3 to, out vec3 between)
{
    vec4 source = gl_LightSource[i].position;
    to = normalize(source.xyz);
    between = gl_LightSource[i].halfVector.xyz;
    float share = 1.0;
#ifndef PARALLEL
    if (source.w != 0.0) {
        to = source.xyz / source.w - place;
        float far = length(to);
        share = 1.0 / (gl_LightSource[i].constantAttenuation + far * (gl_LightSource[i].linearAttenuation
                       + far * gl_LightSource[i].quadraticAttenuation));
        to /= max(far, 1e-30);
        between = to + vec3(0.0, 0.0, 1.0);
        between /= max(length(between), 1e-30); // a light straight behind has none
    }
    if (gl_LightSource[i].spotCutoff <= 90.0) {
        float along = -dot(to, normalize(gl_LightSource[i].spotDirection));
        share *= along < gl_LightSource[i].spotCosCutoff
                     ? 0.0 : pow(max(along, 1e-6), gl_LightSource[i].spotExponent);
    }
#endif
    return share;
}

// What it brings to a surface there.
void addLight(int i, vec3 place, vec3 normal, float shininess,
              inout vec3 ambient, inout vec3 diffuse, inout vec3 specular)
{
    vec3 to;
    vec3 between;
    float share = reach(i, place, to, between);
    float facing = max(dot(normal, to), 0.0);
    float shine = pow(max(dot(normal, between), 1e-6), shininess);
    ambient += share * gl_LightSource[i].ambient.rgb;
    diffuse += share * facing * gl_LightSource[i].diffuse.rgb;
    specular += (facing > 0.0 ? share * shine : 0.0) * gl_LightSource[i].specular.rgb;
}
"""

TONES = """
// As addLight, but in three flat tones and without highlights. What the light doesn't reach gets none of them.
void addTone(int i, vec3 place, vec3 normal, float dark, inout vec3 ambient, inout vec3 diffuse)
{
    vec3 to;
    vec3 between;
    float share = reach(i, place, to, between);
    ambient += share * gl_LightSource[i].ambient.rgb;
    float lit = share * max(dot(normal, to), 0.0);
    diffuse += gl_LightSource[i].diffuse.rgb
               * (lit > 0.75 ? 1.0 : lit > 0.35 ? 0.75 : lit > 0.02 ? 0.5 : dark * min(share, 1.0));
}
"""

FOG = """
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
"""

# One blend function serves what covers and what adds, if colours come multiplied by their alpha and what adds
# says an alpha of 0. Which a sphere does is told by the alpha of its ambient colour, which has no other use.
def blended(qualifier):
    return f"""
#ifdef EACH_BLENDS
{qualifier} float covers; // 1, or 0 for what adds
#endif

vec4 blended(vec4 color)
{{
#ifdef EACH_BLENDS
    return vec4(color.rgb * color.a, color.a * covers);
#else
    return color;
#endif
}}
"""


COVERS_OUT = """
#ifdef EACH_BLENDS
    covers = ambient.a;
#endif
"""

# Vertices of a mesh: plain ones with a normal, or of a unit sphere that stands for many.
MESH = """
#ifdef SPHERES
attribute vec4 sphere;   // centre and radius
attribute vec4 ambient;  // its material
attribute vec4 diffuse;
attribute vec4 specular;
#define VERTEX vec4(sphere.xyz + sphere.w * gl_Vertex.xyz, 1.0)
#define NORMAL gl_Vertex.xyz
#define AMBIENT ambient
#define DIFFUSE diffuse
#define SPECULAR specular
#define EMISSION vec4(0.0)
#else
#define VERTEX gl_Vertex
#define NORMAL gl_Normal
#define AMBIENT gl_FrontMaterial.ambient
#define DIFFUSE gl_FrontMaterial.diffuse
#define SPECULAR gl_FrontMaterial.specular
#define EMISSION gl_FrontMaterial.emission
#endif
"""

# The same, or the corners of a cylinder that stands for many.
MESH_STICKS = """
#ifdef STICKS
attribute vec4 first; // an end, and what alpha is multiplied by
attribute vec4 along; // from there to the other end, and the radius

// gl_Vertex: cosine and sine of the place around, and which end.
vec3 outward()
{
    vec3 axis = normalize(along.xyz);
    vec3 side = normalize(vec3(0.0, 0.0, 1.0) - axis.z * axis);
    return gl_Vertex.x * side + gl_Vertex.y * cross(side, axis);
}

#define VERTEX vec4(first.xyz + gl_Vertex.z * along.xyz + along.w * outward(), 1.0)
#define NORMAL outward()
#define AMBIENT gl_FrontMaterial.ambient
#define DIFFUSE vec4(gl_FrontMaterial.diffuse.rgb, gl_FrontMaterial.diffuse.a * first.w)
#define SPECULAR gl_FrontMaterial.specular
#define EMISSION gl_FrontMaterial.emission
#else
""" + MESH + "#endif\n"

MESH_COVERS = """
#ifdef EACH_BLENDS
varying float covers;
#endif
"""

GOURAUD_VERT = MESH_STICKS + LIGHTS + MESH_COVERS + """
#ifndef LIGHT_NUMBER
uniform int lightNumberGouraud;
#define LIGHT_NUMBER lightNumberGouraud
#endif

vec4 lit(vec3 place, vec3 normal)
{
    vec3 around = gl_LightModel.ambient.rgb;
    vec3 direct = vec3(0.0);
    vec3 shine = vec3(0.0);
    for (int i = 0; i < LIGHT_NUMBER; ++i)
        addLight(i, place, normal, gl_FrontMaterial.shininess, around, direct, shine);
    return clamp(vec4(EMISSION.rgb + around * AMBIENT.rgb + direct * DIFFUSE.rgb + shine * SPECULAR.rgb,
                      DIFFUSE.a), 0.0, 1.0);
}

void main()
{
    vec4 vertex = VERTEX;
    vec4 eye = gl_ModelViewMatrix * vertex;
    vec3 place = eye.xyz / eye.w;
    vec3 normal = normalize(gl_NormalMatrix * NORMAL);
    gl_Position = gl_ModelViewProjectionMatrix * vertex;
    gl_FrontColor = lit(place, normal);
#ifndef SPHERES
    gl_BackColor = lit(place, -normal);
#endif
    gl_FogFragCoord = abs(place.z);
""" + COVERS_OUT + """}
"""

GOURAUD_FRAG = FOG + blended("varying") + """
void main()
{
    gl_FragColor = blended(vec4(fogged(gl_Color.rgb, gl_FogFragCoord), gl_Color.a));
}
"""

# Place, normal and material to every pixel.
PIXEL_VERT = MESH + MESH_COVERS + """
varying vec3 place;
varying vec3 normal;
#ifdef SPHERES
varying vec4 materialAmbient;
varying vec4 materialDiffuse;
varying vec4 materialSpecular;
#endif

void main()
{
    vec4 vertex = VERTEX;
    vec4 eye = gl_ModelViewMatrix * vertex;
    place = eye.xyz / eye.w;
    normal = gl_NormalMatrix * NORMAL;
    gl_Position = gl_ModelViewProjectionMatrix * vertex;
#ifdef SPHERES
    materialAmbient = AMBIENT;
    materialDiffuse = DIFFUSE;
    materialSpecular = SPECULAR;
#endif
""" + COVERS_OUT + """}
"""

PIXEL_MATERIAL = """
varying vec3 place;
varying vec3 normal;
#ifdef SPHERES
varying vec4 materialAmbient;
varying vec4 materialDiffuse;
varying vec4 materialSpecular;
#define AMBIENT materialAmbient
#define DIFFUSE materialDiffuse
#define SPECULAR materialSpecular
#define EMISSION vec4(0.0)
#else
#define AMBIENT gl_FrontMaterial.ambient
#define DIFFUSE gl_FrontMaterial.diffuse
#define SPECULAR gl_FrontMaterial.specular
#define EMISSION gl_FrontMaterial.emission
#endif
"""

SMOOTH_SUM = """
vec4 lit(vec3 place, vec3 normal)
{
    vec3 around = gl_LightModel.ambient.rgb;
    vec3 direct = vec3(0.0);
    vec3 shine = vec3(0.0);
    for (int i = 0; i < LIGHT_NUMBER; ++i)
        addLight(i, place, normal, gl_FrontMaterial.shininess, around, direct, shine);
    return clamp(vec4(EMISSION.rgb + around * AMBIENT.rgb + direct * DIFFUSE.rgb + shine * SPECULAR.rgb,
                      DIFFUSE.a), 0.0, 1.0);
}
"""

# The outline lies where the surface turns away from the viewer. Where one light is drawn alone, to be
# added to a picture that has the ambient light, what the light doesn't reach stays black.
TONE_SUM = """
vec4 lit(vec3 place, vec3 normal)
{
    vec3 viewer = gl_ProjectionMatrix[3][3] == 0.0 ? normalize(-place) : vec3(0.0, 0.0, 1.0);
    if (dot(normal, viewer) < BOLDNESS) return vec4(0.0, 0.0, 0.0, DIFFUSE.a);
    float dark = SHADOW_MODE == 0 ? 0.0 : 0.25;
    vec3 around = gl_LightModel.ambient.rgb;
    vec3 direct = vec3(0.0);
    for (int i = 0; i < LIGHT_NUMBER; ++i)
        addTone(i, place, normal, dark, around, direct);
    return clamp(vec4(EMISSION.rgb + around * AMBIENT.rgb + direct * DIFFUSE.rgb, DIFFUSE.a), 0.0, 1.0);
}
"""

PIXEL_MAIN = blended("varying") + """
void main()
{
    vec3 upright = normalize(normal);
    vec4 color = lit(place, gl_FrontFacing ? upright : -upright);
    gl_FragColor = blended(vec4(fogged(color.rgb, abs(place.z)), color.a));
}
"""

PHONG_FRAG = (PIXEL_MATERIAL + LIGHTS + FOG + """
#ifndef LIGHT_NUMBER
uniform int lightNumberPhong;
#define LIGHT_NUMBER lightNumberPhong
#endif
""" + SMOOTH_SUM + PIXEL_MAIN)

CARTOON_FRAG = (PIXEL_MATERIAL + LIGHTS + TONES + FOG + """
#ifndef LIGHT_NUMBER
uniform int lightNumberCartoon;
#define LIGHT_NUMBER lightNumberCartoon
#endif
uniform int shadowVolumeModeCartoon; // 0: one light alone, to be added to the rest
uniform float boldnessCartoon;       // 0 no outline, 1 nothing else
#define SHADOW_MODE shadowVolumeModeCartoon
#define BOLDNESS boldnessCartoon
""" + TONE_SUM + PIXEL_MAIN)

# What the ray-cast forms hand from sphere to pixels is the same for all pixels of a sphere.
SPHERE_INPUTS = """
#extension GL_EXT_gpu_shader4 : enable
#ifdef GL_EXT_gpu_shader4
#define PER_SPHERE flat varying
#else
#define PER_SPHERE varying
#endif
"""

# All far lights' colours on the sphere's material, and where they come from. Uniforms cost a software
# driver more than all the rest of a pixel's work; what is worked out at the vertex costs it next to nothing.
FAR_LIGHTS = """
#ifdef FAR_LIGHTS
PER_SPHERE vec4 litAlways;                // with the alpha
#if LIGHT_NUMBER > 0
PER_SPHERE vec4 litFrom[LIGHT_NUMBER];    // direction: x, y, its part along the view; diffuse red
PER_SPHERE vec4 shineFrom[LIGHT_NUMBER];  // the same half way to the viewer; diffuse green
PER_SPHERE vec4 litShine[LIGHT_NUMBER];   // highlight; diffuse blue
#endif
#endif
"""

# What lights of any place bring to a sphere that is small beside the distance to them: direction and strength
# at its middle, and how they change over it. All lights are grey.
NEAR_LIGHTS = """
#ifdef NEAR_LIGHTS
PER_SPHERE vec4 litAlways;               // with the alpha
PER_SPHERE vec4 litAmbient;              // the material
PER_SPHERE vec4 litDiffuse;
PER_SPHERE vec4 litSpecular;
PER_SPHERE vec4 nearFrom[LIGHT_NUMBER];  // direction: x, y, its part along the view; strength
PER_SPHERE vec4 nearTurn[LIGHT_NUMBER];  // radius over distance; what strength gains towards the light; one
                                         // over the length of direction plus viewer; what ambient light gains
#endif
"""

MATERIAL_ATTRIBUTES = """
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
"""

BALL_COVERS = """
#ifdef EACH_BLENDS
PER_SPHERE float covers;
#endif
"""

HAND_MATERIAL = COVERS_OUT + """#if defined(MATERIALS) && !defined(BY_SPHERE)
    materialAmbient = ambient;
    materialDiffuse = diffuse;
    materialSpecular = specular;
#endif
"""

SILHOUETTE = """
// Middle and half width of the silhouette along one axis of the picture plane at depth 1.
vec2 silhouette(float across, float depth, float radius)
{
    float rest = depth * depth - radius * radius;
    return vec2(across * depth, radius * sqrt(across * across + rest)) / rest;
}
"""

EXACT_VERT = SPHERE_INPUTS + MATERIAL_ATTRIBUTES + BALL_COVERS + """
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
""" + FAR_LIGHTS + NEAR_LIGHTS + """
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
""" + SILHOUETTE + """
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
""" + HAND_MATERIAL + """}
"""

# A sphere around the eye, or cut by the near or the far plane.
EXACT_NEAR_VERT = SPHERE_INPUTS + MATERIAL_ATTRIBUTES + BALL_COVERS + """
uniform vec4 viewport;     // left, bottom, width, height in pixels
uniform vec2 rayScale;     // from window coordinates to the plane at depth 1, or of a parallel view
uniform vec2 rayOffset;
uniform float scale;       // of the model-view matrix
PER_SPHERE vec4 ball;      // the sphere in eye coordinates
""" + SILHOUETTE + """
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
""" + HAND_MATERIAL + """}
"""

MATERIAL_VARYINGS = """
#ifdef MATERIALS
PER_SPHERE vec4 materialAmbient;
PER_SPHERE vec4 materialDiffuse;
PER_SPHERE vec4 materialSpecular;
#define AMBIENT materialAmbient
#define DIFFUSE materialDiffuse
#define SPECULAR materialSpecular
#else
#define AMBIENT gl_FrontMaterial.ambient
#define DIFFUSE gl_FrontMaterial.diffuse
#define SPECULAR gl_FrontMaterial.specular
#endif
#define EMISSION vec4(0.0)
uniform int shadowVolumeMode;
uniform float boldness;
#define SHADOW_MODE shadowVolumeMode
#define BOLDNESS boldness
"""

ANY_LIGHTS = MATERIAL_VARYINGS + LIGHTS + """
#ifdef CARTOON
""" + TONES + TONE_SUM + """
#else
""" + SMOOTH_SUM + """
#endif
"""

EXACT_FRAG = SPHERE_INPUTS + """
PER_SPHERE vec4 onScreen;
PER_SPHERE vec4 toSphere;
#ifdef BALL
PER_SPHERE vec4 ball;
#endif
""" + FAR_LIGHTS + NEAR_LIGHTS + FOG + blended("PER_SPHERE") + """
#if defined(FAR_LIGHTS) || defined(NEAR_LIGHTS)
#define BY_SPHERE

// All particles have a shininess of 20.
float gloss(float x)
{
    float x2 = x * x;
    float x4 = x2 * x2;
    float x8 = x4 * x4;
    return x8 * x8 * x4;
}
#endif

#ifdef FAR_LIGHTS
// The normal is share * across - depth * (direction to the sphere); `across` has no z.
vec4 litByFar(vec2 across, float share, float depth)
{
    vec3 color = litAlways.rgb;
#if LIGHT_NUMBER > 0
    for (int i = 0; i < LIGHT_NUMBER; ++i) {
        float facing = share * dot(litFrom[i].xy, across) - depth * litFrom[i].z;
        float shine = share * dot(shineFrom[i].xy, across) - depth * shineFrom[i].z;
        color += max(facing, 0.0) * vec3(litFrom[i].w, shineFrom[i].w, litShine[i].w)
               + (facing > 0.0 ? gloss(max(shine, 0.0)) : 0.0) * litShine[i].rgb;
    }
#endif
    return clamp(vec4(color, litAlways.a), 0.0, 1.0);
}
#endif

#ifdef NEAR_LIGHTS
// The same for near lights. With the radius over the distance s and the cosine x at the sphere's middle, the
// cosine at a place is x - s * (1 - x * x) but for the square of s; the length of direction plus viewer, and
// what reaches the place, change along with it.
vec4 litByNear(vec2 across, float share, float depth)
{
    float front = -depth * toSphere.z;
    float around = 0.0;
    float lit = 0.0;
    float bright = 0.0;
    for (int i = 0; i < LIGHT_NUMBER; ++i) {
        float x = share * dot(nearFrom[i].xy, across) - depth * nearFrom[i].z;
        float s = nearTurn[i].x;
        float per = nearTurn[i].z;
        float facing = x - s * (1.0 - x * x);
        float strength = nearFrom[i].w + nearTurn[i].y * x;
        float shine = per * (facing + front) * (1.0 - s * (0.5 * x - per * per * (x + front)));
        around += nearTurn[i].w * x;
        lit += strength * max(facing, 0.0);
        bright += facing > 0.0 ? strength * gloss(max(shine, 0.0)) : 0.0;
    }
    vec3 color = litAlways.rgb + around * litAmbient.rgb + lit * litDiffuse.rgb + bright * litSpecular.rgb;
    return clamp(vec4(color, litAlways.a), 0.0, 1.0);
}
#endif

#ifndef BY_SPHERE
""" + ANY_LIGHTS + """
#endif

// Lengths in radii. The ray through a pixel is (distance * direction to the sphere + across); with the
// distance d, the foot of the perpendicular on it lies at
//   (1 - along / d) * across - along * direction   from the centre,
// and the surface by `in front` nearer along the ray. Nothing large is subtracted from anything large:
// exact for far, small spheres too.
void main()
{
    vec2 across = (gl_FragCoord.xy - onScreen.xy) * onScreen.zw;
    float closeness = toSphere.w; // 1 / d
    float forward = dot(toSphere.xy, across);
    float square = dot(across, across);
    float turned = forward + closeness * square;
    float shorter = 1.0 / (1.0 + closeness * (forward + turned)); // square of d over the ray's length
    float rest = 1.0 - (square - forward * forward) * shorter;
    if (rest < 0.0) discard;
    float depth = turned * shorter + sqrt(rest * shorter);
    float share = 1.0 - closeness * depth;
    gl_FragDepth = gl_FragCoord.z - gl_FragCoord.w * depth / share;
#ifdef FAR_LIGHTS
    vec4 color = litByFar(across, share, depth);
#elif defined(NEAR_LIGHTS)
    vec4 color = litByNear(across, share, depth);
#else
    vec3 normal = vec3(share * across, 0.0) - depth * toSphere.xyz;
    vec4 color = lit(ball.xyz + ball.w * normal, normal);
#endif
#if FOG != 0
    color.rgb = fogged(color.rgb, abs(ball.z - ball.w * depth * toSphere.z));
#endif
    gl_FragColor = blended(color);
}
"""

EXACT_NEAR_FRAG = SPHERE_INPUTS + """
uniform vec2 rayScale;
uniform vec2 rayOffset;
uniform vec2 depthRange; // eye coordinates: nearest and farthest z
uniform vec2 depthMap;   // depth = x + y / z, in a parallel view x + y * z
PER_SPHERE vec4 ball;
""" + FOG + blended("PER_SPHERE") + ANY_LIGHTS + """
void main()
{
    vec2 plane = gl_FragCoord.xy * rayScale + rayOffset;
    // From the foot of the perpendicular on the ray back to the surface.
#ifdef PERSPECTIVE
    vec3 ray = vec3(plane, -1.0);
    float share = 1.0 / dot(ray, ray);
    vec3 foot = ray * (dot(ball.xyz, ray) * share) - ball.xyz;
#else
    const vec3 ray = vec3(0.0, 0.0, -1.0);
    const float share = 1.0;
    vec3 foot = vec3(plane - ball.xy, 0.0);
#endif
    float rest = ball.w * ball.w - dot(foot, foot);
    vec3 outward = foot - ray * sqrt(max(rest, 0.0) * share);
    vec3 place = ball.xyz + outward;
    // What lies behind the near plane is the inside, which isn't drawn.
    if (rest < 0.0 || place.z > depthRange.x || place.z < depthRange.y) discard;
#ifdef PERSPECTIVE
    gl_FragDepth = depthMap.x + depthMap.y / place.z;
#else
    gl_FragDepth = depthMap.x + depthMap.y * place.z;
#endif
    vec4 color = lit(place, outward / ball.w);
    gl_FragColor = blended(vec4(fogged(color.rgb, abs(place.z)), color.a));
}
"""

# The shadow of a sphere: one cylinder that stands for many.
SHADOW_VERT = """
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
"""

SHADOW_FRAG = """
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
"""

# Which pixels show a point that lies in the shadow of one of many small spheres.
LOOKUP_VERT = """
void main()
{
    gl_Position = gl_Vertex;
}
"""

LOOKUP_FRAG = """
#extension GL_EXT_gpu_shader4 : require

uniform sampler2D depths;       // of what the pixels show
uniform isamplerBuffer ranges;  // first and one past the last of a block's spheres among all
uniform samplerBuffer spheres;  // centre and radius, coordinates of the blocks
uniform vec4 viewport;          // left, bottom, width, height in pixels
uniform vec2 rayScale;          // from window coordinates to the plane at depth 1, or of a parallel view
uniform vec2 rayOffset;
uniform vec2 depthMap;          // depth = x + y / z, in a parallel view x + y * z
uniform mat3 turn;              // from eye coordinates to those of the blocks
uniform vec3 eye;
uniform vec3 perBlock;          // one over the edges of a block
uniform float start;            // where shadows begin and end, radii
uniform float reach;

#ifdef NEAR_LIGHT
// Blocks are directions away from the light and shells around it, scattered over the table.
uniform vec3 light;
const int size = 262144;
const ivec4 scatter = ivec4(1, 601, 360001, 215640599);
#else
// Blocks of the table; the first along an axis follows its last.
const ivec3 size = ivec3(128, 128, 16); // the last along the light's direction
#endif

bool holds(vec4 sphere, vec3 place, vec3 ray) // ray: of a near light
{
    vec3 way = place - sphere.xyz;
#ifdef NEAR_LIGHT
    // The light's ray to the place meets the sphere, and the place lies between the shadow's ends.
    vec3 off = way - dot(way, ray) * ray;
    vec3 away = sphere.xyz - light;
    float far = length(away) * sphere.w;
    float along = dot(way, away) + sphere.w * sphere.w;
    return dot(off, off) < sphere.w * sphere.w && along >= start * far && along <= reach * far;
#else
    return way.z >= start * sphere.w && way.z <= reach * sphere.w && dot(way.xy, way.xy) < sphere.w * sphere.w;
#endif
}

void main()
{
    float depth = texelFetch2D(depths, ivec2(gl_FragCoord.xy - viewport.xy), 0).r;
    if (depth >= 1.0) discard;
    vec2 plane = gl_FragCoord.xy * rayScale + rayOffset;
#ifdef PERSPECTIVE
    float z = depthMap.y / (depth - depthMap.x);
    vec3 seen = vec3(plane * -z, z);
#else
    vec3 seen = vec3(plane, (depth - depthMap.x) / depthMap.y);
#endif
    vec3 place = turn * seen + eye;
#ifdef NEAR_LIGHT
    vec3 away = place - light;
    float far = length(away);
    vec3 ray = away / far;
    ivec4 block = ivec4(floor(vec4(ray * perBlock.xxx, clamp(far * perBlock.z, 0.0, 1e9)))) * scatter;
    int slot = (block.x + block.y + block.z + block.w) & (size - 1);
#else
    vec3 ray = vec3(0.0);
    ivec3 block = ivec3(floor(clamp(place * perBlock, -1e9, 1e9))) & (size - 1);
    int slot = (block.z * size.y + block.y) * size.x + block.x;
#endif
    ivec2 range = texelFetchBuffer(ranges, slot).xy;
    for (int i = range.x; i < range.y; ++i) {
        if (!holds(texelFetchBuffer(spheres, i), place, ray)) continue;
        gl_FragColor = vec4(1.0);
        return;
    }
    discard;
}
"""

FILES = {
    "Gouraud.vert": ("Light at the vertices.", GOURAUD_VERT),
    "Gouraud.frag": ("The colour between the vertices, and fog.", GOURAUD_FRAG),
    "Phong.vert": ("Place and normal for light at every pixel.", PIXEL_VERT),
    "Phong.frag": ("Light at every pixel.", PHONG_FRAG),
    "Cartoon.vert": ("Place and normal for tones at every pixel.", PIXEL_VERT),
    "Cartoon.frag": ("Flat tones with an outline.", CARTOON_FRAG),
    "Exact.vert": ("The square on the screen that a sphere fills, and its light.", EXACT_VERT),
    "Exact.frag": ("The sphere itself: where the ray of a pixel meets it, with its depth and light.", EXACT_FRAG),
    "ExactNear.vert": ("The part of the screen that a sphere at the eye may fill.", EXACT_NEAR_VERT),
    "ExactNear.frag": ("A sphere around the eye, or cut by the near or the far plane.", EXACT_NEAR_FRAG),
    "Shadow.vert": ("The volume that a sphere keeps from a light.", SHADOW_VERT),
    "Shadow.frag": ("Its colour where it is shown.", SHADOW_FRAG),
    "ShadowLookup.vert": ("All of the screen.", LOOKUP_VERT),
    "ShadowLookup.frag": ("Only what lies in the shadow of a sphere.", LOOKUP_FRAG),
}


def main():
    TARGET.mkdir(exist_ok=True)
    for name, (title, body) in FILES.items():
        (TARGET / name).write_text(HEAD.format(title=title) + body, encoding="utf-8")
        print(TARGET / name)


if __name__ == "__main__":
    main()

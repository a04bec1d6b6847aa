#version 120
// The sphere itself: where the ray of a pixel meets it, with its depth and light.
// Written by tools/make_shaders.py.

#ifdef MATERIALS
varying vec4 materialAmbient;
varying vec4 materialDiffuse;
varying vec4 materialSpecular;
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
uniform vec2 rayScale;
uniform vec2 rayOffset;
uniform vec2 depthRange; // eye coordinates: nearest and farthest z
uniform vec2 depthMap;   // depth = x + y / z, in a parallel view x + y * z
varying vec4 ball;
#define SHADOW_MODE shadowVolumeMode
#define BOLDNESS boldness

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

#if defined(PARALLEL) && !defined(CARTOON)

// All particles have a shininess of 20.
float gloss(float x)
{
    float x2 = x * x;
    float x4 = x2 * x2;
    float x8 = x4 * x4;
    return x8 * x8 * x4;
}

uniform vec3 lightTo[8];
uniform vec3 lightBetween[8];

vec4 lit(vec3 place, vec3 normal)
{
#ifdef MATERIALS
    vec3 color = gl_LightModel.ambient.rgb * AMBIENT.rgb;
#else
    vec3 color = gl_LightModel.ambient.rgb * gl_FrontMaterial.ambient.rgb;
#endif
    for (int i = 0; i < LIGHT_NUMBER; ++i) {
        float facing = dot(normal, lightTo[i]);
        float shine = facing > 0.0 ? gloss(max(dot(normal, lightBetween[i]), 0.0)) : 0.0;
#ifdef MATERIALS
        color += gl_LightSource[i].ambient.rgb * AMBIENT.rgb
               + max(facing, 0.0) * gl_LightSource[i].diffuse.rgb * DIFFUSE.rgb
               + shine * gl_LightSource[i].specular.rgb * SPECULAR.rgb;
#else
        color += gl_FrontLightProduct[i].ambient.rgb + max(facing, 0.0) * gl_FrontLightProduct[i].diffuse.rgb
               + shine * gl_FrontLightProduct[i].specular.rgb;
#endif
    }
    return clamp(vec4(color, DIFFUSE.a), 0.0, 1.0);
}

#else

// What OpenGL light i brings to a place on a surface, eye coordinates, by the rules of the fixed
// pipeline: attenuation, spot, and highlights for a viewer far away.
void addLight(int i, vec3 place, vec3 normal, float shininess,
              inout vec3 ambient, inout vec3 diffuse, inout vec3 specular)
{
    vec4 source = gl_LightSource[i].position;
    vec3 to = normalize(source.xyz);
    vec3 between = gl_LightSource[i].halfVector.xyz;
    float share = 1.0;
#ifndef PARALLEL
    if (source.w != 0.0) {
        to = source.xyz / source.w - place;
        float far = length(to);
        share = 1.0 / (gl_LightSource[i].constantAttenuation + far * (gl_LightSource[i].linearAttenuation
                       + far * gl_LightSource[i].quadraticAttenuation));
        to /= max(far, 1e-30);
        between = normalize(to + vec3(0.0, 0.0, 1.0));
    }
    if (gl_LightSource[i].spotCutoff <= 90.0) {
        float along = -dot(to, normalize(gl_LightSource[i].spotDirection));
        share *= along < gl_LightSource[i].spotCosCutoff
                     ? 0.0 : pow(max(along, 1e-6), gl_LightSource[i].spotExponent);
    }
#endif
    float facing = max(dot(normal, to), 0.0);
    float shine = pow(max(dot(normal, between), 1e-6), shininess);
    ambient += share * gl_LightSource[i].ambient.rgb;
    diffuse += share * facing * gl_LightSource[i].diffuse.rgb;
    specular += (facing > 0.0 ? share * shine : 0.0) * gl_LightSource[i].specular.rgb;
}

#ifdef CARTOON

// As addLight, but in three flat tones and without highlights.
void addTone(int i, vec3 place, vec3 normal, float dark, inout vec3 ambient, inout vec3 diffuse)
{
    vec3 direct = vec3(0.0);
    vec3 unused = vec3(0.0);
    vec3 base = vec3(0.0);
    addLight(i, place, normal, 1.0, base, direct, unused);
    ambient += base;
    vec3 light = gl_LightSource[i].diffuse.rgb;
    float full = max(max(light.r, light.g), light.b);
    float share = full > 0.0 ? max(max(direct.r, direct.g), direct.b) / full : 0.0;
    diffuse += light * (share > 0.75 ? 1.0 : share > 0.35 ? 0.75 : share > 0.02 ? 0.5 : dark);
}

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

#else

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

#endif
#endif

void main()
{
    vec2 plane = gl_FragCoord.xy * rayScale + rayOffset;
    // From the foot of the perpendicular on the ray back to the surface: exact for far, small spheres too.
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
    // Cut by the near or the far plane; what lies behind it is the inside, which isn't drawn.
    if (rest < 0.0 || place.z > depthRange.x || place.z < depthRange.y) discard;
#ifdef PERSPECTIVE
    gl_FragDepth = depthMap.x + depthMap.y / place.z;
#else
    gl_FragDepth = depthMap.x + depthMap.y * place.z;
#endif
    vec4 color = lit(place, outward / ball.w);
    gl_FragColor = vec4(fogged(color.rgb, abs(place.z)), color.a);
}

#version 120
// Flat tones with an outline.
// Written by tools/make_shaders.py.

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

#ifndef LIGHT_NUMBER
uniform int lightNumberCartoon;
#define LIGHT_NUMBER lightNumberCartoon
#endif
uniform int shadowVolumeModeCartoon; // 0: one light alone, to be added to the rest
uniform float boldnessCartoon;       // 0 no outline, 1 nothing else
#define SHADOW_MODE shadowVolumeModeCartoon
#define BOLDNESS boldnessCartoon

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
    vec3 upright = normalize(normal);
    vec4 color = lit(place, gl_FrontFacing ? upright : -upright);
    gl_FragColor = blended(vec4(fogged(color.rgb, abs(place.z)), color.a));
}

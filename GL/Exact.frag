#version 120
// The sphere itself: where the ray of a pixel meets it, with its depth and light.
// Written by tools/make_shaders.py.

#extension GL_EXT_gpu_shader4 : enable
#ifdef GL_EXT_gpu_shader4
#define PER_SPHERE flat varying
#else
#define PER_SPHERE varying
#endif

PER_SPHERE vec4 onScreen;
PER_SPHERE vec4 toSphere;
#ifdef BALL
PER_SPHERE vec4 ball;
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
PER_SPHERE float covers; // 1, or 0 for what adds
#endif

vec4 blended(vec4 color)
{
#ifdef EACH_BLENDS
    return vec4(color.rgb * color.a, color.a * covers);
#else
    return color;
#endif
}

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

#ifdef CARTOON

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

#version 120
// Light at the vertices.
// Written by tools/make_shaders.py.

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

#ifdef EACH_BLENDS
varying float covers;
#endif

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

#ifdef EACH_BLENDS
    covers = ambient.a;
#endif
}

#version 120
// Place and normal for light at every pixel.
// Written by tools/make_shaders.py.

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

#ifdef EACH_BLENDS
varying float covers;
#endif

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

#ifdef EACH_BLENDS
    covers = ambient.a;
#endif
}

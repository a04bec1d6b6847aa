#version 120
// Only what lies in the shadow of a sphere.
// Written by tools/make_shaders.py.

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

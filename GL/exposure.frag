#version 120
// From the light in an off-screen buffer to the picture: level, gamma, hue, saturation. The result is what
// the colour of the quad lets through, and in accumulation a weighted share of it.

uniform sampler2D textureImage;
uniform vec4 levelMin; // what becomes black ...
uniform vec4 levelMax; // ... and what becomes full light; the lower one of the two may be the second
uniform vec4 gamma;    // above 1 brightens the middle
uniform int hueOffset;  // degrees
uniform int saturation; // percent: -100 leaves grey, 100 doubles
uniform int blendMode;  // 1: weight by alpha, for pictures that add up
uniform float alpha;

// Rec. 709
const vec3 luma = vec3(0.2126, 0.7152, 0.0722);

vec3 Level(vec3 c) {
    vec3 range = levelMax.rgb - levelMin.rgb;
    // Without a range, what lies below is black and the rest is light.
    if (abs(range.r) < 1e-6) return step(levelMin.rgb, c);
    return clamp((c - levelMin.rgb) / range, 0.0, 1.0);
}

// Around the grey axis in hue, saturation, value.
vec3 TurnHue(vec3 c, float degrees) {
    float high = max(c.r, max(c.g, c.b));
    float spread = high - min(c.r, min(c.g, c.b));
    if (spread < 1e-6) return c;
    vec3 away = (high - c) / spread;
    float hue;
    if (c.r >= high)
        hue = away.b - away.g;
    else if (c.g >= high)
        hue = 2.0 + away.r - away.b;
    else
        hue = 4.0 + away.g - away.r;
    hue = mod(hue + degrees / 60.0 + 12.0, 6.0);
    vec3 ramp = clamp(vec3(abs(hue - 3.0) - 1.0, 2.0 - abs(hue - 2.0), 2.0 - abs(hue - 4.0)), 0.0, 1.0);
    return high - spread * (1.0 - ramp);
}

void main() {
    vec4 texel = texture2D(textureImage, gl_TexCoord[0].st);
    vec3 c = pow(Level(texel.rgb), 1.0 / gamma.rgb);
    if (hueOffset != 0) c = TurnHue(c, float(hueOffset));
    if (saturation != 0) c = clamp(mix(vec3(dot(c, luma)), c, 1.0 + float(saturation) / 100.0), 0.0, 1.0);
    vec4 result = vec4(c, texel.a) * gl_Color;
    if (blendMode == 1) result *= alpha;
    gl_FragColor = result;
}

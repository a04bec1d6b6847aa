#version 120
// Two eyes for red-cyan glasses: each channel is what comes nearest, through the two filters, to the colours
// that the eyes should see. Least squares over the light of a screen and the glasses' filters, from
// E. Dubois, "A projection method to generate anaglyph stereo images", Proc. IEEE Int. Conf. Acoustics,
// Speech, Signal Processing (ICASSP), Salt Lake City 2001, vol. 3, p. 1661-1664.

uniform sampler2D leftEye;
uniform sampler2D rightEye;

// Each row is a channel of the result: its shares of red, green and blue.
const vec3 leftRed = vec3(0.456, 0.500, 0.176);
const vec3 leftGreen = vec3(-0.040, -0.038, -0.016);
const vec3 leftBlue = vec3(-0.015, -0.021, -0.005);
const vec3 rightRed = vec3(-0.043, -0.088, -0.002);
const vec3 rightGreen = vec3(0.378, 0.734, -0.018);
const vec3 rightBlue = vec3(-0.072, -0.113, 1.226);

void main() {
    vec3 l = clamp(texture2D(leftEye, gl_TexCoord[0].st).rgb, 0.0, 1.0);
    vec3 r = clamp(texture2D(rightEye, gl_TexCoord[0].st).rgb, 0.0, 1.0);
    vec3 mixed = vec3(dot(leftRed, l) + dot(rightRed, r), dot(leftGreen, l) + dot(rightGreen, r),
                      dot(leftBlue, l) + dot(rightBlue, r));
    gl_FragColor = vec4(clamp(mixed, 0.0, 1.0), 1.0) * gl_Color;
}

#version 120
// The quads and meshes that put a picture on its target: nothing but the fixed transformation.

void main() {
    gl_Position = ftransform();
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_FrontColor = gl_Color;
}

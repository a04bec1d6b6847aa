// The texture of depths and stencil behind what is drawn into.
#pragma once

/// GL name of the one that the present framebuffer has: 24 bits of depth, 8 of stencil; 0: it has none.
unsigned GetDepthTarget();

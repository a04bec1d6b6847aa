// Carries the precompiled header (cmake/pch.h); holds no code.

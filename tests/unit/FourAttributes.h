// The looks of the four classes of particles, with nothing around them: for tests and benchmarks.
#pragma once

#include <memory>

#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"

struct FourAttributes_st {
    FourAttributes_st() {
        for (int k = 0; k < 4; ++k) {
            mOwned[k] = std::make_unique<GLAttribute_cls>(nullptr, 0, k, &mOption);
            mp[k] = mOwned[k].get();
        }
    }

    DrawOption_cls mOption;
    GLAttribute_cls* mp[4];

private:
    std::unique_ptr<GLAttribute_cls> mOwned[4];
};

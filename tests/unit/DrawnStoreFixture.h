// A store whose sequences are drawn as the program draws them.
#pragma once

#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "StoreFixture.h"

/// Made before the store is.
struct DrawOptionHolder_st {
    DrawOption_cls mOption;
};

class DrawnStoreFixture : protected DrawOptionHolder_st, public StoreFixture {
protected:
    DrawnStoreFixture() : StoreFixture(GLSequence_cls::GetMaker(&mOption)) {}

    GLSequence_cls& Drawing() { return GLSequence_cls::Of(Sequence()); }
};

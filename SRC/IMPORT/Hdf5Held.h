// What the HDF5 library has opened, closed at the end of a scope.
#pragma once

#include <hdf5.h>

class Hdf5Held_cls {
public:
    Hdf5Held_cls(hid_t id, herr_t (*pClose)(hid_t)) : mID(id), mpClose(pClose) {}
    ~Hdf5Held_cls() {
        if (mID >= 0) mpClose(mID);
    }
    Hdf5Held_cls(const Hdf5Held_cls&) = delete;
    Hdf5Held_cls& operator=(const Hdf5Held_cls&) = delete;
    operator hid_t() const { return mID; }

private:
    hid_t mID;
    herr_t (*mpClose)(hid_t);
};

// What the HDF5 library has opened, closed at the end of a scope.
#pragma once

#include <cstdint>

class Hdf5Held_cls {
public:
    using Handle = int64_t; // the library's hid_t; its herr_t is int

    Hdf5Held_cls(Handle id, int (*pClose)(Handle)) : mID(id), mpClose(pClose) {}
    ~Hdf5Held_cls() {
        if (mID >= 0) mpClose(mID);
    }
    Hdf5Held_cls(const Hdf5Held_cls&) = delete;
    Hdf5Held_cls& operator=(const Hdf5Held_cls&) = delete;
    operator Handle() const { return mID; }

private:
    Handle mID;
    int (*mpClose)(Handle);
};
